// Formatting of printf-style messages of any length.
#ifndef PLATFORM_LOGGING_MESSAGE_H
#define PLATFORM_LOGGING_MESSAGE_H

#include <cstdarg>
#include <string>

namespace platform {

// The formatted text. `arguments` is used up.
std::string formatMessage(const char* format, std::va_list arguments)
    __attribute__((format(printf, 1, 0)));

}  // namespace platform

#endif  // PLATFORM_LOGGING_MESSAGE_H
