// What a command is. The table in commands.cpp has a row for each; the command line is parsed by
// it, and `--help`, README's table, the man page and the completion are made from it.
#ifndef MENU_CLI_COMMAND_H
#define MENU_CLI_COMMAND_H

#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace cli {

class Session;

enum class Takes { kText, kTexts, kOneOfItsOffers, kInt, kPositiveInt, kNothing };

// What an argument may be, as the TV is now, by the arguments before it.
using Values = std::vector<std::string>(Session&, const std::vector<std::string>& before);

struct Argument {
  // As a usage line has it: "KEY", "KEY...", "[PREFIX]", "[--json]", "[--count N]". Its name is the
  // word without brackets and dots. What is in brackets may be left out.
  const char* synopsis = nullptr;
  const char* help = nullptr;
  Takes takes = Takes::kText;
  // What completion offers, separated by blanks. @PRODUCTS@, @SCENARIOS@ and @MENU_KEYS@ stand for
  // the names that are shipped, FILES for any file.
  const char* offers = "";
  Values* values = nullptr;  // what the shell's completion offers instead

  std::string name() const;
};

// The arguments on a command line. Each is asked for by its name.
class Arguments {
 public:
  explicit Arguments(const CLI::App& parsed) : parsed_(parsed) {}

  // Whether a flag is set.
  bool has(const char* flag) const;

  // What was given; empty when nothing was.
  std::string text(const char* name) const;
  std::vector<std::string> texts(const char* name) const;
  std::optional<int> number(const char* name) const;

 private:
  const CLI::App& parsed_;
};

// The words of a table's text, which blanks separate.
std::vector<std::string> wordsOf(const char* text);

// Carries out a command and returns an ExitCode. An exception becomes a message and an exit code.
using Action = int(Session&, const Arguments&);

// A command, or a group of commands ("store"), which has no action and stands before its commands.
struct Command {
  const char* words;  // as typed: "store get"
  const char* help;   // one line, an imperative without a full stop
  Action* action = nullptr;
  Argument arguments[5] = {};  // unused ones at the end have no synopsis
  const char* more = "";       // further sentences for those who want to know all
};

}  // namespace cli

#endif  // MENU_CLI_COMMAND_H
