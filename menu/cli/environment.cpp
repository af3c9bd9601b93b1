#include "environment.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include "stream.h"

namespace cli {

namespace {

constexpr Variable kVariables[] = {
    {"LANGUAGE", "the menu's language, as \"ko\"; default: the TV's own, else English"},
    {"VENTARO_PRODUCT", "the product, by name or file; default tv", "--product NAME",
     "the name or file of a product", "FILES @PRODUCTS@"},
    {"VENTARO_PROVIDER", "another provider than the libventaro.so that comes along",
     "--provider FILE", "the path of a provider's library", "FILES"},
    {"VENTARO_MENU", "another menu file than the menu.json that comes along", "--menu FILE",
     "the path of a menu file", "FILES"},
    {"VENTARO_SCENARIO", "the simulated network at its start, by name or file; default home"},
    {"VENTARO_NETWORK", "the kind of network; there is only simulated"},
    {"VENTARO_REGION", "us or other, for items with regional variants; default us"},
    {"VENTARO_LOG", "stderr shows the platform log"},
    {"VENTARO_STATE_DIR",
     "where db/ values and the logs are kept;\n"
     "default $XDG_STATE_HOME/ventaro, else ~/.local/state/ventaro"},
    {"VENTARO_RUNTIME_DIR",
     "where memory/ values are kept;\n"
     "default $XDG_RUNTIME_DIR/ventaro, else a folder of the user's own in /tmp"},
    {"VENTARO_RESOURCE_ROOT", "another folder than the installed share/ventaro"},
};

// A line of help below the others, as CLI11 writes its own: the name, and the text in a column.
std::string helpLine(const std::string& name, const std::string& text) {
  const std::string indent(30, ' ');
  std::string line = "\n  " + name + indent.substr(name.size() + 2);
  for (const char c : text) line += c == '\n' ? "\n" + indent : std::string(1, c);
  return line;
}

// "--product=tv" is "--product tv".
void splitAtEquals(std::vector<std::string>& words) {
  if (words.empty()) return;
  const auto equals = words.front().find('=');
  if (!words.front().starts_with("--") || equals == std::string::npos) return;
  words.insert(words.begin() + 1, words.front().substr(equals + 1));
  words.front().resize(equals);
}

std::string optionName(const Variable& variable) {
  const std::string_view option = variable.option;
  return std::string(option.substr(0, option.find(' ')));
}

// The variable of the option that the words begin with; null when they begin with none.
const Variable* firstOption(const std::vector<std::string>& words) {
  if (words.empty() || words.front().empty()) return nullptr;
  const auto* const found = std::ranges::find(kVariables, words.front(), optionName);
  return found != std::end(kVariables) ? found : nullptr;
}

}  // namespace

std::span<const Variable> variables() {
  return kVariables;
}

std::string variable(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

std::string environmentHelp() {
  std::string options = "Before the command:";
  std::string environment = "\n\nEnvironment:";
  for (const Variable& each : kVariables) {
    if (*each.option != '\0') options += helpLine(each.option, each.help);
    environment += helpLine(each.name, each.help);
  }
  return options + environment;
}

bool takeProgramOptions(std::vector<std::string>& words) {
  splitAtEquals(words);
  const Variable* option = firstOption(words);
  if (option == nullptr) return true;
  if (words.size() < 2) {
    complain(words.front() + " wants " + option->wants);
    return false;
  }
  setenv(option->name, words[1].c_str(), 1);
  words.erase(words.begin(), words.begin() + 2);
  return takeProgramOptions(words);
}

}  // namespace cli
