// What the provider does when memory runs out.
#include <new>

#include "failing_allocations.h"
#include "provider_test.h"

namespace {

struct Switch {
  const char* key;
  const char* object;  // as the log line of its value names it
};

constexpr Switch kSwitches[] = {
    {VENTARO_KEY_POWER_ON_WITH_MOBILE_US, "CMobileDeviceTVObj"},
    {VENTARO_KEY_WIFI, "CWiFiOnOffObj"},
    {VENTARO_KEY_WIFI_DIRECT, "CWiFiDirectObj"},
    {VENTARO_KEY_WIRED_EAP, "CWiredEAPObj"},
};

class AllocationFailure : public ProviderTest {
 protected:
  void SetUp() override {
    ProviderTest::SetUp();
    store().set("db/menu_widget/language", "en");
    create();
  }
};

TEST_F(AllocationFailure, AHelpTextWithoutMemoryIsRefusedAndTheOutputUntouched) {
  char preset[] = "preset";
  char* value = preset;
  failAllocation(1);
  EXPECT_EQ(table().get_help_text(VENTARO_KEY_WIFI, &value), -1);
  EXPECT_EQ(value, preset);
  EXPECT_EQ(journal(),
            (Journal{mainLog("START"), locks(), mainLog("Memory not allocated"), unlocks()}));
}

TEST_F(AllocationFailure, WithoutMemoryASwitchsWordIsNullAndTheCallStillCompletes) {
  char preset[] = "preset";
  for (const Switch& each : kSwitches) {
    char* text = preset;
    clearJournal();
    failAllocation(1);
    EXPECT_EQ(table().get_string(each.key, &text), 1) << each.key;
    EXPECT_EQ(text, nullptr) << each.key;
    const std::string line = std::string(each.object) + ".setOnOffStatus==(null)";
    EXPECT_TRUE(journal().contains(Journal{mainLog(line), mainLog("END"), unlocks()})) << each.key;
    EXPECT_EQ(stringValue(each.key), "Off") << each.key;
  }
}

TEST_F(AllocationFailure, ASwitchsWordTakesOneAllocation) {
  for (const Switch& each : kSwitches) {
    const int before = allocations();
    stringValue(each.key);
    EXPECT_EQ(allocations() - before, 1) << each.key;
  }
}

TEST_F(AllocationFailure, WithoutMemoryThereAreNoStatesOfASavedNetworkThoughThreeAreCounted) {
  for (const std::string key :
       {VENTARO_KEY_SAVED_NETWORK_1_STATES, VENTARO_KEY_SAVED_NETWORK_2_STATES}) {
    clearJournal();
    int count = 77;
    failAllocation(1);
    EXPECT_EQ(table().get_list_items(key.c_str(), &count), nullptr) << key;
    EXPECT_EQ(count, 3) << key;
    EXPECT_EQ(journal(),
              (Journal{locks(), mainLog("START"), mainLog("Key ---->" + key + "::\n"), unlocks()}))
        << key;
  }
}

TEST_F(AllocationFailure, OnTheWayToTheStatesOfASavedNetworkRaisesAndTheOutputIsUntouched) {
  constexpr int kOfStates = 7;  // an array, and a record and a text for each of the three
  for (int n = 2; n <= kOfStates; ++n) {
    int count = 77;
    failAllocation(n);
    EXPECT_THROW(table().get_list_items(VENTARO_KEY_SAVED_NETWORK_1_STATES, &count), std::bad_alloc)
        << n;
    EXPECT_EQ(count, 77) << n;
  }
}

}  // namespace
