// What the option lists do when they get no memory.
#include "failing_allocations.h"
#include "provider_test.h"

namespace {

class ListItemsMemory : public ProviderTest {};

TEST_F(ListItemsMemory, WithoutMemoryThereAreNoStatesOfASavedNetworkThoughThreeAreCounted) {
  create();
  for (const std::string key : {"SAVEDAP1_NAME_KEY", "SAVEDAP2_NAME_KEY"}) {
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

}  // namespace
