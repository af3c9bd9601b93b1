// Counts the blocks that are taken from the heap, by whomever.
#ifndef BENCH_CALLBACKS_ALLOCATIONS_H
#define BENCH_CALLBACKS_ALLOCATIONS_H

#include <cstddef>

// Since the process started.
long allocationCount();

// From now on the size of a block is kept, and a block of malloc's is filled, so that a byte which
// nobody wrote is not zero by chance.
void watchBlocks();

// What was asked for, not what the C library made of it. For a watched block that is not freed.
std::size_t blockSize(const void* block);

// Leaves free blocks of every size between ones that stay, as in a process that has run for long. A
// block that borders on free room costs more: it is joined with that, and split off again.
void fillHeap();

#endif  // BENCH_CALLBACKS_ALLOCATIONS_H
