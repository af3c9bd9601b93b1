#include "host_commands.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <limits>
#include <memory>

#include "../host/main_loop.h"
#include "exit_codes.h"
#include "output.h"
#include "platform/host/config_store.h"
#include "platform/host/network_service.h"
#include "platform/host/product.h"
#include "platform/host/resources.h"

namespace cli {

namespace {

using menu::UnknownError;
using platform::host::ConfigStore;
using platform::host::StoreValue;
using platform::host::Subscription;

struct Options {
  bool json = false;
  std::string key;
  std::string value;
  std::string type;
  std::vector<std::string> keys;
  int count = std::numeric_limits<int>::max();
};

Format formatOf(const Options& options) {
  return options.json ? Format::kJson : Format::kText;
}

int storeGet(Session& /*session*/, const Options& options) {
  const auto value = ConfigStore::instance().get(options.key);
  if (!value) {
    throw UnknownError("the store has no \"" + options.key +
                       "\"; \"ventaro store list\" shows what it has");
  }
  printValue(options.key, *value, formatOf(options));
  return kDone;
}

int storeList(Session& /*session*/, const Options& options) {
  printValues(ConfigStore::instance().list(options.key), formatOf(options));
  return kDone;
}

StoreValue parseInt(const std::string& text) {
  try {
    std::size_t end = 0;
    const int number = std::stoi(text, &end);
    if (end == text.size()) return number;
  } catch (const std::logic_error&) {
    // No number, or too large; told below.
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

// A key keeps its type unless another is asked for, so that its readers go on reading it.
std::string typeFor(const Options& options) {
  if (!options.type.empty()) return options.type;
  const auto value = ConfigStore::instance().get(options.key);
  if (!value) throw UnknownError("\"" + options.key + "\" is new; say --type int, bool or string");
  return platform::host::typeName(*value);
}

int storeSet(Session& /*session*/, const Options& options) {
  const std::string type = typeFor(options);
  StoreValue value = options.value;
  if (type == "int") value = parseInt(options.value);
  if (type == "bool") value = parseBool(options.value);
  ConfigStore::instance().set(options.key, value);
  printValue(options.key, value, formatOf(options));
  return kDone;
}

int storeWatch(Session& /*session*/, const Options& options) {
  const menu::Interruption interruption;
  int left = options.count;
  std::vector<Subscription> subscriptions;
  for (const std::string& wanted : options.keys) {
    subscriptions.push_back(ConfigStore::instance().subscribe(wanted, [&](const std::string& key) {
      const auto value = ConfigStore::instance().get(key);
      if (key != wanted || !value || left == 0) return;
      printUpdate(key, *value, formatOf(options));
      --left;
    }));
  }
  std::cerr << "ventaro: watching; Ctrl-C ends" << std::endl;
  interruption.runUntil([&left] { return left == 0; });
  return kDone;
}

int networkServe(Session& session, const Options& /*options*/) {
  const menu::Interruption interruption;
  session.serveNetwork();
  if (!session.servesNetwork()) {
    std::cerr << "ventaro: another process runs the network service already\n";
    return kFailed;
  }
  printLine("The network service runs; Ctrl-C ends it.");
  interruption.runUntil([] { return false; });
  session.stopNetwork();
  return kDone;
}

int networkLoad(Session& /*session*/, const Options& options) {
  const bool isPath =
      options.value.find('/') != std::string::npos || options.value.ends_with(".json");
  const auto names = platform::host::resourceNames("scenarios");
  if (!isPath && std::ranges::find(names, options.value) == names.end()) {
    std::string known;
    for (const std::string& name : names) known += (known.empty() ? "" : ", ") + name;
    throw UnknownError("there is no scenario \"" + options.value + "\"; there are: " + known);
  }
  platform::host::loadScenario(options.value);
  printLine("Loaded the scenario " + options.value + ".");
  return kDone;
}

int productList(Session& /*session*/, const Options& options) {
  Json::Value products(Json::arrayValue);
  for (const std::string& name : platform::host::resourceNames("products")) {
    Json::Value& product = products.append(Json::objectValue);
    product["name"] = name;
    product["description"] = platform::host::loadProduct(name).description;
    if (!options.json) printLine(name + ": " + product["description"].asString());
  }
  if (options.json) printJson(products);
  return kDone;
}

using Action = int (*)(Session&, const Options&);

// Adds commands of one group, which share their options.
class CommandGroup {
 public:
  CommandGroup(CLI::App& app, const char* word, const char* description, Session& session,
               int& result)
      : group_(*app.add_subcommand(word, description)), session_(session), result_(result) {
    group_.require_subcommand(1);
  }

  CLI::App& add(const char* word, const char* description, Action action) {
    CLI::App& command = *group_.add_subcommand(word, description);
    command.callback([&session = session_, &result = result_, options = options_, action] {
      result = action(session, *options);
    });
    return command;
  }

  Options& options() { return *options_; }

 private:
  CLI::App& group_;
  Session& session_;
  int& result_;
  std::shared_ptr<Options> options_ = std::make_shared<Options>();
};

void addStoreCommands(CLI::App& app, Session& session, int& result) {
  CommandGroup store(app, "store", "Read, write and watch the configuration store", session,
                     result);
  Options& options = store.options();

  CLI::App& get = store.add("get", "Show a value", storeGet);
  get.add_option("KEY", options.key, "db/... or memory/...")->required();
  get.add_flag("--json", options.json, "Write JSON");

  CLI::App& list = store.add("list", "Show all values whose keys begin with PREFIX", storeList);
  list.add_option("PREFIX", options.key, "How the keys begin; default: anyhow");
  list.add_flag("--json", options.json, "Write JSON");

  CLI::App& set = store.add("set", "Store a value", storeSet);
  set.add_option("KEY", options.key, "db/... or memory/...")->required();
  set.add_option("VALUE", options.value, "A number, true or false, or a text")->required();
  set.add_option("--type", options.type, "int, bool or string; default: as it was")
      ->check(CLI::IsMember({"int", "bool", "string"}));
  set.add_flag("--json", options.json, "Write JSON");

  CLI::App& watch =
      store.add("watch", "Show a key's value whenever it is set, until Ctrl-C", storeWatch);
  watch.add_option("KEY", options.keys, "db/... or memory/...")->required();
  watch.add_option("--count", options.count, "End after so many sets")
      ->check(CLI::Range(1, std::numeric_limits<int>::max()));
  watch.add_flag("--json", options.json, "Write JSON");
}

void addNetworkCommands(CLI::App& app, Session& session, int& result) {
  CommandGroup network(app, "network", "The simulated network", session, result);
  network.add("serve", "Run the network service, until Ctrl-C", networkServe);
  CLI::App& load = network.add("load", "Start over with a scenario", networkLoad);
  load.add_option("SCENARIO", network.options().value, "Its name or path")->required();
}

}  // namespace

void addHostCommands(CLI::App& app, Session& session, int& result) {
  addStoreCommands(app, session, result);
  addNetworkCommands(app, session, result);
  CommandGroup product(app, "product", "The products whose menu can be shown", session, result);
  product.add("list", "Show their names", productList)
      .add_flag("--json", product.options().json, "Write JSON");
}

}  // namespace cli
