// A command line, parsed as a table of commands says.
#ifndef MENU_CLI_COMMAND_LINE_H
#define MENU_CLI_COMMAND_LINE_H

#include <span>
#include <string>
#include <vector>

#include "command.h"

namespace cli {

// Finds the command that the words name, and carries it out. Help, and what is wrong with the words
// or went wrong in the command, is told here. Returns an ExitCode.
int runCommandLine(std::span<const Command> table, Session& session,
                   const std::vector<std::string>& words);

}  // namespace cli

#endif  // MENU_CLI_COMMAND_LINE_H
