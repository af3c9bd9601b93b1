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

// As guarded(), of a function that needs the Wi-Fi device.
template <typename Action>
int withWifi(const char* function, const Action& action) {
  return guarded(kNetwork, function,
                 [&action] { return network().hasWifi() ? action() : NetworkCode::kNoWifi; });
}

}  // namespace

int wifi_initialize() {
  return withWifi(__func__, [] { return NetworkCode::kOk; });
}

int wifi_get_connected_ap(wifi_ap_h* ap) {
  return withWifi(__func__, [ap] {
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
  return withWifi(__func__, [state] {
    if (state == nullptr) return NetworkCode::kNullArgument;
    *state = network().isRadioOn() ? 1 : 0;
    return NetworkCode::kOk;
  });
}

int wifi_set_enable_qx(int enable) {
  return withWifi(__func__, [enable] {
    network().setRadio(enable != 0);
    return NetworkCode::kOk;
  });
}
