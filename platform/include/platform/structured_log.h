/* The structured logger: records with their place in the code. C++ only. */
#ifndef PLATFORM_STRUCTURED_LOG_H
#define PLATFORM_STRUCTURED_LOG_H

#include "platform/export.h"

namespace ht {

/* Where a log statement stands. The strings live as long as that code is loaded. */
struct TSCodeLocation {
  const char* path;
  int line;
  const char* signature;
};

/* Whether and where records are kept. */
class PLATFORM_API TCLogger {
 public:
  static TCLogger& Instance();
  bool IsStorageEnabled() const;

 private:
  TCLogger() = default;
};

class PLATFORM_API TSLoggerHelper {
 public:
  /* Records the message while TCLogger's storage is enabled; keeps copies only. Any thread. */
  static void Log(const TSCodeLocation& location, const char* format, ...)
      __attribute__((format(printf, 2, 3)));
};

}  // namespace ht

#endif  // PLATFORM_STRUCTURED_LOG_H
