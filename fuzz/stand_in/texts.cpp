// Logs, paths and texts.
#include <array>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "../require.h"
#include "platform/app_util.h"
#include "platform/log.h"
#include "platform/markup.h"
#include "platform/path.h"
#include "platform/structured_log.h"
#include "tv.h"

namespace {

// Reads all that the arguments point to, so that a text without an end is found.
__attribute__((format(printf, 1, 0))) void format(const char* pattern, std::va_list arguments) {
  std::array<char, 256> line{};
  std::vsnprintf(line.data(), line.size(), pattern, arguments);
}

}  // namespace

using namespace fuzz;

int __dlog_print(int log_id, int priority, const char* tag, const char* pattern, ...) {
  require(log_id == PLATFORM_LOG_MAIN || log_id == PLATFORM_LOG_SYSTEM, "a line has a buffer");
  require(priority == PLATFORM_LOG_INFO && std::strcmp(tag, "VENTARO") == 0, "a line has its tag");
  std::va_list arguments;
  va_start(arguments, pattern);
  format(pattern, arguments);
  va_end(arguments);
  return 0;
}

void ht::TSLoggerHelper::Log(const TSCodeLocation& /*location*/, const char* pattern, ...) {
  std::va_list arguments;
  va_start(arguments, pattern);
  format(pattern, arguments);
  va_end(arguments);
}

const char* platform_mkpath(int root, const char* /*relative*/) {
  require(root == PLATFORM_ROOT_RESOURCES, "the resources' root is asked for");
  return enter(Function::kMkpath) == 0 ? "/nowhere/res/locale" : nullptr;
}

char* evas_textblock_text_utf8_to_markup(const void* /*object*/, const char* utf8) {
  if (enter(Function::kTextToMarkup) != 0) return nullptr;
  std::string markup;
  for (const char c : std::string_view(utf8)) markup += c == '&' ? "&amp;" : std::string(1, c);
  return strdup(markup.c_str());
}

void CStringUtil::CombinateStrings(char* buffer, std::size_t capacity, const char* text,
                                   const char* first, const char* second, const char* third,
                                   const char* fourth) {
  enter();
  require(buffer != nullptr && capacity > 0 && text != nullptr, "there is a buffer and a text");
  constexpr std::string_view kLetters = "ABCD";
  const std::array arguments = {first, second, third, fourth};
  std::string filled;
  for (std::string_view rest = text; !rest.empty();) {
    const bool open = rest.size() >= 5 && rest.starts_with("<<") && rest.substr(3, 2) == ">>";
    const auto index = open ? kLetters.find(rest[2]) : std::string_view::npos;
    const bool isToken = index != std::string_view::npos;
    if (isToken && arguments.at(index) != nullptr) filled += arguments.at(index);
    if (!isToken) filled += rest.front();
    rest.remove_prefix(isToken ? 5 : 1);
  }
  buffer[filled.copy(buffer, capacity - 1)] = '\0';
}
