#include "platform/wifi.h"

#include <set>

#include "call.h"

namespace fake_platform {
namespace {

struct State {
  int radio = 0;
  std::optional<int> frequencyMhz;
  std::optional<int> nullFrequencyMhz;
  std::set<const void*> open;
  int handedOut = 0;
};

State& state() {
  static State& instance = *new State;
  return instance;
}

bool isOpen(const void* ap) {
  const StateLock lock(stateMutex());
  return state().open.contains(ap);
}

void demandOpen(const void* ap) {
  demand(ap == nullptr || isOpen(ap), "an access point is used until it is destroyed");
}

}  // namespace

void resetWifi(Extent extent) {
  if (extent == Extent::kAll) state() = State();
  state().radio = 0;
  state().frequencyMhz.reset();
  state().nullFrequencyMhz.reset();
}

void setRadio(int value) {
  const StateLock lock(stateMutex());
  state().radio = value;
}

int radio() {
  const StateLock lock(stateMutex());
  return state().radio;
}

void setConnectedAp(std::optional<int> frequencyMhz) {
  const StateLock lock(stateMutex());
  state().frequencyMhz = frequencyMhz;
}

void setFrequencyOfNullAp(int frequencyMhz) {
  const StateLock lock(stateMutex());
  state().nullFrequencyMhz = frequencyMhz;
}

int openAps() {
  const StateLock lock(stateMutex());
  return static_cast<int>(state().open.size());
}

}  // namespace fake_platform

using namespace fake_platform;

int wifi_initialize() {
  return Call("wifi_initialize").answer([] { return 0; });
}

int wifi_get_connected_ap(wifi_ap_h* ap) {
  return Call("wifi_get_connected_ap").answer([&] {
    if (!state().frequencyMhz) return kError;
    *ap = newHandle("ap", ++state().handedOut);
    state().open.insert(*ap);
    return 0;
  });
}

// Here and below, null is allowed: the provider passes null when there is no access point.
int wifi_ap_get_frequency(wifi_ap_h ap, int* mhz) {
  demandOpen(ap);
  return Call("wifi_ap_get_frequency", Handle{ap}).answer([&] {
    const bool isOpen = state().open.contains(ap);
    if (ap != nullptr && !isOpen) return kError;
    const std::optional<int>& found = isOpen ? state().frequencyMhz : state().nullFrequencyMhz;
    if (!found) return kError;
    *mhz = *found;
    return 0;
  });
}

int wifi_ap_destroy(wifi_ap_h ap) {
  demandOpen(ap);
  return Call("wifi_ap_destroy", Handle{ap}).answer([&] {
    return state().open.erase(ap) == 1 ? 0 : kError;
  });
}

int wifi_get_enable_qx(int* value) {
  return Call("wifi_get_enable_qx").answer([&] {
    *value = state().radio;
    return 0;
  });
}

int wifi_set_enable_qx(int enable) {
  demand(enable == 0 || enable == 1, "the radio is switched with 0 or 1");
  return Call("wifi_set_enable_qx", enable).answer([&] {
    state().radio = enable;
    return 0;
  });
}
