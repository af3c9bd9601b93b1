// Platform functions that are made to fail, to see how the product takes it.
#ifndef PLATFORM_HOST_FAULTS_H
#define PLATFORM_HOST_FAULTS_H

#include <string>
#include <vector>

#include "platform/export.h"

namespace platform::host {

// While the store's key with a function's name after this holds an integer other than 0, the
// function does nothing and fails with it.
inline constexpr char kFaults[] = "memory/host/fault/";

// The functions that can be made to fail.
PLATFORM_API std::vector<std::string> functionsThatCanFail();

}  // namespace platform::host

#endif  // PLATFORM_HOST_FAULTS_H
