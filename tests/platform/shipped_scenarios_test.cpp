// The scenarios that come along, and the members of a scenario that say what a Wi-Fi network is
// like.
#include <string>

#include "platform/host/network_service.h"
#include "platform/host/resources.h"
#include "platform/wifi.h"
#include "simulated_network.h"

namespace platform_tests {
namespace {

using platform::host::loadScenario;

// "radio, connected" as the Wi-Fi functions tell: "on, Attic", "off, none", "no Wi-Fi, none".
std::string wifi() {
  int state = 0;
  const bool hasWifi = wifi_get_enable_qx(&state) == 0;
  return std::string(!hasWifi ? "no Wi-Fi" : state == 1 ? "on" : "off") + ", " + connectedNetwork();
}

struct Shipped {
  std::string name;
  std::string wifi;
  std::string published;
};

class AShippedScenario : public NetworkTest {};

TEST_F(AShippedScenario, IsWhatItsNameSays) {
  const Shipped all[] = {
      {"crowded", "on, 2412", "Rosewood 3A=Connected Linden Court=Disconnected"},
      {"empty", "off, none", ""},
      {"hidden", "on, Attic", "Vault=Disconnected Attic 6E=Connected"},
      {"home", "on, Attic", "Attic 6E=Connected Garden Shed=Disconnected"},
      {"hotel", "on, 5500", "Hotel Aurora=Connected Aurora Conference=Disconnected"},
      {"no-wifi", "no Wi-Fi, none", ""},
      {"odd-names", "on, 5180",
       "\"Tom's\" <TV> & 📺 غرفة=Connected Caf\xe9\x1b[31m=Disconnected "
       "👩‍👩‍👧 שלום=Disconnected "
       "日本語のとても長い名\xe5\x89=Disconnected"},
      {"radio-off", "off, none", "Attic 6E=Disconnected Garden Shed=Disconnected"},
      {"weak", "on, 2412", "Far Field=Connected Beyond=Disconnected"},
  };
  std::vector<std::string> names;
  for (const Shipped& scenario : all) {
    SCOPED_TRACE(scenario.name);
    names.push_back(scenario.name);
    loadScenario(scenario.name);
    EXPECT_EQ(wifi(), scenario.wifi);
    EXPECT_EQ(publishedNetworks(), scenario.published);
  }
  EXPECT_EQ(platform::host::resourceNames("scenarios"), names);
}

// A scenario of one connected network "Attic" with these members, and what is published of it.
std::string accessPoint(const std::string& members) {
  return R"({"radio": true, "connected": "Attic", "connect_milliseconds": 0, "profiles": [],
             "access_points": [)" +
         members + "]}";
}

class AnAccessPoint : public NetworkTest {
 protected:
  static std::string signalsPublished() {
    const std::string text = std::get<std::string>(*store().get("db/menu/network/TopSavedAP"));
    std::string signals;
    for (auto at = text.find("STRENGTH\":"); at != std::string::npos;
         at = text.find("STRENGTH\":", at + 1)) {
      const auto begin = at + std::string("STRENGTH\":").size();
      signals += text.substr(begin, text.find(',', begin) - begin) + " ";
    }
    return signals;
  }
};

TEST_F(AnAccessPoint, IsOneOfANetworkWhichIsAsStrongAsTheStrongestOfThem) {
  use(accessPoint(R"({"ssid": "Attic", "frequency_mhz": 1, "signal_dbm": -70, "saved": true},
                     {"ssid": "Attic", "frequency_mhz": 6135, "signal_dbm": -50, "saved": true},
                     {"ssid": "Attic", "frequency_mhz": 3, "signal_dbm": -60, "saved": true})"));
  EXPECT_EQ(connectedNetwork(), "Attic");  // the frequency of the second
  EXPECT_EQ(publishedNetworks(), "Attic=Connected");
  EXPECT_EQ(signalsPublished(), "-50 ");
}

TEST_F(AnAccessPoint, ThatIsHiddenHasNoSignalUntilItIsConnected) {
  const std::string both =
      R"({"ssid": "Attic", "frequency_mhz": 6135, "signal_dbm": -50, "saved": true, "hidden": true},
         {"ssid": "Shed", "frequency_mhz": 2437, "signal_dbm": -60, "saved": true, "hidden": true})";
  use(accessPoint(both));
  EXPECT_EQ(connectedNetwork(), "Attic");
  EXPECT_EQ(signalsPublished(), "-50 -100 ");
}

TEST_F(AnAccessPoint, MayHaveANameOfAnyBytes) {
  use(accessPoint(
      R"({"ssid": "Attic", "frequency_mhz": 6135, "signal_dbm": -50, "saved": true},
         {"ssid_hex": "ff22fE", "frequency_mhz": 1, "signal_dbm": -60, "saved": true})"));
  EXPECT_EQ(connectedNetwork(), "Attic");
  EXPECT_EQ(publishedNetworks(), "Attic=Connected \xff\"\xfe=Disconnected");
}

class AWifiDevice : public NetworkTest {};

TEST_F(AWifiDevice, ThatTheTvDoesNotHaveMakesTheWifiFunctionsFail) {
  loadScenario("no-wifi");
  constexpr int kNoWifi = -107;
  int state = 7;
  wifi_ap_h point = nullptr;
  EXPECT_EQ(wifi_initialize(), kNoWifi);
  EXPECT_EQ(wifi_get_enable_qx(&state), kNoWifi);
  EXPECT_EQ(state, 7);
  EXPECT_EQ(wifi_set_enable_qx(1), kNoWifi);
  EXPECT_EQ(networkState("radio"), StoreValue(false));
  EXPECT_EQ(wifi_get_connected_ap(&point), kNoWifi);
  EXPECT_EQ(point, nullptr);
  loadScenario("radio-off");
  EXPECT_EQ(wifi_initialize(), 0);
}

TEST_F(AWifiDevice, IsThereInAStateThatWasLoadedBeforeThereWereSuchTvs) {
  use(scenarioText(0));
  EXPECT_EQ(connectedNetwork(), "Attic");
  store().unset("memory/host/network/wifi");
  EXPECT_EQ(connectedNetwork(), "Attic");
}

}  // namespace
}  // namespace platform_tests
