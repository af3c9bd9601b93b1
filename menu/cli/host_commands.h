// The subcommands about the TV behind the menu: its store and its network.
#ifndef MENU_CLI_HOST_COMMANDS_H
#define MENU_CLI_HOST_COMMANDS_H

#include <CLI/CLI.hpp>

#include "session.h"

namespace cli {

// Adds store, network and product. A parsed command leaves its exit code in `result`.
void addHostCommands(CLI::App& app, Session& session, int& result);

}  // namespace cli

#endif  // MENU_CLI_HOST_COMMANDS_H
