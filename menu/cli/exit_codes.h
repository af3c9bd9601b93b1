// How the program ends.
#ifndef MENU_CLI_EXIT_CODES_H
#define MENU_CLI_EXIT_CODES_H

namespace cli {

enum ExitCode : int {
  kDone = 0,
  kFailed = 1,         // it was understood and could not be done
  kUnknown = 2,        // a command, key or value that there is not
  kUnanswered = 3,     // a confirmation that nobody could be asked for
  kInterrupted = 130,  // by Ctrl-C or the system, while it waited
};

}  // namespace cli

#endif  // MENU_CLI_EXIT_CODES_H
