#include "host_commands.h"

#include <algorithm>
#include <iostream>
#include <limits>

#include "../host/main_loop.h"
#include "../host/notifications.h"
#include "exit_codes.h"
#include "output.h"
#include "platform/host/config_store.h"
#include "platform/host/faults.h"
#include "platform/host/nearest.h"
#include "platform/host/network_service.h"
#include "platform/host/product.h"
#include "platform/host/resources.h"
#include "platform/host/visible_text.h"
#include "question.h"
#include "session.h"
#include "stream.h"

namespace cli {

namespace {

using menu::UnknownError;
using platform::host::ConfigStore;
using platform::host::StoreValue;

StoreValue parseInt(const std::string& text) {
  try {
    std::size_t end = 0;
    const int number = std::stoi(text, &end);
    if (end == text.size()) return number;
  } catch (const std::logic_error&) {
    // It is no number, or too large: the error below says what it should be.
  }
  throw UnknownError("\"" + text + "\" is no int; an int is a whole number from " +
                     std::to_string(std::numeric_limits<int>::min()) + " to " +
                     std::to_string(std::numeric_limits<int>::max()));
}

StoreValue parseBool(const std::string& text) {
  if (text == "true") return true;
  if (text == "false") return false;
  throw UnknownError("\"" + text + "\" is no bool; a bool is true or false");
}

StoreValue parse(const std::string& type, const std::string& text) {
  if (type == "int") return parseInt(text);
  if (type == "bool") return parseBool(text);
  return text;
}

// A key keeps its type unless another is asked for, so that its readers can still read it.
std::string typeFor(const std::string& key, const std::string& asked) {
  if (!asked.empty()) return asked;
  const auto value = ConfigStore::instance().get(key);
  if (!value) throw UnknownError("\"" + key + "\" is new; say --type int, bool or string");
  return platform::host::typeName(*value);
}

// The store of commands that only read it: what is wrong with it would else look like missing keys.
ConfigStore& openStore() {
  ConfigStore::instance().open();
  return ConfigStore::instance();
}

[[noreturn]] void failOnUnknownKey(const std::string& key) {
  throw UnknownError("the store has no \"" + key + "\"; \"ventaro store list\" shows what it has");
}

// Values of the store that switch something by name: the key is the name after a prefix.
struct Switches {
  const char* prefix;
  std::string kind;  // of what there are names: "platform function"
  std::vector<std::string> names;

  std::string keyOf(const std::string& name) const {
    if (std::ranges::find(names, name) != names.end()) return prefix + name;
    throw UnknownError("there is no " + kind + " \"" + name + "\"" +
                       platform::host::suggestion(name, names));
  }

  // Clears that name, or all when it is empty.
  void clear(const std::string& name) const {
    if (!name.empty()) ConfigStore::instance().unset(keyOf(name));
    for (const auto& [key, value] : ConfigStore::instance().list(prefix)) {
      if (name.empty()) ConfigStore::instance().unset(key);
    }
  }
};

Switches faults() {
  return {platform::host::kFaults, "platform function", platform::host::functionsThatCanFail()};
}

Switches features() {
  std::vector<std::string> names;
  for (const auto& [name, value] : platform::host::knownFlags()) names.push_back(name);
  return {platform::host::kFlagOverrides, "feature flag", names};
}

// What counts of each name: what the store has, else the value in `otherwise`.
StoreEntries valuesOf(const Switches& switches, StoreEntries otherwise) {
  for (const auto& [key, value] : ConfigStore::instance().list(switches.prefix)) {
    otherwise.insert_or_assign(key.substr(std::string_view(switches.prefix).size()), value);
  }
  return otherwise;
}

}  // namespace

int storeGet(Session& /*session*/, const Arguments& arguments) {
  const std::string key = arguments.text("KEY");
  const auto value = openStore().get(key);
  if (!value) failOnUnknownKey(key);
  Printer(arguments).print(StoreEntry(key, *value));
  return kDone;
}

int storeList(Session& /*session*/, const Arguments& arguments) {
  Printer(arguments).print(openStore().list(arguments.text("PREFIX")));
  return kDone;
}

int storeSet(Session& /*session*/, const Arguments& arguments) {
  const std::string key = arguments.text("KEY");
  const StoreValue value = parse(typeFor(key, arguments.text("--type")), arguments.text("VALUE"));
  ConfigStore::instance().set(key, value);
  Printer(arguments).print(StoreEntry(key, value));
  return kDone;
}

int storeUnset(Session& /*session*/, const Arguments& arguments) {
  const std::string key = arguments.text("KEY");
  if (!ConfigStore::instance().unset(key)) failOnUnknownKey(key);
  Printer(arguments).print(RemovedKey{key});
  return kDone;
}

int storeWatch(Session& /*session*/, const Arguments& arguments) {
  const menu::Interruption interruption;
  const Printer printer(arguments, Results::kSeries);
  int left = arguments.number("--count").value_or(std::numeric_limits<int>::max());
  std::vector<platform::host::Subscription> subscriptions;
  for (const std::string& key : arguments.texts("KEY")) {
    subscriptions.push_back(menu::onSet(key, [&, key] {
      const auto value = ConfigStore::instance().get(key);
      if (left == 0) return;
      if (value) printer.print(StoreEntry(key, *value));
      if (!value) printer.print(RemovedKey{key});
      --left;
    }));
  }
  std::cerr << "ventaro: watching; Ctrl-C ends" << std::endl;
  const bool isEndless = !arguments.number("--count");
  interruption.runUntil([&left] { return left == 0 || !standardOutputIsWritten(); });
  if (!standardOutputIsWritten()) return kFailed;
  return left == 0 || isEndless ? kDone : interruption.exitCode();
}

int networkServe(Session& session, const Arguments& /*arguments*/) {
  const menu::Interruption interruption;
  openStore();
  session.serveNetwork();
  if (!session.servesNetwork()) {
    complain("another process runs the network service already");
    return kFailed;
  }
  printLine("The network service runs; Ctrl-C ends it.");
  if (!standardOutputIsWritten()) return kFailed;
  interruption.runUntil([] { return false; });
  session.stopNetwork();
  return kDone;
}

int networkLoad(Session& /*session*/, const Arguments& arguments) {
  const std::string scenario = arguments.text("SCENARIO");
  platform::host::loadScenario(scenario);
  printLine("Loaded the scenario " + platform::host::visibleLine(scenario) + ".");
  return kDone;
}

int productList(Session& /*session*/, const Arguments& arguments) {
  Descriptions products;
  for (const std::string& name : platform::host::resourceNames("products")) {
    products[name] = platform::host::loadProduct(name).description;
  }
  Printer(arguments).print(products);
  return kDone;
}

int faultList(Session& /*session*/, const Arguments& arguments) {
  const Switches switches = faults();
  StoreEntries none;
  for (const std::string& name : switches.names) none.emplace(name, 0);
  Printer(arguments).print(valuesOf(switches, none));
  return kDone;
}

int faultSet(Session& /*session*/, const Arguments& arguments) {
  const std::string function = arguments.text("FUNCTION");
  const int code = arguments.number("CODE").value();
  const std::string key = faults().keyOf(function);
  if (code == 0) {
    throw UnknownError("0 is no failure; \"ventaro fault clear " + function + "\" ends one");
  }
  ConfigStore::instance().set(key, code);
  Printer(arguments).print(StoreEntry(function, code));
  return kDone;
}

int faultClear(Session& /*session*/, const Arguments& arguments) {
  faults().clear(arguments.text("FUNCTION"));
  return kDone;
}

int featureList(Session& /*session*/, const Arguments& arguments) {
  Printer(arguments).print(valuesOf(features(), platform::host::loadProduct().flags));
  return kDone;
}

int featureSet(Session& /*session*/, const Arguments& arguments) {
  const std::string flag = arguments.text("FLAG");
  const std::string key = features().keyOf(flag);
  const std::string type = platform::host::typeName(platform::host::knownFlags().at(flag));
  const StoreValue value = parse(type, arguments.text("VALUE"));
  ConfigStore::instance().set(key, value);
  Printer(arguments).print(StoreEntry(flag, value));
  return kDone;
}

int featureClear(Session& /*session*/, const Arguments& arguments) {
  features().clear(arguments.text("FLAG"));
  return kDone;
}

int reset(Session& session, const Arguments& arguments) {
  const menu::Provider::MessageBox box{
      "Forget all settings, and make the TV as it left the factory?", "Yes", "No", 0};
  if (!arguments.has("--yes")) {
    if (const auto end = endUnlessYes(session, box)) return *end;
  }
  ConfigStore::instance().reset();
  platform::host::loadScenario();
  printLine("The TV is as it left the factory.");
  return kDone;
}

}  // namespace cli
