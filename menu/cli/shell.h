// The command that reads further commands, line by line.
#ifndef MENU_CLI_SHELL_H
#define MENU_CLI_SHELL_H

#include <string>
#include <vector>

#include "session.h"

namespace cli {

// Carries out the words of one command and returns its ExitCode.
using RunCommand = int (*)(Session& session, const std::vector<std::string>& words);

// Reads lines until "exit", "quit" or the end. Returns the ExitCode of the first command that
// failed; with a person at the terminal, who has seen the message, kDone.
int shell(Session& session, RunCommand runCommand);

}  // namespace cli

#endif  // MENU_CLI_SHELL_H
