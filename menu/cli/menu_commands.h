// The subcommands about the menu's items.
#ifndef MENU_CLI_MENU_COMMANDS_H
#define MENU_CLI_MENU_COMMANDS_H

#include <CLI/CLI.hpp>

#include "session.h"

namespace cli {

// Adds show, get, watch, list, box, choose, set, connect and name. A parsed command leaves its exit
// code in `result`.
void addMenuCommands(CLI::App& app, Session& session, int& result);

}  // namespace cli

#endif  // MENU_CLI_MENU_COMMANDS_H
