// The blocks of the C heap that cross the provider's boundaries: those that it allocates to hand
// out, and the texts that the platform hands to it. C++ objects are not counted: nothing from
// operator new, so no containers and strings.
#ifndef FAULT_MATRIX_HEAP_H
#define FAULT_MATRIX_HEAP_H

// Not under a sanitizer, whose allocator must not be replaced: it finds by itself what was never
// freed.
bool countsBlocks();

// How many of them have not been freed; 0 if they are not counted.
int liveBlocks();

#endif  // FAULT_MATRIX_HEAP_H
