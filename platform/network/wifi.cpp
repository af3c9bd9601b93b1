// The Wi-Fi service's C functions.
#include "platform/wifi.h"

#include "guard.h"
#include "handles.h"
#include "network.h"

namespace {

using platform::AccessPoint;
using platform::guarded;
using platform::Handles;
using platform::network;
using platform::NetworkCode;

Handles<AccessPoint>& accessPoints() {
  static auto* const handles = new Handles<AccessPoint>;  // never destroyed
  return *handles;
}

}  // namespace

int wifi_initialize() {
  return guarded("wifi_initialize", [] {
    network();
    return NetworkCode::kOk;
  });
}

int wifi_get_connected_ap(wifi_ap_h* ap) {
  return guarded("wifi_get_connected_ap", [ap] {
    if (ap == nullptr) return NetworkCode::kNullArgument;
    const auto connected = network().connectedAccessPoint();
    if (!connected) return NetworkCode::kNotConnected;
    *ap = accessPoints().add(*connected);
    return NetworkCode::kOk;
  });
}

int wifi_ap_get_frequency(wifi_ap_h ap, int* mhz) {
  return guarded("wifi_ap_get_frequency", [ap, mhz] {
    if (ap == nullptr || mhz == nullptr) return NetworkCode::kNullArgument;
    const auto accessPoint = accessPoints().find(ap);
    if (accessPoint == nullptr) return NetworkCode::kBadHandle;
    *mhz = accessPoint->frequencyMhz;
    return NetworkCode::kOk;
  });
}

int wifi_ap_destroy(wifi_ap_h ap) {
  return guarded("wifi_ap_destroy", [ap] {
    if (ap == nullptr) return NetworkCode::kNullArgument;
    return accessPoints().remove(ap) ? NetworkCode::kOk : NetworkCode::kBadHandle;
  });
}

int wifi_get_enable_qx(int* state) {
  return guarded("wifi_get_enable_qx", [state] {
    if (state == nullptr) return NetworkCode::kNullArgument;
    *state = network().isRadioOn() ? 1 : 0;
    return NetworkCode::kOk;
  });
}

int wifi_set_enable_qx(int enable) {
  return guarded("wifi_set_enable_qx", [enable] {
    network().setRadio(enable != 0);
    return NetworkCode::kOk;
  });
}
