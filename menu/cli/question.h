// The question that a command asks before it changes something.
#ifndef MENU_CLI_QUESTION_H
#define MENU_CLI_QUESTION_H

#include <optional>

#include "../host/provider.h"

namespace cli {

class Session;

// Asks on the terminal, again until the answer is one of the two. Nothing when it is yes; else, and
// when nobody is there to answer, the ExitCode with which the command is to end. The person is
// told.
std::optional<int> endUnlessYes(Session& session, const menu::Provider::MessageBox& box);

}  // namespace cli

#endif  // MENU_CLI_QUESTION_H
