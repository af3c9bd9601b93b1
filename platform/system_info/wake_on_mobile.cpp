// The wake-on-mobile mode: a setting of the TV, so it is persistent.
#include "../host/guard.h"
#include "platform/app_util.h"
#include "platform/host/config_store.h"

namespace {

using platform::guarded;
using platform::host::ConfigStore;
using platform::host::StoreCode;
using platform::host::StoreValue;

constexpr platform::Service kWakeOnMobile = {"NETWORK", platform::storeCodeOf};
constexpr char kModeKey[] = "db/host/wake_on_mobile";

}  // namespace

int util_get_wakeOnMobile_mode(bool* enabled) {
  return guarded(kWakeOnMobile, __func__, [enabled] {
    if (enabled == nullptr) return StoreCode::kNullArgument;
    *enabled = ConfigStore::instance().get(kModeKey) == StoreValue(true);
    return StoreCode::kOk;
  });
}

int util_set_wakeOnMobile_mode(bool enable) {
  return guarded(kWakeOnMobile, __func__,
                 [enable] { ConfigStore::instance().set(kModeKey, enable); });
}
