// The functions that the fake stands in for and that can be scripted.
#ifndef FAKE_PLATFORM_FUNCTION_NAME_H
#define FAKE_PLATFORM_FUNCTION_NAME_H

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

#include "platform_functions.h"

namespace fake_platform {

// The functions of libc and GLib that the provider uses.
inline constexpr std::array kOtherFunctions = {"g_source_remove", "g_timeout_add_seconds",
                                               "pthread_mutex_lock"};
inline constexpr std::size_t kFunctionCount =
    platform::kPlatformFunctions.size() + kOtherFunctions.size();

constexpr const char* nameOfFunction(std::size_t position) {
  constexpr std::size_t kOfPlatform = platform::kPlatformFunctions.size();
  return position < kOfPlatform ? platform::kPlatformFunctions[position].name
                                : kOtherFunctions[position - kOfPlatform];
}

constexpr std::optional<std::size_t> positionOfFunction(std::string_view name) {
  for (std::size_t i = 0; i < kFunctionCount; ++i) {
    if (name == nameOfFunction(i)) return i;
  }
  return std::nullopt;
}

// The name of one of these functions; any other name does not compile.
class FunctionName {
 public:
  // NOLINTNEXTLINE(google-explicit-constructor): written as the name alone.
  consteval FunctionName(const char* name) : position_(positionOfFunction(name).value()) {}

  std::size_t position() const { return position_; }
  const char* text() const { return nameOfFunction(position_); }

 private:
  std::size_t position_;
};

}  // namespace fake_platform

#endif  // FAKE_PLATFORM_FUNCTION_NAME_H
