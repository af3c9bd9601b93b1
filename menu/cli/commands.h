// The subcommands.
#ifndef MENU_CLI_COMMANDS_H
#define MENU_CLI_COMMANDS_H

#include <string>
#include <vector>

#include "session.h"

namespace cli {

// Carries out one command line, without the program's name and options. Writes its result to
// standard output, and what went wrong to standard error. Returns an ExitCode.
int runCommand(Session& session, const std::vector<std::string>& words);

}  // namespace cli

#endif  // MENU_CLI_COMMANDS_H
