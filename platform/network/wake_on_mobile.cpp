// The wake-on-mobile mode: a setting of the TV, so it lasts.
#include "guard.h"
#include "platform/app_util.h"
#include "platform/host/config_store.h"

namespace {

using platform::guarded;
using platform::NetworkCode;
using platform::host::ConfigStore;
using platform::host::StoreValue;

constexpr char kModeKey[] = "db/host/wake_on_mobile";

}  // namespace

int util_get_wakeOnMobile_mode(bool* enabled) {
  return guarded("util_get_wakeOnMobile_mode", [enabled] {
    if (enabled == nullptr) return NetworkCode::kNullArgument;
    *enabled = ConfigStore::instance().get(kModeKey) == StoreValue(true);
    return NetworkCode::kOk;
  });
}

int util_set_wakeOnMobile_mode(bool enable) {
  return guarded("util_set_wakeOnMobile_mode", [enable] {
    ConfigStore::instance().set(kModeKey, enable);
    return NetworkCode::kOk;
  });
}
