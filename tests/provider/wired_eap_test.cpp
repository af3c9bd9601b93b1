// The switch of 802.1X authentication on the wired connection.
#include <climits>

#include "setting_test.h"

namespace {

constexpr char kChoiceKey[] = "db/menu/network/wiredeap";
constexpr int kWimaxProfile = 9;  // neither Wi-Fi nor Ethernet

class WiredEap : public SettingTest {
 protected:
  WiredEap() : SettingTest(VENTARO_KEY_WIRED_EAP, "CWiredEAPObj") {}

  // A provider with these profiles whose list has been requested.
  void createWithList(std::vector<int> profiles = {kEthernetProfile}) {
    setProfiles(std::move(profiles));
    create();
    list();
  }

  // The journal of loading from this object's construction on.
  static Journal construction() { return fromCall(journal(), call("connection_create"), 3); }

  // The construction with a search that continued like this.
  static Journal constructionWith(const Journal& search) {
    return {call("connection_create"), call("connection_get_profile_iterator", "connection 3", 0),
            search};
  }

  // One round of the search, up to the question for the profile's type.
  static Journal lookingAt(const char* profile) {
    return {call("connection_profile_iterator_has_next", "iterator"),
            call("connection_profile_iterator_next", "iterator"),
            call("connection_profile_get_type", profile)};
  }

  static Journal findingTheEnd() {
    return {call("connection_profile_iterator_has_next", "iterator")};
  }

  static Journal storing(int value) { return {call("vconf_set_int", kChoiceKey, value)}; }

  static Journal switching(const char* profile, bool enable) {
    return {call("connection_profile_enable_ethernet_eap", profile, enable)};
  }

  static Journal refusal() { return {mainLog("set_device_name::status [0xffffffff]")}; }

  // What set_int writes to standard output; the switch itself never fails.
  std::string outputOfSet(int value) const {
    testing::internal::CaptureStdout();
    EXPECT_EQ(set(value), 0) << value;
    return testing::internal::GetCapturedStdout();
  }
};

// ---- The profile search at load ----

TEST_F(WiredEap, LoadingTakesTheFirstEthernetProfile) {
  setProfiles({kWifiProfile, kEthernetProfile, kEthernetProfile});
  load();
  EXPECT_EQ(construction(), constructionWith({lookingAt("profile 1"), lookingAt("profile 2"),
                                              mainLog("profile type ethernet")}));
  create();
  list();
  set(1);
  EXPECT_EQ(journal(), aroundSetInt(1, {switching("profile 2", true), storing(1)}));
}

TEST_F(WiredEap, LoadingLooksNoFurtherThanTheFirstProfileWhenThatIsEthernet) {
  setProfiles({kEthernetProfile, kWifiProfile});
  load();
  EXPECT_EQ(construction(),
            constructionWith({lookingAt("profile 1"), mainLog("profile type ethernet")}));
}

TEST_F(WiredEap, LoadingWithoutProfilesFindsNoneAndLogsNothing) {
  load();
  EXPECT_EQ(construction(), constructionWith(findingTheEnd()));
}

TEST_F(WiredEap, LoadingWithOtherProfilesOnlyFindsNone) {
  setProfiles({kWifiProfile, kWimaxProfile, 0, 3});
  load();
  EXPECT_EQ(construction(),
            constructionWith({lookingAt("profile 1"), lookingAt("profile 2"),
                              lookingAt("profile 3"), lookingAt("profile 4"), findingTheEnd()}));
  create();
  list();
  set(1);
  EXPECT_EQ(journal(), aroundSetInt(1, storing(1)));
}

TEST_F(WiredEap, WithoutAnIteratorTheSearchEndsAndThereIsNoProfile) {
  setProfiles({kEthernetProfile});
  failWith("connection_get_profile_iterator", -8);
  load();
  EXPECT_EQ(construction(), constructionWith({mainLog("Fail to get profile iterator\n")}));
  create();
  list();
  EXPECT_EQ(set(1), 0);
  EXPECT_EQ(journal(), aroundSetInt(1, storing(1)));
}

TEST_F(WiredEap, AnIteratorThatCameWithAnErrorIsNotUsed) {
  setProfiles({kEthernetProfile});
  failWith("connection_get_profile_iterator", 8, Effect::kAsSuccess);
  load();
  EXPECT_EQ(construction(), constructionWith({mainLog("Fail to get profile iterator\n")}));
}

TEST_F(WiredEap, AProfileThatCannotBeReadEndsTheSearchWithoutAProfile) {
  setProfiles({kWifiProfile, kEthernetProfile});
  failCall("connection_profile_iterator_next", 2, -8);
  load();
  EXPECT_EQ(construction(),
            constructionWith({lookingAt("profile 1"),
                              call("connection_profile_iterator_has_next", "iterator"),
                              call("connection_profile_iterator_next", "iterator"),
                              mainLog("Fail to get profile handle\n")}));
  create();
  list();
  set(1);
  EXPECT_EQ(journal(), aroundSetInt(1, storing(1)));
}

TEST_F(WiredEap, AProfileThatCameWithAnErrorIsKept) {
  setProfiles({kEthernetProfile});
  failCall("connection_profile_iterator_next", 1, 8, Effect::kAsSuccess);
  load();
  EXPECT_EQ(construction(),
            constructionWith({call("connection_profile_iterator_has_next", "iterator"),
                              call("connection_profile_iterator_next", "iterator"),
                              mainLog("Fail to get profile handle\n")}));
  create();
  list();
  set(1);
  EXPECT_EQ(journal(), aroundSetInt(1, {switching("profile 1", true), storing(1)}));
}

TEST_F(WiredEap, AProfileWhoseTypeCannotBeReadEndsTheSearchAndIsKept) {
  setProfiles({kWifiProfile, kWifiProfile, kEthernetProfile});
  failCall("connection_profile_get_type", 2, -8);
  load();
  EXPECT_EQ(construction(), constructionWith({lookingAt("profile 1"), lookingAt("profile 2"),
                                              mainLog("Fail to get profile type\n")}));
  create();
  list();
  testing::internal::CaptureStdout();
  EXPECT_EQ(set(1), 0);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "Failed to Enable EAP over Ethernet\n");
  EXPECT_EQ(journal(), aroundSetInt(1, {switching("profile 2", true), storing(1)}));
}

TEST_F(WiredEap, ATypeThatCameWithAnErrorIsNotTaken) {
  setProfiles({kWifiProfile, kEthernetProfile});
  failCall("connection_profile_get_type", 1, 8, Effect::kAsSuccess);
  load();
  EXPECT_EQ(construction(),
            constructionWith({lookingAt("profile 1"), mainLog("Fail to get profile type\n")}));
}

TEST_F(WiredEap, TheSearchIsMadeOnce) {
  createWithList({});
  setProfiles({kEthernetProfile});
  list();
  EXPECT_EQ(set(1), 0);
  EXPECT_EQ(journal(), aroundSetInt(1, storing(1)));
}

// ---- The connection ----

TEST_F(WiredEap, WithoutAConnectionTheSearchIsMadeOnNull) {
  setProfiles({kEthernetProfile});
  failCall("connection_create", 3, -5);
  load();
  EXPECT_EQ(construction(),
            (Journal{call("connection_create"), call("connection_get_profile_iterator", "null", 0),
                     mainLog("Fail to get profile iterator\n")}));
}

TEST_F(WiredEap, AConnectionThatCameWithAnErrorIsUsedAndDestroyed) {
  setProfiles({kEthernetProfile});
  failCall("connection_create", 3, -5, Effect::kAsSuccess);
  load();
  EXPECT_EQ(construction(),
            constructionWith({lookingAt("profile 1"), mainLog("profile type ethernet")}));
  unload();
  EXPECT_EQ(openConnections(), 0);
}

TEST_F(WiredEap, UnloadingDestroysTheConnectionAndSaysSo) {
  load();
  clearJournal();
  unload();
  EXPECT_EQ(journal(), (Journal{call("connection_destroy", "connection 3"),
                                mainLog("[connection_destroy success]"),
                                call("connection_destroy", "connection 2"),
                                call("connection_destroy", "connection 1")}));
}

TEST_F(WiredEap, UnloadingSaysWhenTheConnectionCannotBeDestroyed) {
  for (const int result : {-5, 5}) {
    load();
    failWith("connection_destroy", "connection 3", result);
    clearJournal();
    unload();
    EXPECT_EQ(journal(), (Journal{call("connection_destroy", "connection 3"),
                                  mainLog("[Connection destroy fail]"),
                                  call("connection_destroy", "connection 2"),
                                  call("connection_destroy", "connection 1")}))
        << result;
    reset();
  }
}

TEST_F(WiredEap, UnloadingWithoutAConnectionDestroysNoneAndSaysNothing) {
  failCall("connection_create", 3, -5);
  load();
  clearJournal();
  unload();
  EXPECT_EQ(journal(), (Journal{call("connection_destroy", "connection 2"),
                                call("connection_destroy", "connection 1")}));
}

// ---- The value ----

TEST_F(WiredEap, TheValueIsTheStoredChoiceAndSoIsTheResult) {
  create();
  store().set(kChoiceKey, 1);
  EXPECT_EQ(get(), (IntAnswer{1, 1}));
  EXPECT_EQ(journal(), aroundGetInt(1, {call("vconf_get_int", kChoiceKey)}));
  store().set(kChoiceKey, 0);
  EXPECT_EQ(get(), (IntAnswer{0, 0}));
  EXPECT_EQ(journal(), aroundGetInt(0, {call("vconf_get_int", kChoiceKey)}));
}

TEST_F(WiredEap, AnyChoiceButZeroIsOne) {
  create();
  for (const int choice : {7, 2, -1, INT_MAX, INT_MIN}) {
    store().set(kChoiceKey, choice);
    EXPECT_EQ(get(), (IntAnswer{1, 1})) << choice;
  }
}

TEST_F(WiredEap, AChoiceThatCannotBeReadIsZero) {
  create();
  EXPECT_EQ(get(), (IntAnswer{0, 0}));
  store().set(kChoiceKey, 1);
  failWith("vconf_get_int", -4);
  EXPECT_EQ(get(), (IntAnswer{0, 0}));
  EXPECT_EQ(journal(), aroundGetInt(0, {call("vconf_get_int", kChoiceKey)}));
}

TEST_F(WiredEap, WhatAFailedReadingLeftCounts) {
  create();
  store().set(kChoiceKey, 1);
  failWith("vconf_get_int", -4, Effect::kAsSuccess);
  EXPECT_EQ(get(), (IntAnswer{1, 1}));
  EXPECT_EQ(text(), "On");
}

// ---- Choosing ----

TEST_F(WiredEap, EveryValueIsRefusedUntilTheListHasBeenAskedFor) {
  setProfiles({kEthernetProfile});
  create();
  store().set(kChoiceKey, 1);
  for (const int value : {0, 1, 2, -1}) {
    EXPECT_EQ(set(value), -1) << value;
    EXPECT_EQ(journal(), aroundSetInt(value, refusal()));
  }
  EXPECT_EQ(store().intAt(kChoiceKey), 1);
  list();
  EXPECT_EQ(set(0), 0);
  EXPECT_EQ(store().intAt(kChoiceKey), 0);
}

TEST_F(WiredEap, NothingButItsOwnListMakesItAcceptAValue) {
  store().set("db/menu/network/devicename/default_tv_name", "TV One");
  create();
  get();
  text();
  listItems(VENTARO_KEY_WIFI);
  listItems(VENTARO_KEY_POWER_ON_WITH_MOBILE_US);
  listItems(VENTARO_KEY_WIFI_DIRECT);
  listItems(VENTARO_KEY_DEVICE_NAME);
  EXPECT_EQ(set(1), -1);
  EXPECT_EQ(store().intAt(kChoiceKey), std::nullopt);
}

TEST_F(WiredEap, OneEnablesOnTheProfileAndIsStored) {
  createWithList();
  EXPECT_EQ(set(1), 0);
  EXPECT_EQ(journal(), aroundSetInt(1, {switching("profile 1", true), storing(1)}));
  EXPECT_EQ(store().intAt(kChoiceKey), 1);
}

TEST_F(WiredEap, ZeroDisablesOnTheProfileAndIsStored) {
  createWithList();
  EXPECT_EQ(set(0), 0);
  EXPECT_EQ(journal(), aroundSetInt(0, {switching("profile 1", false), storing(0)}));
  EXPECT_EQ(store().intAt(kChoiceKey), 0);
}

TEST_F(WiredEap, ValuesOutsideTheListAreRefused) {
  createWithList();
  for (const int value : {2, 3, -1, INT_MAX, INT_MIN}) {
    EXPECT_EQ(set(value), -1) << value;
    EXPECT_EQ(journal(), aroundSetInt(value, refusal()));
  }
  EXPECT_EQ(store().intAt(kChoiceKey), std::nullopt);
}

TEST_F(WiredEap, WithoutAProfileTheChoiceIsStoredAndNothingReported) {
  createWithList({});
  EXPECT_EQ(outputOfSet(1), "");
  EXPECT_EQ(journal(), aroundSetInt(1, storing(1)));
  EXPECT_EQ(outputOfSet(0), "");
  EXPECT_EQ(journal(), aroundSetInt(0, storing(0)));
  EXPECT_EQ(set(1), 0);
}

TEST_F(WiredEap, AFailureToEnableGoesToStandardOutputAndTheChoiceIsStored) {
  createWithList();
  for (const int result : {-8, 8}) {
    store().erase(kChoiceKey);
    failWith("connection_profile_enable_ethernet_eap", result);
    EXPECT_EQ(outputOfSet(1), "Failed to Enable EAP over Ethernet\n") << result;
    EXPECT_EQ(journal(), aroundSetInt(1, {switching("profile 1", true), storing(1)}));
    EXPECT_EQ(store().intAt(kChoiceKey), 1) << result;
  }
}

TEST_F(WiredEap, AFailureToDisableGoesToStandardOutputAndTheChoiceIsStored) {
  createWithList();
  for (const int result : {-8, 8}) {
    store().erase(kChoiceKey);
    failWith("connection_profile_enable_ethernet_eap", result);
    EXPECT_EQ(outputOfSet(0), "Failed to disable EAP over Ethernet\n") << result;
    EXPECT_EQ(journal(), aroundSetInt(0, {switching("profile 1", false), storing(0)}));
    EXPECT_EQ(store().intAt(kChoiceKey), 0) << result;
  }
}

TEST_F(WiredEap, ASuccessfulSwitchWritesNothingToStandardOutput) {
  createWithList();
  EXPECT_EQ(outputOfSet(1), "");
  EXPECT_EQ(outputOfSet(0), "");
}

TEST_F(WiredEap, AChoiceThatCannotBeStoredIsLoggedWithItsKeyAndReturned) {
  createWithList();
  failWith("vconf_set_int", kChoiceKey, -6);
  EXPECT_EQ(set(1), -6);
  EXPECT_EQ(journal(), aroundSetInt(1, {switching("profile 1", true), storing(1),
                                        mainLog("vconf KEY [menu/network/WiredEAP] is fail value "
                                                "[1]  and status=-6 !!!!!!!!!!")}));
  EXPECT_EQ(store().intAt(kChoiceKey), std::nullopt);
  failWith("vconf_set_int", kChoiceKey, 12);
  EXPECT_EQ(set(0), 12);
  EXPECT_EQ(journal(), aroundSetInt(0, {switching("profile 1", false), storing(0),
                                        mainLog("vconf KEY [menu/network/WiredEAP] is fail value "
                                                "[0]  and status=12 !!!!!!!!!!")}));
}

// ---- The value as text ----

TEST_F(WiredEap, TheTextIsOnWhenOnWasChosen) {
  create();
  store().set(kChoiceKey, 1);
  EXPECT_EQ(text(), "On");
  EXPECT_EQ(journal(), aroundGetString("On", {call("vconf_get_int", kChoiceKey)}));
  for (const int choice : {2, -1, INT_MIN}) {
    store().set(kChoiceKey, choice);
    EXPECT_EQ(text(), "On") << choice;
  }
}

TEST_F(WiredEap, TheTextIsOffWhenOffWasChosenOrTheChoiceCannotBeRead) {
  create();
  EXPECT_EQ(text(), "Off");
  EXPECT_EQ(journal(), aroundGetString("Off", {call("vconf_get_int", kChoiceKey)}));
  store().set(kChoiceKey, 0);
  EXPECT_EQ(text(), "Off");
  store().set(kChoiceKey, 1);
  failWith("vconf_get_int", -4);
  EXPECT_EQ(text(), "Off");
}

}  // namespace
