#include "shell.h"

#include <glib.h>
#include <unistd.h>

#include <iostream>
#include <optional>

#include "../host/main_loop.h"
#include "exit_codes.h"
#include "stream.h"

namespace cli {

namespace {

struct GStrvFree {
  void operator()(char** words) const { g_strfreev(words); }
};

// The words of a line, quoted as in a POSIX shell. Nothing for an empty line or a comment.
std::optional<std::vector<std::string>> split(std::string line) {
  if (line.ends_with('\r')) line.pop_back();
  const auto first = line.find_first_not_of(" \t");
  if (first == std::string::npos || line[first] == '#') return std::nullopt;
  GError* error = nullptr;
  char** parsed = nullptr;
  int count = 0;
  if (!g_shell_parse_argv(line.c_str(), &count, &parsed, &error)) {
    const bool empty = g_error_matches(error, G_SHELL_ERROR, G_SHELL_ERROR_EMPTY_STRING);
    const std::string message = error->message;
    g_error_free(error);
    if (empty) return std::nullopt;
    throw menu::UnknownError("cannot read the line: " + message);
  }
  const std::unique_ptr<char*, GStrvFree> words(parsed);
  return std::vector<std::string>(parsed, parsed + count);
}

// Nothing when the line ends the shell.
std::optional<int> runLine(Session& session, RunCommand runCommand, const std::string& line) {
  try {
    const auto words = split(line);
    if (!words) return kDone;
    if (words->front() == "exit" || words->front() == "quit") return std::nullopt;
    if (words->front() == "shell") throw menu::UnknownError("this is the shell already");
    return runCommand(session, *words);
  } catch (const menu::UnknownError& error) {
    complain(error.what());
    return kUnknown;
  }
}

}  // namespace

int shell(Session& session, RunCommand runCommand) {
  const menu::Interruption interruption;
  session.menu();
  session.serveNetwork();
  const bool person = isatty(STDIN_FILENO) != 0;
  int result = kDone;
  for (int number = 1; !interruption.isAsked(); ++number) {
    if (person) std::cerr << "ventaro> " << std::flush;
    const auto line = session.readLine(interruption);
    std::optional<InputLine> place;
    if (!person) place.emplace(number);
    const auto lineResult = line ? runLine(session, runCommand, *line) : std::nullopt;
    if (!lineResult) break;
    if (result == kDone) result = *lineResult;
  }
  session.stopNetwork();
  if (interruption.isAsked()) return kInterrupted;
  return person ? kDone : result;
}

}  // namespace cli
