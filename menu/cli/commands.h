// The table of commands.
#ifndef MENU_CLI_COMMANDS_H
#define MENU_CLI_COMMANDS_H

#include <span>
#include <string>
#include <vector>

#include "command.h"

namespace cli {

// All commands, in the order in which help lists them.
std::span<const Command> commands();

// Carries out one command line, without the program's name and options. Writes its result to
// standard output, and what went wrong to standard error. Returns an ExitCode.
int runCommand(Session& session, const std::vector<std::string>& words);

}  // namespace cli

#endif  // MENU_CLI_COMMANDS_H
