#include "network.h"

#include <cstdlib>
#include <memory>

#include "platform/host/errors.h"
#include "simulated_network.h"

namespace platform {

namespace {

std::unique_ptr<Network> makeNetwork() {
  const char* variable = std::getenv("VENTARO_NETWORK");
  const std::string name = variable != nullptr && *variable != '\0' ? variable : "simulated";
  if (name == "simulated") return std::make_unique<SimulatedNetwork>();
  throw host::ConfigurationError("VENTARO_NETWORK is \"" + name + "\"; there is: simulated");
}

}  // namespace

Network& network() {
  // Never destroyed: a library that is unloaded at exit may still ask.
  static auto* const chosen = makeNetwork().release();
  return *chosen;
}

}  // namespace platform
