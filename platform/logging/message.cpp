#include "message.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace platform {

std::string formatMessage(const char* format, std::va_list arguments) {
  std::va_list again;
  va_copy(again, arguments);
  std::array<char, 512> line;  // enough for nearly all
  const int length = std::vsnprintf(line.data(), line.size(), format, arguments);
  const std::size_t size = length > 0 ? static_cast<std::size_t>(length) : 0;
  std::string text(line.data(), std::min(size, line.size() - 1));
  if (size >= line.size()) {
    text.resize(size);
    std::vsnprintf(text.data(), size + 1, format, again);
  }
  va_end(again);
  return text;
}

}  // namespace platform
