#include "shell.h"

#include <unistd.h>

#include <iostream>
#include <optional>

#include "../host/main_loop.h"
#include "command_line.h"
#include "exit_codes.h"
#include "session.h"
#include "shell_input.h"
#include "shell_words.h"
#include "stream.h"

namespace cli {

namespace {

// Nothing when the line ends the shell.
std::optional<int> runLine(Session& session, std::span<const Command> table,
                           const std::string& line) {
  try {
    Words words = splitLine(line);
    if (words.empty()) return kDone;
    if (words.front() == "exit" || words.front() == "quit") return std::nullopt;
    if (words.front() == "shell") throw menu::UnknownError("this is the shell already");
    if (words.front() == "help" || words.front() == "?") {
      words.erase(words.begin());
      words.emplace_back("--help");
    }
    return runCommandLine(table, session, words);
  } catch (const menu::UnknownError& error) {
    complain(error.what());
    return kUnknown;
  }
}

int runScript(Session& session, std::span<const Command> table, ShellInput& input) {
  const menu::Interruption interruption;
  int result = kDone;
  for (int number = 1; !interruption.isAsked(); ++number) {
    const auto line = input.next(interruption);
    const InputLine place(number);
    const auto lineResult = line ? runLine(session, table, *line) : std::nullopt;
    if (!lineResult) break;
    if (result == kDone) result = *lineResult;
  }
  return interruption.isAsked() ? interruption.exitCode() : result;
}

// Ctrl-C ends a command or a line, not the shell.
int serve(Session& session, std::span<const Command> table, ShellInput& person) {
  menu::Interruption interruption;
  while (!interruption.isAsked()) {
    const auto line = person.next(interruption);
    const bool isEnd = !line && !interruption.isAsked();
    if (isEnd || (line && !runLine(session, table, *line))) return kDone;
    if (line && interruption.isAsked()) std::cerr << '\n';  // behind the terminal's "^C"
    interruption.forgetCtrlC();
  }
  return interruption.exitCode();
}

}  // namespace

int shell(Session& session, std::span<const Command> table) {
  session.menu();
  session.serveNetwork();
  const auto input = shellInput(session, table);
  const int result =
      isatty(STDIN_FILENO) != 0 ? serve(session, table, *input) : runScript(session, table, *input);
  session.stopNetwork();
  return result;
}

}  // namespace cli
