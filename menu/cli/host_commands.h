// The commands about the simulated TV: its store, its network, its products.
#ifndef MENU_CLI_HOST_COMMANDS_H
#define MENU_CLI_HOST_COMMANDS_H

#include "command.h"

namespace cli {

Action storeGet, storeList, storeSet, storeUnset, storeWatch;
Action networkServe, networkLoad;
Action productList;
Action faultList, faultSet, faultClear;
Action featureList, featureSet, featureClear;
Action reset;

}  // namespace cli

#endif  // MENU_CLI_HOST_COMMANDS_H
