// Counts the blocks that are taken from the heap, by whomever, and tells a recording of them.
#ifndef BENCH_CALLBACKS_ALLOCATIONS_H
#define BENCH_CALLBACKS_ALLOCATIONS_H

// Since the process started.
long allocationCount();

// Leaves free blocks of every size between ones that stay, as in a process that has run for long. A
// block that borders on free room costs more: it is joined with that, and split off again.
void fillHeap();

#endif  // BENCH_CALLBACKS_ALLOCATIONS_H
