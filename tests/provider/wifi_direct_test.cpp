// The Wi-Fi Direct switch: a stored preference that shows as On only at a 6 GHz access point.
#include <climits>

#include "setting_test.h"
#include "wifi_direct_status.h"

namespace {

constexpr char kPreferenceKey[] = "db/menu/network/wifidirect";
constexpr int k6GhzMhz = 5955;
constexpr int k5GhzMhz = 5180;

class WifiDirect : public SettingTest {
 protected:
  WifiDirect() : SettingTest(VENTARO_KEY_WIFI_DIRECT, "CWiFiDirectObj") {}

  // A provider at an access point, whose handle is "ap 1", with this preference.
  void createAt(std::optional<int> frequencyMhz, std::optional<int> preference) {
    create();
    setConnectedAp(frequencyMhz);
    if (preference) store().set(kPreferenceKey, *preference);
  }

  // The whole loading around the construction of this object.
  static Journal loading(const Journal& object) {
    return {call("connection_create"),
            call("connection_create"),
            object,
            call("connection_create"),
            call("connection_get_profile_iterator", "connection 3", 0),
            call("connection_profile_iterator_has_next", "iterator")};
  }

  // The preference after a load at this access point with this preference; absent for none.
  std::optional<int> preferenceAfterLoading(std::optional<int> frequencyMhz,
                                            std::optional<int> preference) {
    setConnectedAp(frequencyMhz);
    store().erase(kPreferenceKey);
    if (preference) store().set(kPreferenceKey, *preference);
    clearJournal();
    load();
    const bool isWritten = calls().contains(call("vconf_set_int", kPreferenceKey, 1));
    EXPECT_EQ(isWritten, store().intAt(kPreferenceKey) != preference);
    unload();
    return store().intAt(kPreferenceKey);
  }
};

// ---- Loading and unloading ----

TEST_F(WifiDirect, LoadingAtA6GhzAccessPointChoosesOnWhereNothingWasChosen) {
  setConnectedAp(k6GhzMhz);
  store().set(kPreferenceKey, 0);
  load();
  EXPECT_EQ(journal(), loading({wifiDirectStatusAt(k6GhzMhz), call("vconf_get_int", kPreferenceKey),
                                call("vconf_set_int", kPreferenceKey, 1)}));
  EXPECT_EQ(store().intAt(kPreferenceKey), 1);
  EXPECT_EQ(openAps(), 0);
}

TEST_F(WifiDirect, LoadingReadsThePreferenceTwiceAndWritesNothingWhereOffWasChosen) {
  setConnectedAp(k6GhzMhz);
  store().set(kPreferenceKey, 2);
  load();
  EXPECT_EQ(journal(),
            loading({wifiDirectStatusAt(k6GhzMhz), call("vconf_get_int", kPreferenceKey)}));
}

TEST_F(WifiDirect, LoadingWithoutAnAccessPointReadsThePreferenceTwiceToo) {
  store().set(kPreferenceKey, 0);
  load();
  EXPECT_EQ(journal(),
            loading({wifiDirectStatusWithoutAp(), call("vconf_get_int", kPreferenceKey)}));
  EXPECT_EQ(store().intAt(kPreferenceKey), 0);
}

TEST_F(WifiDirect, LoadingKeepsEveryOtherPreferenceAtA6GhzAccessPoint) {
  for (const int preference : {1, 2, 3, -1, INT_MAX, INT_MIN}) {
    EXPECT_EQ(preferenceAfterLoading(k6GhzMhz, preference), preference);
  }
  EXPECT_EQ(preferenceAfterLoading(k6GhzMhz, std::nullopt), std::nullopt);
}

TEST_F(WifiDirect, LoadingChoosesNothingAtAnyOtherAccessPoint) {
  EXPECT_EQ(preferenceAfterLoading(k5GhzMhz, 0), 0);
  EXPECT_EQ(preferenceAfterLoading(5915, 0), 0);
  EXPECT_EQ(preferenceAfterLoading(std::nullopt, 0), 0);
  EXPECT_EQ(preferenceAfterLoading(5916, 0), 1);
}

TEST_F(WifiDirect, LoadingChoosesNothingWhenEitherReadingFails) {
  for (const int failing : {1, 2}) {
    failCall("vconf_get_int", failing, -4);
    EXPECT_EQ(preferenceAfterLoading(k6GhzMhz, 0), 0) << failing;
  }
}

TEST_F(WifiDirect, LoadingTakesTheSecondReadingAsThePreference) {
  setConnectedAp(k6GhzMhz);
  store().set(kPreferenceKey, 1);
  onCall("wifi_ap_destroy", [] {
    onCall("vconf_get_int", [] {  // the first reading
      onCall("vconf_get_int", [] { store().set(kPreferenceKey, 0); });
    });
  });
  load();
  EXPECT_EQ(store().intAt(kPreferenceKey), 1);
  EXPECT_EQ(journal(), loading({wifiDirectStatusAt(k6GhzMhz), call("vconf_get_int", kPreferenceKey),
                                call("vconf_set_int", kPreferenceKey, 1)}));
}

TEST_F(WifiDirect, APreferenceThatCannotBeWrittenWhileLoadingIsNotReported) {
  setConnectedAp(k6GhzMhz);
  store().set(kPreferenceKey, 0);
  failWith("vconf_set_int", -3);
  load();
  EXPECT_EQ(journal(), loading({wifiDirectStatusAt(k6GhzMhz), call("vconf_get_int", kPreferenceKey),
                                call("vconf_set_int", kPreferenceKey, 1)}));
}

TEST_F(WifiDirect, CreatingAndUnloadingDoNothingWithWifi) {
  load();
  clearJournal();
  create();
  unload();
  EXPECT_EQ(calls(), (Journal{call("connection_destroy", "connection 3"),
                              call("connection_destroy", "connection 2"),
                              call("connection_destroy", "connection 1")}));
}

// ---- The value ----

TEST_F(WifiDirect, TheValueIsOneAtA6GhzAccessPointWhenOnWasChosen) {
  createAt(k6GhzMhz, 1);
  EXPECT_EQ(get(), (IntAnswer{1, 1}));
  EXPECT_EQ(journal(), aroundGetInt(1, {wifiDirectStatusAt(k6GhzMhz),
                                        mainLog("getInt , value after changing = 1")}));
}

TEST_F(WifiDirect, TheValueIsZeroWithoutAnAccessPointAndTheResultStillOne) {
  createAt(std::nullopt, 1);
  EXPECT_EQ(get(), (IntAnswer{1, 0}));
  EXPECT_EQ(journal(), aroundGetInt(1, {wifiDirectStatusWithoutAp(),
                                        mainLog("getInt , value after changing = 0")}));
}

TEST_F(WifiDirect, ThePreferenceIsReadAlsoWhenTheAccessPointDecides) {
  createAt(k5GhzMhz, 1);
  EXPECT_EQ(get(), (IntAnswer{1, 0}));
  EXPECT_EQ(journal(), aroundGetInt(1, {wifiDirectStatusAt(k5GhzMhz),
                                        mainLog("getInt , value after changing = 0")}));
}

TEST_F(WifiDirect, AFrequencyAbove5915IsOf6Ghz) {
  createAt(std::nullopt, 1);
  for (const int frequency : {5916, 5935, 7115, INT_MAX}) {
    setConnectedAp(frequency);
    EXPECT_EQ(get(), (IntAnswer{1, 1})) << frequency;
  }
  for (const int frequency : {5915, 5180, 2412, 0, -1, INT_MIN}) {
    setConnectedAp(frequency);
    EXPECT_EQ(get(), (IntAnswer{1, 0})) << frequency;
  }
}

TEST_F(WifiDirect, OnlyThePreferencesZeroAndOneShowAsOn) {
  createAt(k6GhzMhz, std::nullopt);
  EXPECT_EQ(get(), (IntAnswer{1, 0})) << "unreadable";
  for (const int preference : {0, 1}) {
    store().set(kPreferenceKey, preference);
    EXPECT_EQ(get(), (IntAnswer{1, 1})) << preference;
  }
  for (const int preference : {-1, 2, 3, INT_MAX, INT_MIN}) {
    store().set(kPreferenceKey, preference);
    EXPECT_EQ(get(), (IntAnswer{1, 0})) << preference;
  }
}

TEST_F(WifiDirect, AWifiServiceThatCannotBeInitialisedIsAskedAllTheSame) {
  createAt(k6GhzMhz, 1);
  failWith("wifi_initialize", 9);
  EXPECT_EQ(get(), (IntAnswer{1, 1}));
  EXPECT_EQ(journal(),
            aroundGetInt(1, {call("wifi_initialize"), call("wifi_get_connected_ap"),
                             call("wifi_ap_get_frequency", "ap 1"), mainLog("Frequency : 5955\n"),
                             call("wifi_ap_destroy", "ap 1"), call("vconf_get_int", kPreferenceKey),
                             mainLog("getInt , value after changing = 1")}));
}

TEST_F(WifiDirect, WithoutAnAccessPointTheFrequencyDecidesAllTheSame) {
  createAt(std::nullopt, 1);
  setFrequencyOfNullAp(k6GhzMhz);
  EXPECT_EQ(get(), (IntAnswer{1, 1}));
  EXPECT_EQ(journal(),
            aroundGetInt(1, {call("wifi_initialize"), mainLog("Wifi init succeeded\n"),
                             call("wifi_get_connected_ap"), mainLog("Fail to get connected AP "),
                             call("wifi_ap_get_frequency", "null"), mainLog("Frequency : 5955\n"),
                             call("wifi_ap_destroy", "null"), call("vconf_get_int", kPreferenceKey),
                             mainLog("getInt , value after changing = 1")}));
}

TEST_F(WifiDirect, AHandleThatAFailedQuestionLeftIsAskedAndDestroyed) {
  createAt(k6GhzMhz, 1);
  failWith("wifi_get_connected_ap", 9, Effect::kAsSuccess);
  EXPECT_EQ(get(), (IntAnswer{1, 1}));
  EXPECT_EQ(calls(),
            (Journal{call("wifi_initialize"), call("wifi_get_connected_ap"),
                     call("wifi_ap_get_frequency", "ap 1"), call("wifi_ap_destroy", "ap 1"),
                     call("vconf_get_int", kPreferenceKey)}));
  EXPECT_TRUE(logLines().contains(mainLog("Fail to get connected AP ")));
  EXPECT_EQ(openAps(), 0);
}

TEST_F(WifiDirect, AFrequencyThatCannotBeReadIsNot6GhzWhateverItLeft) {
  for (const Effect effect : {Effect::kNone, Effect::kAsSuccess}) {
    createAt(k6GhzMhz, 1);
    failWith("wifi_ap_get_frequency", effect == Effect::kNone ? -9 : 9, effect);
    EXPECT_EQ(get(), (IntAnswer{1, 0}));
    EXPECT_EQ(
        journal(),
        aroundGetInt(1, {call("wifi_initialize"), mainLog("Wifi init succeeded\n"),
                         call("wifi_get_connected_ap"), call("wifi_ap_get_frequency", "ap 1"),
                         call("wifi_ap_destroy", "ap 1"), call("vconf_get_int", kPreferenceKey),
                         mainLog("getInt , value after changing = 0")}));
    EXPECT_EQ(openAps(), 0);
    unload();
    reset();
  }
}

TEST_F(WifiDirect, AnAccessPointThatCannotBeDestroyedIsNotReported) {
  createAt(k6GhzMhz, 1);
  failWith("wifi_ap_destroy", -9, Effect::kAsSuccess);
  EXPECT_EQ(get(), (IntAnswer{1, 1}));
  EXPECT_EQ(journal(), aroundGetInt(1, {wifiDirectStatusAt(k6GhzMhz),
                                        mainLog("getInt , value after changing = 1")}));
}

TEST_F(WifiDirect, WhatAFailedReadingOfThePreferenceLeftCounts) {
  createAt(k6GhzMhz, 1);
  failWith("vconf_get_int", -4, Effect::kAsSuccess);
  EXPECT_EQ(get(), (IntAnswer{1, 1}));
  failWith("vconf_get_int", -4);
  EXPECT_EQ(get(), (IntAnswer{1, 0}));
}

TEST_F(WifiDirect, EverythingIsAskedAfreshEveryTime) {
  createAt(k6GhzMhz, 1);
  EXPECT_EQ(get(), (IntAnswer{1, 1}));
  setConnectedAp(k5GhzMhz);
  EXPECT_EQ(get(), (IntAnswer{1, 0}));
  setConnectedAp(k6GhzMhz);
  EXPECT_EQ(get(), (IntAnswer{1, 1}));
  store().set(kPreferenceKey, 2);
  EXPECT_EQ(get(), (IntAnswer{1, 0}));
}

// ---- Choosing ----

TEST_F(WifiDirect, OneStoresOnAndSwitchesNothing) {
  create();
  EXPECT_EQ(set(1), 0);
  EXPECT_EQ(journal(), aroundSetInt(1, {call("vconf_set_int", kPreferenceKey, 1),
                                        mainLog("Set Int Status=0::1")}));
  EXPECT_EQ(store().intAt(kPreferenceKey), 1);
}

TEST_F(WifiDirect, AnyOtherValueStoresOff) {
  for (const int value : {0, 2, 7, -1, INT_MAX, INT_MIN}) {
    create();
    store().set(kPreferenceKey, 1);
    EXPECT_EQ(set(value), 0) << value;
    EXPECT_EQ(journal(), aroundSetInt(value, {call("vconf_set_int", kPreferenceKey, 2),
                                              mainLog("Set Int Status=0::2")}));
    EXPECT_EQ(store().intAt(kPreferenceKey), 2) << value;
    unload();
  }
}

TEST_F(WifiDirect, TheStoresErrorIsReturnedAndLogged) {
  create();
  store().set(kPreferenceKey, 1);
  failWith("vconf_set_int", kPreferenceKey, -6);
  EXPECT_EQ(set(0), -6);
  EXPECT_EQ(journal(), aroundSetInt(0, {call("vconf_set_int", kPreferenceKey, 2),
                                        mainLog("Set Int Status=-6::2")}));
  EXPECT_EQ(store().intAt(kPreferenceKey), 1);
  failWith("vconf_set_int", kPreferenceKey, 12);
  EXPECT_EQ(set(1), 12);
  EXPECT_TRUE(logLines().contains(mainLog("Set Int Status=12::1")));
}

TEST_F(WifiDirect, OnStaysHiddenAwayFrom6Ghz) {
  createAt(k5GhzMhz, 0);
  EXPECT_EQ(set(1), 0);
  EXPECT_EQ(get(), (IntAnswer{1, 0}));
  setConnectedAp(k6GhzMhz);
  EXPECT_EQ(get(), (IntAnswer{1, 1}));
}

TEST_F(WifiDirect, OffShowsAtOnceAt6Ghz) {
  createAt(k6GhzMhz, 1);
  EXPECT_EQ(set(0), 0);
  EXPECT_EQ(get(), (IntAnswer{1, 0}));
  EXPECT_EQ(set(1), 0);
  EXPECT_EQ(get(), (IntAnswer{1, 1}));
}

// ---- The value as text ----

TEST_F(WifiDirect, TheTextIsOnWhereTheValueIsOne) {
  createAt(k6GhzMhz, 0);
  EXPECT_EQ(text(), "On");
  EXPECT_EQ(journal(),
            aroundGetString("On", {wifiDirectStatusAt(k6GhzMhz), mainLog("setOnOffStatus 1")}));
}

TEST_F(WifiDirect, TheTextIsOffWhereTheValueIsZero) {
  createAt(std::nullopt, 1);
  EXPECT_EQ(text(), "Off");
  EXPECT_EQ(journal(),
            aroundGetString("Off", {wifiDirectStatusWithoutAp(), mainLog("setOnOffStatus 0")}));
}

TEST_F(WifiDirect, TheTextIsOffWhereOffWasChosen) {
  createAt(k6GhzMhz, 2);
  EXPECT_EQ(text(), "Off");
  EXPECT_EQ(journal(),
            aroundGetString("Off", {wifiDirectStatusAt(k6GhzMhz), mainLog("setOnOffStatus 0")}));
}

TEST_F(WifiDirect, TheTextIsOffAndNeverMissingWhenNothingCanBeAsked) {
  createAt(k6GhzMhz, 1);
  for (const char* function : {"wifi_initialize", "wifi_get_connected_ap", "wifi_ap_get_frequency",
                               "wifi_ap_destroy", "vconf_get_int"}) {
    failWith(function, -9);
  }
  EXPECT_EQ(text(), "Off");
  EXPECT_EQ(journal(),
            aroundGetString(
                "Off", {call("wifi_initialize"), call("wifi_get_connected_ap"),
                        mainLog("Fail to get connected AP "), call("wifi_ap_get_frequency", "null"),
                        call("wifi_ap_destroy", "null"), call("vconf_get_int", kPreferenceKey),
                        mainLog("setOnOffStatus 0")}));
}

}  // namespace
