// Standard input, line by line or byte by byte.
#ifndef MENU_CLI_LINE_READER_H
#define MENU_CLI_LINE_READER_H

#include <functional>
#include <optional>
#include <string>

#include "../host/main_loop.h"

namespace cli {

// How many bytes a line may have.
inline constexpr std::size_t kLongestLine = std::size_t{64} << 10;

// Reads in the main loop, so that timers and notifications run while it waits.
class LineReader {
 public:
  // The next line without its line feed, of a longer one the first kLongestLine + 1 bytes; nothing
  // at the end, or when the program is asked to end.
  std::optional<std::string> next(const menu::Interruption& interruption);

  // The next byte; nothing as above.
  std::optional<char> nextByte(const menu::Interruption& interruption);

 private:
  // Reads until `isComplete` or the end of the input. Returns false when the program is asked to
  // end.
  bool readUntil(const menu::Interruption& interruption, const std::function<bool()>& isComplete);

  // Reads the bytes that are there. Returns false at the end of the input.
  bool read();

  // The first bytes, which are no longer to be read.
  std::string take(std::size_t size);

  std::string text_;
  bool ended_ = false;
};

}  // namespace cli

#endif  // MENU_CLI_LINE_READER_H
