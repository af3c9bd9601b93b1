// The commands with which a script makes sure of what the menu shows.
#ifndef MENU_CLI_EXPECTATIONS_H
#define MENU_CLI_EXPECTATIONS_H

#include "command.h"

namespace cli {

Action wait, expect;

}  // namespace cli

#endif  // MENU_CLI_EXPECTATIONS_H
