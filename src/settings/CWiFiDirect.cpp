#include "settings/CWiFiDirect.h"

#include <cstring>

#include "log.h"
#include "platform/config_store.h"
#include "platform/wifi.h"
#include "ventaro/data_provider.h"

namespace {

constexpr char kPreferenceKey[] = "db/menu/network/wifidirect";
enum Preference : int { kUnreadable = -1, kNeverChosen = 0, kOn = 1, kOff = 2 };

// The upper end of the 5 GHz band: a channel above it is in the 6 GHz band.
constexpr int kHighest5GhzChannelMhz = 5915;

}  // namespace

CWiFiDirect::CWiFiDirect() {
  setInitialValue();
}

int CWiFiDirect::getInt(const char* /*key*/, int* value) {
  *value = getWifiDirectStatus() ? 1 : 0;
  LOG_MAIN("getInt , value after changing = %d", *value);
  return 1;
}

int CWiFiDirect::setInt(const char* /*key*/, int value) {
  const int preference = value == 1 ? kOn : kOff;
  const int result = vconf_set_int(kPreferenceKey, preference);
  LOG_MAIN("Set Int Status=%d::%d", result, preference);
  return result;
}

const char** CWiFiDirect::getListItems(const char* key, int* count) {
  fillList();
  if (std::strcmp(key, VENTARO_KEY_WIFI_DIRECT) != 0) return nullptr;
  LOG_MAIN("listSize==%d\n", m_itemTexts.count());
  return m_itemTexts.copy(count);
}

void CWiFiDirect::fillList() {
  m_itemTexts.fill();
}

void CWiFiDirect::setOnOffStatus(char** text) {
  const bool on = getWifiDirectStatus();
  LOG_MAIN("setOnOffStatus %d", static_cast<int>(on));
  putOnOffText(on, text);
}

bool CWiFiDirect::getWifiDirectStatus() {
  const bool connected6G = IsConnectedAP6G();
  // The preference is always read, even off 6 GHz.
  const int preference = getVconfValue();
  return connected6G && (preference == kNeverChosen || preference == kOn);
}

bool CWiFiDirect::IsConnectedAP6G() {
  // Every step runs even if the one before it failed; the handle is null unless one was returned.
  wifi_ap_h accessPoint = nullptr;
  if (wifi_initialize() == 0) LOG_MAIN("Wifi init succeeded\n");
  if (wifi_get_connected_ap(&accessPoint) != 0) LOG_MAIN("Fail to get connected AP ");
  bool is6G = false;
  int frequencyMhz = 0;
  if (wifi_ap_get_frequency(accessPoint, &frequencyMhz) == 0) {
    LOG_MAIN("Frequency : %d\n", frequencyMhz);
    is6G = frequencyMhz > kHighest5GhzChannelMhz;
  }
  wifi_ap_destroy(accessPoint);
  return is6G;
}

int CWiFiDirect::getVconfValue() {
  int preference = kUnreadable;
  vconf_get_int(kPreferenceKey, &preference);
  return preference;
}

void CWiFiDirect::setInitialValue() {
  const bool status = getWifiDirectStatus();
  if (getVconfValue() == kNeverChosen && status) vconf_set_int(kPreferenceKey, kOn);
}
