// Allocations that fail. Not to be had under a sanitizer; a test that needs them is left out there
// by its CMakeLists.txt.
#ifndef FAKE_PLATFORM_FAILING_ALLOCATIONS_H
#define FAKE_PLATFORM_FAILING_ALLOCATIONS_H

namespace fake_platform {

// Makes the n-th malloc or calloc that the provider's own code calls from now on return null, 1
// being the next. What the standard library and libc allocate for it does not count.
__attribute__((visibility("default"))) void failAllocation(int n);

// How many such calls there were since reset().
__attribute__((visibility("default"))) int allocations();

}  // namespace fake_platform

#endif  // FAKE_PLATFORM_FAILING_ALLOCATIONS_H
