// The store that several processes use at once, some of which are killed.
#include <glib.h>
#include <lmdb.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/config_store.h"
#include "platform_test.h"
#include "process.h"
#include "store/write_lock.h"

namespace {

std::atomic<int> syncs = 0;

}  // namespace

// Override libc's functions, to observe that the store syncs its files.
extern "C" __attribute__((visibility("default"))) int fdatasync(int file) {
  ++syncs;
  return static_cast<int>(syscall(SYS_fdatasync, file));
}

extern "C" __attribute__((visibility("default"))) int fsync(int file) {
  ++syncs;
  return static_cast<int>(syscall(SYS_fsync, file));
}

namespace platform_tests {
namespace {

using Values = std::map<std::string, StoreValue>;

constexpr std::size_t kMebibyte = std::size_t{1} << 20;

// Transactions on a store's files by a process that bypasses the store.
class Intruder {
 public:
  explicit Intruder(const std::filesystem::path& folder) {
    mdb_env_create(&environment_);
    EXPECT_EQ(mdb_env_open(environment_, folder.c_str(), MDB_NOTLS, 0600), 0);
  }
  Intruder(const Intruder&) = delete;
  Intruder& operator=(const Intruder&) = delete;

  // Begins a transaction that never ends. False when there is no reader slot for it.
  bool begin(unsigned flags) {
    MDB_txn* transaction = nullptr;
    return mdb_txn_begin(environment_, nullptr, flags, &transaction) == 0;
  }

 private:
  MDB_env* environment_ = nullptr;
};

[[noreturn]] void waitToBeKilled() {
  while (true) pause();
}

class Processes : public PlatformTest {};

class ProcessesInAnArea : public PlatformTest, public testing::WithParamInterface<const char*> {
 protected:
  std::string key(const std::string& name) const { return GetParam() + name; }
  std::filesystem::path areaFolder() const {
    return GetParam() == std::string("db/") ? stateFolder() : runtimeFolder();
  }
  // What an intruding process does from the test's signal on, until it is killed: a transaction of
  // a reader (MDB_RDONLY) or a writer (0).
  auto transaction(unsigned flags) const {
    return [folder = areaFolder(), flags](Channel& test) {
      test.receiveLine();
      Intruder intruder(folder);
      test.sendLine(intruder.begin(flags) ? "begun" : "not begun");
      waitToBeKilled();
    };
  }
  // The same, of as many readers as there may be.
  void takeAllPlacesToRead(Channel& test) const {
    test.receiveLine();
    Intruder reader(areaFolder());
    while (reader.begin(MDB_RDONLY)) {
    }
    test.sendLine("no place left");
    waitToBeKilled();
  }
};

INSTANTIATE_TEST_SUITE_P(Of, ProcessesInAnArea, testing::Values("db/", "memory/"),
                         [](const auto& area) {
                           return std::string(area.param).substr(0, area.param[0] == 'd' ? 2 : 6);
                         });

TEST_P(ProcessesInAnArea, LoseNothingWhenTheyWriteAtTheSameTime) {
  constexpr int kValues = 10'000;
  const auto write = [&](const std::string& prefix) {
    return [&, prefix](Channel& test) {
      test.receiveLine();
      for (int i = 0; i < kValues; ++i) {
        ASSERT_EQ(vconf_set_int((prefix + std::to_string(i)).c_str(), i), 0);
      }
    };
  };
  Process first(write(key("first/")));
  Process second(write(key("second/")));
  first.channel().sendLine("go");
  second.channel().sendLine("go");
  first.join();
  second.join();
  for (const std::string& prefix : {key("first/"), key("second/")}) {
    const Values values = store().list(prefix);
    EXPECT_EQ(values.size(), std::size_t{kValues});
    for (int i = 0; i < kValues; ++i) {
      ASSERT_EQ(values.at(prefix + std::to_string(i)), StoreValue(i));
    }
  }
}

TEST_P(ProcessesInAnArea, KeepEveryAcknowledgedValueWhenTheyAreKilled) {
  constexpr int kKills = 30;
  const auto writeForEver = [](const std::string& prefix) {
    return [prefix](Channel& test) {
      for (int i = 0;; ++i) {
        // Small and large ones, so that the kill falls into transactions of every size.
        const std::string value(i % 3 == 0 ? 20'000U : 10U, static_cast<char>('a' + i % 26));
        if (vconf_set_str((prefix + std::to_string(i)).c_str(), value.c_str()) == 0) {
          test.sendLine(std::to_string(i));
        }
        if (i > 300) i = 0;  // overwrites with equal values
      }
    };
  };
  // Another one writes all the time, so kills also happen while it waits for the others.
  Process survivor(writeForEver(key("survivor/")));
  std::map<std::string, int> acknowledged;
  for (int kill = 0; kill < kKills; ++kill) {
    const std::string prefix = key("killed" + std::to_string(kill) + "/");
    Process victim(writeForEver(prefix));
    const auto note = [&](const std::optional<std::string>& line) {
      if (line) acknowledged[prefix] = std::max(acknowledged[prefix], std::stoi(*line));
      return line.has_value();
    };
    for (int i = 0; i < 1 + kill * 3; ++i) ASSERT_TRUE(note(victim.channel().receiveLine()));
    victim.kill();
    // Including its output before it died.
    while (note(victim.channel().receiveLine())) {
    }
    ASSERT_TRUE(survivor.channel().receiveLine().has_value());
  }
  survivor.kill();
  ASSERT_EQ(acknowledged.size(), std::size_t{kKills});
  for (const auto& [prefix, last] : acknowledged) {
    for (int i = 0; i <= last; ++i) {
      const auto value = store().get(prefix + std::to_string(i));
      ASSERT_TRUE(value.has_value()) << prefix << i;
      const std::string expected(i % 3 == 0 ? 20'000U : 10U, static_cast<char>('a' + i % 26));
      ASSERT_TRUE(value == StoreValue(expected)) << prefix << i;
    }
  }
  store().set(key("afterwards"), 1);
}

TEST_P(ProcessesInAnArea, AreNotBlockedByOneThatIsKilledWhileItWrites) {
  Process intruder(transaction(0));
  store().set(key("before"), 1);
  intruder.channel().sendLine("go");
  ASSERT_EQ(intruder.channel().receiveLine(), "begun");
  intruder.kill();
  EXPECT_EQ(vconf_set_int(key("after").c_str(), 2), 0);
  EXPECT_EQ(store().get(key("before")), StoreValue(1));
  EXPECT_EQ(store().get(key("after")), StoreValue(2));
}

TEST_P(ProcessesInAnArea, GetTheSpaceBackThatOneKilledWhileItReadHeld) {
  Process intruder(transaction(MDB_RDONLY));
  store().set(key("value"), std::string(kMebibyte, 'a'));
  intruder.channel().sendLine("go");
  ASSERT_EQ(intruder.channel().receiveLine(), "begun");
  intruder.kill();
  // Many times the size of the store.
  for (int i = 0; i < 300; ++i) {
    const std::string value(kMebibyte, static_cast<char>('a' + i % 26));
    ASSERT_EQ(vconf_set_str(key("value").c_str(), value.c_str()), 0) << i;
  }
}

TEST_P(ProcessesInAnArea, CanReadWhileOneIsStoppedInTheMiddleOfAChange) {
  Process maker([&](Channel&) { store().set(key("value"), 5); });
  maker.join();
  Process intruder(transaction(0));
  intruder.channel().sendLine("go");
  ASSERT_EQ(intruder.channel().receiveLine(), "begun");
  EXPECT_EQ(store().get(key("value")), StoreValue(5));
  EXPECT_EQ(errorRaisedBy([] { store().open(); }), "");
}

// After an update that brings another setting, or where somebody unset one.
TEST_F(Processes, CanReadWhereAFactorySettingCannotBeAdded) {
  Process changer([&](Channel& test) {
    store().set("db/value", 5);
    store().unset("db/host/wake_on_mobile");
    platform::WriteLock lock(stateFolder() / "writer", std::chrono::seconds(1));
    const platform::WriteLock::Hold hold(lock);
    test.sendLine("changing");
    waitToBeKilled();
  });
  ASSERT_EQ(changer.channel().receiveLine(), "changing");
  EXPECT_EQ(store().get("db/value"), StoreValue(5));
  EXPECT_EQ(store().get("db/host/wake_on_mobile"), std::nullopt);
}

TEST_P(ProcessesInAnArea, AreToldWhoKeepsThePagesOfAFullStore) {
  Process intruder(transaction(MDB_RDONLY));
  store().set(key("value"), std::string(kMebibyte, 'a'));
  intruder.channel().sendLine("go");
  ASSERT_EQ(intruder.channel().receiveLine(), "begun");
  std::string error;
  for (int i = 0; error.empty() && i < 300; ++i) {
    const std::string value(kMebibyte, static_cast<char>('a' + i % 26));
    error = errorRaisedBy([&] { store().set(key("value"), value); });
  }
  EXPECT_TRUE(error.ends_with("MDB_MAP_FULL: Environment mapsize limit reached; process " +
                              std::to_string(intruder.id()) +
                              " reads an old state and keeps its pages; let it go on, or end it"))
      << error;
}

TEST_P(ProcessesInAnArea, CanReadAfterManyThatWereKilledWhileTheyRead) {
  Process maker([&](Channel&) { store().set(key("value"), 5); });
  Process intruder([&](Channel& test) { takeAllPlacesToRead(test); });
  maker.join();
  intruder.channel().sendLine("go");
  ASSERT_EQ(intruder.channel().receiveLine(), "no place left");
  intruder.kill();
  int read = 0;
  EXPECT_EQ(vconf_get_int(key("value").c_str(), &read), 0);
  EXPECT_EQ(read, 5);
}

TEST_P(ProcessesInAnArea, GetAnErrorWhenTheyComeWhileOthersHaveAllPlacesToRead) {
  Process maker([&](Channel&) { store().set(key("value"), 5); });
  Process intruder([&](Channel& test) { takeAllPlacesToRead(test); });
  maker.join();
  intruder.channel().sendLine("go");
  ASSERT_EQ(intruder.channel().receiveLine(), "no place left");
  int read = 7;
  EXPECT_EQ(vconf_get_int(key("value").c_str(), &read), codeOf(StoreCode::kUnavailable));
  EXPECT_EQ(read, 7);
  intruder.kill();
  EXPECT_EQ(vconf_get_int(key("value").c_str(), &read), 0);
  EXPECT_EQ(read, 5);
}

TEST_P(ProcessesInAnArea, KeepTheirPlaceToReadAndAreToldWhileOthersTakeAllOthers) {
  Process intruder([&](Channel& test) { takeAllPlacesToRead(test); });
  store().set(key("value"), 5);
  std::vector<std::string> told;
  const auto subscription =
      store().subscribe(key(""), [&](const std::string& changed) { told.push_back(changed); });
  intruder.channel().sendLine("go");
  ASSERT_EQ(intruder.channel().receiveLine(), "no place left");
  int read = 0;
  EXPECT_EQ(vconf_get_int(key("value").c_str(), &read), 0);
  EXPECT_EQ(read, 5);
  EXPECT_EQ(vconf_set_int(key("value").c_str(), 6), 0);
  ASSERT_TRUE(iterateUntil([&] { return !told.empty(); }));
  EXPECT_EQ(told, std::vector<std::string>{key("value")});
}

TEST_P(ProcessesInAnArea, AllMakeTheStoreThatNoneFindsYet) {
  constexpr int kProcesses = 8;
  std::vector<std::unique_ptr<Process>> processes;
  for (int i = 0; i < kProcesses; ++i) {
    processes.push_back(std::make_unique<Process>([&, i](Channel& test) {
      test.receiveLine();
      EXPECT_EQ(vconf_set_int(key("process" + std::to_string(i)).c_str(), i), 0);
    }));
  }
  for (const auto& process : processes) process->channel().sendLine("go");
  for (const auto& process : processes) process->join();
  EXPECT_EQ(store().list(key("process")).size(), std::size_t{kProcesses});
}

TEST_F(Processes, FindADbValueOnTheDiskWhenItsSetReturns) {
  store().set({{"db/open", 1}, {"memory/open", 1}});
  for (int i = 0; i < 3; ++i) {
    const int before = syncs;
    EXPECT_EQ(vconf_set_int("db/key", i), 0);
    EXPECT_GT(syncs, before);
  }
}

TEST_F(Processes, DoNotWaitForTheDiskForAMemoryValue) {
  store().set({{"db/open", 1}, {"memory/open", 1}});
  const int before = syncs;
  for (int i = 0; i < 3; ++i) EXPECT_EQ(vconf_set_int("memory/key", i), 0);
  EXPECT_EQ(syncs, before);
}

}  // namespace
}  // namespace platform_tests
