// What the Wi-Fi Direct switch does that no callback shows.
#include "list_copy.h"
#include "object_test.h"
#include "settings/CWiFiDirect.h"

namespace {

constexpr char kKey[] = "menu/network/expertsettings/wifidirect";
constexpr char kPreferenceKey[] = "db/menu/network/wifidirect";

class WifiDirectObject : public ObjectTest {
 protected:
  void SetUp() override {
    ObjectTest::SetUp();
    store().set(kPreferenceKey, 2);
  }
};

TEST_F(WifiDirectObject, ConstructionAlignsThePreferenceAndDestructionDoesNothing) {
  setConnectedAp(5955);
  store().set(kPreferenceKey, 0);
  { const CWiFiDirect direct; }
  EXPECT_EQ(journal(),
            (Journal{call("wifi_initialize"), mainLog("Wifi init succeeded\n"),
                     call("wifi_get_connected_ap"), call("wifi_ap_get_frequency", "ap 1"),
                     mainLog("Frequency : 5955\n"), call("wifi_ap_destroy", "ap 1"),
                     call("vconf_get_int", kPreferenceKey), call("vconf_get_int", kPreferenceKey),
                     call("vconf_set_int", kPreferenceKey, 1)}));
}

TEST_F(WifiDirectObject, ThePreferenceIsTheStoredOneAndMinusOneWithoutOne) {
  CWiFiDirect direct;
  clearJournal();
  EXPECT_EQ(direct.getVconfValue(), 2);
  EXPECT_EQ(journal(), Journal{call("vconf_get_int", kPreferenceKey)});
  store().erase(kPreferenceKey);
  EXPECT_EQ(direct.getVconfValue(), -1);
  store().set(kPreferenceKey, "1");
  EXPECT_EQ(direct.getVconfValue(), -1);
}

TEST_F(WifiDirectObject, WhetherTheAccessPointIsOf6GhzDoesNotDependOnThePreference) {
  CWiFiDirect direct;
  setConnectedAp(5916);
  clearJournal();
  EXPECT_TRUE(direct.IsConnectedAP6G());
  EXPECT_FALSE(calls().contains(call("vconf_get_int", kPreferenceKey)));
  EXPECT_FALSE(direct.getWifiDirectStatus());
  setConnectedAp(5915);
  EXPECT_FALSE(direct.IsConnectedAP6G());
}

TEST_F(WifiDirectObject, ThePreferenceCanBeAlignedAgain) {
  CWiFiDirect direct;
  setConnectedAp(5955);
  direct.setInitialValue();
  EXPECT_EQ(store().intAt(kPreferenceKey), 2);
  store().set(kPreferenceKey, 0);
  direct.setInitialValue();
  EXPECT_EQ(store().intAt(kPreferenceKey), 1);
}

TEST_F(WifiDirectObject, TheKeyOfAValueIsNotExamined) {
  CWiFiDirect direct;
  int value = 77;
  EXPECT_EQ(direct.setInt("no/such/key", 1), 0);
  EXPECT_EQ(store().intAt(kPreferenceKey), 1);
  EXPECT_EQ(direct.getInt(nullptr, &value), 1);
  EXPECT_EQ(value, 0);
}

TEST_F(WifiDirectObject, TheListIsForItsOwnKeyOnly) {
  CWiFiDirect direct;
  for (const char* key :
       {"", "menu/network/expertsettings", "menu/network/expertsettings/wifidirec",
        "menu/network/expertsettings/wifidirect2", "menu/network/expertsettings/WifiDirect",
        "menu/network/WiFiOnOff"}) {
    int count = 77;
    clearJournal();
    EXPECT_EQ(direct.getListItems(key, &count), nullptr) << key;
    EXPECT_EQ(count, 77) << key;
    EXPECT_EQ(journal(), Journal()) << key;
  }
}

TEST_F(WifiDirectObject, TheListIsOffThenOn) {
  CWiFiDirect direct;
  clearJournal();
  EXPECT_EQ(takeList(direct, kKey), (std::vector<std::string>{"Off", "On"}));
  EXPECT_EQ(journal(), Journal{mainLog("listSize==2\n")});
}

}  // namespace
