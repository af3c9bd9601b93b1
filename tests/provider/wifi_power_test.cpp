// The Wi-Fi power switch and its refresh timer.
#include <climits>

#include "setting_test.h"

namespace {

constexpr char kMirrorKey[] = "memory/menu/network/wifionui_enabled";
constexpr char kRefreshKey[] = "db/menu/refresh_menu";
constexpr int kFirings = 4;  // until the menu is asked to refresh

class WifiPower : public SettingTest {
 protected:
  WifiPower() : SettingTest(VENTARO_KEY_WIFI, "CWiFiOnOffObj") {}

  // What the object does to switch the radio, before it starts the timer.
  static Journal switching(int radio, int value, int result = 0) {
    return {call("wifi_set_enable_qx", radio), call("vconf_set_int", kMirrorKey, value),
            mainLog("wifi_set_power_state ret = [" + std::to_string(result) + "], value = [" +
                    std::to_string(value) + "]")};
  }

  static Journal startingTheTimer() { return {call("g_timeout_add_seconds", 2)}; }

  // The firing that asks for the refresh.
  static Journal refreshing(int timer, const std::string& outcome) {
    return {call("g_source_remove", timer), call("vconf_set_int", kRefreshKey, 1),
            mainLog(outcome)};
  }

  // How often the menu was asked to refresh since the journal was cleared.
  static std::size_t refreshes() { return calls().count(call("vconf_set_int", kRefreshKey, 1)); }
};

// ---- Loading and unloading ----

TEST_F(WifiPower, LoadingOpensAConnectionAndReadsNothingOfTheRadio) {
  load();
  EXPECT_EQ(openConnections(), 3);
  EXPECT_FALSE(calls().contains(call("wifi_get_enable_qx")));
  EXPECT_EQ(runningTimers(), 0);
}

TEST_F(WifiPower, UnloadingDestroysTheConnectionAlsoWhenThereIsNone) {
  failCall("connection_create", 2, -5);
  load();
  clearJournal();
  unload();
  EXPECT_EQ(calls(),
            (Journal{call("connection_destroy", "connection 2"), call("connection_destroy", "null"),
                     call("connection_destroy", "connection 1")}));
}

TEST_F(WifiPower, TheResultOfOpeningTheConnectionIsNotExamined) {
  failCall("connection_create", 2, -5, Effect::kAsSuccess);
  load();
  unload();
  EXPECT_TRUE(calls().contains(call("connection_destroy", "connection 2")));
  EXPECT_EQ(openConnections(), 0);
}

TEST_F(WifiPower, AConnectionThatCannotBeDestroyedIsNotReported) {
  failWith("connection_destroy", "connection 2", -5);
  load();
  clearJournal();
  unload();
  EXPECT_EQ(logLines(), Journal{mainLog("[connection_destroy success]")});  // wired 802.1X
}

TEST_F(WifiPower, UnloadingRemovesARunningTimerWithoutARefresh) {
  create();
  set(1);
  advanceTimers(kFirings - 1);
  clearJournal();
  unload();
  EXPECT_EQ(calls(),
            (Journal{call("connection_destroy", "connection 3"), call("g_source_remove", 1),
                     call("connection_destroy", "connection 2"),
                     call("connection_destroy", "connection 1")}));
  EXPECT_EQ(store().intAt(kRefreshKey), std::nullopt);
  EXPECT_EQ(wrongRemovals(), std::vector<unsigned>());
}

TEST_F(WifiPower, UnloadingRemovesNoTimerWhereNoneRuns) {
  create();
  set(1);
  advanceTimers(kFirings);
  clearJournal();
  unload();
  EXPECT_EQ(calls(), (Journal{call("connection_destroy", "connection 3"),
                              call("connection_destroy", "connection 2"),
                              call("connection_destroy", "connection 1")}));
}

// ---- The value ----

TEST_F(WifiPower, TheValueIsTheRadiosStateAndTheResultOne) {
  create();
  setRadio(1);
  EXPECT_EQ(get(), (IntAnswer{1, 1}));
  EXPECT_EQ(journal(), aroundGetInt(1, {call("wifi_get_enable_qx"),
                                        mainLog("wifi_get_power_state  ret = [0], value = [1]")}));
}

TEST_F(WifiPower, AStateOfAnotherNumberIsPassedOnAsItIs) {
  create();
  for (const int state : {0, 2, -1, INT_MAX, INT_MIN}) {
    setRadio(state);
    EXPECT_EQ(get(), (IntAnswer{1, state}));
  }
}

TEST_F(WifiPower, AnUnreadableStateIsMinusOneAndLogsWhatTheCallerHad) {
  create();
  setRadio(1);
  failWith("wifi_get_enable_qx", -5);
  EXPECT_EQ(get(), (IntAnswer{-1, kPreset}));
  EXPECT_EQ(journal(),
            aroundGetInt(-1, {call("wifi_get_enable_qx"),
                              mainLog("wifi_get_power_state  ret = [-5], value = [77]")}));
}

TEST_F(WifiPower, WhatAFailedReadingLeftInTheValueStaysThere) {
  create();
  setRadio(1);
  failWith("wifi_get_enable_qx", 3, Effect::kAsSuccess);
  EXPECT_EQ(get(), (IntAnswer{-1, 1}));
  EXPECT_EQ(journal(), aroundGetInt(-1, {call("wifi_get_enable_qx"),
                                         mainLog("wifi_get_power_state  ret = [3], value = [1]")}));
}

TEST_F(WifiPower, TheRadioIsAskedAfreshEveryTime) {
  create();
  EXPECT_EQ(get(), (IntAnswer{1, 0}));
  setRadio(1);
  EXPECT_EQ(get(), (IntAnswer{1, 1}));
}

// ---- Switching ----

TEST_F(WifiPower, SwitchingOnSwitchesTheRadioRecordsTheValueAndStartsTheTimer) {
  create();
  EXPECT_EQ(set(1), 1);
  EXPECT_EQ(journal(), aroundSetInt(1, {switching(1, 1), startingTheTimer()}));
  EXPECT_EQ(radio(), 1);
  EXPECT_EQ(store().intAt(kMirrorKey), 1);
  EXPECT_EQ(runningTimers(), 1);
}

TEST_F(WifiPower, SwitchingOffDoesTheSameWithZero) {
  setRadio(1);
  create();
  EXPECT_EQ(set(0), 1);
  EXPECT_EQ(journal(), aroundSetInt(0, {switching(0, 0), startingTheTimer()}));
  EXPECT_EQ(radio(), 0);
  EXPECT_EQ(store().intAt(kMirrorKey), 0);
  EXPECT_EQ(runningTimers(), 1);
}

TEST_F(WifiPower, AnyOtherValueSwitchesOnAndIsRecordedUnreduced) {
  for (const int value : {5, 2, -1, INT_MAX, INT_MIN}) {
    create();
    EXPECT_EQ(set(value), 1) << value;
    EXPECT_EQ(journal(), aroundSetInt(value, {switching(1, value), startingTheTimer()}));
    EXPECT_EQ(radio(), 1) << value;
    EXPECT_EQ(store().intAt(kMirrorKey), value);
    unload();
  }
}

TEST_F(WifiPower, ASwitchThatFailsIsRecordedAndRefreshedAllTheSame) {
  create();
  failWith("wifi_set_enable_qx", -7);
  EXPECT_EQ(set(1), -1);
  EXPECT_EQ(journal(), aroundSetInt(1, {switching(1, 1, -7), startingTheTimer()}));
  EXPECT_EQ(radio(), 0);
  EXPECT_EQ(store().intAt(kMirrorKey), 1);
  advanceTimers(kFirings);
  EXPECT_EQ(store().intAt(kRefreshKey), 1);
}

TEST_F(WifiPower, AnyResultButZeroIsAFailedSwitch) {
  create();
  for (const int result : {1, -1, INT_MAX, INT_MIN}) {
    failWith("wifi_set_enable_qx", result);
    EXPECT_EQ(set(0), -1) << result;
  }
}

TEST_F(WifiPower, AValueThatCannotBeRecordedIsNotReported) {
  create();
  failWith("vconf_set_int", kMirrorKey, -3);
  EXPECT_EQ(set(1), 1);
  EXPECT_EQ(journal(), aroundSetInt(1, {switching(1, 1), startingTheTimer()}));
}

// ---- The refresh timer ----

TEST_F(WifiPower, TheFirstThreeFiringsOnlyCount) {
  create();
  set(1);
  clearJournal();
  advanceTimers(kFirings - 1);
  EXPECT_EQ(journal(), Journal());
  EXPECT_EQ(runningTimers(), 1);
}

TEST_F(WifiPower, TheFourthFiringEndsTheTimerAndAsksForTheRefreshWithoutTheLock) {
  create();
  set(1);
  clearJournal();
  advanceTimers(kFirings);
  EXPECT_EQ(journal(), refreshing(1, "Success to Set REFRESH_MENU_VCONF"));
  EXPECT_EQ(store().intAt(kRefreshKey), 1);
  EXPECT_EQ(runningTimers(), 0);
  EXPECT_EQ(wrongRemovals(), std::vector<unsigned>());
}

TEST_F(WifiPower, TheRefreshIsAskedForOnce) {
  create();
  set(1);
  clearJournal();
  advanceTimers(5 * kFirings);
  EXPECT_EQ(journal(), refreshing(1, "Success to Set REFRESH_MENU_VCONF"));
}

TEST_F(WifiPower, ARefreshThatCannotBeWrittenIsLoggedAndNotRetried) {
  for (const int result : {-3, 3}) {
    create();
    set(1);
    failWith("vconf_set_int", kRefreshKey, result);
    clearJournal();
    advanceTimers(3 * kFirings);
    EXPECT_EQ(journal(), refreshing(1, "Failed to set REFRESH_MENU_VCONF ")) << result;
    EXPECT_EQ(runningTimers(), 0) << result;
    unload();
    reset();
  }
}

TEST_F(WifiPower, AnotherSwitchReplacesTheRunningTimer) {
  create();
  set(1);
  set(0);
  EXPECT_EQ(journal(),
            aroundSetInt(0, {switching(0, 0), call("g_source_remove", 1), startingTheTimer()}));
  EXPECT_EQ(runningTimers(), 1);
  EXPECT_EQ(wrongRemovals(), std::vector<unsigned>());
}

TEST_F(WifiPower, AnotherSwitchStartsTheEightSecondsAgainHoweverManyHavePassed) {
  for (int passed = 0; passed < kFirings; ++passed) {
    create();
    set(1);
    advanceTimers(passed);
    set(0);
    clearJournal();
    advanceTimers(kFirings - 1);
    EXPECT_EQ(journal(), Journal()) << passed;
    advanceTimers();
    EXPECT_EQ(refreshes(), 1U) << passed;
    advanceTimers(2 * kFirings);
    EXPECT_EQ(refreshes(), 1U) << passed;
    unload();
  }
}

TEST_F(WifiPower, AFailedSwitchReplacesTheRunningTimerToo) {
  create();
  set(1);
  advanceTimers(2);
  failWith("wifi_set_enable_qx", -7);
  set(0);
  EXPECT_TRUE(calls().contains(call("g_source_remove", 1)));
  clearJournal();
  advanceTimers(kFirings - 1);
  EXPECT_EQ(refreshes(), 0U);
  advanceTimers();
  EXPECT_EQ(refreshes(), 1U);
}

TEST_F(WifiPower, ASwitchAfterTheRefreshStartsATimerWithoutRemovingOne) {
  create();
  set(1);
  advanceTimers(kFirings);
  set(0);
  EXPECT_EQ(journal(), aroundSetInt(0, {switching(0, 0), startingTheTimer()}));
  clearJournal();
  advanceTimers(kFirings);
  EXPECT_EQ(journal(), refreshing(2, "Success to Set REFRESH_MENU_VCONF"));
}

TEST_F(WifiPower, ASwitchWhileTheRefreshIsWrittenStartsATimerOfItsOwn) {
  create();
  set(1);
  advanceTimers(kFirings - 1);
  onCall("vconf_set_int", [this] {
    onCall("vconf_set_int", nullptr);
    setInt(key(), 0);
  });
  clearJournal();
  advanceTimers();
  EXPECT_EQ(journal(), (Journal{call("g_source_remove", 1), call("vconf_set_int", kRefreshKey, 1),
                                aroundSetInt(0, {switching(0, 0), startingTheTimer()}),
                                mainLog("Success to Set REFRESH_MENU_VCONF")}));
  EXPECT_EQ(runningTimers(), 1);
  clearJournal();
  advanceTimers(kFirings);
  EXPECT_EQ(journal(), refreshing(2, "Success to Set REFRESH_MENU_VCONF"));
}

TEST_F(WifiPower, TheTimerFiresWhileACallbackHoldsTheLock) {
  create();
  set(1);
  onCall("wifi_get_enable_qx", [] { advanceTimers(kFirings); });
  EXPECT_EQ(get(), (IntAnswer{1, 1}));
  EXPECT_EQ(journal(), aroundGetInt(1, {call("wifi_get_enable_qx"),
                                        refreshing(1, "Success to Set REFRESH_MENU_VCONF"),
                                        mainLog("wifi_get_power_state  ret = [0], value = [1]")}));
}

TEST_F(WifiPower, ReadingTheStateLeavesTheTimerAlone) {
  create();
  set(1);
  get();
  text();
  list();
  clearJournal();
  advanceTimers(kFirings);
  EXPECT_EQ(journal(), refreshing(1, "Success to Set REFRESH_MENU_VCONF"));
}

// ---- The value as text ----

TEST_F(WifiPower, TheTextIsOnFromStateOneUpwardsAndOffBelow) {
  create();
  const Journal reading = {call("wifi_get_enable_qx"),
                           mainLog("connection_get_wakeOnMobile_mode set to 0")};
  for (const int state : {1, 2, INT_MAX}) {
    setRadio(state);
    EXPECT_EQ(text(), "On") << state;
    EXPECT_EQ(journal(), aroundGetString("On", reading)) << state;
  }
  for (const int state : {0, -1, INT_MIN}) {
    setRadio(state);
    EXPECT_EQ(text(), "Off") << state;
    EXPECT_EQ(journal(), aroundGetString("Off", reading)) << state;
  }
}

TEST_F(WifiPower, AnUnreadableStateIsInvalidAndLeavesTheTextUntouched) {
  create();
  char preset[] = "preset";
  char* text = preset;
  failWith("wifi_get_enable_qx", -5, Effect::kAsSuccess);
  clearJournal();
  EXPECT_EQ(table().get_string(key(), &text), 1);
  EXPECT_EQ(text, preset);
  EXPECT_EQ(journal(),
            aroundGetString("preset", {call("wifi_get_enable_qx"),
                                       mainLog("connection_get_wakeOnMobile_mode set to -5"),
                                       mainLog("Invalid")}));
  failWith("wifi_get_enable_qx", 3);
  clearJournal();
  EXPECT_EQ(table().get_string(key(), &text), 1);
  EXPECT_EQ(text, preset);
  EXPECT_EQ(journal(),
            aroundGetString("preset", {call("wifi_get_enable_qx"),
                                       mainLog("connection_get_wakeOnMobile_mode set to 3"),
                                       mainLog("Invalid")}));
}

// ---- The list ----

TEST_F(WifiPower, ASwitchWhileTheTimerRemovesItselfKeepsItsOwnTimer) {
  create();
  set(1);
  advanceTimers(kFirings - 1);
  onCall("g_source_remove", [this] {
    onCall("g_source_remove", nullptr);
    setInt(key(), 0);
  });
  advanceTimers();
  EXPECT_EQ(runningTimers(), 1);
  clearJournal();
  unload();  // fails if a timer remains
  EXPECT_TRUE(calls().contains(call("g_source_remove", 2)));
}

TEST_F(WifiPower, TheListDoesNotAskTheRadio) {
  create();
  list();
  EXPECT_EQ(logLines().count(mainLog("listSize==2\n")), 1U);
  EXPECT_FALSE(calls().contains(call("wifi_get_enable_qx")));
}

}  // namespace
