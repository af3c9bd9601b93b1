#include "menu_changes.h"

#include <utility>

namespace cli {

using menu::Item;

std::vector<Item> MenuChanges::since(const std::vector<Item>& items) {
  std::vector<Item> changed;
  collect(items, changed);
  return changed;
}

void MenuChanges::collect(const std::vector<Item>& items, std::vector<Item>& changed) {
  for (const Item& item : items) {
    Item alone = item;
    alone.items.clear();
    std::string now = shown_(alone);
    std::string& before = last_[item.key];
    const bool isChanged = now != before;
    before = std::move(now);
    if (isChanged) changed.push_back(std::move(alone));
    collect(item.items, changed);
  }
}

}  // namespace cli
