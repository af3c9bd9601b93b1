// The structured logger: records as JSON lines, kept only while storage is enabled.
#include "platform/structured_log.h"

#include <json/value.h>
#include <spdlog/fmt/chrono.h>
#include <spdlog/spdlog.h>

#include <chrono>
#include <cstdarg>
#include <string>

#include "../host/json_text.h"
#include "../host/switches.h"
#include "log_channel.h"
#include "platform/host/visible_text.h"

namespace {

spdlog::logger& logger() {
  static auto& made = platform::makeLogger("structured", "structured.jsonl", "%v");
  return made;
}

std::string timeNow() {
  const auto now = std::chrono::system_clock::now();
  const auto milliseconds =
      std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()).count() % 1000;
  return fmt::format("{:%Y-%m-%dT%H:%M:%S}.{:03}Z",
                     fmt::gmtime(std::chrono::system_clock::to_time_t(now)), milliseconds);
}

std::string textOf(const char* text) {
  return text != nullptr ? text : "";
}

}  // namespace

namespace ht {

TCLogger& TCLogger::Instance() {
  static TCLogger instance;
  return instance;
}

bool TCLogger::IsStorageEnabled() const {
  return platform::keepsStructuredLog();
}

void TSLoggerHelper::Log(const TSCodeLocation& location, const char* format, ...) {
  if (format == nullptr || !TCLogger::Instance().IsStorageEnabled()) return;
  std::va_list arguments;
  va_start(arguments, format);
  Json::Value record;
  record["message"] = textOf(platform::formatMessage(format, arguments).get());
  va_end(arguments);
  record["time"] = timeNow();
  record["path"] = textOf(location.path);
  record["line"] = location.line;
  record["function"] = textOf(location.signature);
  logger().info("{}", platform::host::visibleLine(platform::jsonLine(record)));
}

}  // namespace ht
