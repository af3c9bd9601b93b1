// The words of a shell's line, quoted as in a POSIX shell.
#ifndef MENU_CLI_SHELL_WORDS_H
#define MENU_CLI_SHELL_WORDS_H

#include <string>
#include <vector>

namespace cli {

using Words = std::vector<std::string>;

// None for an empty line or a comment. Raises menu::UnknownError for a quote that has no end, a
// NUL, and a line of more than kLongestLine bytes.
Words splitLine(std::string line);

// A line of which the last word is still being typed.
struct UnfinishedLine {
  Words words;        // those before the last
  std::string begin;  // the line up to the last word
  std::string typed;  // what the last word has so far, without quotes
};
UnfinishedLine splitUnfinished(const std::string& line);

// The word as it is typed; unfinished, its quote is left open.
std::string quoted(const std::string& word, bool isFinished);

}  // namespace cli

#endif  // MENU_CLI_SHELL_WORDS_H
