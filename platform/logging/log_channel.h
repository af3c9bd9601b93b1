// What both log channels have in common: where they write, and messages of any length.
#ifndef PLATFORM_LOGGING_LOG_CHANNEL_H
#define PLATFORM_LOGGING_LOG_CHANNEL_H

#include <glib.h>
#include <spdlog/logger.h>

#include <cstdarg>
#include <memory>
#include <string>

namespace platform {

// A logger over a rotating file in the state folder's "log" folder. With $VENTARO_LOG=stderr it
// writes there instead. A file that cannot be opened costs the log, never the program. To be called
// once per file; the logger is never destroyed.
spdlog::logger& makeLogger(const std::string& name, const std::string& file,
                           const std::string& pattern);

using Message = std::unique_ptr<char, decltype(&g_free)>;

// The printf-style format, filled in; null when there is no memory for it. `arguments` is used up.
Message formatMessage(const char* format, std::va_list arguments)
    __attribute__((format(printf, 1, 0)));

}  // namespace platform

#endif  // PLATFORM_LOGGING_LOG_CHANNEL_H
