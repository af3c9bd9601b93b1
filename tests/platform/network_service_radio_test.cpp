// What the network service does when the radio is switched.
#include "network_service_test.h"
#include "platform/wifi.h"
#include "process.h"

namespace platform_tests {
namespace {

using platform::host::loadScenario;

TEST_F(Service, DropsAConnectionThatIsLeftOfARadioThatWentOffWithoutIt) {
  inOwnProcess([] { EXPECT_EQ(connectedNetwork(), "Attic"); });
  setNetworkState("radio", false);
  start();
  EXPECT_EQ(publishedNetworks(), "Attic=Disconnected Shed=Disconnected");
  EXPECT_EQ(networkState("connected"), StoreValue(""));
}

TEST_F(Service, RefusesToConnectWhileTheRadioIsOff) {
  start();
  EXPECT_EQ(wifi_set_enable_qx(0), 0);
  ASSERT_TRUE(publishes("Attic=Disconnected Shed=Disconnected"));
  connectTo("Shed");
  ASSERT_TRUE(iterateUntil([&] {
    return countLogged("NETWORK_SERVICE: cannot connect to \"Shed\": Wi-Fi is off") == 1;
  }));
  EXPECT_EQ(publishedNetworks(), "Attic=Disconnected Shed=Disconnected");
  EXPECT_EQ(networkState("connecting"), StoreValue(""));
}

TEST_F(Service, PublishesThatTheRadioWentOff) {
  start();
  EXPECT_EQ(wifi_set_enable_qx(0), 0);
  EXPECT_TRUE(publishes("Attic=Disconnected Shed=Disconnected"));
}

TEST_F(Service, FollowsARadioThatAPersonSwitches) {
  start();
  setNetworkState("radio", false);
  ASSERT_TRUE(publishes("Attic=Disconnected Shed=Disconnected"));
  EXPECT_EQ(networkState("connected"), StoreValue(""));
  setNetworkState("radio", true);
  EXPECT_TRUE(publishes("Attic=Connecting Shed=Disconnected"));
}

TEST_F(Service, StopsConnectingWhenTheRadioGoesOff) {
  start();
  connectTo("Shed");
  ASSERT_TRUE(publishes("Attic=Disconnected Shed=Connecting"));
  EXPECT_EQ(wifi_set_enable_qx(0), 0);
  ASSERT_TRUE(publishes("Attic=Disconnected Shed=Disconnected"));
  EXPECT_EQ(networkState("connecting"), StoreValue(""));
  service_.reset();
  EXPECT_EQ(networkState("connected"), StoreValue("")) << "nothing is left to be completed";
}

TEST_F(Service, ConnectsToTheFirstSavedNetworkWhenTheRadioComesOn) {
  use(scenarioText(kAMoment, "Shed"));
  start();
  EXPECT_EQ(wifi_set_enable_qx(0), 0);
  ASSERT_TRUE(publishes("Attic=Disconnected Shed=Disconnected"));
  EXPECT_EQ(wifi_set_enable_qx(1), 0);
  ASSERT_TRUE(publishes("Attic=Connecting Shed=Disconnected"));
  ASSERT_TRUE(publishes("Attic=Connected Shed=Disconnected"));
  EXPECT_EQ(connectedNetwork(), "Attic");
}

TEST_F(Service, StaysUnconnectedWhenTheRadioComesOnAndNoNetworkIsSaved) {
  use(R"({"radio": false, "connected": "", "connect_milliseconds": 0, "access_points": [
          {"ssid": "Door", "frequency_mhz": 5220, "signal_dbm": -71, "saved": false}],
          "profiles": []})");
  start();
  EXPECT_EQ(wifi_set_enable_qx(1), 0);
  connectTo("Castle");  // what is answered last
  ASSERT_TRUE(publishes(""));
  EXPECT_EQ(connectedNetwork(), "none");
}

TEST_F(Service, KeepsTheConnectionWhenTheRadioIsSetOnAgain) {
  start();
  EXPECT_EQ(wifi_set_enable_qx(1), 0);
  connectTo("Castle");
  ASSERT_TRUE(publishes("Attic=Connected Shed=Disconnected"));
  EXPECT_EQ(published_.size(), 1U);
}

TEST_F(Service, KeepsTheConnectionOfAScenarioThatBringsTheRadioOn) {
  start();
  EXPECT_EQ(wifi_set_enable_qx(0), 0);
  ASSERT_TRUE(publishes("Attic=Disconnected Shed=Disconnected"));
  loadScenario(write("other.json", scenarioText(kForEver, "Shed")));
  connectTo("Castle");  // what is answered last
  ASSERT_TRUE(iterateUntil(
      [&] { return countLogged("\"Castle\": there is no such network within reach") == 1; }));
  EXPECT_EQ(publishedNetworks(), "Attic=Disconnected Shed=Connected");
  EXPECT_EQ(connectedNetwork(), "Shed");
}

}  // namespace
}  // namespace platform_tests
