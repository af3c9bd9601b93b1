// The callback that gives an item's value as text: the word On or Off for the four switches, the
// device name for all else.
#include <string>

#include "provider_test.h"

namespace {

constexpr char kNameKey[] = "db/menu/network/devicename/tv_name";
constexpr char kPreferenceKey[] = "db/menu/network/wifidirect";
constexpr char kChoiceKey[] = "db/menu/network/wiredeap";

constexpr char kMobileItem[] = "menu/network/MobileDeviceTV_US";
constexpr char kOtherMobileItem[] = "menu/network/MobileDeviceTV_NOT_US";
constexpr char kWifiItem[] = "menu/network/WiFiOnOff";
constexpr char kWifiDirectItem[] = "menu/network/expertsettings/wifidirect";
constexpr char kWiredItem[] = "menu/network/WiredEAP";
constexpr char kDeviceNameItem[] = "menu/network/devicename";

constexpr const char* kSwitchItems[] = {kMobileItem, kWifiItem, kWifiDirectItem, kWiredItem};

class StringValues : public ProviderTest {
 protected:
  // The journal of a switch around what its object does: `object` as the value's line names it.
  static Journal aroundSwitch(const char* object, const std::string& text, const Journal& reading) {
    return {locks(),        mainLog("START"),
            reading,        mainLog(std::string(object) + ".setOnOffStatus==" + text),
            mainLog("END"), unlocks()};
  }

  static Journal nameIsRead() {
    return {locks(),
            mainLog("START"),
            call("vconf_get_str", kNameKey),
            mainLog("wifi_direct_get_device_name::status [0x0000]"),
            mainLog("END"),
            unlocks()};
  }

  static Journal nameIsMissing() {
    return {locks(), mainLog("START"), call("vconf_get_str", kNameKey),
            mainLog("wifi_direct_get_device_name::status [0xffffffff]"), unlocks()};
  }

  static Journal radioIsRead() {
    return {call("wifi_get_enable_qx"), mainLog("connection_get_wakeOnMobile_mode set to 0")};
  }

  static Journal accessPointIsRead(const std::string& ap, const std::string& frequency) {
    return {call("wifi_initialize"),
            mainLog("Wifi init succeeded\n"),
            call("wifi_get_connected_ap"),
            call("wifi_ap_get_frequency", ap),
            mainLog("Frequency : " + frequency + "\n"),
            call("wifi_ap_destroy", ap),
            call("vconf_get_int", kPreferenceKey)};
  }

  // The value, which the callback must have given with the result 1.
  OwnedText value(const char* key) const {
    OwnedText text;
    clearJournal();
    EXPECT_EQ(table().get_string(key, text.out()), 1) << key;
    return text;
  }

  // Expects this result with an output that stays what it was.
  void expectUntouched(const char* key, int result) const {
    char preset[] = "preset";
    char* text = preset;
    clearJournal();
    EXPECT_EQ(table().get_string(key, &text), result) << key;
    EXPECT_EQ(static_cast<const void*>(text), preset) << key;
    EXPECT_STREQ(preset, "preset") << key;
  }
};

// ---- Power on with mobile ----

TEST_F(StringValues, PowerOnWithMobileIsOnWhileItsModeIs) {
  create();
  setWakeOnMobile(true);
  EXPECT_EQ(value(kMobileItem), "On");
  EXPECT_EQ(journal(), aroundSwitch("CMobileDeviceTVObj", "On",
                                    {call("util_get_wakeOnMobile_mode"),
                                     mainLog("Request to get wakeOnMobile mode succeeded : "),
                                     mainLog("wakeOnMobile Enabled\n"),
                                     mainLog("_IsPowerOnWithMobileEnable =>1"),
                                     mainLog("connection_get_wakeOnMobile_mode set to 1")}));
}

TEST_F(StringValues, PowerOnWithMobileIsOffWhileItsModeIs) {
  create();
  EXPECT_EQ(value(kMobileItem), "Off");
  EXPECT_EQ(journal(), aroundSwitch("CMobileDeviceTVObj", "Off",
                                    {call("util_get_wakeOnMobile_mode"),
                                     mainLog("Request to get wakeOnMobile mode succeeded : "),
                                     mainLog("wakeOnMobile Disabled\n"),
                                     mainLog("connection_get_wakeOnMobile_mode set to 0")}));
}

TEST_F(StringValues, AMobileModeThatCannotBeReadIsInvalidAndTheLineShowsTheOldValue) {
  create();
  failWith("util_get_wakeOnMobile_mode", 13, Effect::kAsSuccess);
  expectUntouched(kMobileItem, 1);
  EXPECT_EQ(journal(), aroundSwitch("CMobileDeviceTVObj", "preset",
                                    {call("util_get_wakeOnMobile_mode"),
                                     mainLog("Fail to get wakeOnMobile mode[0xd]\n"),
                                     mainLog("connection_get_wakeOnMobile_mode set to -1"),
                                     mainLog("Invalid")}));
}

// ---- Wi-Fi power ----

TEST_F(StringValues, WifiIsOnWhileTheRadiosStateIsOneOrMore) {
  create();
  for (const int state : {1, 2, 100}) {
    setRadio(state);
    EXPECT_EQ(value(kWifiItem), "On") << state;
    EXPECT_EQ(journal(), aroundSwitch("CWiFiOnOffObj", "On", radioIsRead()));
  }
}

TEST_F(StringValues, WifiIsOffWhileTheRadiosStateIsBelowOne) {
  create();
  for (const int state : {0, -1}) {
    setRadio(state);
    EXPECT_EQ(value(kWifiItem), "Off") << state;
    EXPECT_EQ(journal(), aroundSwitch("CWiFiOnOffObj", "Off", radioIsRead()));
  }
}

TEST_F(StringValues, ARadioThatCannotBeReadIsInvalidAndTheLineShowsTheOldValue) {
  create();
  setRadio(1);
  failWith("wifi_get_enable_qx", -5, Effect::kAsSuccess);
  expectUntouched(kWifiItem, 1);
  EXPECT_EQ(journal(), aroundSwitch("CWiFiOnOffObj", "preset",
                                    {call("wifi_get_enable_qx"),
                                     mainLog("connection_get_wakeOnMobile_mode set to -5"),
                                     mainLog("Invalid")}));
}

TEST_F(StringValues, AnOutputWithoutAnOldValueIsLoggedAsItIs) {
  create();
  failWith("wifi_get_enable_qx", 7);
  EXPECT_TRUE(value(kWifiItem).isNull());
  EXPECT_EQ(journal(), aroundSwitch("CWiFiOnOffObj", "(null)",
                                    {call("wifi_get_enable_qx"),
                                     mainLog("connection_get_wakeOnMobile_mode set to 7"),
                                     mainLog("Invalid")}));
}

// ---- Wi-Fi Direct ----

TEST_F(StringValues, WifiDirectIsOnAtASixGigahertzAccessPointUnlessItWasSwitchedOff) {
  create();
  setConnectedAp(5916);
  store().set(kPreferenceKey, 0);
  EXPECT_EQ(value(kWifiDirectItem), "On");
  EXPECT_EQ(journal(),
            aroundSwitch("CWiFiDirectObj", "On",
                         {accessPointIsRead("ap 1", "5916"), mainLog("setOnOffStatus 1")}));
  store().set(kPreferenceKey, 1);
  EXPECT_EQ(value(kWifiDirectItem), "On");
  EXPECT_EQ(journal(),
            aroundSwitch("CWiFiDirectObj", "On",
                         {accessPointIsRead("ap 2", "5916"), mainLog("setOnOffStatus 1")}));
}

TEST_F(StringValues, WifiDirectIsOffWhenItWasSwitchedOffOrItsPreferenceCannotBeRead) {
  create();
  setConnectedAp(5955);
  store().set(kPreferenceKey, 2);
  EXPECT_EQ(value(kWifiDirectItem), "Off");
  EXPECT_EQ(journal(),
            aroundSwitch("CWiFiDirectObj", "Off",
                         {accessPointIsRead("ap 1", "5955"), mainLog("setOnOffStatus 0")}));
  store().erase(kPreferenceKey);
  EXPECT_EQ(value(kWifiDirectItem), "Off");
  EXPECT_EQ(journal(),
            aroundSwitch("CWiFiDirectObj", "Off",
                         {accessPointIsRead("ap 2", "5955"), mainLog("setOnOffStatus 0")}));
}

TEST_F(StringValues, WifiDirectIsOffAtAnotherAccessPoint) {
  create();
  setConnectedAp(5915);
  store().set(kPreferenceKey, 1);
  EXPECT_EQ(value(kWifiDirectItem), "Off");
  EXPECT_EQ(journal(),
            aroundSwitch("CWiFiDirectObj", "Off",
                         {accessPointIsRead("ap 1", "5915"), mainLog("setOnOffStatus 0")}));
}

TEST_F(StringValues, WifiDirectIsNeverInvalid) {
  create();
  for (const char* function : {"wifi_initialize", "wifi_get_connected_ap", "wifi_ap_get_frequency",
                               "wifi_ap_destroy", "vconf_get_int"}) {
    failWith(function, -8);
  }
  EXPECT_EQ(value(kWifiDirectItem), "Off");
  EXPECT_EQ(journal(),
            aroundSwitch("CWiFiDirectObj", "Off",
                         {call("wifi_initialize"), call("wifi_get_connected_ap"),
                          mainLog("Fail to get connected AP "),
                          call("wifi_ap_get_frequency", "null"), call("wifi_ap_destroy", "null"),
                          call("vconf_get_int", kPreferenceKey), mainLog("setOnOffStatus 0")}));
}

// ---- Wired 802.1X ----

TEST_F(StringValues, TheWiredSwitchIsOnForEveryChoiceButZero) {
  create();
  for (const int choice : {1, 7, -1}) {
    store().set(kChoiceKey, choice);
    EXPECT_EQ(value(kWiredItem), "On") << choice;
    EXPECT_EQ(journal(), aroundSwitch("CWiredEAPObj", "On", {call("vconf_get_int", kChoiceKey)}));
  }
}

TEST_F(StringValues, TheWiredSwitchIsOffForZeroAndForAChoiceThatCannotBeRead) {
  create();
  store().set(kChoiceKey, 0);
  EXPECT_EQ(value(kWiredItem), "Off");
  EXPECT_EQ(journal(), aroundSwitch("CWiredEAPObj", "Off", {call("vconf_get_int", kChoiceKey)}));
  store().set(kChoiceKey, 1);
  failWith("vconf_get_int", kChoiceKey, -4);
  EXPECT_EQ(value(kWiredItem), "Off");
  EXPECT_EQ(journal(), aroundSwitch("CWiredEAPObj", "Off", {call("vconf_get_int", kChoiceKey)}));
}

// ---- The word ----

TEST_F(StringValues, TheWordIsTranslatedIntoTheLanguageOfTheMoment) {
  create();
  store().set(kChoiceKey, 1);
  EXPECT_EQ(value(kWiredItem), "On");
  useLanguage("ko");
  EXPECT_NE(tr("SID_ON"), "On");
  EXPECT_NE(tr("SID_ON"), "SID_ON");
  EXPECT_EQ(value(kWiredItem), tr("SID_ON"));
  EXPECT_EQ(journal(),
            aroundSwitch("CWiredEAPObj", tr("SID_ON"), {call("vconf_get_int", kChoiceKey)}));
  store().set(kChoiceKey, 0);
  EXPECT_NE(tr("SID_OFF"), "SID_OFF");
  EXPECT_EQ(value(kWiredItem), tr("SID_OFF"));
}

TEST_F(StringValues, WithoutACatalogueTheWordIsItsStringId) {
  useLanguage("none");
  create();
  for (const char* item : kSwitchItems) EXPECT_EQ(value(item), "SID_OFF") << item;
  setWakeOnMobile(true);
  setRadio(1);
  setConnectedAp(5955);
  store().set(kPreferenceKey, 1);
  store().set(kChoiceKey, 1);
  for (const char* item : kSwitchItems) EXPECT_EQ(value(item), "SID_ON") << item;
}

TEST_F(StringValues, TheWordStandsInABlockOfJustItsSize) {
  create();
  setRadio(1);
  EXPECT_EQ(value(kWifiItem).blockSize(), sizeof("On"));
  EXPECT_EQ(value(kWiredItem).blockSize(), sizeof("Off"));
}

TEST_F(StringValues, AWordIsNeverCut) {
  useLongTexts(300);
  create();
  setRadio(1);
  for (const char* item : kSwitchItems) {
    const OwnedText text = value(item);
    EXPECT_EQ(text.str(), tr(item == kWifiItem ? "SID_ON" : "SID_OFF")) << item;
    EXPECT_EQ(text.length(), 300U) << item;
    EXPECT_EQ(text.blockSize(), 301U) << item;
  }
}

TEST_F(StringValues, EveryCallGivesAStringOfItsOwn) {
  create();
  store().set(kNameKey, "TV One");
  for (const char* item : {kWiredItem, kDeviceNameItem}) {
    const OwnedText first = value(item);
    const OwnedText second = value(item);
    EXPECT_NE(static_cast<const void*>(first.get()), second.get()) << item;
  }
}

TEST_F(StringValues, WhatTheOutputHeldBeforehandIsReplacedAndNotFreed) {
  create();
  store().set(kNameKey, "TV One");
  for (const char* item : {kMobileItem, kWifiItem, kWifiDirectItem, kWiredItem, kDeviceNameItem}) {
    char preset[] = "preset";
    char* text = preset;
    EXPECT_EQ(table().get_string(item, &text), 1) << item;
    EXPECT_NE(static_cast<const void*>(text), preset) << item;
    EXPECT_STREQ(preset, "preset") << item;
    if (text != preset) std::free(text);
  }
}

// ---- The device name ----

TEST_F(StringValues, EveryOtherKeyIsTheDeviceName) {
  create();
  store().set(kNameKey, "TV Two");
  for (const char* key :
       {kDeviceNameItem, "menu/network/devicename/selectdevicename", "menu/network/SavedAP1",
        "menu/general/network", "menu/network/expertsettings", "", "no/such/key", "%s%n"}) {
    EXPECT_EQ(value(key), "TV Two") << key;
    EXPECT_EQ(journal(), nameIsRead()) << key;
  }
}

TEST_F(StringValues, TheOtherMobileItemIsTheDeviceNameAndNoSwitch) {
  create();
  setWakeOnMobile(true);
  store().set(kNameKey, "TV Two");
  EXPECT_EQ(value(kOtherMobileItem), "TV Two");
  EXPECT_EQ(journal(), nameIsRead());
}

TEST_F(StringValues, ALeadingPartOfASwitchIsTheDeviceName) {
  create();
  store().set(kNameKey, "TV Two");
  for (const char* key : {"menu/network/WiFiOnOf", "menu/network/W", "menu/network/MobileDeviceTV_",
                          "menu/network/expertsettings/wifi", "menu/network/WiredEA"}) {
    EXPECT_EQ(value(key), "TV Two") << key;
    EXPECT_EQ(journal(), nameIsRead()) << key;
  }
}

TEST_F(StringValues, AMissingNameIsMinusOneWithoutAnEndAndTheOutputUntouched) {
  create();
  for (const char* key : {kDeviceNameItem, kOtherMobileItem, "no/such/key"}) {
    expectUntouched(key, -1);
    EXPECT_EQ(journal(), nameIsMissing()) << key;
  }
}

TEST_F(StringValues, ANameThatCannotBeReadIsMissing) {
  create();
  store().set(kNameKey, "TV Two");
  failWith("vconf_get_str", kNameKey, -1);
  expectUntouched(kDeviceNameItem, -1);
  EXPECT_EQ(journal(), nameIsMissing());
}

TEST_F(StringValues, AMissingNameConcernsNoSwitch) {
  create();
  for (const char* item : kSwitchItems) EXPECT_EQ(value(item), "Off") << item;
}

TEST_F(StringValues, AnEmptyNameIsAnEmptyText) {
  create();
  store().set(kNameKey, "");
  EXPECT_EQ(value(kDeviceNameItem), "");
  EXPECT_EQ(journal(), nameIsRead());
}

TEST_F(StringValues, ANameIsGivenAsItIsStored) {
  create();
  for (const std::string& name :
       {std::string("Tom & <Jerry>"), std::string("SID_ON"), std::string("<<A>> of %s"),
        std::string("테레비"), std::string(3000, 'x')}) {
    store().set(kNameKey, name);
    EXPECT_EQ(value(kDeviceNameItem), name);
    EXPECT_EQ(journal(), nameIsRead());
  }
}

TEST_F(StringValues, ANameIsReadAnewEveryTime) {
  create();
  for (const char* name : {"TV Two", "TV Three"}) {
    table().set_string(kDeviceNameItem, name);
    EXPECT_EQ(value(kDeviceNameItem), name);
  }
}

}  // namespace
