// Allocations that fail. Not available under a sanitizer; the CMakeLists.txt leaves out tests that
// need them.
#ifndef FAKE_PLATFORM_FAILING_ALLOCATIONS_H
#define FAKE_PLATFORM_FAILING_ALLOCATIONS_H

namespace fake_platform {

// Makes the n-th malloc or calloc that the provider's own code calls from now on return null, 1
// being the next. Allocations by the standard library and libc on its behalf do not count.
__attribute__((visibility("default"))) void failAllocation(int n);

// How many such calls there were since reset().
__attribute__((visibility("default"))) int allocations();

}  // namespace fake_platform

#endif  // FAKE_PLATFORM_FAILING_ALLOCATIONS_H
