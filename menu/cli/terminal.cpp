#include "terminal.h"

#include <glib.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>
#include <utility>

#include "../host/display_text.h"
#include "../host/menu_model.h"
#include "environment.h"
#include "stream.h"

namespace cli {

namespace {

constexpr std::string_view kWhens[] = {"auto", "never", "always"};

std::string colorWhen() {
  const std::string when = variable("VENTARO_COLOR");
  if (when.empty()) return "auto";
  for (const std::string_view known : kWhens) {
    if (when == known) return when;
  }
  throw menu::UnknownError("--color or VENTARO_COLOR is \"" + when +
                           "\"; there are: auto, never, always");
}

void measure(Terminal& terminal) {
  winsize size{};
  if (ioctl(standardOutputFile(), TIOCGWINSZ, &size) == 0) {
    if (size.ws_col > 0) terminal.width = size.ws_col;
    if (size.ws_row > 0) terminal.height = size.ws_row;
  }
  const int columns = std::atoi(variable("COLUMNS").c_str());
  if (columns > 0) terminal.width = static_cast<std::size_t>(columns);
}

bool isIdeograph(gunichar character) {
  return g_unichar_break_type(character) == G_UNICODE_BREAK_IDEOGRAPHIC;
}

std::vector<std::string> charactersOf(const std::string& text) {
  std::vector<std::string> all;
  for (const char* at = text.c_str(); *at != '\0';) {
    const char* next = g_utf8_next_char(at);
    all.emplace_back(at, next);
    at = next;
  }
  return all;
}

// The pieces between which a line may be broken, blanks at their ends.
std::vector<std::string> pieces(const std::string& line) {
  std::vector<std::string> all;
  std::string last = " ";
  for (const std::string& character : charactersOf(line)) {
    const bool begins = (last == " " && character != " ") || all.empty() ||
                        isIdeograph(g_utf8_get_char(character.c_str()));
    if (begins) all.emplace_back();
    all.back() += character;
    last = character;
  }
  return all;
}

std::string withoutLastBlanks(std::string text) {
  text.erase(text.find_last_not_of(' ') + 1);
  return text;
}

// As much of the text's beginning as fits, at least one character.
std::string beginning(const std::string& text, std::size_t width) {
  std::string fitting;
  for (const std::string& character : charactersOf(text)) {
    if (!fitting.empty() && menu::columns(fitting + character) > width) break;
    fitting += character;
  }
  return fitting;
}

void wrapLine(const std::string& line, std::size_t width, std::vector<std::string>& lines) {
  std::string current;
  for (std::string piece : pieces(line)) {
    if (menu::columns(current + withoutLastBlanks(piece)) > width && !current.empty()) {
      lines.push_back(withoutLastBlanks(std::exchange(current, "")));
    }
    while (menu::columns(withoutLastBlanks(piece)) > width) {
      lines.push_back(beginning(piece, width));
      piece.erase(0, lines.back().size());
    }
    current += piece;
  }
  lines.push_back(withoutLastBlanks(current));
}

}  // namespace

std::string Terminal::styled(Style style, const std::string& text) const {
  if (!hasColor || style == Style::kPlain || text.empty()) return text;
  return (style == Style::kBold ? "\033[1m" : "\033[2m") + text + "\033[0m";
}

Terminal outputTerminal() {
  const std::string when = colorWhen();
  Terminal terminal;
  const bool isTerminal = isatty(standardOutputFile()) != 0;
  terminal.isThere = isTerminal || when == "always";
  terminal.canRedraw = isTerminal && variable("TERM") != "dumb";
  const bool wantsNone = !variable("NO_COLOR").empty() || variable("TERM") == "dumb";
  terminal.hasColor = when == "always" || (when == "auto" && isTerminal && !wantsNone);
  measure(terminal);
  return terminal;
}

std::vector<std::string> wrapped(const std::string& text, std::size_t width) {
  std::vector<std::string> lines;
  std::size_t begin = 0;
  for (std::size_t end = 0; end != std::string::npos; begin = end + 1) {
    end = text.find('\n', begin);
    wrapLine(text.substr(begin, end - begin), width, lines);
  }
  return lines;
}

std::string cutTo(const std::string& text, std::size_t width) {
  if (menu::columns(text) <= width) return text;
  return beginning(text, width - 1) + "…";
}

}  // namespace cli
