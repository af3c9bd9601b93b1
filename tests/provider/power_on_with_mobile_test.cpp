// The switch that lets a mobile device turn the TV on.
#include <climits>

#include "setting_test.h"

namespace {

class PowerOnWithMobile : public SettingTest {
 protected:
  PowerOnWithMobile() : SettingTest(VENTARO_KEY_POWER_ON_WITH_MOBILE_US, "CMobileDeviceTVObj") {}

  // What the object does to read the mode.
  static Journal readingOn() {
    return {call("util_get_wakeOnMobile_mode"),
            mainLog("Request to get wakeOnMobile mode succeeded : "),
            mainLog("wakeOnMobile Enabled\n"), mainLog("_IsPowerOnWithMobileEnable =>1")};
  }
  static Journal readingOff() {
    return {call("util_get_wakeOnMobile_mode"),
            mainLog("Request to get wakeOnMobile mode succeeded : "),
            mainLog("wakeOnMobile Disabled\n")};
  }
  static Journal readingFails(const std::string& hexResult) {
    return {call("util_get_wakeOnMobile_mode"),
            mainLog("Fail to get wakeOnMobile mode[0x" + hexResult + "]\n")};
  }
  static Journal modeIs(int mode) {
    return {mainLog("connection_get_wakeOnMobile_mode set to " + std::to_string(mode))};
  }

  // What the object does to set the mode: the prompt, and what follows it.
  static Journal setting(int value, int status, const Journal& switching) {
    return {mainLog("m_MobileDeviceTVList Value for provider is " + std::to_string(value) + " "),
            mainLog("Enter the wakeOnMobile Mode Value Enable ->1 ,Disable ->0:\n"), switching,
            mainLog("status " + std::to_string(status) + " ")};
  }
  static Journal switched(bool enable, const Journal& readingBack) {
    return {call("util_set_wakeOnMobile_mode", enable),
            mainLog("Request to change wakeOnMobile Mode succeeded"), readingBack};
  }
};

// ---- Loading and unloading ----

TEST_F(PowerOnWithMobile, LoadingOpensAConnectionAndDoesNotAskForTheMode) {
  load();
  EXPECT_EQ(calls().lines().front(), "connection_create()");
  EXPECT_FALSE(calls().contains(call("util_get_wakeOnMobile_mode")));
}

TEST_F(PowerOnWithMobile, UnloadingDestroysTheConnectionAlsoWhenThereIsNone) {
  failCall("connection_create", 1, -5);
  load();
  clearJournal();
  unload();
  EXPECT_EQ(calls(), (Journal{call("connection_destroy", "connection 2"),
                              call("connection_destroy", "connection 1"),
                              call("connection_destroy", "null")}));
}

TEST_F(PowerOnWithMobile, TheResultOfOpeningTheConnectionIsNotExamined) {
  failCall("connection_create", 1, -5, Effect::kAsSuccess);
  load();
  unload();
  EXPECT_TRUE(calls().contains(call("connection_destroy", "connection 1")));
  EXPECT_EQ(openConnections(), 0);
}

TEST_F(PowerOnWithMobile, AConnectionThatCannotBeDestroyedIsNotReported) {
  failWith("connection_destroy", "connection 1", -5);
  load();
  clearJournal();
  unload();
  EXPECT_EQ(logLines(), Journal{mainLog("[connection_destroy success]")});  // wired 802.1X
}

// ---- The value ----

TEST_F(PowerOnWithMobile, AnEnabledModeIsOneAndSoIsTheResult) {
  create();
  setWakeOnMobile(true);
  EXPECT_EQ(get(), (IntAnswer{1, 1}));
  EXPECT_EQ(journal(), aroundGetInt(1, {readingOn(), modeIs(1)}));
}

TEST_F(PowerOnWithMobile, ADisabledModeIsZeroAndSoIsTheResult) {
  create();
  EXPECT_EQ(get(), (IntAnswer{0, 0}));
  EXPECT_EQ(journal(), aroundGetInt(0, {readingOff(), modeIs(0)}));
}

TEST_F(PowerOnWithMobile, AModeThatCannotBeReadIsMinusOneAndLeavesTheValueUntouched) {
  create();
  setWakeOnMobile(true);
  failWith("util_get_wakeOnMobile_mode", 0x2b);
  EXPECT_EQ(get(), (IntAnswer{-1, kPreset}));
  EXPECT_EQ(journal(),
            aroundGetInt(-1, {readingFails("2b"), modeIs(-1),
                              mainLog("wifi_direct_get_device_name::status [0xffffffff]")}));
}

TEST_F(PowerOnWithMobile, AModeThatCameWithAnErrorIsNotTaken) {
  create();
  setWakeOnMobile(true);
  failWith("util_get_wakeOnMobile_mode", -5, Effect::kAsSuccess);
  EXPECT_EQ(get(), (IntAnswer{-1, kPreset}));
  EXPECT_EQ(journal(),
            aroundGetInt(-1, {readingFails("fffffffb"), modeIs(-1),
                              mainLog("wifi_direct_get_device_name::status [0xffffffff]")}));
}

TEST_F(PowerOnWithMobile, TheModeIsAskedAfreshEveryTime) {
  create();
  EXPECT_EQ(get(), (IntAnswer{0, 0}));
  setWakeOnMobile(true);
  EXPECT_EQ(get(), (IntAnswer{1, 1}));
}

// ---- Setting ----

TEST_F(PowerOnWithMobile, EnablingReturnsTheModeReadBack) {
  create();
  EXPECT_EQ(set(1), 1);
  EXPECT_EQ(journal(), aroundSetInt(1, setting(1, 1, switched(true, readingOn()))));
  EXPECT_TRUE(wakeOnMobile());
}

TEST_F(PowerOnWithMobile, DisablingReturnsZero) {
  create();
  setWakeOnMobile(true);
  EXPECT_EQ(set(0), 0);
  EXPECT_EQ(journal(), aroundSetInt(0, setting(0, 0, switched(false, readingOff()))));
  EXPECT_FALSE(wakeOnMobile());
}

TEST_F(PowerOnWithMobile, AnyPositiveValueEnables) {
  create();
  for (const int value : {5, 2, INT_MAX}) {
    setWakeOnMobile(false);
    EXPECT_EQ(set(value), 1) << value;
    EXPECT_EQ(journal(), aroundSetInt(value, setting(value, 1, switched(true, readingOn()))));
    EXPECT_TRUE(wakeOnMobile()) << value;
  }
}

TEST_F(PowerOnWithMobile, ANegativeValueIsRefusedWithoutAPlatformCall) {
  create();
  setWakeOnMobile(true);
  for (const int value : {-1, -2, INT_MIN}) {
    EXPECT_EQ(set(value), -1) << value;
    EXPECT_EQ(journal(),
              aroundSetInt(
                  value, setting(value, -1, {mainLog("Failed to read input data Try Again..\n")})));
  }
  EXPECT_TRUE(wakeOnMobile());
}

TEST_F(PowerOnWithMobile, ARefusedChangeIsMinusOneAndTheModeIsNotReadBack) {
  create();
  failWith("util_set_wakeOnMobile_mode", 0x2b);
  EXPECT_EQ(set(1), -1);
  EXPECT_EQ(journal(),
            aroundSetInt(1, setting(1, -1,
                                    {call("util_set_wakeOnMobile_mode", true),
                                     mainLog("Fail to set wakeOnMobile mode [0x2b]\n")})));
  failWith("util_set_wakeOnMobile_mode", -5);
  EXPECT_EQ(set(0), -1);
  EXPECT_EQ(journal(),
            aroundSetInt(0, setting(0, -1,
                                    {call("util_set_wakeOnMobile_mode", false),
                                     mainLog("Fail to set wakeOnMobile mode [0xfffffffb]\n")})));
}

TEST_F(PowerOnWithMobile, AChangeThatCannotBeReadBackIsMinusOne) {
  create();
  failWith("util_get_wakeOnMobile_mode", -5);
  EXPECT_EQ(set(1), -1);
  EXPECT_EQ(journal(), aroundSetInt(1, setting(1, -1, switched(true, readingFails("fffffffb")))));
  EXPECT_TRUE(wakeOnMobile());
}

TEST_F(PowerOnWithMobile, WhatIsReadBackCountsNotWhatWasSet) {
  create();
  onCall("util_get_wakeOnMobile_mode", [] { setWakeOnMobile(false); });
  EXPECT_EQ(set(1), 0);
  EXPECT_EQ(journal(), aroundSetInt(1, setting(1, 0, switched(true, readingOff()))));
  onCall("util_get_wakeOnMobile_mode", [] { setWakeOnMobile(true); });
  EXPECT_EQ(set(0), 1);
  EXPECT_EQ(journal(), aroundSetInt(0, setting(0, 1, switched(false, readingOn()))));
}

// ---- The value as text ----

TEST_F(PowerOnWithMobile, TheTextIsOnWhileTheModeIsEnabled) {
  create();
  setWakeOnMobile(true);
  EXPECT_EQ(text(), "On");
  EXPECT_EQ(journal(), aroundGetString("On", {readingOn(), modeIs(1)}));
}

TEST_F(PowerOnWithMobile, TheTextIsOffWhileTheModeIsDisabled) {
  create();
  EXPECT_EQ(text(), "Off");
  EXPECT_EQ(journal(), aroundGetString("Off", {readingOff(), modeIs(0)}));
}

TEST_F(PowerOnWithMobile, AModeThatCannotBeReadIsInvalidAndLeavesTheTextUntouched) {
  create();
  setWakeOnMobile(true);
  failWith("util_get_wakeOnMobile_mode", -5, Effect::kAsSuccess);
  char preset[] = "preset";
  char* text = preset;
  clearJournal();
  EXPECT_EQ(table().get_string(key(), &text), 1);
  EXPECT_EQ(text, preset);
  EXPECT_EQ(journal(),
            aroundGetString("preset", {readingFails("fffffffb"), modeIs(-1), mainLog("Invalid")}));
}

}  // namespace
