#include "expectations.h"

#include <chrono>
#include <utility>

#include "../host/main_loop.h"
#include "../host/notifications.h"
#include "../host/typed_name.h"
#include "exit_codes.h"
#include "item_text.h"
#include "output.h"
#include "session.h"
#include "stream.h"

namespace cli {

namespace {

using menu::Item;
using menu::ItemKind;

constexpr std::chrono::seconds kLongestWait{60};

// What an item is expected to show.
class Expectation {
 public:
  // Raises UnknownError where the item can never show that.
  Expectation(menu::MenuModel& menu, const Arguments& arguments)
      : menu_(menu), value_(arguments.text("VALUE")), item_(menu.read(arguments.text("KEY"))) {
    // Those two can show more than their lists have.
    const bool isOpen =
        item_.kind == ItemKind::kDeviceName || item_.kind == ItemKind::kSavedNetwork;
    if (!isOpen) menu.findChoice(item_.key, value_);
  }

  // The item as it was last read.
  const Item& item() const { return item_; }
  void readAnew() { item_ = menu_.read(item_.key); }

  bool isMet() const {
    const bool isNumber = item_.position && value_ == std::to_string(*item_.position);
    return isNumber || menu::isSameName(value_, shownValue(item_));
  }

  // "menu/network/WiFiOnOff: expected "On", but it shows "Off""
  std::string difference() const {
    return item_.key + ": expected \"" + value_ + "\", but it shows \"" + shownValue(item_) + "\"";
  }

 private:
  menu::MenuModel& menu_;
  std::string value_;
  Item item_;
};

}  // namespace

int wait(Session& session, const Arguments& arguments) {
  const menu::Interruption interruption;
  Expectation expectation(session.menu(), arguments);
  session.serveNetwork();
  // Which keys an item reads is the provider's own affair, so every key counts.
  bool isDue = true;
  const auto subscriptions = menu::onAnySet([&isDue] { isDue = true; });
  const auto limit = arguments.number("--within").value_or(kLongestWait.count());
  const auto isMet = [&] {
    if (std::exchange(isDue, false)) expectation.readAnew();
    return expectation.isMet();
  };
  if (interruption.runUntil(isMet, std::chrono::seconds(limit))) {
    Printer(arguments).print(expectation.item());
    return kDone;
  }
  if (interruption.isAsked()) return interruption.exitCode();
  complain(expectation.difference() + " after " + std::to_string(limit) +
           (limit == 1 ? " second" : " seconds"));
  return kOtherwise;
}

int expect(Session& session, const Arguments& arguments) {
  const Expectation expectation(session.menu(), arguments);
  if (!expectation.isMet()) {
    complain(expectation.difference());
    return kOtherwise;
  }
  Printer(arguments).print(expectation.item());
  return kDone;
}

}  // namespace cli
