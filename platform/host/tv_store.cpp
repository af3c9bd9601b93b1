// The store of the TV that the environment describes.
#include "never_destroyed.h"
#include "platform/host/config_store.h"
#include "platform/host/errors.h"
#include "platform/host/folders.h"
#include "platform/host/json_file.h"
#include "platform/host/resources.h"

namespace platform::host {

namespace {

constexpr char kFactorySettings[] = "products/factory/settings.json";

std::map<std::string, StoreValue> factorySettings() {
  try {
    const JsonFile file(resourceFile(kFactorySettings));
    std::map<std::string, StoreValue> settings = file.values(file.root());
    for (const auto& [key, value] : settings) {
      try {
        ConfigStore::check(key, value);
      } catch (const StoreError& error) {
        file.fail(file.root()[key], error.what());
      }
    }
    return settings;
  } catch (const ConfigurationError& error) {
    throw StoreError(StoreCode::kUnavailable, error.what());
  }
}

}  // namespace

ConfigStore& ConfigStore::instance() {
  static auto& store =
      neverDestroyed(new ConfigStore({stateFolder, runtimeFolder, factorySettings}));
  return store;
}

}  // namespace platform::host
