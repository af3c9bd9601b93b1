// Counts all blocks allocated on the heap, and reports them to a recording.
#ifndef BENCH_CALLBACKS_ALLOCATIONS_H
#define BENCH_CALLBACKS_ALLOCATIONS_H

// Since the process started.
long allocationCount();

// Leaves free blocks of every size between used ones, as in a process that has run for long. A
// block next to free space costs more, because it is merged with it and split again.
void fillHeap();

#endif  // BENCH_CALLBACKS_ALLOCATIONS_H
