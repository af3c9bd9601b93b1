// Standard input, line by line.
#ifndef MENU_CLI_LINE_READER_H
#define MENU_CLI_LINE_READER_H

#include <optional>
#include <string>

#include "../host/main_loop.h"

namespace cli {

// Reads in the main loop, so that timers and notifications run while it waits for a line.
class LineReader {
 public:
  // The next line without its line feed; nothing at the end, or when the program is asked to end.
  std::optional<std::string> next(const menu::Interruption& interruption);

 private:
  // Reads the bytes that are there. Returns false at the end of the input.
  bool read();

  std::string text_;
  bool ended_ = false;
};

}  // namespace cli

#endif  // MENU_CLI_LINE_READER_H
