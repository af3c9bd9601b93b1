// How the program ends.
#ifndef MENU_CLI_EXIT_CODES_H
#define MENU_CLI_EXIT_CODES_H

namespace cli {

enum ExitCode : int {
  kDone = 0,
  kFailed = 1,
  kUnknown = 2,
  kUnanswered = 3,
  kOtherwise = 4,
  kHungUp = 129,
  kInterrupted = 130,
  kTerminated = 143,
};

// What the documents say of them.
struct ExitMeaning {
  ExitCode code;
  const char* meaning;
};
inline constexpr ExitMeaning kExitMeanings[] = {
    {kDone,
     "done and all of it printed, "
     "also where watch, store watch without --count or network serve was ended"},
    {kFailed, "could not be done"},
    {kUnknown, "there is no such command, key, value, product or scenario, or a variable is wrong"},
    {kUnanswered, "nobody was there to answer a confirmation"},
    {kOtherwise, "an item does not show what expect or wait expected"},
    {kHungUp, "ended because its terminal was closed"},
    {kInterrupted, "ended by Ctrl-C"},
    {kTerminated, "ended by the system"},
};

}  // namespace cli

#endif  // MENU_CLI_EXIT_CODES_H
