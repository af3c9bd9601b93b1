// What somebody may type next who has typed nothing but the program's name.
#ifndef MENU_CLI_NEXT_STEPS_H
#define MENU_CLI_NEXT_STEPS_H

#include <string>

#include "session.h"

namespace cli {

// On standard error, where results are shown on a terminal. `program` is the name as it was typed.
void suggestNextSteps(Session& session, const std::string& program);

}  // namespace cli

#endif  // MENU_CLI_NEXT_STEPS_H
