#include "command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <limits>
#include <utility>

#include "../host/menu_model.h"
#include "../host/typed_name.h"
#include "environment.h"
#include "exit_codes.h"
#include "platform/host/config_store.h"
#include "platform/host/errors.h"
#include "platform/host/nearest.h"
#include "stream.h"

namespace cli {

namespace {

template <typename Value>
CLI::Option& addOption(CLI::App& app, const Argument& argument) {
  return *app.add_option_function<Value>(
      argument.name(), [](const Value&) {}, argument.help);
}

CLI::Option& addArgument(CLI::App& app, const Argument& argument) {
  switch (argument.takes) {
    case Takes::kNothing:
      return *app.add_flag(argument.name(), std::as_const(argument.help));
    case Takes::kTexts:
      return addOption<std::vector<std::string>>(app, argument);
    case Takes::kInt:
      return addOption<int>(app, argument);
    case Takes::kPositiveInt:
      return *addOption<int>(app, argument).check(CLI::Range(1, std::numeric_limits<int>::max()));
    case Takes::kOneOfItsOffers:
      return *addOption<std::string>(app, argument).check(CLI::IsMember(wordsOf(argument.offers)));
    case Takes::kText:
      break;
  }
  return addOption<std::string>(app, argument);
}

// Adds the command below its group, which is there already. When it is parsed it is carried out,
// and leaves its exit code in `result`.
void addCommand(CLI::App& app, const Command& command, Session& session, int& result) {
  const std::vector<std::string> words = wordsOf(command.words);
  CLI::App& parent = words.size() > 1 ? *app.get_subcommand(words.front()) : app;
  CLI::App& added = *parent.add_subcommand(words.back(), command.help);
  added.footer(command.more);
  if (command.action == nullptr) {
    added.require_subcommand(1);
  } else {
    added.callback([&] {
      checkVariables();
      result = command.action(session, Arguments(added));
    });
  }
  for (const Argument& argument : command.arguments) {
    if (argument.synopsis == nullptr) break;
    addArgument(added, argument).required(*argument.synopsis != '[');
  }
}

std::vector<std::string> namesOf(const CLI::App& group) {
  std::vector<std::string> names;
  for (const CLI::App* command : group.get_subcommands({})) names.push_back(command->get_name());
  return names;
}

std::vector<std::string> optionsOf(const CLI::App& command) {
  std::vector<std::string> options;
  for (const CLI::Option* option : command.get_options()) {
    for (const std::string& name : option->get_lnames()) options.push_back("--" + name);
  }
  return options;
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

int fail(ExitCode code, const std::string& message, const std::vector<std::string>& list = {}) {
  complain(message, "ventaro", list);
  return code;
}

// The command that is missing or that there is not.
int commandError(const CLI::App& group, const std::string& typed) {
  const std::vector<std::string> names = namesOf(group);
  const std::string problem =
      typed.empty()
          ? "a command is missing; there are: " + platform::host::joined(names)
          : "there is no command \"" + typed + "\"" + platform::host::suggestion(typed, names);
  return fail(kUnknown, problem + " (see \"" + pathOf(group) + " --help\")");
}

// What the parser says, in one line, and where all of it is told.
int usageError(const CLI::App& app, const std::vector<std::string>& words,
               const CLI::ParseError& error) {
  const CLI::App& command = commandOf(app, words);
  if (!command.get_subcommands({}).empty()) {
    const std::size_t depth = &command == &app ? 0 : 1;
    return commandError(command, words.size() > depth ? words[depth] : "");
  }
  const std::vector<std::string> extra = command.remaining();
  const std::string suggestion =
      extra.empty() ? "" : menu::didYouMean(extra.front(), optionsOf(command));
  const std::string path = pathOf(command);
  complain(error.what() + suggestion + " (see \"" + path + " --help\")", path);
  return kUnknown;
}

int parseAndCarryOut(std::span<const Command> table, Session& session,
                     const std::vector<std::string>& words) {
  CLI::App app("The network menu of a TV", "ventaro");
  app.set_version_flag("--version", "ventaro " VENTARO_VERSION, "Print the version and exit");
  app.require_subcommand(1);
  int result = kDone;
  for (const Command& command : table) addCommand(app, command, session, result);
  app.footer(environmentHelp());  // after the commands, which would take it over
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

int runCommandLine(std::span<const Command> table, Session& session,
                   const std::vector<std::string>& words) {
  try {
    return parseAndCarryOut(table, session, words);
  } catch (const menu::UnknownError& error) {
    return fail(kUnknown, error.what(), error.list());
  } catch (const platform::host::UnknownNameError& error) {
    return fail(kUnknown, error.what());
  } catch (const platform::host::StoreError& error) {
    const bool badInput = error.code() == platform::host::StoreCode::kBadKey ||
                          error.code() == platform::host::StoreCode::kValueTooLong;
    return fail(badInput ? kUnknown : kFailed, error.what());
  } catch (const std::exception& error) {
    return fail(kFailed, error.what());
  }
}

std::vector<std::string> wordsOf(const char* text) {
  return *text == '\0' ? std::vector<std::string>() : CLI::detail::split(text, ' ');
}

std::string Argument::name() const {
  const std::string_view text = *synopsis == '[' ? synopsis + 1 : synopsis;
  return std::string(text.substr(0, text.find_first_of(" .]")));
}

bool Arguments::has(const char* flag) const {
  const CLI::Option& option = *parsed_.get_option(flag);
  return option.count() > 0 && option.as<bool>();
}

std::string Arguments::text(const char* name) const {
  const std::vector<std::string> given = texts(name);
  return given.empty() ? "" : given.front();
}

std::vector<std::string> Arguments::texts(const char* name) const {
  return parsed_.get_option(name)->results();
}

std::optional<int> Arguments::number(const char* name) const {
  const CLI::Option& option = *parsed_.get_option(name);
  return option.count() > 0 ? std::optional(option.as<int>()) : std::nullopt;
}

}  // namespace cli
