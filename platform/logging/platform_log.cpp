// The platform log: lines of text in a rotating file, or on standard error.
#include <spdlog/spdlog.h>
#include <unistd.h>

#include <cstdarg>
#include <string>
#include <string_view>

#include "../host/switches.h"
#include "log_channel.h"
#include "platform/host/visible_text.h"
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

// Contains the process ID as text, because asking for it at each line would be a system call.
std::string pattern() {
  return "%Y-%m-%dT%T.%e " + std::to_string(getpid()) + " %v";
}

spdlog::logger& logger() {
  static auto& made = platform::makeLogger("platform", "platform.log", pattern());
  return made;
}

std::string_view withoutLastNewlines(std::string_view text) {
  return text.substr(0, text.find_last_not_of('\n') + 1);
}

// One line in the file per call, even if the texts contain line feeds, and nothing that commands
// the terminal of who reads it.
std::string lineOf(const char* buffer, std::string_view tag, std::string_view message) {
  std::string line;
  line.reserve(16 + tag.size() + message.size());
  line.append(buffer).append(" ").append(tag).append(": ").append(message);
  for (auto at = line.find('\n'); at != std::string::npos; at = line.find('\n', at)) line[at] = ' ';
  return platform::host::visibleLine(line);
}

}  // namespace

int __dlog_print(int log_id, int /*priority*/, const char* tag, const char* format, ...) {
  if (const int fault = platform::injectedFault(__func__)) return fault;
  if (format == nullptr) return -1;
  std::va_list arguments;
  va_start(arguments, format);
  const platform::Message text = platform::formatMessage(format, arguments);
  va_end(arguments);
  if (text == nullptr) return -1;
  const std::string_view message = withoutLastNewlines(text.get());
  logger().log(
      spdlog::level::info,
      lineOf(bufferName(log_id), withoutLastNewlines(tag != nullptr ? tag : "-"), message));
  return static_cast<int>(message.size());
}
