#include "line_reader.h"

#include <glib-unix.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace cli {

std::optional<std::string> LineReader::next(const menu::Interruption& interruption) {
  const auto isComplete = [this] { return ended_ || text_.find('\n') != std::string::npos; };
  if (!isComplete()) {
    const unsigned source = g_unix_fd_add(
        STDIN_FILENO, static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR),
        [](int, GIOCondition, void* self) {
          return gboolean{static_cast<LineReader*>(self)->read()};
        },
        this);
    interruption.runUntil(isComplete);
    if (!ended_) g_source_remove(source);
    if (interruption.isAsked()) return std::nullopt;
  }
  if (text_.empty()) return std::nullopt;
  const auto end = text_.find('\n');
  std::string line = text_.substr(0, end);
  text_.erase(0, end == std::string::npos ? end : end + 1);
  return line;
}

bool LineReader::read() {
  std::array<char, 4096> bytes{};
  const ssize_t size = ::read(STDIN_FILENO, bytes.data(), bytes.size());
  if (size > 0) text_.append(bytes.data(), static_cast<std::size_t>(size));
  ended_ = size == 0 || (size < 0 && errno != EINTR && errno != EAGAIN);
  return !ended_;
}

}  // namespace cli
