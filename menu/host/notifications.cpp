#include "notifications.h"

#include <utility>

#include "ventaro/data_provider.h"

namespace menu {

namespace {

using platform::host::ConfigStore;
using platform::host::StoreValue;

const StoreValue kRefreshWholeMenu = VENTARO_REFRESH_WHOLE_MENU;

}  // namespace

Subscription onSet(const std::string& key, std::function<void()> action) {
  // The store tells of every key that begins so.
  return ConfigStore::instance().subscribe(
      key, [key, action = std::move(action)](const std::string& changed) {
        if (changed == key) action();
      });
}

std::vector<Subscription> onAnySet(const std::function<void()>& action) {
  std::vector<Subscription> subscriptions;
  for (const char* area : {"db/", "memory/"}) {
    subscriptions.push_back(ConfigStore::instance().subscribe(
        area, [action](const std::string& /*key*/) { action(); }));
  }
  return subscriptions;
}

Subscription onRefreshRequest(Refresh wanted, std::function<void()> action) {
  return onSet(VENTARO_STORE_REFRESH, [wanted, action = std::move(action)] {
    if (wanted == Refresh::kAnyPart ||
        ConfigStore::instance().get(VENTARO_STORE_REFRESH) == kRefreshWholeMenu) {
      action();
    }
  });
}

}  // namespace menu
