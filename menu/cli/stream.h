// Where the program's words go: results to standard output, everything else to standard error.
#ifndef MENU_CLI_STREAM_H
#define MENU_CLI_STREAM_H

#include <string>
#include <vector>

namespace cli {

// Keeps standard output for what this program prints: what a provider prints goes to standard error
// from now on. To be called before anything is printed.
void claimStandardOutput();

// The file descriptor of standard output.
int standardOutputFile();

// Whether all that was printed has been written.
bool standardOutputIsWritten();

// On standard output, at once; a line with its line feed.
void print(const std::string& text);
void printLine(const std::string& line);

// On standard error, as "ventaro: message", or as said by another than the program as a whole:
// "ventaro get: message". The message is one line, whatever was typed or stored that it tells of,
// and what is very long loses its middle; each text of the list is an indented line below it.
void complain(const std::string& message, const std::string& who = "ventaro",
              const std::vector<std::string>& list = {});

// While it lives, complaints are about that line of the input: "ventaro: line 3: message".
class InputLine {
 public:
  explicit InputLine(int number);
  ~InputLine();
  InputLine(const InputLine&) = delete;
  InputLine& operator=(const InputLine&) = delete;
};

}  // namespace cli

#endif  // MENU_CLI_STREAM_H
