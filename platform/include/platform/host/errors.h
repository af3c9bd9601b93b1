// What the host platform raises when the files or settings that describe its TV are wrong.
#ifndef PLATFORM_HOST_ERRORS_H
#define PLATFORM_HOST_ERRORS_H

#include <stdexcept>

#include "platform/export.h"

namespace platform::host {

// A product, scenario or menu file, or an environment setting, is invalid. The message names the
// file and line or the setting, what was found, and what was expected.
class PLATFORM_API ConfigurationError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Nothing has the requested name; the message lists the names that exist.
class PLATFORM_API UnknownNameError : public ConfigurationError {
 public:
  using ConfigurationError::ConfigurationError;
};

}  // namespace platform::host

#endif  // PLATFORM_HOST_ERRORS_H
