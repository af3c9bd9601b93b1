// The callbacks that carry values: get_int and set_int over the object that owns the item, and the
// device name of set_string and get_current_value_sid.
#include <json/value.h>

#include <climits>
#include <latch>
#include <string>
#include <thread>
#include <vector>

#include "provider_test.h"
#include "wifi_direct_status.h"

namespace {

constexpr char kDefaultNameKey[] = "db/menu/network/devicename/default_tv_name";
constexpr char kNameKey[] = "db/menu/network/devicename/tv_name";
constexpr char kPreferenceKey[] = "db/menu/network/wifidirect";
constexpr char kChoiceKey[] = "db/menu/network/wiredeap";
constexpr char kMirrorKey[] = "memory/menu/network/wifionui_enabled";
constexpr char kRefreshKey[] = "db/menu/refresh_menu";
constexpr char kDocumentKey[] = "db/menu/network/TopSavedAP";
constexpr char kCommandKey[] = "memory/NW-Daemon/Command";

constexpr char kMobileItem[] = "menu/network/MobileDeviceTV_US";
constexpr char kWifiItem[] = "menu/network/WiFiOnOff";
constexpr char kWifiDirectItem[] = "menu/network/expertsettings/wifidirect";
constexpr char kWiredItem[] = "menu/network/WiredEAP";
constexpr char kDeviceNameItem[] = "menu/network/devicename";
constexpr char kFirstNetworkItem[] = "menu/network/SavedAP1";
constexpr char kSecondNetworkItem[] = "menu/network/SavedAP2";

constexpr char kTwoNetworks[] =
    R"({"count": 2, "values": [{"SSID": "Net One", "SIGNAL_STRENGTH": -60, "STATUS": "Connected"},)"
    R"( {"SSID": "Net Two", "SIGNAL_STRENGTH": -80, "STATUS": "Saved"}]})";

constexpr int kPreset = 77;

// The device-name list has two entries: "TV One", and the name that the user types.
class Values : public ProviderTest {
 protected:
  void SetUp() override {
    ProviderTest::SetUp();
    store().set(kDefaultNameKey, "TV One");
  }

  // The journal of get_int over the preset, and of set_int, around what the owner does.
  static Journal aroundGetInt(const std::string& key, int result, const Journal& owner) {
    return {mainLog("START"),
            locks(),
            systemLog("Key ---->" + key + "::Value------>" + std::to_string(kPreset) + "\n"),
            owner,
            systemLog("status------>" + std::to_string(result) + "\n"),
            mainLog("END"),
            unlocks()};
  }

  static Journal aroundSetInt(const std::string& key, int value, const Journal& owner) {
    return {mainLog("START"),
            locks(),
            systemLog("Key ---->" + key + "::Value------>" + std::to_string(value) + "\n"),
            owner,
            mainLog("END"),
            unlocks()};
  }

  static Journal typedNameIsRead() {
    return {call("vconf_get_str", kNameKey), mainLog("value=1\n")};
  }

  static Journal mobileModeIsOn() {
    return {call("util_get_wakeOnMobile_mode"),
            mainLog("Request to get wakeOnMobile mode succeeded : "),
            mainLog("wakeOnMobile Enabled\n"), mainLog("_IsPowerOnWithMobileEnable =>1")};
  }

  static Journal mobileModeIsOff() {
    return {call("util_get_wakeOnMobile_mode"),
            mainLog("Request to get wakeOnMobile mode succeeded : "),
            mainLog("wakeOnMobile Disabled\n")};
  }

  static Journal twoNetworksAreRead() {
    return {call("vconf_get_str", kDocumentKey), mainLog(" AP Name = Net One status = Connected "),
            mainLog(" AP Name = Net Two status = Saved ")};
  }

  static std::string connectCommand(const std::string& ssid) {
    return "{\n\t\"COMMAND\" : \"1\",\n\t\"SSID\" : \"" + ssid + "\"\n}";
  }

  static std::vector<std::string> documentKeys(int times) {
    return std::vector<std::string>(static_cast<std::size_t>(times), kDocumentKey);
  }
};

// ---- get_int ----

TEST_F(Values, PowerOnWithMobileIsReadFromTheModeWhichIsAlsoTheResult) {
  create();
  setWakeOnMobile(true);
  EXPECT_EQ(getInt(kMobileItem), (IntAnswer{1, 1}));
  EXPECT_EQ(journal(),
            aroundGetInt(kMobileItem, 1,
                         {mobileModeIsOn(), mainLog("connection_get_wakeOnMobile_mode set to 1")}));
  clearJournal();
  setWakeOnMobile(false);
  EXPECT_EQ(getInt(kMobileItem), (IntAnswer{0, 0}));
  EXPECT_EQ(journal(), aroundGetInt(kMobileItem, 0,
                                    {mobileModeIsOff(),
                                     mainLog("connection_get_wakeOnMobile_mode set to 0")}));
}

TEST_F(Values, AMobileModeThatCannotBeReadIsMinusOneAndTheOutputUntouched) {
  create();
  failWith("util_get_wakeOnMobile_mode", 13);
  EXPECT_EQ(getInt(kMobileItem), (IntAnswer{-1, kPreset}));
  EXPECT_EQ(journal(), aroundGetInt(kMobileItem, -1,
                                    {call("util_get_wakeOnMobile_mode"),
                                     mainLog("Fail to get wakeOnMobile mode[0xd]\n"),
                                     mainLog("connection_get_wakeOnMobile_mode set to -1"),
                                     mainLog("wifi_direct_get_device_name::status [0xffffffff]")}));
}

TEST_F(Values, TheRadiosStateIsHandedOnAsItIsAndTheResultIsOne) {
  create();
  setRadio(3);
  EXPECT_EQ(getInt(kWifiItem), (IntAnswer{1, 3}));
  EXPECT_EQ(journal(), aroundGetInt(kWifiItem, 1,
                                    {call("wifi_get_enable_qx"),
                                     mainLog("wifi_get_power_state  ret = [0], value = [3]")}));
  setRadio(0);
  EXPECT_EQ(getInt(kWifiItem), (IntAnswer{1, 0}));
}

TEST_F(Values, ARadioThatCannotBeReadIsMinusOneAndTheOutputAsTheServiceLeftIt) {
  create();
  setRadio(3);
  failWith("wifi_get_enable_qx", -5);
  EXPECT_EQ(getInt(kWifiItem), (IntAnswer{-1, kPreset}));
  EXPECT_EQ(journal(), aroundGetInt(kWifiItem, -1,
                                    {call("wifi_get_enable_qx"),
                                     mainLog("wifi_get_power_state  ret = [-5], value = [77]")}));
  failWith("wifi_get_enable_qx", -5, Effect::kAsSuccess);
  EXPECT_EQ(getInt(kWifiItem), (IntAnswer{-1, 3}));
}

TEST_F(Values, WifiDirectIsReadFromTheAccessPointAndThePreferenceWithTheResultOne) {
  create();
  setConnectedAp(5955);
  store().set(kPreferenceKey, 1);
  EXPECT_EQ(getInt(kWifiDirectItem), (IntAnswer{1, 1}));
  EXPECT_EQ(journal(),
            aroundGetInt(kWifiDirectItem, 1,
                         {wifiDirectStatusAt(5955), mainLog("getInt , value after changing = 1")}));
}

TEST_F(Values, WifiDirectThatIsOffHasTheResultOneAsWell) {
  create();
  EXPECT_EQ(getInt(kWifiDirectItem), (IntAnswer{1, 0}));
  EXPECT_EQ(journal(), aroundGetInt(kWifiDirectItem, 1,
                                    {wifiDirectStatusWithoutAp(),
                                     mainLog("getInt , value after changing = 0")}));
}

TEST_F(Values, TheWiredSwitchIsReadFromTheStoreAsZeroOrOneWhichIsAlsoTheResult) {
  create();
  store().set(kChoiceKey, 7);
  EXPECT_EQ(getInt(kWiredItem), (IntAnswer{1, 1}));
  EXPECT_EQ(journal(), aroundGetInt(kWiredItem, 1, {call("vconf_get_int", kChoiceKey)}));
  clearJournal();
  store().set(kChoiceKey, 0);
  EXPECT_EQ(getInt(kWiredItem), (IntAnswer{0, 0}));
  EXPECT_EQ(journal(), aroundGetInt(kWiredItem, 0, {call("vconf_get_int", kChoiceKey)}));
}

TEST_F(Values, AWiredChoiceThatCannotBeReadIsZeroAndNoFailure) {
  create();
  failWith("vconf_get_int", kChoiceKey, -4);
  EXPECT_EQ(getInt(kWiredItem), (IntAnswer{0, 0}));
}

TEST_F(Values, TheDefaultNameIsPositionZero) {
  create();
  store().set(kNameKey, "TV One");
  EXPECT_EQ(getInt(kDeviceNameItem), (IntAnswer{0, 0}));
  EXPECT_EQ(journal(), aroundGetInt(kDeviceNameItem, 0,
                                    {call("vconf_get_str", kNameKey), mainLog("dName==TV One\n"),
                                     mainLog("value=0\n")}));
}

TEST_F(Values, ATypedNameIsTheLastPosition) {
  create();
  for (const char* name : {"TV Two", "", "TV On", "TV One ", "tv one", "&#x202d;TV One"}) {
    store().set(kNameKey, name);
    clearJournal();
    EXPECT_EQ(getInt(kDeviceNameItem), (IntAnswer{0, 1})) << name;
    EXPECT_EQ(journal(), aroundGetInt(kDeviceNameItem, 0, typedNameIsRead())) << name;
  }
}

TEST_F(Values, AMissingNameIsMinusOneAndTheOutputUntouched) {
  create();
  EXPECT_EQ(getInt(kDeviceNameItem), (IntAnswer{-1, kPreset}));
  EXPECT_EQ(journal(), aroundGetInt(kDeviceNameItem, -1,
                                    {call("vconf_get_str", kNameKey),
                                     mainLog("wifi_direct_get_device_name::status [0xffffffff]"),
                                     mainLog("value=77\n")}));
}

TEST_F(Values, WithoutADefaultNameEveryNameIsPositionZeroUncompared) {
  store().erase(kDefaultNameKey);
  create();
  store().set(kNameKey, "");
  EXPECT_EQ(getInt(kDeviceNameItem), (IntAnswer{0, 0}));
  EXPECT_EQ(journal(), aroundGetInt(kDeviceNameItem, 0,
                                    {call("vconf_get_str", kNameKey), mainLog("value=0\n")}));
  store().erase(kNameKey);
  EXPECT_EQ(getInt(kDeviceNameItem), (IntAnswer{-1, 0}));
}

TEST_F(Values, TheSavedNetworksHaveNoValueOfTheirOwnButTheDeviceNames) {
  create();
  store().set(kDocumentKey, kTwoNetworks);
  store().set(kNameKey, "TV Two");
  for (const char* item : {kFirstNetworkItem, kSecondNetworkItem}) {
    clearJournal();
    EXPECT_EQ(getInt(item), (IntAnswer{0, 1}));
    EXPECT_EQ(journal(), aroundGetInt(item, 0, typedNameIsRead()));
  }
}

TEST_F(Values, AnUnknownKeyHasTheDeviceNamesValue) {
  create();
  store().set(kNameKey, "TV Two");
  for (const char* key : {"", "no/such/key", "menu/network", "%s%n"}) {
    clearJournal();
    EXPECT_EQ(getInt(key), (IntAnswer{0, 1})) << key;
    EXPECT_EQ(journal(), aroundGetInt(key, 0, typedNameIsRead())) << key;
  }
}

TEST_F(Values, WhatTheOutputHoldsBeforehandIsLoggedWhateverItIs) {
  create();
  for (const int preset : {0, -1, INT_MAX, INT_MIN}) {
    clearJournal();
    getInt(kWiredItem, preset);
    EXPECT_TRUE(logLines().contains(
        systemLog("Key ---->menu/network/WiredEAP::Value------>" + std::to_string(preset) + "\n")));
  }
}

TEST_F(Values, AValueIsReadAnewEveryTime) {
  create();
  for (const int state : {1, 0, 2}) {
    setRadio(state);
    EXPECT_EQ(getInt(kWifiItem), (IntAnswer{1, state}));
  }
}

// ---- set_int: the setting objects ----

TEST_F(Values, PowerOnWithMobileIsSwitchedAndItsNewModeIsTheResult) {
  create();
  EXPECT_EQ(setInt(kMobileItem, 5), 1);
  EXPECT_TRUE(wakeOnMobile());
  EXPECT_EQ(journal(),
            aroundSetInt(kMobileItem, 5,
                         {mainLog("m_MobileDeviceTVList Value for provider is 5 "),
                          mainLog("Enter the wakeOnMobile Mode Value Enable ->1 ,Disable ->0:\n"),
                          call("util_set_wakeOnMobile_mode", true),
                          mainLog("Request to change wakeOnMobile Mode succeeded"),
                          mobileModeIsOn(), mainLog("status 1 ")}));
  EXPECT_EQ(setInt(kMobileItem, 0), 0);
  EXPECT_FALSE(wakeOnMobile());
}

TEST_F(Values, AMobileModeThatCannotBeSetIsMinusOne) {
  create();
  failWith("util_set_wakeOnMobile_mode", -18);
  EXPECT_EQ(setInt(kMobileItem, 1), -1);
  EXPECT_EQ(journal(),
            aroundSetInt(
                kMobileItem, 1,
                {mainLog("m_MobileDeviceTVList Value for provider is 1 "),
                 mainLog("Enter the wakeOnMobile Mode Value Enable ->1 ,Disable ->0:\n"),
                 call("util_set_wakeOnMobile_mode", true),
                 mainLog("Fail to set wakeOnMobile mode [0xffffffee]\n"), mainLog("status -1 ")}));
}

TEST_F(Values, ANegativeMobileModeIsRefusedWithoutAPlatformCall) {
  create();
  EXPECT_EQ(setInt(kMobileItem, -1), -1);
  EXPECT_EQ(
      journal(),
      aroundSetInt(kMobileItem, -1,
                   {mainLog("m_MobileDeviceTVList Value for provider is -1 "),
                    mainLog("Enter the wakeOnMobile Mode Value Enable ->1 ,Disable ->0:\n"),
                    mainLog("Failed to read input data Try Again..\n"), mainLog("status -1 ")}));
}

TEST_F(Values, WifiIsSwitchedAndItsValueHandedOnUnreducedWithTheResultOne) {
  create();
  EXPECT_EQ(setInt(kWifiItem, 5), 1);
  EXPECT_EQ(radio(), 1);
  EXPECT_EQ(store().intAt(kMirrorKey), 5);
  EXPECT_EQ(journal(),
            aroundSetInt(kWifiItem, 5,
                         {call("wifi_set_enable_qx", 1), call("vconf_set_int", kMirrorKey, 5),
                          mainLog("wifi_set_power_state ret = [0], value = [5]"),
                          call("g_timeout_add_seconds", 2)}));
}

TEST_F(Values, ARadioThatCannotBeSwitchedIsMinusOneAndAllElseIsDone) {
  create();
  failWith("wifi_set_enable_qx", -7);
  EXPECT_EQ(setInt(kWifiItem, 1), -1);
  EXPECT_EQ(journal(),
            aroundSetInt(kWifiItem, 1,
                         {call("wifi_set_enable_qx", 1), call("vconf_set_int", kMirrorKey, 1),
                          mainLog("wifi_set_power_state ret = [-7], value = [1]"),
                          call("g_timeout_add_seconds", 2)}));
}

TEST_F(Values, WifiDirectsPreferenceIsStoredAndTheStoresResultReturned) {
  create();
  EXPECT_EQ(setInt(kWifiDirectItem, 1), 0);
  EXPECT_EQ(store().intAt(kPreferenceKey), 1);
  EXPECT_EQ(journal(), aroundSetInt(kWifiDirectItem, 1,
                                    {call("vconf_set_int", kPreferenceKey, 1),
                                     mainLog("Set Int Status=0::1")}));
  clearJournal();
  failWith("vconf_set_int", kPreferenceKey, -9);
  EXPECT_EQ(setInt(kWifiDirectItem, 0), -9);
  EXPECT_EQ(store().intAt(kPreferenceKey), 1);
  EXPECT_EQ(journal(), aroundSetInt(kWifiDirectItem, 0,
                                    {call("vconf_set_int", kPreferenceKey, 2),
                                     mainLog("Set Int Status=-9::2")}));
}

TEST_F(Values, TheWiredSwitchRefusesEveryValueBeforeItsListWasAskedFor) {
  create();
  for (const int value : {0, 1}) {
    clearJournal();
    EXPECT_EQ(setInt(kWiredItem, value), -1);
    EXPECT_EQ(journal(),
              aroundSetInt(kWiredItem, value, {mainLog("set_device_name::status [0xffffffff]")}));
  }
  EXPECT_EQ(store().intAt(kChoiceKey), std::nullopt);
}

TEST_F(Values, TheWiredSwitchIsSwitchedAndStoredAndTheStoresResultReturned) {
  setProfiles({kEthernetProfile});
  create();
  listItems(kWiredItem);
  clearJournal();
  EXPECT_EQ(setInt(kWiredItem, 1), 0);
  EXPECT_EQ(store().intAt(kChoiceKey), 1);
  EXPECT_EQ(journal(),
            aroundSetInt(kWiredItem, 1,
                         {call("connection_profile_enable_ethernet_eap", "profile 1", true),
                          call("vconf_set_int", kChoiceKey, 1)}));
  clearJournal();
  failWith("vconf_set_int", kChoiceKey, -11);
  EXPECT_EQ(setInt(kWiredItem, 0), -11);
  EXPECT_EQ(
      journal(),
      aroundSetInt(
          kWiredItem, 0,
          {call("connection_profile_enable_ethernet_eap", "profile 1", false),
           call("vconf_set_int", kChoiceKey, 0),
           mainLog(
               "vconf KEY [menu/network/WiredEAP] is fail value [0]  and status=-11 !!!!!!!!!!")}));
}

// ---- set_int: the device name, for every other key ----

TEST_F(Values, PositionZeroOfTheDeviceNameStoresTheDefaultName) {
  create();
  store().set(kNameKey, "TV Two");
  EXPECT_EQ(setInt(kDeviceNameItem, 0), 0);
  EXPECT_EQ(store().stringAt(kNameKey), "TV One");
  EXPECT_EQ(journal(), aroundSetInt(kDeviceNameItem, 0,
                                    {call("vconf_set_str", kNameKey, "TV One"),
                                     mainLog("Device Name set to TV One")}));
}

TEST_F(Values, EveryOtherPositionOfTheDeviceNameIsRefusedAndNothingStored) {
  create();
  store().set(kNameKey, "TV Two");
  for (const int value : {1, 2, -1, INT_MAX, INT_MIN}) {
    clearJournal();
    EXPECT_EQ(setInt(kDeviceNameItem, value), -1) << value;
    EXPECT_EQ(journal(), aroundSetInt(kDeviceNameItem, value,
                                      {mainLog("set_device_name::status [0xffffffff]")}))
        << value;
  }
  EXPECT_EQ(store().stringAt(kNameKey), "TV Two");
}

TEST_F(Values, ADefaultNameThatCannotBeStoredGivesTheStoresResult) {
  create();
  store().set(kNameKey, "TV Two");
  failWith("vconf_set_str", kNameKey, -12);
  EXPECT_EQ(setInt(kDeviceNameItem, 0), -12);
  EXPECT_EQ(store().stringAt(kNameKey), "TV Two");
  EXPECT_EQ(calls(), Journal{call("vconf_set_str", kNameKey, "TV One")});
}

TEST_F(Values, WithoutADefaultNameThereIsNoPositionToChoose) {
  store().erase(kDefaultNameKey);
  create();
  EXPECT_EQ(setInt(kDeviceNameItem, 0), -1);
  EXPECT_EQ(journal(),
            aroundSetInt(kDeviceNameItem, 0, {mainLog("set_device_name::status [0xffffffff]")}));
}

TEST_F(Values, SettingAnUnknownKeySetsTheDeviceName) {
  create();
  for (const char* key : {"", "no/such/key", "menu/network", "%s%n"}) {
    clearJournal();
    EXPECT_EQ(setInt(key, 0), 0) << key;
    EXPECT_EQ(journal(), aroundSetInt(key, 0,
                                      {call("vconf_set_str", kNameKey, "TV One"),
                                       mainLog("Device Name set to TV One")}))
        << key;
  }
}

// ---- set_int: the saved networks ----

TEST_F(Values, SettingTheFirstSavedNetworkConnectsToItAndReturnsMinusOne) {
  create();
  store().set(kDocumentKey, kTwoNetworks);
  EXPECT_EQ(setInt(kFirstNetworkItem, 5), -1);
  EXPECT_EQ(store().stringAt(kCommandKey), connectCommand("Net One"));
  EXPECT_EQ(journal(),
            aroundSetInt(kFirstNetworkItem, 5,
                         {call("vconf_notify_key_changed", kDocumentKey), twoNetworksAreRead(),
                          mainLog(" AP Name = Net One status = Connected "),
                          call("vconf_set_str", kCommandKey, connectCommand("Net One"))}));
}

TEST_F(Values, SettingTheSecondSavedNetworkConnectsToItAndReturnsMinusOne) {
  create();
  store().set(kDocumentKey, kTwoNetworks);
  EXPECT_EQ(setInt(kSecondNetworkItem, 0), -1);
  EXPECT_EQ(store().stringAt(kCommandKey), connectCommand("Net Two"));
  EXPECT_EQ(journal(),
            aroundSetInt(kSecondNetworkItem, 0,
                         {call("vconf_notify_key_changed", kDocumentKey), twoNetworksAreRead(),
                          mainLog(" AP Name = Net Two status = Saved "),
                          call("vconf_set_str", kCommandKey, connectCommand("Net Two"))}));
}

TEST_F(Values, TheValueOfASavedNetworkIsLoggedAndOtherwiseIgnored) {
  create();
  store().set(kDocumentKey, kTwoNetworks);
  setInt(kFirstNetworkItem, 0);
  for (const int value : {0, 1, 2, -1, INT_MAX, INT_MIN}) {
    clearJournal();
    EXPECT_EQ(setInt(kFirstNetworkItem, value), -1) << value;
    EXPECT_EQ(journal(),
              aroundSetInt(kFirstNetworkItem, value,
                           {twoNetworksAreRead(), mainLog(" AP Name = Net One status = Connected "),
                            call("vconf_set_str", kCommandKey, connectCommand("Net One"))}))
        << value;
  }
}

TEST_F(Values, ACommandThatCannotBeWrittenIsNeitherLoggedNorReturned) {
  create();
  store().set(kDocumentKey, kTwoNetworks);
  failWith("vconf_set_str", kCommandKey, -6);
  EXPECT_EQ(setInt(kFirstNetworkItem, 1), -1);
  EXPECT_EQ(store().stringAt(kCommandKey), std::nullopt);
  EXPECT_EQ(logLines(),
            (Journal{mainLog("START"), systemLog("Key ---->menu/network/SavedAP1::Value------>1\n"),
                     mainLog(" AP Name = Net One status = Connected "),
                     mainLog(" AP Name = Net Two status = Saved "),
                     mainLog(" AP Name = Net One status = Connected "), mainLog("END")}));
}

TEST_F(Values, WithoutASavedNetworkTheCommandNamesNone) {
  create();
  for (const char* item : {kFirstNetworkItem, kSecondNetworkItem}) {
    store().erase(kCommandKey);
    EXPECT_EQ(setInt(item, 1), -1);
    EXPECT_EQ(store().stringAt(kCommandKey), connectCommand("")) << item;
  }
}

TEST_F(Values, TheCommandQuotesTheNetworksName) {
  create();
  store().set(kDocumentKey,
              R"({"count": 1, "values": [{"SSID": "a\"b\\c", "SIGNAL_STRENGTH": -60}]})");
  setInt(kFirstNetworkItem, 1);
  EXPECT_EQ(store().stringAt(kCommandKey), connectCommand(R"(a\"b\\c)"));
}

TEST_F(Values, ConnectingReadsTheSavedNetworksAsTheyAreNow) {
  create();
  store().set(kDocumentKey, kTwoNetworks);
  setInt(kFirstNetworkItem, 1);
  store().set(kDocumentKey,
              R"({"count": 1, "values": [{"SSID": "Net Three", "SIGNAL_STRENGTH": -60}]})");
  setInt(kFirstNetworkItem, 1);
  EXPECT_EQ(store().stringAt(kCommandKey), connectCommand("Net Three"));
}

TEST_F(Values, TheSavedNetworksAreWatchedFromTheirFirstUseOnAndOnlyOnce) {
  create();
  getInt(kFirstNetworkItem);
  EXPECT_EQ(store().subscriptions(), documentKeys(0));
  setInt(kFirstNetworkItem, 1);
  EXPECT_EQ(store().subscriptions(), documentKeys(1));
  setInt(kSecondNetworkItem, 1);
  displayName(kFirstNetworkItem);
  EXPECT_EQ(store().subscriptions(), documentKeys(1));
}

TEST_F(Values, AChangeOfTheSavedNetworksAsksForARefreshOfTheNetworkMenu) {
  create();
  setInt(kFirstNetworkItem, 1);
  clearJournal();
  store().notify(kDocumentKey);
  EXPECT_EQ(journal(), Journal{call("vconf_set_int", kRefreshKey, 100002)});
}

TEST_F(Values, ConnectingWorksWithoutTheNotification) {
  create();
  store().set(kDocumentKey, kTwoNetworks);
  failWith("vconf_notify_key_changed", -2);
  EXPECT_EQ(setInt(kSecondNetworkItem, 1), -1);
  EXPECT_EQ(store().stringAt(kCommandKey), connectCommand("Net Two"));
}

TEST_F(Values, AMisshapenDocumentRaisesAndConnectsToNothing) {
  create();
  store().set(kDocumentKey, R"({"values": [{"SSID": "Net One"}]})");
  EXPECT_THROW(setInt(kFirstNetworkItem, 1), Json::LogicError);
  EXPECT_EQ(journal(), (Journal{mainLog("START"), locks(),
                                systemLog("Key ---->menu/network/SavedAP1::Value------>1\n"),
                                call("vconf_notify_key_changed", kDocumentKey),
                                call("vconf_get_str", kDocumentKey), unlocks()}));
  EXPECT_EQ(setInt(kDeviceNameItem, 0), 0);
}

// ---- set_string ----

TEST_F(Values, ATypedNameIsStoredUnderTheLock) {
  create();
  EXPECT_EQ(table().set_string(kDeviceNameItem, "TV Two"), 0);
  EXPECT_EQ(store().stringAt(kNameKey), "TV Two");
  EXPECT_EQ(journal(),
            (Journal{locks(), mainLog("START"), call("vconf_set_str", kNameKey, "TV Two"),
                     mainLog("Device Name set to TV Two"), unlocks()}));
}

TEST_F(Values, AStringIsTheDeviceNameWhateverItsKey) {
  create();
  for (const char* key : {"", "no/such/key", kMobileItem, kWifiItem, kWifiDirectItem, kWiredItem,
                          kFirstNetworkItem, kSecondNetworkItem}) {
    const std::string name = std::string("for ") + key;
    clearJournal();
    EXPECT_EQ(table().set_string(key, name.c_str()), 0) << key;
    EXPECT_EQ(store().stringAt(kNameKey), name);
    EXPECT_EQ(calls(), Journal{call("vconf_set_str", kNameKey, name)});
  }
}

TEST_F(Values, ATypedNameIsStoredAsItIs) {
  create();
  for (const std::string& name :
       {std::string(), std::string(3000, 'x'), std::string("Tom & <Jerry>"), std::string("테레비"),
        std::string("SID_ON"), std::string("two\nlines")}) {
    EXPECT_EQ(table().set_string(kDeviceNameItem, name.c_str()), 0);
    EXPECT_EQ(store().stringAt(kNameKey), name);
  }
}

TEST_F(Values, ANameThatCannotBeStoredGivesTheStoresResultAndTheOldNameStays) {
  create();
  store().set(kNameKey, "TV One");
  failWith("vconf_set_str", -3);
  EXPECT_EQ(table().set_string(kDeviceNameItem, "TV Two"), -3);
  EXPECT_EQ(store().stringAt(kNameKey), "TV One");
  EXPECT_EQ(journal(),
            (Journal{locks(), mainLog("START"), call("vconf_set_str", kNameKey, "TV Two"),
                     systemLog("wifi_direct_set_device_name::status [0xfffffffd]"), unlocks()}));
}

TEST_F(Values, APositiveResultOfTheStoreIsAFailureAsWell) {
  create();
  failWith("vconf_set_str", 5, Effect::kAsSuccess);
  EXPECT_EQ(table().set_string(kDeviceNameItem, "TV Two"), 5);
  EXPECT_EQ(logLines(),
            (Journal{mainLog("START"), systemLog("wifi_direct_set_device_name::status [0x0005]")}));
}

// ---- get_current_value_sid ----

// The caller's buffer, a few bytes larger than it need be: the text, its end, and then filling.
std::string bufferWith(const std::string& text) {
  std::string buffer(VENTARO_CURRENT_VALUE_SIZE + 16, '-');
  return buffer.replace(0, text.size() + 1, text.c_str(), text.size() + 1);
}

// The same buffer after a text and its end were written to its start, and nothing else.
std::string overwritten(std::string buffer, const std::string& text) {
  return buffer.replace(0, text.size() + 1, text.c_str(), text.size() + 1);
}

class CurrentValue : public Values {
 protected:
  // The callback's result, the caller's pointer unchanged.
  int askInto(std::string& buffer, const char* key = kDeviceNameItem) const {
    char* const start = buffer.data();
    char* value = start;
    const int result = table().get_current_value_sid(key, &value);
    EXPECT_EQ(static_cast<const void*>(value), start);
    return result;
  }
};

TEST_F(CurrentValue, IsTheDeviceNameInTheCallersBufferWithoutTheLock) {
  create();
  store().set(kNameKey, "TV Two");
  std::string buffer = bufferWith("the old value");
  EXPECT_EQ(askInto(buffer), 0);
  EXPECT_EQ(buffer, overwritten(bufferWith("the old value"), "TV Two"));
  EXPECT_EQ(journal(), (Journal{mainLog("START"), call("vconf_get_str", kNameKey),
                                mainLog("********* Value: TV Two **********"), mainLog("END")}));
}

TEST_F(CurrentValue, IsTheDeviceNameWhateverTheKey) {
  create();
  store().set(kNameKey, "TV Two");
  for (const char* key : {"", "no/such/key", kMobileItem, kWifiItem, kWifiDirectItem, kWiredItem,
                          kFirstNetworkItem, kSecondNetworkItem}) {
    std::string buffer = bufferWith("old");
    clearJournal();
    EXPECT_EQ(askInto(buffer, key), 0) << key;
    EXPECT_STREQ(buffer.c_str(), "TV Two") << key;
    EXPECT_EQ(calls(), Journal{call("vconf_get_str", kNameKey)}) << key;
  }
}

TEST_F(CurrentValue, IsCutTo2047Bytes) {
  create();
  for (const std::size_t size : {2046U, 2047U, 2048U, 3000U}) {
    const std::string cut(size < 2047 ? size : 2047, 'x');
    store().set(kNameKey, std::string(size, 'x'));
    std::string buffer = bufferWith("old");
    clearJournal();
    EXPECT_EQ(askInto(buffer), 0) << size;
    EXPECT_EQ(buffer, overwritten(bufferWith("old"), cut)) << size;
    EXPECT_EQ(logLines(),
              (Journal{mainLog("START"), mainLog("********* Value: " + cut + " **********"),
                       mainLog("END")}))
        << size;
  }
}

TEST_F(CurrentValue, IsTheNameAsItIsStored) {
  create();
  for (const char* name : {"", "Tom & <Jerry>", "테레비", "SID_ON", "100%s %n"}) {
    store().set(kNameKey, name);
    std::string buffer = bufferWith("old");
    EXPECT_EQ(askInto(buffer), 0);
    EXPECT_EQ(buffer, overwritten(bufferWith("old"), name));
  }
}

TEST_F(CurrentValue, LeavesTheBufferAloneWithoutAName) {
  create();
  std::string buffer = bufferWith("the old value");
  EXPECT_EQ(askInto(buffer), -1);
  EXPECT_EQ(buffer, bufferWith("the old value"));
  EXPECT_EQ(journal(),
            (Journal{mainLog("START"), call("vconf_get_str", kNameKey),
                     systemLog("get_device_name::Failed"),
                     mainLog("********* Value: the old value **********"), mainLog("END")}));
}

TEST_F(CurrentValue, LeavesTheBufferAloneWhenTheNameCannotBeRead) {
  create();
  store().set(kNameKey, "TV Two");
  failWith("vconf_get_str", kNameKey, -1, Effect::kAsSuccess);
  std::string buffer = bufferWith("");
  EXPECT_EQ(askInto(buffer), -1);
  EXPECT_EQ(buffer, bufferWith(""));
  EXPECT_EQ(logLines(), (Journal{mainLog("START"), systemLog("get_device_name::Failed"),
                                 mainLog("********* Value:  **********"), mainLog("END")}));
}

TEST_F(CurrentValue, DoesNotWaitForACallbackThatHoldsTheLock) {
  create();
  store().set(kNameKey, "TV One");
  std::string buffer = bufferWith("old");
  askInto(buffer);
  ASSERT_EQ(lockActions(), Journal()) << "or this test would never end";
  std::latch inside(1);
  std::latch answered(1);
  onCall("vconf_set_str", [&] {
    inside.count_down();
    answered.wait();
  });
  std::thread setter([&] { table().set_string(kDeviceNameItem, "TV Two"); });
  inside.wait();
  EXPECT_EQ(askInto(buffer), 0);
  EXPECT_STREQ(buffer.c_str(), "TV One");
  EXPECT_EQ(lockActions(), Journal{locks()});
  answered.count_down();
  setter.join();
  EXPECT_EQ(askInto(buffer), 0);
  EXPECT_STREQ(buffer.c_str(), "TV Two");
  EXPECT_EQ(lockActions(), (Journal{locks(), unlocks()}));
}

}  // namespace
