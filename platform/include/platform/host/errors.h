// What the host platform raises when the files or settings that describe its TV are wrong.
#ifndef PLATFORM_HOST_ERRORS_H
#define PLATFORM_HOST_ERRORS_H

#include <stdexcept>

#include "platform/export.h"

namespace platform::host {

// A product, scenario or menu file, or a setting of the environment, is not as it should be. The
// message names the file and line or the setting, what was found, and what was expected.
class PLATFORM_API ConfigurationError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// There is nothing of the name that was asked for; the message says what there is.
class PLATFORM_API UnknownNameError : public ConfigurationError {
 public:
  using ConfigurationError::ConfigurationError;
};

}  // namespace platform::host

#endif  // PLATFORM_HOST_ERRORS_H
