// The command that shows the menu as it changes.
#ifndef MENU_CLI_WATCH_H
#define MENU_CLI_WATCH_H

#include "command.h"

namespace cli {

Action watch;

}  // namespace cli

#endif  // MENU_CLI_WATCH_H
