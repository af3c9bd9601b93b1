// What a person who has typed the beginning of a command may mean.
#ifndef MENU_CLI_COMPLETION_H
#define MENU_CLI_COMPLETION_H

#include <span>
#include <string>
#include <vector>

#include "command.h"

namespace cli {

// What may follow these words of a command line: commands, options, and values of arguments.
std::vector<std::string> whatMayFollow(std::span<const Command> table, Session& session,
                                       const std::vector<std::string>& words);

// Values for the table, of the TV as it is now.
Values menuKeys, choices, storeKeys, scenarios, faultyFunctions, featureFlags, callbacks;

}  // namespace cli

#endif  // MENU_CLI_COMPLETION_H
