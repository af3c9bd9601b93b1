#include "environment.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string_view>

#include "platform/host/errors.h"
#include "platform/host/nearest.h"
#include "stream.h"

namespace cli {

namespace {

constexpr const char* kRegions[] = {"us", "other"};
constexpr const char* kLogs[] = {"stderr"};

constexpr Variable kVariables[] = {
    {"LANGUAGE", "the menu's language, as \"ko\"; default: the TV's own, else English"},
    {"VENTARO_PRODUCT",
     "the product, by name or file; default tv; all: every one, for show\nand texts",
     "--product NAME", "the name or file of a product", "FILES @PRODUCTS@ all"},
    {"VENTARO_PROVIDER", "another provider than the libventaro.so that comes along",
     "--provider FILE", "the path of a provider's library", "FILES"},
    {"VENTARO_MENU", "another menu file than the menu.json that comes along", "--menu FILE",
     "the path of a menu file", "FILES"},
    {"VENTARO_COLOR",
     "auto: colour on a terminal, the default; never; always: show into a pipe\n"
     "what a terminal would be shown",
     "--color WHEN", "auto, never or always", "auto never always"},
    {"NO_COLOR", "set and not empty: no colour, unless --color always asks for it"},
    {"VENTARO_SCENARIO", "the simulated network at its start, by name or file; default home"},
    {"VENTARO_NETWORK", "the kind of network; there is only simulated"},
    {"VENTARO_REGION", "us or other, for items with regional variants; default us", "", "", "",
     kRegions},
    {"VENTARO_LOG", "stderr shows the platform log", "", "", "", kLogs},
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

std::string optionName(const Variable& variable) {
  const std::string_view option = variable.option;
  return std::string(option.substr(0, option.find(' ')));
}

// Whether the word is that option, alone or with its value: "--product" or "--product=tv".
bool isOption(const std::string& word, const std::string& option) {
  return !option.empty() && (word == option || word.starts_with(option + "="));
}

// The variable of the option that the word is; null when it is none.
const Variable* variableOf(const std::string& word) {
  const auto* const found = std::ranges::find_if(
      kVariables, [&](const Variable& variable) { return isOption(word, optionName(variable)); });
  return found != std::end(kVariables) ? found : nullptr;
}

// The option's value: behind its equals sign, else the word `next`, which may be null.
std::optional<std::string> valueOf(const std::string& option, const std::string* next) {
  const auto equals = option.find('=');
  if (equals != std::string::npos) return option.substr(equals + 1);
  return next != nullptr ? std::optional(*next) : std::nullopt;
}

}  // namespace

std::span<const Variable> variables() {
  return kVariables;
}

std::string variable(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

void checkVariables() {
  for (const Variable& each : kVariables) {
    const std::string value = variable(each.name);
    if (value.empty() || each.values.empty()) continue;
    if (std::ranges::find(each.values, std::string_view(value)) != each.values.end()) continue;
    throw platform::host::UnknownNameError(
        std::string(each.name) + " is \"" + value +
        "\"; there are: " + platform::host::joined({each.values.begin(), each.values.end()}));
  }
}

std::string environmentHelp() {
  std::string options = "Anywhere in the command line:";
  std::string environment = "\n\nEnvironment:";
  for (const Variable& each : kVariables) {
    if (*each.option != '\0') options += helpLine(each.option, each.help);
    environment += helpLine(each.name, each.help);
  }
  return options + environment;
}

bool takeProgramOptions(std::vector<std::string>& words) {
  std::size_t at = 0;
  while (at < words.size() && words[at] != "--") {
    const Variable* variable = variableOf(words[at]);
    if (variable == nullptr) {
      ++at;
      continue;
    }
    const bool isLast = at + 1 == words.size();
    const auto value = valueOf(words[at], isLast ? nullptr : &words[at + 1]);
    if (!value) {
      complain(words[at] + " wants " + variable->wants);
      return false;
    }
    setenv(variable->name, value->c_str(), 1);
    const auto option = words.begin() + static_cast<std::ptrdiff_t>(at);
    words.erase(option, option + (option->find('=') != std::string::npos ? 1 : 2));
  }
  return true;
}

}  // namespace cli
