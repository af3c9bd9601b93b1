#include "menu_commands.h"

#include <chrono>
#include <iostream>
#include <memory>

#include "../host/main_loop.h"
#include "exit_codes.h"
#include "output.h"
#include "platform/host/config_store.h"

namespace cli {

namespace {

using menu::Item;
using menu::NetworkState;
using platform::host::ConfigStore;
using platform::host::StoreValue;
using platform::host::Subscription;

constexpr char kRefreshKey[] = "db/menu/refresh_menu";
constexpr char kDeviceNameKey[] = "menu/network/devicename";
const StoreValue kRefreshAll = 1;
// The provider asks eight seconds after the last switch, and not at all for other settings.
constexpr std::chrono::seconds kLongestRefresh{20};
// No scenario connects for longer than a minute.
constexpr std::chrono::seconds kLongestConnect{70};

Format formatOf(bool json) {
  return json ? Format::kJson : Format::kText;
}

struct Options {
  bool json = false;
  std::string key;
  std::string value;
  bool wait = false;
  bool noWait = false;
  int position = 0;
};

int show(Session& session, const Options& options) {
  const std::vector<Item> items = session.menu().readAll();
  printItems(items, formatOf(options.json));
  return printProblems(items) ? kFailed : kDone;
}

int get(Session& session, const Options& options) {
  const Item item = session.menu().read(options.key);
  printItem(item, formatOf(options.json));
  return printProblems({item}) ? kFailed : kDone;
}

// Waits for the request to refresh all of the menu; the one of the network branch alone comes
// earlier.
bool waitForRefresh() {
  bool asked = false;
  const Subscription subscription =
      ConfigStore::instance().subscribe(kRefreshKey, [&asked](const std::string& key) {
        asked = asked || ConfigStore::instance().get(key) == kRefreshAll;
      });
  return menu::runUntil([&asked] { return asked; }, kLongestRefresh);
}

int set(Session& session, const Options& options) {
  menu::MenuModel& menu = session.menu();
  session.serveNetwork();
  menu.set(options.key, options.value);
  menu::runPending();
  printItem(menu.read(options.key), formatOf(options.json));
  if (!options.wait) return kDone;
  if (!waitForRefresh()) {
    std::cerr << "ventaro: no request to refresh the menu came within " << kLongestRefresh.count()
              << " seconds; only the Wi-Fi switch asks for one\n";
    return kFailed;
  }
  if (!options.json) printLine("The menu is asked to refresh.");
  return kDone;
}

// Tells of a saved network's state whenever the network service publishes, until it has settled.
class ConnectionWatch {
 public:
  ConnectionWatch(menu::MenuModel& menu, Format format)
      : menu_(menu),
        format_(format),
        subscription_(ConfigStore::instance().subscribe(
            "db/menu/network/TopSavedAP", [this](const std::string&) { news_ = true; })) {}

  // Asks for the connection and waits. Returns whether the network was connected in the end.
  bool connect(int position) {
    const menu::Item asked = menu_.connect(position);
    key_ = asked.key;
    name_ = asked.name;
    return menu::runUntil([this] { return hasSettled(); }, kLongestConnect) &&
           state_ == NetworkState::kConnected;
  }

  const std::string& name() const { return name_; }

 private:
  bool hasSettled() {
    if (!std::exchange(news_, false)) return false;
    const Item item = menu_.read(key_);
    // Another network at this position means that this one is no longer offered.
    state_ = item.name == name_ ? item.state : NetworkState::kNone;
    if (state_ != NetworkState::kNone) printItem(item, format_);
    return state_ != NetworkState::kConnecting;
  }

  menu::MenuModel& menu_;
  Format format_;
  std::string key_;
  std::string name_;
  bool news_ = false;
  NetworkState state_ = NetworkState::kNone;
  Subscription subscription_;
};

int connect(Session& session, const Options& options) {
  menu::MenuModel& menu = session.menu();
  if (options.noWait) {
    const Item item = menu.connect(options.position);
    printLine("Asked the network service to connect to " + item.name + ".");
    return kDone;
  }
  session.serveNetwork();
  ConnectionWatch watch(menu, formatOf(options.json));
  if (watch.connect(options.position)) return kDone;
  std::cerr << "ventaro: " << watch.name()
            << " did not connect; is Wi-Fi on, and the network within reach?\n";
  return kFailed;
}

int name(Session& session, const Options& options) {
  session.menu().rename(options.value);
  menu::runPending();
  printItem(session.menu().read(kDeviceNameKey), formatOf(options.json));
  return kDone;
}

using Action = int (*)(Session&, const Options&);

CLI::App& addCommand(CLI::App& app, const char* word, const char* description, Session& session,
                     int& result, const std::shared_ptr<Options>& options, Action action) {
  CLI::App& command = *app.add_subcommand(word, description);
  command.add_flag("--json", options->json, "Write JSON");
  command.callback([&session, &result, options, action] { result = action(session, *options); });
  return command;
}

}  // namespace

void addMenuCommands(CLI::App& app, Session& session, int& result) {
  const auto options = std::make_shared<Options>();
  addCommand(app, "show", "Show the whole menu", session, result, options, show);

  CLI::App& getting = addCommand(app, "get", "Show one item", session, result, options, get);
  getting.add_option("KEY", options->key, "The item's menu key")->required();

  CLI::App& setting =
      addCommand(app, "set", "Choose an entry of an item's list", session, result, options, set);
  setting.add_option("KEY", options->key, "The item's menu key")->required();
  setting.add_option("VALUE", options->value, "The entry's number or text")->required();
  setting.add_flag("--wait", options->wait, "Go on until the menu is asked to refresh");

  CLI::App& connecting =
      addCommand(app, "connect", "Connect to a saved network", session, result, options, connect);
  connecting.add_option("POSITION", options->position, "1 or 2")->required();
  connecting.add_flag("--no-wait", options->noWait,
                      "Only ask; whoever runs the network service connects");

  CLI::App& naming = addCommand(app, "name", "Give the TV a name", session, result, options, name);
  naming.add_option("TEXT", options->value, "The name")->required();
}

}  // namespace cli
