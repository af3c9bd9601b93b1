// What both log channels have in common: where they write, and formatting of any length.
#ifndef PLATFORM_LOGGING_LOG_CHANNEL_H
#define PLATFORM_LOGGING_LOG_CHANNEL_H

#include <glib.h>
#include <spdlog/logger.h>

#include <cstdarg>
#include <memory>
#include <string>

namespace platform {

// A logger to a rotating file in the state folder's "log" folder, or to standard error with
// $VENTARO_LOG=stderr. If the file cannot be opened, the log is lost, but the program runs;
// standard error says so when what is in the log's place is no file of this user's. Call it once
// per file; the logger is never destroyed.
spdlog::logger& makeLogger(const std::string& name, const std::string& file,
                           const std::string& pattern);

using Message = std::unique_ptr<char, decltype(&g_free)>;

// The formatted text, as by printf; null when memory runs out. `arguments` is consumed.
Message formatMessage(const char* format, std::va_list arguments)
    __attribute__((format(printf, 1, 0)));

}  // namespace platform

#endif  // PLATFORM_LOGGING_LOG_CHANNEL_H
