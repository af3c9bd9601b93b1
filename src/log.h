// The provider's log calls. Every statement goes to two channels, one after the other: the platform
// log, with a prefix that says where the statement stands, and the structured logger, with the same
// place as a static record.
//
//   LOG_MAIN("key = %s", key);      the main log buffer
//   LOG_SYSTEM("status %d", status) the system log buffer, for the statements that have always used
//                                   there: some failures, some traces of data
//
// The format must be a string literal; the compiler checks it against the arguments. The arguments
// are evaluated once per channel, so they must have no side effects. Tools and tests compare the
// texts letter by letter, so blanks, misspellings and borrowed messages must stay.
#ifndef VENTARO_LOG_H
#define VENTARO_LOG_H

#include "platform/log.h"
#include "platform/structured_log.h"

namespace log_detail {

consteval const char* baseName(const char* path) {
  const char* name = path;
  for (const char* c = path; *c != '\0'; ++c) {
    if (*c == '/') name = c + 1;
  }
  return name;
}

}  // namespace log_detail

#define VENTARO_LOG_TO(buffer, format, ...)                                                      \
  do {                                                                                           \
    __dlog_print(buffer, PLATFORM_LOG_INFO, "VENTARO", "%s: %s(%d) > " format,                   \
                 log_detail::baseName(__FILE__), __func__, __LINE__ __VA_OPT__(, ) __VA_ARGS__); \
    static const ht::TSCodeLocation logLocation{__FILE__, __LINE__, __PRETTY_FUNCTION__};        \
    ht::TSLoggerHelper::Log(logLocation, format __VA_OPT__(, ) __VA_ARGS__);                     \
  } while (false)

#define LOG_MAIN(format, ...) VENTARO_LOG_TO(PLATFORM_LOG_MAIN, format __VA_OPT__(, ) __VA_ARGS__)
#define LOG_SYSTEM(format, ...) \
  VENTARO_LOG_TO(PLATFORM_LOG_SYSTEM, format __VA_OPT__(, ) __VA_ARGS__)

#endif  // VENTARO_LOG_H
