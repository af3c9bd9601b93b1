// The store of the TV that the environment describes.
#include "folders.h"
#include "never_destroyed.h"
#include "platform/host/config_store.h"

namespace platform::host {

namespace {

std::map<std::string, StoreValue> factorySettings() {
  return {
      {"db/menu_widget/language", "en_US"},
      {"db/menu/network/devicename/default_tv_name", "Living Room TV"},
      {"db/menu/network/devicename/tv_name", "Living Room TV"},
      {"db/menu/network/wifidirect", 0},
      {"db/menu/network/wiredeap", 0},
      {"db/menu/system/accessibility/highcontrast", 0},
      {"db/host/wake_on_mobile", false},
      {"memory/ephotel/hotelmenu/hotelfactorymode", false},
  };
}

}  // namespace

ConfigStore& ConfigStore::instance() {
  static auto& store =
      neverDestroyed(new ConfigStore({stateFolder, runtimeFolder, factorySettings}));
  return store;
}

}  // namespace platform::host
