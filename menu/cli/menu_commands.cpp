#include "menu_commands.h"

#include <chrono>

#include "../host/connection.h"
#include "../host/main_loop.h"
#include "../host/notifications.h"
#include "exit_codes.h"
#include "output.h"
#include "platform/host/product.h"
#include "platform/host/resources.h"
#include "platform/host/visible_text.h"
#include "product_process.h"
#include "question.h"
#include "session.h"
#include "stream.h"
#include "terminal.h"

namespace cli {

namespace {

using menu::Item;

// The provider asks eight seconds after the last switch, and not at all for other settings.
constexpr std::chrono::seconds kLongestRefresh{20};

View viewFor(const Arguments& arguments) {
  const bool keys = arguments.has("--keys");
  const Terminal terminal = outputTerminal();
  if (arguments.has("--brief")) return {Detail::kLine, keys};
  return {arguments.has("--all") || !terminal.isThere ? Detail::kAll : Detail::kScreen, keys};
}

// Complains of the callbacks that failed while the items were read. Returns an ExitCode.
int reportProblems(const std::vector<Item>& items) {
  int result = kDone;
  for (const Item& item : items) {
    for (const std::string& problem : item.problems) complain(item.key + ": " + problem);
    if (!item.problems.empty()) result = kFailed;
    if (reportProblems(item.items) != kDone) result = kFailed;
  }
  return result;
}

void setAndShow(Session& session, const Arguments& arguments, int value) {
  menu::MenuModel& menu = session.menu();
  const std::string key = arguments.text("KEY");
  session.serveNetwork();
  menu.set(key, value);
  menu::runPending();
  Printer(arguments).print(menu.read(key));
}

// All of the item of a network, in the state that the network was told to be in.
Item readInState(menu::MenuModel& menu, const Item& network) {
  Item item = menu.read(network.key);
  if (item.name != network.name) return network;  // another one has taken its position meanwhile
  item.state = network.state;
  return item;
}

// The menu of each product, with the product's name before it.
int showAll(Session& session, const Arguments& arguments) {
  if (session.isLoaded()) throw menu::RefusedError("this shell has a product already");
  const bool isJson = arguments.has("--json");
  Json::Value all(Json::arrayValue);
  int result = kDone;
  for (const std::string& product : platform::host::resourceNames("products")) {
    Json::Value json(Json::objectValue);
    json["product"] = product;
    json["description"] = platform::host::loadProduct(product).description;
    const auto [productResult, shown] = inProcessOf(product, [&](std::string& output) {
      const std::vector<Item> items = session.menu().readAll();
      output = isJson ? jsonText(toJson(items), "") : toText(items, viewFor(arguments));
      return reportProblems(items);
    });
    if (productResult != kDone) result = productResult;
    if (isJson) {
      json["items"] = jsonOf(shown);
      all.append(json);
    } else {
      print(toText(Descriptions{{product, json["description"].asString()}}));
      printLine("\n" + shown);
    }
  }
  if (isJson) print(jsonText(all, "  "));
  return result;
}

}  // namespace

int show(Session& session, const Arguments& arguments) {
  if (wantsAllProducts()) return showAll(session, arguments);
  const std::vector<Item> items = session.menu().readAll();
  Printer(arguments).print(items, viewFor(arguments));
  return reportProblems(items);
}

int get(Session& session, const Arguments& arguments) {
  const Item item = session.menu().read(arguments.text("KEY"));
  Printer(arguments).print(item, viewFor(arguments));
  return reportProblems({item});
}

int list(Session& session, const Arguments& arguments) {
  Printer(arguments).print(session.menu().list(arguments.text("KEY")));
  return kDone;
}

int box(Session& session, const Arguments& arguments) {
  Printer(arguments).print(session.menu().box(arguments.text("KEY")));
  return kDone;
}

int choose(Session& session, const Arguments& arguments) {
  menu::MenuModel& menu = session.menu();
  const std::string key = arguments.text("KEY");
  const auto entry = menu.findChoice(key, arguments.text("INDEX"));
  if (entry.action == ITEM_FOLLOWING_ACTION_MESSAGE_BOX && !arguments.has("--yes")) {
    if (const auto end = endUnlessYes(session, menu.box(key))) return *end;
  }
  setAndShow(session, arguments, entry.value);
  return kDone;
}

int set(Session& session, const Arguments& arguments) {
  const menu::Interruption interruption;
  bool refresh = false;
  const auto subscription =
      menu::onRefreshRequest(menu::Refresh::kWholeMenu, [&refresh] { refresh = true; });
  const auto entry = session.menu().findChoice(arguments.text("KEY"), arguments.text("VALUE"));
  setAndShow(session, arguments, entry.value);
  if (!arguments.has("--wait")) return kDone;
  if (interruption.runUntil([&refresh] { return refresh; }, kLongestRefresh)) {
    Printer(arguments).note("The menu is asked to refresh.");
    return kDone;
  }
  if (interruption.isAsked()) return interruption.exitCode();
  complain("no request to refresh the menu came within " + std::to_string(kLongestRefresh.count()) +
           " seconds; only the Wi-Fi switch asks for one");
  return kFailed;
}

int connect(Session& session, const Arguments& arguments) {
  const menu::Interruption interruption;
  menu::MenuModel& menu = session.menu();
  const Printer printer(arguments, Results::kSeries);
  const int position = arguments.number("POSITION").value();
  if (arguments.has("--no-wait")) {
    const Item network = menu::askToConnect(menu, position);
    if (arguments.has("--json")) {
      printer.print(menu.read(network.key));
    } else {
      printLine("Asked the network service to connect to " +
                platform::host::visibleLine(network.name) + ".");
    }
    return kDone;
  }
  session.serveNetwork();
  menu::Connection connection(
      menu, position, [&session] { return session.serveNetwork(); },
      [&](const Item& network) { printer.print(readInState(menu, network)); });
  interruption.runUntil([&connection] { return connection.hasEnded(); });
  if (connection.isConnected()) return kDone;
  if (interruption.isAsked()) return interruption.exitCode();
  complain(connection.network().name + " did not connect: " + connection.problem());
  return kFailed;
}

int name(Session& session, const Arguments& arguments) {
  menu::MenuModel& menu = session.menu();
  const std::string key = menu.rename(arguments.text("TEXT"));
  menu::runPending();
  Printer(arguments).print(menu.read(key));
  return kDone;
}

}  // namespace cli
