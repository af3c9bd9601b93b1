// The command that reads further commands, line by line.
#ifndef MENU_CLI_SHELL_H
#define MENU_CLI_SHELL_H

#include <span>

#include "command.h"

namespace cli {

// Reads lines until "exit", "quit" or the end, and carries out the commands of the table. Returns
// the ExitCode of the first command that failed; with a person at the terminal, who has seen the
// message, kDone.
int shell(Session& session, std::span<const Command> table);

}  // namespace cli

#endif  // MENU_CLI_SHELL_H
