// The callback that gives an item's value as text.
#include <cstring>

#include "c_heap.h"
#include "callbacks/callbacks.h"
#include "items.h"
#include "log.h"
#include "platform/config_store.h"

namespace {

constexpr int kAnswered = 1;

// Gives the caller the stored name in `*text`. Returns 0, or -1 when there is none.
int putDeviceName(char** text) {
  int status = -1;
  const CText stored(vconf_get_str("db/menu/network/devicename/tv_name"));
  if (stored == nullptr) {
    LOG_MAIN("wifi_direct_get_device_name::status [0x%04x]", static_cast<unsigned>(status));
    return status;
  }
  status = 0;
  LOG_MAIN("wifi_direct_get_device_name::status [0x%04x]", static_cast<unsigned>(status));
  *text = strdup(stored.get());
  return status;
}

int get_string(const char* key, char** value) {
  const ProviderLock lock(ProviderMutex);
  LOG_MAIN("START");
  if (const Setting& setting = itemOf(key).setting; setting.putText != nullptr) {
    setting.putText(value);
  } else if (putDeviceName(value) != 0) {
    return -1;  // without "END": tools that read the log expect none here
  }
  LOG_MAIN("END");
  return kAnswered;
}

}  // namespace

void installStringValueCallbacks(data_provider_cbs& table) {
  table.get_string = get_string;
}
