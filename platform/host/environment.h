// Environment variables.
#ifndef PLATFORM_HOST_ENVIRONMENT_H
#define PLATFORM_HOST_ENVIRONMENT_H

#include <cstdlib>
#include <string>

namespace platform {

// The variable's value; `otherwise` when it is not set, or empty.
inline std::string variableOr(const char* name, const char* otherwise = "") {
  const char* const value = std::getenv(name);
  return value != nullptr && *value != '\0' ? value : otherwise;
}

}  // namespace platform

#endif  // PLATFORM_HOST_ENVIRONMENT_H
