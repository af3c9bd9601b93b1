// What changes in a menu from one reading to the next.
#ifndef MENU_CLI_MENU_CHANGES_H
#define MENU_CLI_MENU_CHANGES_H

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "../host/menu_model.h"

namespace cli {

class MenuChanges {
 public:
  // An item has changed when `shown` says something else of it.
  using Shown = std::function<std::string(const menu::Item&)>;
  explicit MenuChanges(Shown shown) : shown_(std::move(shown)) {}

  // The items that are not as they were last given, each without those below it; at first, all.
  std::vector<menu::Item> since(const std::vector<menu::Item>& items);

 private:
  void collect(const std::vector<menu::Item>& items, std::vector<menu::Item>& changed);

  Shown shown_;
  std::map<std::string, std::string> last_;  // what was last shown, by key
};

}  // namespace cli

#endif  // MENU_CLI_MENU_CHANGES_H
