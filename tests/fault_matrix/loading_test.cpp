// The life of the library while each platform function fails: it is loaded, a provider is created
// and deleted, and it is unloaded. And how a failure at the start affects the callbacks.
#include <libintl.h>

#include "fault_matrix.h"
#include "heap.h"

namespace {

using Profiles = std::vector<int>;

const std::vector<Profiles> kProfiles = {
    {kWifiProfile, kEthernetProfile},
    {kEthernetProfile, kWifiProfile},
    {kWifiProfile, kWifiProfile, kEthernetProfile},
    {kWifiProfile},
    {},
};

constexpr char kDirectHelp[] = "TV_SID_SETTINGS_MIX_CBOCT_USE_SOME_SERVICE_WIFI_DIRECT_TURN_ON";

// ---- The table ----

// A connection is opened; the result does not matter.
Step connects(const char* object) {
  const Steps open = {sets(object, "connection {connection}")};
  return ask("connection_create").works(open).fails({sets(object, "null")}).failsWithOutput(open);
}

// A profile is kept for switching EAP; the platform switches it on Ethernet profiles only.
Steps keeps(const Profiles& profiles, std::size_t position) {
  return {
      sets("profile", "profile " + std::to_string(position + 1)),
      sets("complaint",
           profiles[position] == kEthernetProfile ? "" : "Failed to Enable EAP over Ethernet\n")};
}

// The first Ethernet profile is looked for, from this position on. A failure ends the search; the
// profile whose type could not be read stays.
Steps search(const Profiles& profiles, std::size_t position) {
  if (position == profiles.size()) {
    return {refused("connection_profile_iterator_has_next", "iterator")};
  }
  const std::string profile = "profile " + std::to_string(position + 1);
  const Step noHandle = mainLog("Fail to get profile handle\n");
  const bool isEthernet = profiles[position] == kEthernetProfile;
  const Steps found = {mainLog("profile type ethernet"), keeps(profiles, position)};
  return {ask("connection_profile_iterator_has_next", "iterator")
              .works({ask("connection_profile_iterator_next", "iterator")
                          .works({ask("connection_profile_get_type", profile)
                                      .works(isEthernet ? found : search(profiles, position + 1))
                                      .fails({mainLog("Fail to get profile type\n"),
                                              keeps(profiles, position)})})
                          .fails({noHandle})
                          .failsWithOutput({noHandle, keeps(profiles, position)})})};
}

// The objects in their order: power on with mobile, Wi-Fi power, Wi-Fi Direct, wired 802.1X.
Steps loading(const World& world, const Profiles& profiles) {
  // At 6 GHz a preference that was never chosen becomes On.
  const Steps becomesOn = {ask("vconf_get_int", kDirectKey)
                               .works({ask("vconf_set_int", kDirectKey, 1)})
                               .failsWithOutput({ask("vconf_set_int", kDirectKey, 1)})};
  return {sets("timer runs", "null"),
          connects("mobile"),
          connects("wifi"),
          directStateIsRead(world, becomesOn, {ask("vconf_get_int", kDirectKey)}),
          connects("wired"),
          sets("profile", "null"),
          ask("connection_get_profile_iterator", "{wired}", 0)
              .works(search(profiles, 0))
              .fails({mainLog("Fail to get profile iterator\n")})};
}

Steps creating() {
  return {takesLock(),
          mainLog("START"),
          ask("platform_mkpath", 44, "res/locale")
              .works({sets("template", "turn on for <<A>>"),
                      sets("help", "turn on for COM_SCREEN_SHARING, TV_SID_CONNECT_KELVO")})
              .fails({sets("template", kDirectHelp), sets("help", kDirectHelp)}),
          ask("vconf_get_str", kDefaultNameKey)
              .works({mainLog("dName==TV One\n"), sets("default", "TV One")})
              .fails({mainLog("dName==(null)\n"), sets("default", "null")}),
          mainLog("END"),
          gives("0", "a table"),
          unlocks()};
}

Steps deleting() {
  return {takesLock(), mainLog("START"), mainLog("END"), gives("0"), unlocks()};
}

// The objects in reverse order. Only wired 802.1X checks whether it has a connection.
Steps unloading() {
  return {whenSet("wired", {ask("connection_destroy", "{wired}")
                                .works({mainLog("[connection_destroy success]")})
                                .fails({mainLog("[Connection destroy fail]")})}),
          whenSet("timer runs", {endsTimer()}), ask("connection_destroy", "{wifi}"),
          ask("connection_destroy", "{mobile}")};
}

// ---- The test ----

class Loading : public FaultMatrix {
 protected:
  void begin(const Profiles& profiles) {
    reset();
    useWorldTexts();
    bindtextdomain("ventaro", "/");  // where no texts are
    apply(world_);
    setProfiles(profiles);
    store().set(kDirectKey, 0);
    walker_ = Walker();
    clearJournal();
    blocksBefore_ = liveBlocks();
  }

  void expectLoading(const Profiles& profiles) {
    load();
    EXPECT_EQ(journal(), walker_.walk(loading(world_, profiles), "").journal);
    useTable(nullptr);
  }

  void expectCreating() {
    if (walker_.nextLockFails()) failNextLock(kLockFailure);
    const Outcome expected = walker_.walk(creating(), "");
    const auto create = [this](const std::string&) {
      contract::Answer answer = functions().calls().createProvider();
      created_ = answer.table;
      answer.held.release();
      return answer;
    };
    EXPECT_EQ(callOnce({"create_provider", create}, "", false), expected);
  }

  void expectDeleting() {
    if (walker_.nextLockFails()) failNextLock(kLockFailure);
    const Outcome expected = walker_.walk(deleting(), "");
    const auto remove = [this](const std::string&) {
      return functions().calls().deleteProvider(&created_);
    };
    EXPECT_EQ(callOnce({"delete_provider", remove}, "", false), expected);
    const bool isDeleted = expected.answer == "0";
    if (!isDeleted) entries().delete_provider(&created_);
    created_ = nullptr;
  }

  // Started by a switch outside the matrix.
  void startTimer() {
    created_->set_int(kWifiItemKey, 1);
    walker_.walk({startsTimer(), sets("timer runs", "yes")}, "");
  }

  void expectUnloading(const Steps& steps) {
    clearJournal();
    const Journal expected = walker_.walk(steps, "").journal;
    unload();
    EXPECT_EQ(journal(), expected);
    EXPECT_EQ(openConnections(), walker_.openConnections());
    EXPECT_EQ(openAps(), walker_.openAccessPoints());
    const int kept = countsBlocks() ? walker_.keptTexts() : 0;
    EXPECT_EQ(liveBlocks() - blocksBefore_, kept) << "blocks that nobody has freed";
    EXPECT_EQ(logMistakes(), std::vector<std::string>());
  }

  // One call, without a fault.
  void expectCall(const Function& function, const Steps& steps, const std::string& key) {
    const Outcome expected = walker_.walk(steps, key);
    EXPECT_EQ(callOnce(function, key, true), expected) << function.name;
  }

  const World world_{};
  Walker walker_;
  data_provider_cbs* created_ = nullptr;

 private:
  int blocksBefore_ = 0;
};

std::string nameOf(const Profiles& profiles, const Fault& fault) {
  std::string types;
  for (const int type : profiles) types += type == kEthernetProfile ? " Ethernet" : " Wi-Fi";
  return fault.function + " fails " + nameOf(fault.mode) + ", profiles:" + types;
}

TEST_F(Loading, CreatingDeletingAndUnloadingAreUnderEveryFaultAsTheTableSays) {
  for (const Profiles& profiles : kProfiles) {
    for (const std::string& function : failingFunctions()) {
      for (const Mode mode : matrixModes()) {
        const Fault fault{function, mode};
        SCOPED_TRACE(nameOf(profiles, fault));
        begin(profiles);
        walker_.arm(fault);
        arm(fault);
        expectLoading(profiles);
        expectCreating();
        expectDeleting();
        expectUnloading(unloading());
        disarm(fault);
        countCombination(walker_);
        if (HasFailure()) return;
      }
    }
  }
}

TEST_F(Loading, AFaultWhileUnloadingLeavesNoTimerBehind) {
  for (const Mode mode : matrixModes()) {
    const Fault fault{"connection_destroy", mode};
    SCOPED_TRACE(nameOf(kProfiles.front(), fault));
    begin(kProfiles.front());
    expectLoading(kProfiles.front());
    expectCreating();
    startTimer();
    expectDeleting();
    walker_.arm(fault);
    arm(fault);
    expectUnloading(unloading());
    disarm(fault);
    countCombination(walker_);
    if (HasFailure()) return;
  }
}

// ---- What a failure leaves ----

Steps listOfNames() {
  return {takesLock(),
          mainLog("START"),
          mainLog("Key ---->{key}::\n"),
          gives("1", "SID_USER_INPUT 0 0"),
          whenSet("default", {ask("evas_textblock_text_utf8_to_markup", "null", "TV One"),
                              gives("2", "&#x202d;TV One 0 0, SID_USER_INPUT 1 1")}),
          unlocks()};
}

// The name is the first entry, or is taken for a typed one, the only entry there is.
Steps chosenName() {
  return {mainLog("START"),
          takesLock(),
          systemLog("Key ---->{key}::Value------>77\n"),
          ask("vconf_get_str", kNameKey),
          whenSet("default", {mainLog("dName==TV One\n")}),
          mainLog("value=0\n"),
          gives("0", "0"),
          systemLog("status------>0\n"),
          mainLog("END"),
          unlocks()};
}

Steps choosingTheDefaultName() {
  const Steps chosen = {ask("vconf_set_str", kNameKey, "TV One"),
                        mainLog("Device Name set to TV One"),
                        gives("0"),
                        mainLog("END"),
                        unlocks(),
                        ends()};
  return {mainLog("START"),
          takesLock(),
          systemLog("Key ---->{key}::Value------>0\n"),
          whenSet("default", chosen),
          mainLog("set_device_name::status [0xffffffff]"),
          gives("-1"),
          mainLog("END"),
          unlocks()};
}

Steps switchingWired() {
  return {mainLog("START"),
          takesLock(),
          systemLog("Key ---->{key}::Value------>1\n"),
          whenSet("profile", {ask("connection_profile_enable_ethernet_eap", "{profile}", true),
                              Step(Step::Kind::kPrint, "{complaint}")}),
          ask("vconf_set_int", kWiredKey, 1),
          gives("0"),
          mainLog("END"),
          unlocks()};
}

// Without their path the texts stay where they were bound to before, and are not found there.
Steps helpWithTemplate() {
  return {mainLog("START"),
          takesLock(),
          ask("vconf_get_str", kLanguageKey),
          ask("CStringUtil::CombinateStrings", 2048, "{template}",
              "COM_SCREEN_SHARING, TV_SID_CONNECT_KELVO", "null", "", ""),
          gives("0", "{help}"),
          mainLog("END"),
          unlocks()};
}

TEST_F(Loading, WhatAFailureLeavesToTheCallbacksIsAsTheTableSays) {
  for (const Profiles& profiles : kProfiles) {
    for (const std::string& function : failingFunctions()) {
      if (function == kLockFunction) continue;  // then there is no provider
      for (const Mode mode : matrixModes()) {
        const Fault fault{function, mode};
        SCOPED_TRACE(nameOf(profiles, fault));
        begin(profiles);
        walker_.arm(fault);
        arm(fault);
        expectLoading(profiles);
        expectCreating();
        disarm(fault);
        countCombination(walker_);
        walker_.arm({});
        ASSERT_NE(created_, nullptr);
        useTable(created_);
        expectCall(functions().named("get_list_items"),
                   stepsFor(listItemsTable(world_), kWiredItemKey), kWiredItemKey);
        expectCall(functions().setInt(1), switchingWired(), kWiredItemKey);
        expectCall(functions().named("get_list_items"), listOfNames(), VENTARO_KEY_DEVICE_NAME);
        expectCall(functions().named("get_int"), chosenName(), VENTARO_KEY_DEVICE_NAME);
        expectCall(functions().setInt(0), choosingTheDefaultName(), VENTARO_KEY_DEVICE_NAME);
        expectCall(functions().named("get_help_text"), helpWithTemplate(), kDirectItemKey);
        // The device names are not read again, even if reading them failed.
        expectCall(functions().named("create_provider"), stepsFor(createProviderTable(world_), ""),
                   "");
        expectCall(functions().named("get_list_items"), listOfNames(), VENTARO_KEY_DEVICE_NAME);
        expectDeleting();
        expectUnloading(unloading());
        if (HasFailure()) return;
      }
    }
  }
}

}  // namespace
