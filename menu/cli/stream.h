// Where the program's words go: results to standard output, everything else to standard error.
#ifndef MENU_CLI_STREAM_H
#define MENU_CLI_STREAM_H

#include <string>

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

// On standard error, as "ventaro: message". Control characters, which may come from what was typed,
// are replaced.
void complain(const std::string& message);

}  // namespace cli

#endif  // MENU_CLI_STREAM_H
