// platform_functions.def as data.
#ifndef PLATFORM_PLATFORM_FUNCTIONS_H
#define PLATFORM_PLATFORM_FUNCTIONS_H

#include <array>

namespace platform {

// How a caller notices that a function failed.
enum class Failure {
  kCode,       // the result is a code other than 0
  kNull,       // the result is null
  kFalse,      // the result is false
  kUntouched,  // there is no result; the output is untouched
  kNever,      // it never fails
};

struct PlatformFunction {
  const char* name;
  Failure failure;
};

inline constexpr auto kPlatformFunctions = std::to_array<PlatformFunction>({
#define PLATFORM_FUNCTION(header, result, name, parameters, failure) {#name, Failure::failure},
#include "platform_functions.def"
#undef PLATFORM_FUNCTION
});

}  // namespace platform

#endif  // PLATFORM_PLATFORM_FUNCTIONS_H
