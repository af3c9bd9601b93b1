// What the provider does when it gets no memory.
#include "failing_allocations.h"
#include "provider_test.h"

namespace {

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
  EXPECT_EQ(table().get_help_text("menu/network/WiFiOnOff", &value), -1);
  EXPECT_EQ(value, preset);
  EXPECT_EQ(journal(),
            (Journal{mainLog("START"), locks(), mainLog("Memory not allocated"), unlocks()}));
}

TEST_F(AllocationFailure, AnOnOffTextWithoutMemoryIsNull) {
  failAllocation(1);
  EXPECT_TRUE(stringValue("menu/network/WiredEAP").isNull());
}

}  // namespace
