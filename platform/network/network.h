// What the host platform needs of a network: the interface behind the C functions of wifi.h and
// connection.h.
#ifndef PLATFORM_NETWORK_NETWORK_H
#define PLATFORM_NETWORK_NETWORK_H

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

struct AccessPoint {
  std::string ssid;
  int frequencyMhz = 0;
  int signalDbm = 0;
  bool saved = false;   // the TV knows its password
  bool hidden = false;  // it does not tell its name, so nobody sees it until it is connected
};

// The strongest of the access points with that name, which are one network; null when there is
// none. Points into `points`.
const AccessPoint* strongest(const std::vector<AccessPoint>& points, const std::string& ssid);

// The same of every name that there is, by the names. They and the pointers point into `points`.
std::map<std::string_view, const AccessPoint*> strongestOfEach(
    const std::vector<AccessPoint>& points);

enum class ProfileType : int { kWifi = 1, kEthernet = 2 };

struct Profile {
  std::string name;
  ProfileType type = ProfileType::kWifi;
};

// All functions may be called from any thread; they raise StoreError or ConfigurationError.
class Network {
 public:
  Network() = default;
  virtual ~Network() = default;
  Network(const Network&) = delete;
  Network& operator=(const Network&) = delete;

  // Whether there is a Wi-Fi device at all. The radio of a TV without one is off.
  virtual bool hasWifi() = 0;
  virtual bool isRadioOn() = 0;
  // Switching the radio off drops the connection.
  virtual void setRadio(bool on) = 0;
  // Nothing while the radio is off or not connected.
  virtual std::optional<AccessPoint> connectedAccessPoint() = 0;
  virtual std::vector<Profile> profiles() = 0;
  // 802.1X on an Ethernet profile.
  virtual void setEthernetEap(const Profile& profile, bool on) = 0;
};

// The network that $VENTARO_NETWORK names (default "simulated"), made at the first call. Raises
// ConfigurationError for a name that there is not.
Network& network();

}  // namespace platform

#endif  // PLATFORM_NETWORK_NETWORK_H
