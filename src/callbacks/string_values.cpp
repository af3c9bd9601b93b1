// The callback that gives an item's value as text.
#include <cstring>

#include "c_heap.h"
#include "callbacks/callbacks.h"
#include "globals.h"
#include "log.h"
#include "menu_keys.h"
#include "platform/config_store.h"

namespace {

constexpr int kAnswered = 1;

// A setting whose value is the word On or Off. An unreadable setting leaves `*text` as it was, and
// that is what its log line then shows.
struct OnOffSetting {
  menu_keys::Key key;
  void (*putText)(char** text);
};

void putMobileDeviceTV(char** text) {
  CMobileDeviceTVObj.setOnOffStatus(text);
  LOG_MAIN("CMobileDeviceTVObj.setOnOffStatus==%s", *text);
}

void putWiFiOnOff(char** text) {
  CWiFiOnOffObj.setOnOffStatus(text);
  LOG_MAIN("CWiFiOnOffObj.setOnOffStatus==%s", *text);
}

void putWiFiDirect(char** text) {
  CWiFiDirectObj.setOnOffStatus(text);
  LOG_MAIN("CWiFiDirectObj.setOnOffStatus==%s", *text);
}

void putWiredEAP(char** text) {
  CWiredEAPObj.setOnOffStatus(text);
  LOG_MAIN("CWiredEAPObj.setOnOffStatus==%s", *text);
}

constexpr OnOffSetting kOnOffSettings[] = {
    {menu_keys::kMobileDeviceTvUs, putMobileDeviceTV},
    {menu_keys::kWiFiOnOff, putWiFiOnOff},
    {menu_keys::kWifiDirect, putWiFiDirect},
    {menu_keys::kWiredEap, putWiredEAP},
};

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
  if (const OnOffSetting* setting = menu_keys::find<kOnOffSettings>(key)) {
    setting->putText(value);
  } else if (putDeviceName(value) != 0) {
    return -1;  // no "END", deliberately
  }
  LOG_MAIN("END");
  return kAnswered;
}

}  // namespace

void installStringValueCallbacks(data_provider_cbs& table) {
  table.get_string = get_string;
}
