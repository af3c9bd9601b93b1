// The Wi-Fi service's C functions.
#include "platform/wifi.h"

#include <string>

#include "platform/connection.h"
#include "simulated_network.h"

namespace platform_tests {
namespace {

class Wifi : public NetworkTest {
 protected:
  void SetUp() override { use(scenarioText(0)); }

  static wifi_ap_h connected() {
    wifi_ap_h point = nullptr;
    EXPECT_EQ(wifi_get_connected_ap(&point), 0);
    EXPECT_NE(point, nullptr);
    return point;
  }
};

TEST_F(Wifi, MayBeInitializedAnyNumberOfTimesOrNotAtAll) {
  int state = 0;
  EXPECT_EQ(wifi_get_enable_qx(&state), 0);
  EXPECT_EQ(state, 1);
  EXPECT_EQ(wifi_initialize(), 0);
  EXPECT_EQ(wifi_initialize(), 0);
}

TEST_F(Wifi, GivesTheFrequencyOfTheConnectedAccessPoint) {
  wifi_ap_h point = connected();
  int frequency = 0;
  EXPECT_EQ(wifi_ap_get_frequency(point, &frequency), 0);
  EXPECT_EQ(frequency, 6135);
  EXPECT_EQ(wifi_ap_destroy(point), 0);
}

TEST_F(Wifi, DropsTheConnectionWhenItGoesOff) {
  EXPECT_EQ(connectedNetwork(), "Attic");
  EXPECT_EQ(wifi_set_enable_qx(0), 0);
  int state = 7;
  EXPECT_EQ(wifi_get_enable_qx(&state), 0);
  EXPECT_EQ(state, 0);
  EXPECT_EQ(connectedNetwork(), "none");
  EXPECT_EQ(networkState("connected"), StoreValue(""));
  EXPECT_EQ(wifi_set_enable_qx(1), 0);
  EXPECT_EQ(connectedNetwork(), "none") << "nobody has connected it again";
}

TEST_F(Wifi, GivesUpAConnectionUnderWayWhenItGoesOff) {
  EXPECT_EQ(wifi_initialize(), 0);
  setNetworkState("connecting", "Shed");
  EXPECT_EQ(wifi_set_enable_qx(0), 0);
  EXPECT_EQ(networkState("connecting"), StoreValue(""));
}

TEST_F(Wifi, IsOnForEveryNumberButZero) {
  for (const int enable : {1, 2, -1}) {
    EXPECT_EQ(wifi_set_enable_qx(0), 0);
    EXPECT_EQ(wifi_set_enable_qx(enable), 0);
    int state = 7;
    EXPECT_EQ(wifi_get_enable_qx(&state), 0);
    EXPECT_EQ(state, 1);
  }
}

TEST_F(Wifi, HasNoAccessPointWhileNotConnected) {
  wifi_ap_h point = &point;
  wifi_ap_h untouched = point;
  EXPECT_EQ(wifi_set_enable_qx(0), 0);
  EXPECT_NE(wifi_get_connected_ap(&point), 0);
  EXPECT_EQ(wifi_set_enable_qx(1), 0);
  EXPECT_NE(wifi_get_connected_ap(&point), 0);
  EXPECT_EQ(point, untouched);
}

TEST_F(Wifi, KeepsWhatAHandleIsOfWhenTheConnectionChanges) {
  wifi_ap_h first = connected();
  setNetworkState("connected", "Shed");
  wifi_ap_h second = connected();
  EXPECT_NE(first, second);
  EXPECT_EQ(wifi_set_enable_qx(0), 0);
  int frequency = 0;
  EXPECT_EQ(wifi_ap_get_frequency(first, &frequency), 0);
  EXPECT_EQ(frequency, 6135);
  EXPECT_EQ(wifi_ap_get_frequency(second, &frequency), 0);
  EXPECT_EQ(frequency, 2437);
  EXPECT_EQ(wifi_ap_destroy(first), 0);
  EXPECT_EQ(wifi_ap_get_frequency(second, &frequency), 0);
  EXPECT_EQ(wifi_ap_destroy(second), 0);
}

TEST_F(Wifi, RefusesNullPointers) {
  wifi_ap_h point = connected();
  int frequency = 7;
  EXPECT_NE(wifi_get_connected_ap(nullptr), 0);
  EXPECT_NE(wifi_ap_get_frequency(nullptr, &frequency), 0);
  EXPECT_NE(wifi_ap_get_frequency(point, nullptr), 0);
  EXPECT_NE(wifi_ap_destroy(nullptr), 0);
  EXPECT_NE(wifi_get_enable_qx(nullptr), 0);
  EXPECT_EQ(frequency, 7);
  EXPECT_EQ(wifi_ap_destroy(point), 0);
}

TEST_F(Wifi, RefusesWhatIsNoHandle) {
  int number = 0;
  connection_h connection = nullptr;
  ASSERT_EQ(connection_create(&connection), 0);
  int frequency = 7;
  for (void* foreign : {static_cast<void*>(&number), static_cast<void*>(connection)}) {
    EXPECT_NE(wifi_ap_get_frequency(foreign, &frequency), 0);
    EXPECT_NE(wifi_ap_destroy(foreign), 0);
  }
  EXPECT_EQ(frequency, 7);
  EXPECT_EQ(connection_destroy(connection), 0);
}

TEST_F(Wifi, RefusesAHandleThatWasDestroyed) {
  wifi_ap_h point = connected();
  EXPECT_EQ(wifi_ap_destroy(point), 0);
  int frequency = 7;
  EXPECT_NE(wifi_ap_get_frequency(point, &frequency), 0);
  EXPECT_NE(wifi_ap_destroy(point), 0);
  EXPECT_EQ(frequency, 7);
}

}  // namespace
}  // namespace platform_tests
