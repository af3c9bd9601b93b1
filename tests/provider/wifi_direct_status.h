// Pieces of expected journals: how Wi-Fi Direct determines its status, for every key that shows it.
#ifndef WIFI_DIRECT_STATUS_H
#define WIFI_DIRECT_STATUS_H

#include <string>

#include "fake_platform.h"

// At the access point whose handle is "ap 1" ...
inline fake_platform::Journal wifiDirectStatusAt(int frequencyMhz) {
  using fake_platform::call;
  using fake_platform::mainLog;
  return {call("wifi_initialize"),
          mainLog("Wifi init succeeded\n"),
          call("wifi_get_connected_ap"),
          call("wifi_ap_get_frequency", "ap 1"),
          mainLog("Frequency : " + std::to_string(frequencyMhz) + "\n"),
          call("wifi_ap_destroy", "ap 1"),
          call("vconf_get_int", "db/menu/network/wifidirect")};
}

// ... and at none.
inline fake_platform::Journal wifiDirectStatusWithoutAp() {
  using fake_platform::call;
  using fake_platform::mainLog;
  return {call("wifi_initialize"),
          mainLog("Wifi init succeeded\n"),
          call("wifi_get_connected_ap"),
          mainLog("Fail to get connected AP "),
          call("wifi_ap_get_frequency", "null"),
          call("wifi_ap_destroy", "null"),
          call("vconf_get_int", "db/menu/network/wifidirect")};
}

#endif  // WIFI_DIRECT_STATUS_H
