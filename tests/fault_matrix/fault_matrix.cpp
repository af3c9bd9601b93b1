#include "fault_matrix.h"

#include <cstdlib>
#include <iostream>

#include "heap.h"
#include "platform_functions.h"

namespace {

int combinations = 0;
int withFailedCall = 0;  // those in which the function was called and therefore failed

class PrintsTheirNumber : public testing::Environment {
 public:
  void TearDown() override {
    std::cout << "Combinations: " << combinations << ", in " << withFailedCall
              << " a call failed\n";
  }
};
const testing::Environment* const kPrinter =
    testing::AddGlobalTestEnvironment(new PrintsTheirNumber);

// The next call would wait for ever.
void demandFreeLock(const Journal& journal, const std::string& who) {
  if (journal.count(locks()) == journal.count(unlocks())) return;
  std::cerr << who << " has kept the lock; nothing can be called any more.\n";
  std::_Exit(EXIT_FAILURE);
}

constexpr char kPrintingFunction[] = "connection_profile_enable_ethernet_eap";

}  // namespace

const std::vector<std::string>& failingFunctions() {
  static const std::vector<std::string> functions = [] {
    std::vector<std::string> names = {kLockFunction};
    for (const auto& [name, failure] : platform::kPlatformFunctions) {
      if (failure != platform::Failure::kNever) names.emplace_back(name);
    }
    return names;
  }();
  return functions;
}

const std::vector<Mode>& matrixModes() {
  static const std::vector<Mode> modes = {Mode::kAlways, Mode::kFirstCall, Mode::kSecondCall,
                                          Mode::kThirdCall, Mode::kAlwaysWithOutput};
  return modes;
}

void countCombination(const Walker& walker) {
  ++combinations;
  if (walker.hasFailed()) ++withFailedCall;
}

void arm(const Fault& fault) {
  if (fault.function == kLockFunction) return;  // armed before each attempt to lock
  switch (fault.mode) {
    case Mode::kNever:
      return;
    case Mode::kAlways:
      return failWith(fault.function, kFailure);
    case Mode::kAlwaysWithOutput:
      return failWith(fault.function, kFailure, Effect::kAsSuccess);
    case Mode::kFirstCall:
      return failCall(fault.function, 1, kFailure);
    case Mode::kSecondCall:
      return failCall(fault.function, 2, kFailure);
    case Mode::kThirdCall:
      return failCall(fault.function, 3, kFailure);
  }
}

void disarm(const Fault& fault) {
  if (fault.function != kLockFunction && fault.mode != Mode::kNever) succeedAgain(fault.function);
}

void FaultMatrix::enter(const World& world, bool watching) {
  world_ = world;
  // The loading asks for the access point once.
  walker_ = Walker({.accessPoints = 1, .networksAreWatched = watching});
  useWorldTexts();
  apply(world);
  create();
  useTable(&table());
  if (world.wiredListWasAsked) listItems(VENTARO_KEY_WIRED_EAP);
  if (watching) {
    store().erase(kNetworksKey);
    titleIcon(kFirstNetworkKey);
    publishNetworks(world);
  }
  clearJournal();
  blocksBefore_ = liveBlocks();
}

void FaultMatrix::useTable(const data_provider_cbs* table, bool memoryMayRunOut) {
  functions_ = std::make_unique<Functions>(entries(), table, memoryMayRunOut);
}

void FaultMatrix::expectTable(const Function& function, const Table& rows,
                              const std::vector<std::string>& keys) {
  for (const std::string& key : keys) {
    const Steps& steps = stepsFor(rows, key);
    for (const std::string& failing : failingFunctions()) {
      for (const Mode mode : matrixModes()) {
        expectTwoCalls(function, steps, key, {failing, mode});
        if (HasFailure()) return;  // the others would be the same
      }
    }
  }
}

void FaultMatrix::expectTwoCalls(const Function& function, const Steps& steps,
                                 const std::string& key, const Fault& fault) {
  settle();
  for (int i = 0; i < 2 && function.prepare; ++i) function.prepare(key);
  walker_.arm(fault);
  arm(fault);
  for (int i = 1; i <= 2; ++i) {
    if (walker_.nextLockFails()) failNextLock(kLockFailure);
    const Outcome expected = walker_.walk(steps, key);
    const Outcome actual = callOnce(function, key, fault.function == kPrintingFunction);
    EXPECT_EQ(actual, expected) << function.name << " of \"" << key << "\" on "  //
                                << world_.name << ", call " << i << ", while " << fault.function
                                << " fails " << nameOf(fault.mode);
    EXPECT_EQ(store().subscriptions().size(), walker_.subscriptions()) << function.name;
    EXPECT_EQ(openAps(), walker_.openAccessPoints()) << function.name << " of \"" << key << "\"";
  }
  disarm(fault);
  countCombination(walker_);
  EXPECT_EQ(openConnections(), 3) << function.name;
  const int kept = countsBlocks() ? walker_.keptTexts() : 0;
  EXPECT_EQ(liveBlocks() - blocksBefore_, kept)
      << function.name << " of \"" << key << "\" while " << fault.function << " fails "
      << nameOf(fault.mode) << ": blocks that nobody has freed";
}

Outcome FaultMatrix::callOnce(const Function& function, const std::string& key, bool capture) {
  Outcome run;
  clearJournal();
  if (capture) testing::internal::CaptureStdout();
  const contract::Answer answer = function.call(key);
  if (capture) run.printed = testing::internal::GetCapturedStdout();
  failNextLock(0);  // a lock that was not taken must not fail later
  run.journal = journal();
  demandFreeLock(run.journal, function.name + " of \"" + key + "\"");
  run.answer = shown(functions_->calls(), answer);
  return run;
}

int FaultMatrix::keptTexts(const Journal& journal) {
  const Journal::Piece reading =
      call("system_info_get_custom_string", "com.norvane/featureconf/product.device_sid");
  return countsBlocks() ? static_cast<int>(journal.count(reading)) : 0;
}

// Restores what the last combination has changed, including the refresh timer.
void FaultMatrix::settle() {
  restore(world_);
  if (runningTimers() == 0) return;
  advanceTimers(4);
  walker_.timerHasEnded();
}

void FaultMatrix::leave() {
  functions_.reset();
  unload();
  EXPECT_EQ(openConnections(), 0);
  EXPECT_EQ(logMistakes(), std::vector<std::string>());
  EXPECT_EQ(wrongRemovals(), std::vector<unsigned>());
  EXPECT_EQ(misuses(), std::vector<std::string>());
  reset();
}

void FaultMatrix::TearDown() {
  leave();
  ProviderTest::TearDown();
}
