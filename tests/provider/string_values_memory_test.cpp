// What get_string does when there is no memory for the word On or Off.
#include "failing_allocations.h"
#include "provider_test.h"

namespace {

struct Switch {
  const char* key;
  const char* object;  // as its value's line names it
};

constexpr Switch kSwitches[] = {
    {"menu/network/MobileDeviceTV_US", "CMobileDeviceTVObj"},
    {"menu/network/WiFiOnOff", "CWiFiOnOffObj"},
    {"menu/network/expertsettings/wifidirect", "CWiFiDirectObj"},
    {"menu/network/WiredEAP", "CWiredEAPObj"},
};

class StringValuesWithoutMemory : public ProviderTest {};

TEST_F(StringValuesWithoutMemory, AWordIsNullAndTheCallCompletedAllTheSame) {
  create();
  char preset[] = "preset";
  for (const Switch& each : kSwitches) {
    char* text = preset;
    clearJournal();
    failAllocation(1);
    EXPECT_EQ(table().get_string(each.key, &text), 1) << each.key;
    EXPECT_EQ(text, nullptr) << each.key;
    const std::string line = std::string(each.object) + ".setOnOffStatus==(null)";
    EXPECT_TRUE(journal().contains(Journal{mainLog(line), mainLog("END"), unlocks()})) << each.key;
  }
}

TEST_F(StringValuesWithoutMemory, TheNextWordIsThereAgain) {
  create();
  for (const Switch& each : kSwitches) {
    failAllocation(1);
    stringValue(each.key);
    EXPECT_EQ(stringValue(each.key), "Off") << each.key;
  }
}

TEST_F(StringValuesWithoutMemory, AWordTakesOneAllocation) {
  create();
  for (const Switch& each : kSwitches) {
    const int before = allocations();
    stringValue(each.key);
    EXPECT_EQ(allocations() - before, 1) << each.key;
  }
}

}  // namespace
