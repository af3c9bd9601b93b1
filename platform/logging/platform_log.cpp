// The platform log: lines of text in a rotating file, or on standard error.
#include <spdlog/spdlog.h>
#include <unistd.h>

#include <cstdarg>
#include <memory>
#include <string>

#include "../config_store/host_switches.h"
#include "log_files.h"
#include "message.h"
#include "platform/log.h"

namespace {

// The code names of the buffers, as log readers know them.
const char* bufferName(int logId) {
  switch (logId) {
    case PLATFORM_LOG_MAIN:
      return "main";
    case PLATFORM_LOG_SYSTEM:
      return "system";
    default:
      return "other";
  }
}

// With the process's number in it: to ask for that with each line would be a system call.
std::string pattern() {
  return "%Y-%m-%dT%H:%M:%S.%e " + std::to_string(getpid()) + " %v";
}

spdlog::logger& logger() {
  static auto* const shared = new std::shared_ptr<spdlog::logger>(  // never destroyed
      platform::makeLogger("platform", "platform.log", pattern()));
  return **shared;
}

// One line of the file per call, whatever the text holds.
std::string onOneLine(std::string text) {
  while (text.ends_with('\n')) text.pop_back();
  for (char& c : text) {
    if (c == '\n') c = ' ';
  }
  return text;
}

}  // namespace

int __dlog_print(int log_id, int /*priority*/, const char* tag, const char* format, ...) {
  if (const int fault = platform::injectedFault("__dlog_print")) return fault;
  if (format == nullptr) return -1;
  std::va_list arguments;
  va_start(arguments, format);
  const std::string message = onOneLine(platform::formatMessage(format, arguments));
  va_end(arguments);
  logger().info("{} {}: {}", bufferName(log_id), onOneLine(tag != nullptr ? tag : "-"), message);
  return static_cast<int>(message.size());
}
