#include "network.h"

#include <memory>

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

Network& network() {
  static auto& chosen = neverDestroyed(makeNetwork().release());
  return chosen;
}

}  // namespace platform
