#include "line_reader.h"

#include <glib-unix.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace cli {

std::optional<std::string> LineReader::next(const menu::Interruption& interruption) {
  const auto hasPart = [this] {
    return text_.find('\n') != std::string::npos || text_.size() > kLongestLine;
  };
  std::string line;
  for (bool isWhole = false; !isWhole;) {
    if (!readUntil(interruption, hasPart)) return std::nullopt;
    if (text_.empty() && line.empty()) return std::nullopt;
    const auto end = text_.find('\n');
    isWhole = ended_ || end != std::string::npos;
    line += take(end);
    if (end != std::string::npos) take(1);
    line.resize(std::min(line.size(), kLongestLine + 1));
  }
  return line;
}

std::optional<char> LineReader::nextByte(const menu::Interruption& interruption) {
  const auto hasByte = [this] { return !text_.empty(); };
  if (!readUntil(interruption, hasByte) || text_.empty()) return std::nullopt;
  return take(1).front();
}

bool LineReader::readUntil(const menu::Interruption& interruption,
                           const std::function<bool()>& isComplete) {
  if (isComplete()) return true;
  ended_ = false;  // a terminal goes on after Ctrl-D
  const unsigned source = g_unix_fd_add(
      STDIN_FILENO, static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR),
      [](int, GIOCondition, void* self) {
        return gboolean{static_cast<LineReader*>(self)->read()};
      },
      this);
  interruption.runUntil([&] { return ended_ || isComplete(); });
  if (!ended_) g_source_remove(source);
  return !interruption.isAsked();
}

bool LineReader::read() {
  std::array<char, 4096> bytes{};
  const ssize_t size = ::read(STDIN_FILENO, bytes.data(), bytes.size());
  if (size > 0) text_.append(bytes.data(), static_cast<std::size_t>(size));
  ended_ = size == 0 || (size < 0 && errno != EINTR && errno != EAGAIN);
  return !ended_;
}

std::string LineReader::take(std::size_t size) {
  std::string taken = text_.substr(0, size);
  text_.erase(0, size);
  return taken;
}

}  // namespace cli
