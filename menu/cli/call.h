// The command that calls one function of the provider.
#ifndef MENU_CLI_CALL_H
#define MENU_CLI_CALL_H

#include "command.h"

namespace cli {

Action call;

}  // namespace cli

#endif  // MENU_CLI_CALL_H
