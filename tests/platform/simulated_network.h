// Scenarios of the tests, and what the simulated network makes of them.
#ifndef TESTS_PLATFORM_SIMULATED_NETWORK_H
#define TESTS_PLATFORM_SIMULATED_NETWORK_H

#include <string>

#include "platform_test.h"

namespace platform_tests {

// So long that connecting does not finish.
constexpr int kForEver = 60'000;

// A radio that is on and connected to "Attic" (saved, 6135 MHz); "Shed" (saved, 2437 MHz) and
// "Door" (5220 MHz) are in range. A Wi-Fi and two Ethernet profiles.
std::string scenarioText(int connectMilliseconds, const std::string& connected = "Attic");

class NetworkTest : public PlatformTest {
 protected:
  // Makes the scenario the one that the network is loaded from.
  void use(const std::string& scenario) const;
};

// The SSID of the connected access point, found by the frequency that the Wi-Fi functions return;
// "none" when there is none.
std::string connectedNetwork();

// The saved networks as published: "Attic=Connected Shed=Disconnected".
std::string publishedNetworks();

// What the store holds below "memory/host/network/".
StoreValue networkState(const std::string& name);
void setNetworkState(const std::string& name, const StoreValue& value);

}  // namespace platform_tests

#endif  // TESTS_PLATFORM_SIMULATED_NETWORK_H
