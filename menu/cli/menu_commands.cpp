#include "menu_commands.h"

#include <unistd.h>

#include <chrono>
#include <functional>
#include <iostream>
#include <memory>
#include <optional>
#include <vector>

#include "../host/display_text.h"
#include "../host/main_loop.h"
#include "exit_codes.h"
#include "output.h"
#include "platform/host/config_store.h"
#include "platform/host/network_service.h"

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
constexpr std::chrono::seconds kServiceCheck{1};

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

// The request to refresh all of the menu; the one of the network branch alone comes earlier.
class RefreshWatch {
 public:
  RefreshWatch()
      : subscription_(
            ConfigStore::instance().subscribe(kRefreshKey, [this](const std::string& key) {
              asked_ = asked_ || ConfigStore::instance().get(key) == kRefreshAll;
            })) {}
  bool hasCome() const { return asked_; }

 private:
  bool asked_ = false;
  Subscription subscription_;
};

void setAndShow(Session& session, const Options& options, int value) {
  menu::MenuModel& menu = session.menu();
  session.serveNetwork();
  menu.set(options.key, value);
  menu::runPending();
  printItem(menu.read(options.key), formatOf(options.json));
}

// The person's answer to a confirmation box; nothing when there is nobody to ask.
std::optional<bool> ask(Session& session, const menu::Provider::MessageBox& box) {
  const menu::Interruption interruption;
  if (isatty(STDIN_FILENO) == 0) return std::nullopt;
  std::cerr << box.text << "\n1 " << box.yes << "\n2 " << box.no << "\n? " << std::flush;
  const auto answer = session.readLine(interruption);
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
    if (!*answer) {
      std::cerr << "Nothing was changed.\n";
      return kDone;
    }
  }
  setAndShow(session, options, entry.value);
  return kDone;
}

int set(Session& session, const Options& options) {
  const menu::Interruption interruption;
  const RefreshWatch refresh;
  setAndShow(session, options, session.menu().findChoice(options.key, options.value).value);
  if (!options.wait) return kDone;
  if (interruption.runUntil([&] { return refresh.hasCome(); }, kLongestRefresh)) {
    if (!options.json) printLine("The menu is asked to refresh.");
    return kDone;
  }
  if (interruption.isAsked()) return kInterrupted;
  std::cerr << "ventaro: no request to refresh the menu came within " << kLongestRefresh.count()
            << " seconds; only the Wi-Fi switch asks for one\n";
  return kFailed;
}

// A connection that is asked for: its command, the network service's answer, and the network's
// state until that has settled.
class Connection {
 public:
  enum class Until { kAsked, kSettled };

  Connection(Session& session, Format format, Until until)
      : session_(session), menu_(session.menu()), format_(format) {
    follow(platform::host::kConnectCommandKey, [this] { commandIsStored_ = true; });
    if (until == Until::kAsked) return;
    follow(platform::host::kConnectAnswerKey, [this] { hear(); });
    follow("db/menu/network/TopSavedAP", [this] { look(); });
  }

  // Gives the command. RefusedError when there is no such network, or nothing could be stored.
  const Item& ask(int position) {
    position_ = position;
    asked_ = menu_.connect(position);
    menu::runPending();
    if (!commandIsStored_) {
      throw menu::RefusedError(
          "the command to connect could not be stored; VENTARO_LOG=stderr "
          "shows why");
    }
    return asked_;
  }

  // Waits until the network is connected or will not be; the latter leaves the reason in problem().
  // Connects by itself when no other process runs the network service, or the one that does ends.
  bool wait(const menu::Interruption& interruption) {
    const menu::Ticker ticker(kServiceCheck, [this] { serveIfNobodyDoes(); });
    interruption.runUntil(
        [this] { return state_ == NetworkState::kConnected || !problem_.empty(); },
        kLongestConnect);
    if (state_ != NetworkState::kConnected && problem_.empty()) problem_ = "nothing answered";
    return state_ == NetworkState::kConnected;
  }

  const std::string& problem() const { return problem_; }

 private:
  void follow(const char* key, std::function<void()> action) {
    subscriptions_.push_back(ConfigStore::instance().subscribe(
        key, [wanted = std::string(key), action = std::move(action)](const std::string& changed) {
          if (changed == wanted) action();
        }));
  }

  void hear() {
    const auto answer = platform::host::lastConnectAnswer();
    if (!answer || accepted_) return;
    if (menu::displayText(answer->ssid) != asked_.name) {
      const auto commanded = platform::host::commandedNetwork();
      const bool isOurs = commanded && menu::displayText(*commanded) == asked_.name;
      if (!isOurs) problem_ = "another connection was asked for meanwhile";
      return;
    }
    accepted_ = answer->refusal.empty();
    problem_ = answer->refusal;
    look();
  }

  // At each news, not later: the next state may be published before the loop comes round again.
  void look() {
    if (!accepted_ || state_ == NetworkState::kConnected) return;
    const NetworkState state = menu_.stateOf(asked_);
    if (state == NetworkState::kNone) problem_ = "the connection was dropped";
    if (state != state_ && state != NetworkState::kNone) show(state);
    state_ = state;
  }

  void show(NetworkState state) const {
    Item item = asked_;
    item.state = state;
    printUpdate(item, format_);
  }

  void serveIfNobodyDoes() {
    if (session_.servesNetwork()) return;
    session_.serveNetwork();
    if (session_.servesNetwork() && !accepted_) asked_ = menu_.connect(position_);
  }

  Session& session_;
  menu::MenuModel& menu_;
  Format format_;
  int position_ = 0;
  Item asked_;
  bool commandIsStored_ = false;
  bool accepted_ = false;
  NetworkState state_ = NetworkState::kNone;
  std::string problem_;
  std::vector<Subscription> subscriptions_;
};

int connect(Session& session, const Options& options) {
  const menu::Interruption interruption;
  session.menu();
  if (!options.noWait) session.serveNetwork();
  Connection connection(session, formatOf(options.json),
                        options.noWait ? Connection::Until::kAsked : Connection::Until::kSettled);
  const Item& asked = connection.ask(options.position);
  if (options.noWait) {
    if (options.json) {
      printItem(asked, Format::kJson);
    } else {
      printLine("Asked the network service to connect to " + asked.name + ".");
    }
    return kDone;
  }
  if (connection.wait(interruption)) return kDone;
  if (interruption.isAsked()) return kInterrupted;
  std::cerr << "ventaro: " << asked.name << " did not connect: " << connection.problem() << '\n';
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
    printUpdate(menu.readAll(), formatOf(options.json));
  }
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
