#include "menu_commands.h"

#include <unistd.h>

#include <chrono>
#include <iostream>
#include <memory>
#include <optional>

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
  bool brief = false;
  bool yes = false;
  int position = 0;
};

int show(Session& session, const Options& options) {
  const std::vector<Item> items = session.menu().readAll();
  printItems(items, formatOf(options.json), options.brief ? Detail::kLine : Detail::kAll);
  return printProblems(items) ? kFailed : kDone;
}

int get(Session& session, const Options& options) {
  const Item item = session.menu().read(options.key);
  printItem(item, formatOf(options.json), options.brief ? Detail::kLine : Detail::kAll);
  return printProblems({item}) ? kFailed : kDone;
}

int list(Session& session, const Options& options) {
  printList(session.menu().list(options.key), formatOf(options.json));
  return kDone;
}

int box(Session& session, const Options& options) {
  printBox(session.menu().box(options.key), formatOf(options.json));
  return kDone;
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

void setAndShow(Session& session, const Options& options, int value) {
  menu::MenuModel& menu = session.menu();
  session.serveNetwork();
  menu.set(options.key, value);
  menu::runPending();
  printItem(menu.read(options.key), formatOf(options.json));
}

// The person's answer to a confirmation box; nothing when there is nobody to ask.
std::optional<bool> ask(Session& session, const menu::Provider::MessageBox& box) {
  if (isatty(STDIN_FILENO) == 0) return std::nullopt;
  std::cout << box.text << "\n1 " << box.yes << "\n2 " << box.no << "\n? " << std::flush;
  const auto answer = session.readLine();
  return answer == "1" || answer == box.yes;
}

// As a person does: an entry that asks first is chosen only when the box is answered with yes.
int choose(Session& session, const Options& options) {
  menu::MenuModel& menu = session.menu();
  const menu::Provider::ListEntry entry = menu.findChoice(options.key, options.value);
  if (entry.action == ITEM_FOLLOWING_ACTION_MESSAGE_BOX && !options.yes) {
    const menu::Provider::MessageBox box = menu.box(options.key);
    const std::optional<bool> answer = ask(session, box);
    if (!answer) {
      std::cerr << "ventaro: nobody is here to answer \"" << box.text << "\"; --yes answers \""
                << box.yes << "\"\n";
      return kUnanswered;
    }
    if (!*answer) return kDone;
  }
  setAndShow(session, options, entry.value);
  return kDone;
}

int set(Session& session, const Options& options) {
  setAndShow(session, options, session.menu().findChoice(options.key, options.value).value);
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
        subscription_(ConfigStore::instance().subscribe("db/menu/network/TopSavedAP",
                                                        [this](const std::string&) { look(); })) {}

  // Asks for the connection and waits. Returns whether the network was connected in the end.
  bool connect(int position) {
    asked_ = menu_.connect(position);
    return menu::runUntil([this] { return settled_; }, kLongestConnect) &&
           state_ == NetworkState::kConnected;
  }

  const std::string& name() const { return asked_.name; }

 private:
  // At each news, not later: the next state may be published before the loop comes round again.
  void look() {
    if (settled_ || asked_.key.empty()) return;
    const Item item = menu_.read(asked_.key);
    // Another network at this position means that this one is no longer offered.
    state_ = item.name == asked_.name ? item.state : NetworkState::kNone;
    if (state_ != NetworkState::kNone) printItem(item, format_);
    settled_ = state_ != NetworkState::kConnecting;
  }

  menu::MenuModel& menu_;
  Format format_;
  Item asked_;
  NetworkState state_ = NetworkState::kNone;
  bool settled_ = false;
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

// Shows the menu now, and again whenever it is asked to refresh.
int watch(Session& session, const Options& options) {
  const menu::Interruption interruption;
  menu::MenuModel& menu = session.menu();
  session.serveNetwork();
  bool refresh = true;
  const Subscription subscription = ConfigStore::instance().subscribe(
      kRefreshKey, [&refresh](const std::string&) { refresh = true; });
  while (interruption.runUntil([&refresh] { return refresh; })) {
    refresh = false;
    printItems(menu.readAll(), formatOf(options.json), Detail::kLine);
    if (!options.json) printLine("");
  }
  session.stopNetwork();
  return kDone;
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
  const auto add = [&](const char* word, const char* description, Action action) -> CLI::App& {
    return addCommand(app, word, description, session, result, options, action);
  };
  const auto addForKey = [&](const char* word, const char* description,
                             Action action) -> CLI::App& {
    CLI::App& command = add(word, description, action);
    command.add_option("KEY", options->key, "The item's menu key")->required();
    return command;
  };

  CLI::App& showing = add("show", "Show the whole menu", show);
  CLI::App& getting = addForKey("get", "Show one item", get);
  for (CLI::App* command : {&showing, &getting}) {
    command->add_flag("--brief", options->brief, "Only names and values");
  }
  add("watch", "Show the menu again whenever it is asked to refresh, until Ctrl-C", watch);
  addForKey("list", "Show an item's option list", list);
  addForKey("box", "Show the box that asks before an item is changed", box);

  CLI::App& choosing =
      addForKey("choose", "Choose an entry of an item's list, as a person", choose);
  choosing.add_option("INDEX", options->value, "The entry's number or text")->required();
  choosing.add_flag("--yes", options->yes, "Answer a confirmation box with yes");

  CLI::App& setting = addForKey("set", "Set an item's value, asking nothing", set);
  setting.add_option("VALUE", options->value, "The entry's number or text")->required();
  setting.add_flag("--wait", options->wait, "Go on until the menu is asked to refresh");

  CLI::App& connecting =
      addCommand(app, "connect", "Connect to a saved network", session, result, options, connect);
  connecting.add_option("POSITION", options->position, "1 or 2")->required();
  connecting.add_flag("--no-wait", options->noWait,
                      "Only ask; whoever runs the network service connects");

  CLI::App& naming = add("name", "Give the TV a name", name);
  naming.add_option("TEXT", options->value, "The name")->required();
}

}  // namespace cli
