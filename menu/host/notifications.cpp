#include "notifications.h"

#include <utility>

namespace menu {

namespace {

using platform::host::ConfigStore;
using platform::host::StoreValue;

constexpr char kRefreshKey[] = "db/menu/refresh_menu";
const StoreValue kRefreshWholeMenu = 1;

}  // namespace

Subscription onSet(const std::string& key, std::function<void()> action) {
  // The store tells of every key that begins so.
  return ConfigStore::instance().subscribe(
      key, [key, action = std::move(action)](const std::string& changed) {
        if (changed == key) action();
      });
}

Subscription onRefreshRequest(Refresh wanted, std::function<void()> action) {
  return onSet(kRefreshKey, [wanted, action = std::move(action)] {
    if (wanted == Refresh::kAnyPart ||
        ConfigStore::instance().get(kRefreshKey) == kRefreshWholeMenu) {
      action();
    }
  });
}

}  // namespace menu
