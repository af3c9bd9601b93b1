// The first function that needs the saved networks watches their document, whichever it is. When
// that fails, nothing else changes, and it is not tried again.
#include "fault_matrix.h"

namespace {

class FirstUse : public FaultMatrix {
 protected:
  struct Needing {
    Function function;
    Table table;
  };

  std::vector<Needing> needing(const World& world) {
    Functions& f = functions();
    return {{f.setInt(1), setIntTable(world, 1)},
            {f.named("get_display_name"), displayNameTable(world)},
            {f.named("get_title_icon_path"), titleIconTable(world)},
            {f.named("get_second_icon_path"), secondIconTable(world)},
            {f.named("check_enable_int"), enableIntTable(world)}};
  }

  // The library is loaded again for each, otherwise the networks would already be watched.
  void expectFirstUse(std::size_t which, const std::string& key, const Fault& fault) {
    const World world;
    enter(world, /*watching=*/false);
    const Needing first = needing(world).at(which);
    expectTwoCalls(first.function, stepsFor(first.table, key), key, fault);
    leave();
  }
};

TEST_F(FirstUse, WatchesTheSavedNetworksOnceUnderEveryFault) {
  constexpr std::size_t kFunctions = 5;
  for (std::size_t which = 0; which < kFunctions; ++which) {
    for (const std::string& key : allKeys()) {
      for (const char* failing : {"vconf_notify_key_changed", "vconf_get_str", kLockFunction}) {
        for (const Mode mode : matrixModes()) {
          expectFirstUse(which, key, {failing, mode});
          if (HasFailure()) return;
        }
      }
    }
  }
}

TEST_F(FirstUse, ThatCouldNotWatchIsNotNotified) {
  const World world;
  enter(world, /*watching=*/false);
  const Fault fault{"vconf_notify_key_changed", Mode::kAlways};
  arm(fault);
  titleIcon(kFirstNetworkKey);
  disarm(fault);
  titleIcon(kFirstNetworkKey);
  clearJournal();
  store().notify(kNetworksKey);
  EXPECT_EQ(journal(), Journal());
}

}  // namespace
