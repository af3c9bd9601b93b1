#include "host_commands.h"

#include <algorithm>
#include <iostream>
#include <limits>

#include "../host/main_loop.h"
#include "../host/notifications.h"
#include "exit_codes.h"
#include "output.h"
#include "platform/host/config_store.h"
#include "platform/host/network_service.h"
#include "platform/host/product.h"
#include "platform/host/resources.h"
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

// A name must be that of a scenario that is shipped; the path of a file is read as it is.
void requireScenario(const std::string& nameOrPath) {
  if (nameOrPath.find('/') != std::string::npos || nameOrPath.ends_with(".json")) return;
  const auto names = platform::host::resourceNames("scenarios");
  if (std::ranges::find(names, nameOrPath) != names.end()) return;
  std::string known;
  for (const std::string& name : names) known += (known.empty() ? "" : ", ") + name;
  throw UnknownError("there is no scenario \"" + nameOrPath + "\"; there are: " + known);
}

}  // namespace

int storeGet(Session& /*session*/, const Arguments& arguments) {
  const std::string key = arguments.text("KEY");
  const auto value = ConfigStore::instance().get(key);
  if (!value) {
    throw UnknownError("the store has no \"" + key +
                       "\"; \"ventaro store list\" shows what it has");
  }
  Printer(arguments).print(StoreEntry(key, *value));
  return kDone;
}

int storeList(Session& /*session*/, const Arguments& arguments) {
  Printer(arguments).print(ConfigStore::instance().list(arguments.text("PREFIX")));
  return kDone;
}

int storeSet(Session& /*session*/, const Arguments& arguments) {
  const std::string key = arguments.text("KEY");
  const StoreValue value = parse(typeFor(key, arguments.text("--type")), arguments.text("VALUE"));
  ConfigStore::instance().set(key, value);
  Printer(arguments).print(StoreEntry(key, value));
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
      if (!value || left == 0) return;
      printer.print(StoreEntry(key, *value));
      --left;
    }));
  }
  std::cerr << "ventaro: watching; Ctrl-C ends" << std::endl;
  interruption.runUntil([&left] { return left == 0; });
  return kDone;
}

int networkServe(Session& session, const Arguments& /*arguments*/) {
  const menu::Interruption interruption;
  session.serveNetwork();
  if (!session.servesNetwork()) {
    complain("another process runs the network service already");
    return kFailed;
  }
  printLine("The network service runs; Ctrl-C ends it.");
  interruption.runUntil([] { return false; });
  session.stopNetwork();
  return kDone;
}

int networkLoad(Session& /*session*/, const Arguments& arguments) {
  const std::string scenario = arguments.text("SCENARIO");
  requireScenario(scenario);
  platform::host::loadScenario(scenario);
  printLine("Loaded the scenario " + scenario + ".");
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

}  // namespace cli
