// The blocks of the C heap that cross the provider's boundaries: what it allocates to hand out, and
// the texts that the platform hands to it. C++ objects are not among them: what operator new
// allocates, containers and strings included, is not counted.
#ifndef FAULT_MATRIX_HEAP_H
#define FAULT_MATRIX_HEAP_H

// Not under a sanitizer, whose allocator must not be replaced: it finds by itself what was never
// freed.
bool countsBlocks();

// How many of them nobody has freed; 0 where they are not counted.
int liveBlocks();

#endif  // FAULT_MATRIX_HEAP_H
