// The variables of the environment, and the program's options that have the same meaning.
#ifndef MENU_CLI_ENVIRONMENT_H
#define MENU_CLI_ENVIRONMENT_H

#include <span>
#include <string>
#include <vector>

namespace cli {

struct Variable {
  const char* name;
  const char* help;         // has a line feed where the line may be broken
  const char* option = "";  // "--product NAME"; empty where there is only the variable
  const char* wants = "";   // told when the option lacks its value: "--product wants ..."
  const char* offers = "";  // for the option, as an Argument's (command.h)
  std::span<const char* const> values = {};  // the only ones that it can have; empty for any
};

std::span<const Variable> variables();

// The variable's value; empty when it is not set.
std::string variable(const char* name);

// Raises UnknownNameError for a variable with a value that it cannot have.
void checkVariables();

// The end of --help: the options of the program, and the variables.
std::string environmentHelp();

// Takes the options of the program off the words, wherever they are before a "--", and sets their
// variables. Returns false, with a message, when one lacks its value.
bool takeProgramOptions(std::vector<std::string>& words);

}  // namespace cli

#endif  // MENU_CLI_ENVIRONMENT_H
