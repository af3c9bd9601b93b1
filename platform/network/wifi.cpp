// The Wi-Fi service's C functions.
#include "platform/wifi.h"

#include "handles.h"
#include "network.h"
#include "network_code.h"

namespace {

using platform::AccessPoint;
using platform::guarded;
using platform::handlesOf;
using platform::kNetwork;
using platform::network;
using platform::NetworkCode;

}  // namespace

int wifi_initialize() {
  return guarded(kNetwork, __func__, [] { network(); });
}

int wifi_get_connected_ap(wifi_ap_h* ap) {
  return guarded(kNetwork, __func__, [ap] {
    if (ap == nullptr) return NetworkCode::kNullArgument;
    const auto connected = network().connectedAccessPoint();
    if (!connected) return NetworkCode::kNotConnected;
    *ap = handlesOf<AccessPoint>().add(*connected);
    return NetworkCode::kOk;
  });
}

int wifi_ap_get_frequency(wifi_ap_h ap, int* mhz) {
  return guarded(kNetwork, __func__, [ap, mhz] {
    if (ap == nullptr || mhz == nullptr) return NetworkCode::kNullArgument;
    const auto accessPoint = handlesOf<AccessPoint>().find(ap);
    if (accessPoint == nullptr) return NetworkCode::kBadHandle;
    *mhz = accessPoint->frequencyMhz;
    return NetworkCode::kOk;
  });
}

int wifi_ap_destroy(wifi_ap_h ap) {
  return guarded(kNetwork, __func__, [ap] {
    if (ap == nullptr) return NetworkCode::kNullArgument;
    return handlesOf<AccessPoint>().remove(ap) ? NetworkCode::kOk : NetworkCode::kBadHandle;
  });
}

int wifi_get_enable_qx(int* state) {
  return guarded(kNetwork, __func__, [state] {
    if (state == nullptr) return NetworkCode::kNullArgument;
    *state = network().isRadioOn() ? 1 : 0;
    return NetworkCode::kOk;
  });
}

int wifi_set_enable_qx(int enable) {
  return guarded(kNetwork, __func__, [enable] { network().setRadio(enable != 0); });
}
