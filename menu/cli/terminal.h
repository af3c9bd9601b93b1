// The terminal that standard output is.
#ifndef MENU_CLI_TERMINAL_H
#define MENU_CLI_TERMINAL_H

#include <cstddef>
#include <string>
#include <vector>

namespace cli {

enum class Style { kPlain, kBold, kDim };

struct Terminal {
  bool isThere = false;  // whether results are shown as on a terminal
  bool hasColor = false;
  bool canRedraw = false;   // whether the cursor can be moved back
  std::size_t width = 80;   // in columns
  std::size_t height = 24;  // in lines

  // The text in that style, where the terminal is one for it.
  std::string styled(Style style, const std::string& text) const;
};

// As standard output, $VENTARO_COLOR, $NO_COLOR and $COLUMNS say. Raises menu::UnknownError.
Terminal outputTerminal();

// The text in lines of at most `width` columns, broken at blanks and between ideographs. What has
// no such place and is wider is broken anywhere. Its own line feeds stay.
std::vector<std::string> wrapped(const std::string& text, std::size_t width);

// The text, cut to `width` columns with an ellipsis where it is wider.
std::string cutTo(const std::string& text, std::size_t width);

}  // namespace cli

#endif  // MENU_CLI_TERMINAL_H
