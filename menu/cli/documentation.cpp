#include "documentation.h"

#include "commands.h"
#include "environment.h"
#include "exit_codes.h"

namespace cli {

namespace {

Json::Value object(std::initializer_list<std::pair<const char*, std::string>> members) {
  Json::Value json(Json::objectValue);
  for (const auto& [name, text] : members) json[name] = text;
  return json;
}

Json::Value describe(const Argument& argument) {
  return object({{"name", argument.name()},
                 {"synopsis", argument.synopsis},
                 {"help", argument.help},
                 {"offers", argument.offers}});
}

Json::Value describe(const Command& command) {
  Json::Value json =
      object({{"words", command.words}, {"help", command.help}, {"more", command.more}});
  json["arguments"] = Json::arrayValue;
  for (const Argument& argument : command.arguments) {
    if (argument.synopsis != nullptr) json["arguments"].append(describe(argument));
  }
  return json;
}

Json::Value describe(const Variable& variable) {
  return object({{"name", variable.name},
                 {"help", variable.help},
                 {"option", variable.option},
                 {"offers", variable.offers}});
}

}  // namespace

Json::Value documentation() {
  Json::Value json(Json::objectValue);
  for (const Command& command : commands()) {
    if (command.action != nullptr) json["commands"].append(describe(command));
  }
  for (const Variable& variable : variables()) json["variables"].append(describe(variable));
  for (const ExitMeaning& exit : kExitMeanings) {
    json["exit_codes"][std::to_string(exit.code)] = exit.meaning;
  }
  return json;
}

}  // namespace cli
