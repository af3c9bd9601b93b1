// What the Wi-Fi power switch does that no callback shows.
#include <cstdlib>

#include "list_copy.h"
#include "object_test.h"
#include "settings/CWiFiOnOff.h"

namespace {

constexpr char kKey[] = "menu/network/WiFiOnOff";
constexpr char kMirrorKey[] = "memory/menu/network/wifionui_enabled";
constexpr char kRefreshKey[] = "db/menu/refresh_menu";

class WifiPowerObject : public ObjectTest {
 protected:
  // The timer's answer: 1 to go on, 0 to stop.
  static int fire(CWiFiOnOff& power) { return CWiFiOnOff::OnTimerTimeOut(&power); }
};

TEST_F(WifiPowerObject, ConstructionOpensAConnectionAndDestructionDestroysIt) {
  { const CWiFiOnOff power; }
  EXPECT_EQ(journal(),
            (Journal{call("connection_create"), call("connection_destroy", "connection 1")}));
}

TEST_F(WifiPowerObject, DestructionRemovesARunningTimerFirst) {
  {
    CWiFiOnOff power;
    power.UpdateWifiDirect();
    clearJournal();
  }
  EXPECT_EQ(journal(),
            (Journal{call("g_source_remove", 1), call("connection_destroy", "connection 1")}));
  EXPECT_EQ(runningTimers(), 0);
}

TEST_F(WifiPowerObject, ATimerWithoutAnObjectStopsAndDoesNothing) {
  EXPECT_EQ(CWiFiOnOff::OnTimerTimeOut(nullptr), 0);
  EXPECT_EQ(journal(), Journal());
}

TEST_F(WifiPowerObject, TheTimerGoesOnThreeTimesAndThenStops) {
  CWiFiOnOff power;
  power.UpdateWifiDirect();
  EXPECT_EQ(fire(power), 1);
  EXPECT_EQ(fire(power), 1);
  EXPECT_EQ(fire(power), 1);
  EXPECT_EQ(fire(power), 0);
}

TEST_F(WifiPowerObject, TheTimerStopsAlsoWhenTheRefreshCannotBeWritten) {
  CWiFiOnOff power;
  power.UpdateWifiDirect();
  failWith("vconf_set_int", -3);
  for (int i = 0; i < 3; ++i) fire(power);
  EXPECT_EQ(fire(power), 0);
}

TEST_F(WifiPowerObject, TheRefreshRemovesTheTimerByTheIdThatIsStored) {
  CWiFiOnOff power;
  for (int i = 0; i < 3; ++i) fire(power);
  clearJournal();
  EXPECT_EQ(fire(power), 0);
  EXPECT_EQ(journal(), (Journal{call("g_source_remove", 0), call("vconf_set_int", kRefreshKey, 1),
                                mainLog("Success to Set REFRESH_MENU_VCONF")}));
}

TEST_F(WifiPowerObject, TheCountBeginsAnewAfterTheRefresh) {
  CWiFiOnOff power;
  for (int i = 0; i < 4; ++i) fire(power);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(fire(power), 1);
  EXPECT_EQ(fire(power), 0);
}

TEST_F(WifiPowerObject, TheCountIsKeptWhenNoTimerIsReplaced) {
  CWiFiOnOff power;
  fire(power);
  fire(power);
  clearJournal();
  power.UpdateWifiDirect();
  EXPECT_EQ(journal(), Journal{call("g_timeout_add_seconds", 2)});
  EXPECT_EQ(fire(power), 1);
  EXPECT_EQ(fire(power), 0);
}

TEST_F(WifiPowerObject, TheCountBeginsAnewWhenARunningTimerIsReplaced) {
  CWiFiOnOff power;
  power.UpdateWifiDirect();
  for (int i = 0; i < 3; ++i) fire(power);
  clearJournal();
  power.UpdateWifiDirect();
  EXPECT_EQ(journal(), (Journal{call("g_source_remove", 1), call("g_timeout_add_seconds", 2)}));
  for (int i = 0; i < 3; ++i) EXPECT_EQ(fire(power), 1);
  EXPECT_EQ(fire(power), 0);
}

TEST_F(WifiPowerObject, TheTimerBelongsToTheObjectThatStartedIt) {
  CWiFiOnOff first;
  CWiFiOnOff second;
  first.UpdateWifiDirect();
  advanceTimers(2);
  second.UpdateWifiDirect();
  clearJournal();
  advanceTimers(2);
  EXPECT_EQ(calls(), (Journal{call("g_source_remove", 1), call("vconf_set_int", kRefreshKey, 1)}));
  clearJournal();
  advanceTimers(2);
  EXPECT_EQ(calls(), (Journal{call("g_source_remove", 2), call("vconf_set_int", kRefreshKey, 1)}));
}

TEST_F(WifiPowerObject, TheKeyOfAValueIsNotExamined) {
  CWiFiOnOff power;
  int value = 77;
  EXPECT_EQ(power.setInt("no/such/key", 5), 1);
  EXPECT_EQ(store().intAt(kMirrorKey), 5);
  EXPECT_EQ(power.getInt(nullptr, &value), 1);
  EXPECT_EQ(value, 1);
}

TEST_F(WifiPowerObject, TheListIsForItsOwnKeyOnly) {
  CWiFiOnOff power;
  for (const char* key : {"", "menu/network/WiFiOnOf", "menu/network/WiFiOnOff2",
                          "menu/network/wifionoff", "menu/network/expertsettings/wifidirect"}) {
    int count = 77;
    clearJournal();
    EXPECT_EQ(power.getListItems(key, &count), nullptr) << key;
    EXPECT_EQ(count, 77) << key;
    EXPECT_EQ(journal(), Journal()) << key;
  }
}

TEST_F(WifiPowerObject, TheListIsOffThenOn) {
  CWiFiOnOff power;
  clearJournal();
  EXPECT_EQ(takeList(power, kKey), (std::vector<std::string>{"Off", "On"}));
  EXPECT_EQ(journal(), Journal{mainLog("listSize==2\n")});
}

TEST_F(WifiPowerObject, TheTextIsACopyOfItsOwnForEachCaller) {
  CWiFiOnOff power;
  char* first = nullptr;
  char* second = nullptr;
  power.setOnOffStatus(&first);
  power.setOnOffStatus(&second);
  EXPECT_STREQ(first, "Off");
  EXPECT_STREQ(second, "Off");
  EXPECT_NE(first, second);
  std::free(first);
  std::free(second);
}

}  // namespace
