// The lines of a shell, from a script or from a person.
#ifndef MENU_CLI_SHELL_INPUT_H
#define MENU_CLI_SHELL_INPUT_H

#include <memory>
#include <optional>
#include <span>
#include <string>

#include "../host/main_loop.h"
#include "command.h"

namespace cli {

class ShellInput {
 public:
  virtual ~ShellInput() = default;

  // The next line; nothing at the end, or when the program is asked to end.
  virtual std::optional<std::string> next(const menu::Interruption& interruption) = 0;
};

// At a terminal, a line can be edited and is kept in the history, its words are completed as the
// table of commands says, and what changes in the menu meanwhile is shown above it.
std::unique_ptr<ShellInput> shellInput(Session& session, std::span<const Command> table);

}  // namespace cli

#endif  // MENU_CLI_SHELL_INPUT_H
