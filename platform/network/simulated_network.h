// A network that exists in the configuration store only, below "memory/host/network/", so that
// every process sees the same radio and a person can change it while the menu runs:
//
//   scenario              string  the scenario that the state was loaded from, as it was named
//   scenario_variable     string  the value of $VENTARO_SCENARIO that was last heeded
//   wifi                  bool    whether there is a Wi-Fi device; not set: there is
//   radio                 bool    whether Wi-Fi is on
//   connected             string  the SSID of the connected access point, or empty
//   connecting            string  the SSID that the network service is connecting to, or empty
//   connect_milliseconds  int     how long connecting takes
//   access_points         string  JSON, as in the scenario; each name in "ssid", as its bytes
//   profiles              string  JSON, as in the scenario
//   eap/<profile>         bool    802.1X on that Ethernet profile
#ifndef PLATFORM_NETWORK_SIMULATED_NETWORK_H
#define PLATFORM_NETWORK_SIMULATED_NETWORK_H

#include <chrono>
#include <string>

#include "network.h"
#include "scenario.h"

namespace platform {

class SimulatedNetwork : public Network {
 public:
  // Loads the scenario that $VENTARO_SCENARIO names (a name or a path; default "home"), unless the
  // store holds one already and the variable is not set, or was heeded before. Publishes the saved
  // networks where they are not published yet.
  SimulatedNetwork();

  bool hasWifi() override;
  bool isRadioOn() override;
  void setRadio(bool on) override;
  std::optional<AccessPoint> connectedAccessPoint() override;
  std::vector<Profile> profiles() override;
  void setEthernetEap(const Profile& profile, bool on) override;

  // For the network service, which connects.
  std::vector<AccessPoint> accessPoints() const;
  std::string connected() const;
  std::string connecting() const;
  std::chrono::milliseconds connectTime() const;
  void setConnection(const std::string& connected, const std::string& connecting);

  // Makes the store's state that of the scenario, and publishes its saved networks.
  static void load(const Scenario& scenario, const std::string& name);
  static void loadWanted();  // the scenario that the environment names

 private:
  static void loadWantedOnce();
  void publishWhereMissing() const;
};

}  // namespace platform

#endif  // PLATFORM_NETWORK_SIMULATED_NETWORK_H
