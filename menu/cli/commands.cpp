#include "commands.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>

#include "../host/display_text.h"
#include "exit_codes.h"
#include "host_commands.h"
#include "menu_commands.h"
#include "output.h"
#include "platform/host/config_store.h"
#include "platform/host/errors.h"
#include "shell.h"

namespace cli {

namespace {

constexpr char kEnvironmentHelp[] =
    "Before the command: --product NAME, and --provider FILE for another provider than\n"
    "libventaro.so.\n"
    "\n"
    "Environment:\n"
    "  LANGUAGE               the menu's language, as \"ko\"; default: the TV's own\n"
    "  VENTARO_PRODUCT        the product, by name or file; default tv\n"
    "  VENTARO_SCENARIO       the simulated network, by name or file; default home\n"
    "  VENTARO_NETWORK        the kind of network; there is only simulated\n"
    "  VENTARO_REGION         us or other, for items with regional variants; default us\n"
    "  VENTARO_LOG=stderr     shows the platform log\n"
    "  VENTARO_STATE_DIR, VENTARO_RUNTIME_DIR, VENTARO_RESOURCE_ROOT, VENTARO_PROVIDER\n"
    "                         other places than the usual ones";

int fail(ExitCode code, const std::string& message) {
  // What was typed may be part of the message.
  std::cerr << "ventaro: " << menu::displayText(message) << '\n';
  return code;
}

std::string names(const CLI::App& app) {
  std::string text;
  for (const CLI::App* command : app.get_subcommands({})) {
    text += (text.empty() ? "" : ", ") + command->get_name();
  }
  return text;
}

// The command that the words lead to, as far as they name commands.
const CLI::App& commandOf(const CLI::App& app, const std::vector<std::string>& words) {
  const CLI::App* command = &app;
  for (const std::string& word : words) {
    const auto commands = command->get_subcommands({});
    const auto found = std::ranges::find(commands, word, &CLI::App::get_name);
    if (found == commands.end()) break;
    command = *found;
  }
  return *command;
}

// As typed: "ventaro store get".
std::string pathOf(const CLI::App& command) {
  const CLI::App* parent = command.get_parent();
  return (parent != nullptr ? pathOf(*parent) + " " : "") + command.get_name();
}

int usageError(const CLI::App& app, const std::vector<std::string>& words,
               const CLI::ParseError& error) {
  const CLI::App& command = commandOf(app, words);
  if (!command.get_subcommands({}).empty()) {
    const std::string wrong =
        words.empty() || words.back() == command.get_name()
            ? "a command is missing"
            : "there is no command \"" + words[&command == &app ? 0 : 1] + "\"";
    return fail(kUnknown, wrong + "; there are: " + names(command));
  }
  std::cerr << pathOf(command) << ": " << error.what() << "\n\n" << app.help();
  return kUnknown;
}

int parse(CLI::App& app, const std::vector<std::string>& words, const int& result) {
  try {
    std::vector<std::string> lastToFirst(words.rbegin(), words.rend());  // as CLI11 takes them
    app.parse(lastToFirst);
    return result;
  } catch (const CLI::CallForHelp&) {
    printLine(app.help());  // of the subcommand that the words name
    return kDone;
  } catch (const CLI::CallForVersion& version) {
    printLine(version.what());
    return kDone;
  } catch (const CLI::ParseError& error) {
    return usageError(app, words, error);
  }
}

}  // namespace

int runCommand(Session& session, const std::vector<std::string>& words) {
  CLI::App app("The network menu of a TV", "ventaro");
  app.footer(kEnvironmentHelp);
  app.set_version_flag("--version", "ventaro " VENTARO_VERSION, "Print the version and exit");
  app.require_subcommand(1);
  int result = kDone;
  addMenuCommands(app, session, result);
  addHostCommands(app, session, result);
  addShellCommand(app, session, result);
  try {
    return parse(app, words, result);
  } catch (const menu::UnknownError& error) {
    return fail(kUnknown, error.what());
  } catch (const platform::host::StoreError& error) {
    const bool badInput = error.code() == platform::host::StoreCode::kBadKey ||
                          error.code() == platform::host::StoreCode::kValueTooLong;
    return fail(badInput ? kUnknown : kFailed, error.what());
  } catch (const std::exception& error) {
    return fail(kFailed, error.what());
  }
}

}  // namespace cli
