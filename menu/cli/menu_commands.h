// The commands about the menu's items.
#ifndef MENU_CLI_MENU_COMMANDS_H
#define MENU_CLI_MENU_COMMANDS_H

#include "command.h"

namespace cli {

Action show, get, list, box, choose, set, connect, name;

}  // namespace cli

#endif  // MENU_CLI_MENU_COMMANDS_H
