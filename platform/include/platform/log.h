/* The platform log. */
#ifndef PLATFORM_LOG_H
#define PLATFORM_LOG_H

#include "platform/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* log_id: the buffer that a line is written to. */
enum { PLATFORM_LOG_MAIN = 0, PLATFORM_LOG_SYSTEM = 2 };

/* priority */
enum { PLATFORM_LOG_INFO = 4 };

/* Logs one line. Returns a negative number when it could not be logged. Any thread. */
/* NOLINTNEXTLINE(bugprone-reserved-identifier): the platform defines the name. */
PLATFORM_API int __dlog_print(int log_id, int priority, const char* tag, const char* format, ...)
    __attribute__((format(printf, 4, 5)));

#ifdef __cplusplus
}
#endif

#endif /* PLATFORM_LOG_H */
