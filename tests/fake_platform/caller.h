// Who called: functions that the whole process uses only record the provider's calls.
#ifndef FAKE_PLATFORM_CALLER_H
#define FAKE_PLATFORM_CALLER_H

namespace fake_platform {

// Whether the code at this address is the provider library's; also while that is being loaded or
// unloaded. Allocates nothing, takes no lock.
__attribute__((visibility("default"))) bool isProviderCode(const void* address);

}  // namespace fake_platform

#endif  // FAKE_PLATFORM_CALLER_H
