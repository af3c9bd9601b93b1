// Behaviour of the objects behind the four On/Off settings that no callback shows.
#include <cstdlib>

#include "list_copy.h"
#include "object_test.h"
#include "settings/CMobileDeviceTV.h"
#include "settings/CWiFiDirect.h"
#include "settings/CWiFiOnOff.h"
#include "settings/CWiredEAP.h"

namespace {

// ---- Power on with mobile ----

class PowerOnWithMobileObject : public ObjectTest {
 protected:
  // The copy that the object makes of this text.
  static std::string copyOf(const std::string& source) {
    char* copy = nullptr;
    CMobileDeviceTV::string2cstr(source.c_str(), &copy);
    EXPECT_NE(copy, source.c_str());
    std::string text = copy != nullptr ? copy : "(null)";
    std::free(copy);
    return text;
  }
};

TEST_F(PowerOnWithMobileObject, TheListDoesNotDependOnTheKey) {
  CMobileDeviceTV mobile;
  for (const char* key :
       {VENTARO_KEY_POWER_ON_WITH_MOBILE_US, VENTARO_KEY_POWER_ON_WITH_MOBILE_NOT_US, "",
        "no/such/key", static_cast<const char*>(nullptr)}) {
    clearJournal();
    EXPECT_EQ(takeList(mobile, key), (std::vector<std::string>{"Off", "On"}));
    EXPECT_EQ(journal(), Journal{mainLog("listSize==2\n")});
  }
}

TEST_F(PowerOnWithMobileObject, FillingTheListTwiceLeavesTwoEntries) {
  CMobileDeviceTV mobile;
  mobile.fillList();
  mobile.fillList();
  EXPECT_EQ(takeList(mobile, "any").size(), 2U);
}

TEST_F(PowerOnWithMobileObject, TheKeyOfAValueIsNotExamined) {
  CMobileDeviceTV mobile;
  EXPECT_EQ(mobile.setInt(nullptr, 1), 1);
  int value = 77;
  EXPECT_EQ(mobile.getInt("no/such/key", &value), 1);
  EXPECT_EQ(value, 1);
}

TEST_F(PowerOnWithMobileObject, TheModeIsReadAndSetWithoutTheValuesLogLines) {
  CMobileDeviceTV mobile;
  clearJournal();
  EXPECT_EQ(mobile.connection_get_wakeOnMobile_mode(), 0);
  EXPECT_EQ(journal(), (Journal{call("util_get_wakeOnMobile_mode"),
                                mainLog("Request to get wakeOnMobile mode succeeded : "),
                                mainLog("wakeOnMobile Disabled\n")}));
  clearJournal();
  EXPECT_EQ(mobile.connection_set_wakeOnMobile_mode(-1), -1);
  EXPECT_EQ(journal(),
            (Journal{mainLog("Enter the wakeOnMobile Mode Value Enable ->1 ,Disable ->0:\n"),
                     mainLog("Failed to read input data Try Again..\n")}));
}

TEST_F(PowerOnWithMobileObject, ACopyOfATextIsWholeWhateverItsLength) {
  for (const std::size_t length : {0U, 1U, 255U, 256U, 5000U}) {
    const std::string source(length, 'x');
    EXPECT_EQ(copyOf(source), source);
  }
}

// ---- Wi-Fi power ----

constexpr char kMirrorKey[] = "memory/menu/network/wifionui_enabled";
constexpr char kRefreshKey[] = "db/menu/refresh_menu";

class WifiPowerObject : public ObjectTest {
 protected:
  // The timer's answer: 1 to go on, 0 to stop.
  static int fire(CWiFiOnOff& power) { return CWiFiOnOff::OnTimerTimeOut(&power); }
};

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
                          "menu/network/wifionoff", VENTARO_KEY_WIFI_DIRECT}) {
    int count = 77;
    clearJournal();
    EXPECT_EQ(power.getListItems(key, &count), nullptr) << key;
    EXPECT_EQ(count, 77) << key;
    EXPECT_EQ(journal(), Journal()) << key;
  }
}

// ---- Wi-Fi Direct ----

constexpr char kPreferenceKey[] = "db/menu/network/wifidirect";

class WifiDirectObject : public ObjectTest {
 protected:
  void SetUp() override {
    ObjectTest::SetUp();
    store().set(kPreferenceKey, 2);
  }
};

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
  for (const char* key : {"", VENTARO_KEY_EXPERT_SETTINGS, "menu/network/expertsettings/wifidirec",
                          "menu/network/expertsettings/wifidirect2",
                          "menu/network/expertsettings/WifiDirect", VENTARO_KEY_WIFI}) {
    int count = 77;
    clearJournal();
    EXPECT_EQ(direct.getListItems(key, &count), nullptr) << key;
    EXPECT_EQ(count, 77) << key;
    EXPECT_EQ(journal(), Journal()) << key;
  }
}

// ---- Wired 802.1X ----

constexpr char kChoiceKey[] = "db/menu/network/wiredeap";

class WiredEapObject : public ObjectTest {
 protected:
  void SetUp() override {
    ObjectTest::SetUp();
    setProfiles({kEthernetProfile});
  }
};

TEST_F(WiredEapObject, EnablingAndDisablingStoreNothing) {
  CWiredEAP eap;
  clearJournal();
  eap.m_EnableEAP();
  eap.m_DisableEAP();
  EXPECT_EQ(journal(),
            (Journal{call("connection_profile_enable_ethernet_eap", "profile 1", true),
                     call("connection_profile_enable_ethernet_eap", "profile 1", false)}));
}

TEST_F(WiredEapObject, TheListDoesNotDependOnTheKey) {
  for (const char* key :
       {VENTARO_KEY_WIRED_EAP, "", "no/such/key", static_cast<const char*>(nullptr)}) {
    CWiredEAP eap;
    clearJournal();
    EXPECT_EQ(takeList(eap, key), (std::vector<std::string>{"Off", "On"}));
    EXPECT_EQ(journal(), Journal{mainLog("listSize==2\n")});
    EXPECT_EQ(eap.setInt(key, 1), 0);
  }
}

TEST_F(WiredEapObject, FillingTheListTwiceLeavesTwoEntries) {
  CWiredEAP eap;
  eap.fillList();
  eap.fillList();
  EXPECT_EQ(eap.setInt(VENTARO_KEY_WIRED_EAP, 2), -1);
  EXPECT_EQ(takeList(eap, VENTARO_KEY_WIRED_EAP).size(), 2U);
}

TEST_F(WiredEapObject, EachObjectHasAListOfItsOwn) {
  CWiredEAP first;
  CWiredEAP second;
  first.fillList();
  EXPECT_EQ(second.setInt(VENTARO_KEY_WIRED_EAP, 1), -1);
}

TEST_F(WiredEapObject, AChoiceThatCannotBeStoredIsLoggedWithTheKeyThatWasPassed) {
  CWiredEAP eap;
  eap.fillList();
  failWith("vconf_set_int", -6);
  clearJournal();
  EXPECT_EQ(eap.setInt("no/such/key", 1), -6);
  EXPECT_EQ(
      journal(),
      (Journal{call("connection_profile_enable_ethernet_eap", "profile 1", true),
               call("vconf_set_int", kChoiceKey, 1),
               mainLog("vconf KEY [no/such/key] is fail value [1]  and status=-6 !!!!!!!!!!")}));
}

TEST_F(WiredEapObject, TheKeyOfTheValueIsNotExamined) {
  CWiredEAP eap;
  store().set(kChoiceKey, 7);
  int value = 77;
  EXPECT_EQ(eap.getInt(nullptr, &value), 1);
  EXPECT_EQ(value, 1);
}

}  // namespace
