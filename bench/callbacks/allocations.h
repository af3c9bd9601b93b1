// Counts the blocks that are taken from the heap, by whomever.
#ifndef BENCH_CALLBACKS_ALLOCATIONS_H
#define BENCH_CALLBACKS_ALLOCATIONS_H

// Since the process started.
long allocationCount();

#endif  // BENCH_CALLBACKS_ALLOCATIONS_H
