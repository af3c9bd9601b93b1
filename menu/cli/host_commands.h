// The commands about the simulated TV: its store, its network, its products.
#ifndef MENU_CLI_HOST_COMMANDS_H
#define MENU_CLI_HOST_COMMANDS_H

#include "command.h"

namespace cli {

Action storeGet, storeList, storeSet, storeWatch;
Action networkServe, networkLoad;
Action productList;

}  // namespace cli

#endif  // MENU_CLI_HOST_COMMANDS_H
