// How the program ends.
#ifndef MENU_CLI_EXIT_CODES_H
#define MENU_CLI_EXIT_CODES_H

namespace cli {

enum ExitCode : int {
  kDone = 0,
  kFailed = 1,         // what was asked for could not be done
  kUnknown = 2,        // there is no such command, key or value
  kUnanswered = 3,     // nobody was there to answer a confirmation
  kOtherwise = 4,      // an item does not show the value that was expected
  kInterrupted = 130,  // a wait was ended by Ctrl-C or the system
};

}  // namespace cli

#endif  // MENU_CLI_EXIT_CODES_H
