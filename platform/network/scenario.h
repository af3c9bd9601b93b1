// What the simulated network holds at its start, as a person writes it down; docs/scenario-file.md
// says what each member means.
#ifndef PLATFORM_NETWORK_SCENARIO_H
#define PLATFORM_NETWORK_SCENARIO_H

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include "network.h"

namespace platform {

struct Scenario {
  bool hasWifi = true;
  bool radioOn = false;
  std::string connected;                  // an SSID; empty for none
  std::chrono::milliseconds connectTime;  // how long connecting takes
  std::vector<AccessPoint> accessPoints;  // the saved ones in the order in which the TV ranks them
  std::vector<Profile> profiles;
};

// Raises ConfigurationError, also when `connected` is none of the access points.
Scenario readScenario(const std::filesystem::path& path);

}  // namespace platform

#endif  // PLATFORM_NETWORK_SCENARIO_H
