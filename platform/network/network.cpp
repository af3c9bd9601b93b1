#include "network.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "../host/environment.h"
#include "../host/never_destroyed.h"
#include "platform/host/errors.h"
#include "simulated_network.h"

namespace platform {

namespace {

std::unique_ptr<Network> makeNetwork() {
  const std::string name = variableOr("VENTARO_NETWORK", "simulated");
  if (name == "simulated") return std::make_unique<SimulatedNetwork>();
  throw host::UnknownNameError("VENTARO_NETWORK is \"" + name + "\"; there is: simulated");
}

}  // namespace

const AccessPoint* strongest(const std::vector<AccessPoint>& points, const std::string& ssid) {
  const auto weight = [&ssid](const AccessPoint& point) {
    return std::pair(point.ssid == ssid, point.signalDbm);
  };
  const auto found = std::ranges::max_element(points, {}, weight);
  return found != points.end() && found->ssid == ssid ? &*found : nullptr;
}

std::map<std::string_view, const AccessPoint*> strongestOfEach(
    const std::vector<AccessPoint>& points) {
  std::map<std::string_view, const AccessPoint*> strongest;
  for (const AccessPoint& point : points) {
    const AccessPoint*& found = strongest.try_emplace(point.ssid, &point).first->second;
    if (point.signalDbm > found->signalDbm) found = &point;
  }
  return strongest;
}

Network& network() {
  static auto& chosen = neverDestroyed(makeNetwork().release());
  return chosen;
}

}  // namespace platform
