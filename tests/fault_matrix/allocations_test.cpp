// Memory that runs out: every function of the provider, for every key, while its first, second,
// third ... allocation fails, until none does.
#include <iostream>

#include "fault_matrix.h"
#include "heap.h"

namespace {

class EveryFailedAllocation : public FaultMatrix {
 protected:
  void SetUp() override {
    FaultMatrix::SetUp();
    countObjects();
  }

  void TearDown() override {
    failAllocation(0);
    FaultMatrix::TearDown();
  }

  // Each failure gives what contract/ allows. The lock is free then, nothing has leaked, and the
  // next call answers as if nothing had happened.
  void expectSurvived(const World& world) {
    enter(world);
    useTable(&table(), true);
    for (const Function& function : functions().all()) {
      for (const std::string& key : allKeys()) expectSurvived(world, function, key);
    }
    leave();
  }

  int failures() const { return failures_; }

 private:
  // What is kept of the saved networks is forgotten, so that their document is read again.
  void prepare(const World& world, const Function& function, const std::string& key) {
    store().erase(kNetworksKey);
    titleIcon(kFirstNetworkKey);
    publishNetworks(world);
    if (function.prepare) function.prepare(key);
  }

  std::string answerOf(const World& world, const Function& function, const std::string& key) {
    prepare(world, function, key);
    return callOnce(function, key, false).answer;
  }

  void expectSurvived(const World& world, const Function& function, const std::string& key) {
    const std::string sound = answerOf(world, function, key);
    const int objects = liveObjects();
    for (int n = 1;; ++n) {
      SCOPED_TRACE(function.name + " of \"" + key + "\", allocation " + std::to_string(n));
      const int blocks = liveBlocks();
      prepare(world, function, key);
      failAllocation(n);
      const Outcome outcome = callOnce(function, key, false);
      failAllocation(0);
      if (!hasAllocationFailed()) {
        EXPECT_EQ(outcome.answer, sound);
        return;
      }
      ++failures_;
      EXPECT_NE(outcome.answer, sound);
      EXPECT_EQ(liveBlocks() - blocks, keptTexts(outcome.journal))
          << "blocks that nobody has freed";
      EXPECT_EQ(answerOf(world, function, key), sound);
      EXPECT_EQ(liveObjects(), objects) << "objects that nobody has freed";
      if (HasFailure()) return;  // the others would be the same
    }
  }

  int failures_ = 0;
};

TEST_F(EveryFailedAllocation, OfACallIsAnsweredAsTheHeaderSaysAndLeavesNothingBehind) {
  World modularDisplay;  // whose help texts are composed of most texts
  modularDisplay.product = Product::kSecondModular;
  modularDisplay.screen = Screen::kSplit;
  for (const World& world : {World(), modularDisplay}) expectSurvived(world);
  std::cout << "Failed allocations: " << failures() << '\n';
}

TEST_F(EveryFailedAllocation, OfCreatingTheFirstProviderRaisesAndTheNextAttemptMakesOne) {
  useWorldTexts();
  apply(World());
  load();
  useTable(nullptr, true);
  const Function& create = functions().named("create_provider");
  int failures = 0;
  for (bool hasFailed = true; hasFailed; ++failures) {
    const int blocks = liveBlocks();
    failAllocation(failures + 1);
    const std::string answer = callOnce(create, "", false).answer;
    failAllocation(0);
    hasFailed = hasAllocationFailed();
    EXPECT_EQ(answer, hasFailed ? "raises std::bad_alloc, untouched" : "0, a table");
    EXPECT_EQ(liveBlocks(), blocks);
  }
  EXPECT_GT(failures, 2);  // the list of device names, and the table
}

TEST_F(EveryFailedAllocation, OfTheFirstUseOfTheSavedNetworksRaisesAndTheNextUseWatchesThemOnce) {
  const World world;
  enter(world, /*watching=*/false);
  useTable(&table(), true);
  const Function& titleIcon = functions().named("get_title_icon_path");
  for (int n = 1; n == 1 || hasAllocationFailed(); ++n) {
    failAllocation(n);
    const std::string answer = callOnce(titleIcon, kFirstNetworkKey, false).answer;
    failAllocation(0);
    EXPECT_EQ(hasAllocationFailed(), answer == "raises std::bad_alloc, untouched") << answer;
  }
  EXPECT_EQ(store().subscriptions(), std::vector<std::string>{kNetworksKey});
}

}  // namespace
