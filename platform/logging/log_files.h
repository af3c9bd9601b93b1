// Where the log channels write.
#ifndef PLATFORM_LOGGING_LOG_FILES_H
#define PLATFORM_LOGGING_LOG_FILES_H

#include <spdlog/logger.h>

#include <memory>
#include <string>

namespace platform {

// A logger over a rotating file in the state folder's "log" folder. With $VENTARO_LOG=stderr it
// writes there instead. A file that cannot be opened costs the log, never the program.
std::shared_ptr<spdlog::logger> makeLogger(const std::string& name, const std::string& file,
                                           const std::string& pattern);

}  // namespace platform

#endif  // PLATFORM_LOGGING_LOG_FILES_H
