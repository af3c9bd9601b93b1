// What the provider has on the heap, and allocations that fail.
#ifndef FAULT_MATRIX_HEAP_H
#define FAULT_MATRIX_HEAP_H

// Not under a sanitizer, whose allocator must not be replaced: it finds by itself what was never
// freed.
bool countsBlocks();

// How many blocks of the C heap have not been freed of those that cross the provider's boundaries:
// those that it allocates to hand out, and the texts that the platform hands to it. C++ objects are
// not among them: nothing from operator new, so no containers and strings. 0 if they are not
// counted.
int liveBlocks();

// Counts from now on what the provider takes from operator new, itself or through the C++ library
// or jsoncpp, and what jsoncpp takes from malloc for it; slow, so not before. Not under a
// sanitizer, as all that follows.
void countObjects();

// How many of those have not been freed.
int liveObjects();

// Makes the n-th allocation that the provider causes from now on fail, 1 being the next: its own of
// the C heap, and those that are counted as objects. 0 cancels it.
void failAllocation(int n);

// Whether the last one that was to fail has been reached, also after a 0.
bool hasAllocationFailed();

#endif  // FAULT_MATRIX_HEAP_H
