// The callbacks that carry the values of menu items: integers by item, and the device name.
#include "c_heap.h"
#include "callbacks/callbacks.h"
#include "items.h"
#include "log.h"
#include "platform/config_store.h"
#include "settings/SavedAPConnection.h"

namespace {

constexpr char kDeviceNameKey[] = "db/menu/network/devicename/tv_name";

// Setting a saved network connects to it. Always -1: the outcome is not known yet and shows later
// in the network's state.
int connect(int network) {
  SavedAPConnection::GetInstance()->Connect(network - 1);
  return -1;
}

int get_int(const char* key, int* value) {
  LOG_MAIN("START");
  const ProviderLock lock(ProviderMutex);
  LOG_SYSTEM("Key ---->%s::Value------>%d\n", key, *value);
  const int result = itemOf(key).setting.getInt(key, value);
  LOG_SYSTEM("status------>%d\n", result);
  LOG_MAIN("END");
  return result;
}

int set_int(const char* key, int value) {
  LOG_MAIN("START");
  const ProviderLock lock(ProviderMutex);
  LOG_SYSTEM("Key ---->%s::Value------>%d\n", key, value);
  const Item& item = itemOf(key);
  const int result =
      item.savedNetwork != 0 ? connect(item.savedNetwork) : item.setting.setInt(key, value);
  LOG_MAIN("END");
  return result;
}

// Sets the device name, whatever the key: it is the only item that the user types.
int set_string(const char* /*key*/, const char* value) {
  const ProviderLock lock(ProviderMutex);
  LOG_MAIN("START");
  const int result = vconf_set_str(kDeviceNameKey, value);
  if (result != 0) {
    // Readers of the log know this failure by Wi-Fi Direct's message.
    LOG_SYSTEM("wifi_direct_set_device_name::status [0x%04x]", static_cast<unsigned>(result));
  } else {
    LOG_MAIN("Device Name set to %s", value);
  }
  return result;  // without "END": tools that read the log expect none here
}

// Runs without the lock: it touches only the store and the caller's buffer.
int get_current_value_sid(const char* /*key*/, char** value) {
  LOG_MAIN("START");
  int result = -1;
  const CText name(vconf_get_str(kDeviceNameKey));
  if (name != nullptr) {
    copyText(*value, VENTARO_CURRENT_VALUE_SIZE, name.get());
    result = 0;
  } else {
    LOG_SYSTEM("get_device_name::Failed");
  }
  LOG_MAIN("********* Value: %s **********", *value);
  LOG_MAIN("END");
  return result;
}

}  // namespace

void installValueCallbacks(data_provider_cbs& table) {
  table.set_int = set_int;
  table.set_string = set_string;
  table.get_int = get_int;
  table.get_current_value_sid = get_current_value_sid;
}
