// Makes platform functions fail, to test how the product reacts.
#ifndef PLATFORM_HOST_FAULTS_H
#define PLATFORM_HOST_FAULTS_H

#include <string>
#include <vector>

#include "platform/export.h"

namespace platform::host {

// The key's prefix; the function's name follows. While such a key holds an integer other than 0,
// the function does nothing and fails with that code.
inline constexpr char kFaults[] = "memory/host/fault/";

// The functions that can be made to fail.
PLATFORM_API std::vector<std::string> functionsThatCanFail();

}  // namespace platform::host

#endif  // PLATFORM_HOST_FAULTS_H
