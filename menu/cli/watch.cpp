#include "watch.h"

#include <glib.h>

#include <algorithm>
#include <memory>
#include <set>

#include "../host/main_loop.h"
#include "../host/notifications.h"
#include "exit_codes.h"
#include "menu_changes.h"
#include "output.h"
#include "screen_text.h"
#include "session.h"
#include "stream.h"
#include "terminal.h"

namespace cli {

namespace {

using menu::Item;

std::string timeOfDay() {
  const std::unique_ptr<GDateTime, decltype(&g_date_time_unref)> now(g_date_time_new_now_local(),
                                                                     g_date_time_unref);
  const std::unique_ptr<char, decltype(&g_free)> text(g_date_time_format(now.get(), "%H:%M:%S"),
                                                      g_free);
  return text.get();
}

// How a menu that changes is shown.
class Form {
 public:
  virtual ~Form() = default;

  // What is shown of an item: the menu is shown again when this does.
  virtual std::string shown(const Item& item) const { return toText(item); }

  virtual void show(const std::vector<Item>& items, const std::vector<Item>& changed) = 0;
};

// One menu after the other, each with an empty line behind it.
class Listing : public Form {
 public:
  void show(const std::vector<Item>& items, const std::vector<Item>& /*changed*/) override {
    print(toText(items) + "\n");
  }
};

// The items that changed, an object in a line each.
class JsonLines : public Form {
 public:
  std::string shown(const Item& item) const override { return jsonText(toJson(item), ""); }

  void show(const std::vector<Item>& /*items*/, const std::vector<Item>& changed) override {
    for (const Item& item : changed) print(shown(item));
  }
};

// One menu, drawn anew in its place, with the time and marks at what changed.
class Redrawn : public Form {
 public:
  void show(const std::vector<Item>& items, const std::vector<Item>& changed) override {
    std::set<std::string> keys;
    if (height_ > 0) {  // at the first time nothing has changed yet
      for (const Item& item : changed) keys.insert(item.key);
    }
    std::vector<std::string> lines = screenLines(items, keys);
    lines.insert(lines.begin(), timeOfDay());
    std::string text;
    // What has scrolled away cannot be drawn over.
    const std::size_t reachable = std::min(height_, outputTerminal().height - 1);
    if (reachable > 0) text = "\033[" + std::to_string(reachable) + "F\033[J";
    for (const std::string& line : lines) text += line + "\n";
    print(text);
    height_ = lines.size();
  }

 private:
  std::size_t height_ = 0;  // in lines, of what was drawn last
};

std::unique_ptr<Form> formFor(const Arguments& arguments) {
  if (arguments.has("--json")) return std::make_unique<JsonLines>();
  if (outputTerminal().canRedraw) return std::make_unique<Redrawn>();
  return std::make_unique<Listing>();
}

}  // namespace

int watch(Session& session, const Arguments& arguments) {
  const menu::Interruption interruption;
  session.menu();
  session.serveNetwork();
  // Which keys an item reads is the provider's own affair, so every key counts.
  bool isDue = true;
  const auto subscriptions = menu::onAnySet([&isDue] { isDue = true; });
  const std::unique_ptr<Form> form = formFor(arguments);
  MenuChanges changes([&form](const Item& item) { return form->shown(item); });
  while (interruption.runUntil([&isDue] { return isDue; })) {
    isDue = false;
    const std::vector<Item> items = session.menu().readAll();
    const std::vector<Item> changed = changes.since(items);
    if (!changed.empty()) form->show(items, changed);
    if (!standardOutputIsWritten()) return kFailed;
  }
  return kDone;
}

}  // namespace cli
