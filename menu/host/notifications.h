// Notifications of the configuration store. They come from the main loop; what raises in one is
// logged and goes no further.
#ifndef MENU_HOST_NOTIFICATIONS_H
#define MENU_HOST_NOTIFICATIONS_H

#include <functional>
#include <string>
#include <vector>

#include "platform/host/config_store.h"

namespace menu {

using platform::host::Subscription;

// Calls `action` after every set of that key, by any process. Raises platform::host::StoreError.
[[nodiscard]] Subscription onSet(const std::string& key, std::function<void()> action);

// Calls `action` after every set of any key, by any process. Raises platform::host::StoreError.
[[nodiscard]] std::vector<Subscription> onAnySet(const std::function<void()>& action);

// What a provider or the platform can ask the menu to refresh.
enum class Refresh { kAnyPart, kWholeMenu };

// Calls `action` whenever the menu is asked to refresh that. Raises platform::host::StoreError.
[[nodiscard]] Subscription onRefreshRequest(Refresh wanted, std::function<void()> action);

}  // namespace menu

#endif  // MENU_HOST_NOTIFICATIONS_H
