// The subcommand that reads further commands, line by line.
#ifndef MENU_CLI_SHELL_H
#define MENU_CLI_SHELL_H

#include <CLI/CLI.hpp>

#include "session.h"

namespace cli {

// Adds shell. A parsed command leaves its exit code in `result`: that of the first command that
// failed.
void addShellCommand(CLI::App& app, Session& session, int& result);

}  // namespace cli

#endif  // MENU_CLI_SHELL_H
