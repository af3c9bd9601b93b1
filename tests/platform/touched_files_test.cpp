// A store's files that somebody moves, replaces, overwrites or cuts short while they are in use.
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "notifications_test.h"
#include "platform_test.h"
#include "process.h"

namespace platform_tests {
namespace {

constexpr std::size_t kMebibyte = std::size_t{1} << 20;
constexpr char kFactoryKey[] = "db/host/wake_on_mobile";

class TouchedFiles : public ASubscriber {
 protected:
  std::filesystem::path data() const { return stateFolder() / "data.mdb"; }
  std::filesystem::path lock() const { return stateFolder() / "lock.mdb"; }

  std::string inStore(const std::string& message) const {
    return "the store in " + stateFolder().string() + ": " + message;
  }

  // What reading raises in the next tick of the kernel's clock: the files are looked at once in
  // each.
  static std::string nextError() {
    const auto now = [] {
      timespec time{};
      clock_gettime(CLOCK_MONOTONIC_COARSE, &time);
      return std::pair(time.tv_sec, time.tv_nsec);
    };
    for (const auto begin = now(); now() == begin;) {
    }
    return errorRaisedBy([] { store().get("db/key"); });
  }

  // A whole store with that value, in another folder.
  std::filesystem::path otherStore(int value) const {
    const auto other = folder() / "other";
    inOwnProcess([&] {
      setenv("VENTARO_STATE_DIR", other.c_str(), 1);
      store().set("db/key", value);
    });
    return other;
  }

  // The two processes see each other's changes, from that one on.
  static void expectCommonFiles(Process& user, int first) {
    for (int i = first; i < 50; ++i) {
      user.channel().sendLine("use");
      ASSERT_EQ(user.channel().receiveLine(), "done");
      ASSERT_EQ(store().get("db/other"), StoreValue(i));
      store().set("db/key", i);
    }
  }

  // What another process does that uses the store when it is told to, and says how that went.
  static void useWhenTold(Channel& test) {
    store().set("db/other", 1);
    test.sendLine("ready");
    while (test.receiveLine()) {
      const std::string error = errorRaisedBy([] {
        const auto value = store().get("db/other");
        store().set("db/other", value.has_value() ? std::get<int>(*value) + 1 : 1);
      });
      test.sendLine(error.empty() ? "done" : error);
    }
  }
};

TEST_F(TouchedFiles, TheDataFileMovedAwayIsAnErrorOnceAndANewOneIsUsed) {
  store().set({{"db/key", 1}, {"memory/key", 1}});
  store().set(kFactoryKey, 77);
  std::filesystem::rename(data(), folder() / "data.mdb");
  EXPECT_EQ(errorRaisedBy([] { store().set("db/key", 2); }),
            "\"db/key\": " + inStore("data.mdb was moved away or deleted while it was in use; from "
                                     "now on a new one is used"));
  EXPECT_EQ(store().get("db/key"), std::nullopt);
  EXPECT_NE(store().get(kFactoryKey), StoreValue(77)) << "the factory settings are back";
  store().set("db/key", 3);
  EXPECT_EQ(store().get("db/key"), StoreValue(3));
  EXPECT_TRUE(std::filesystem::exists(data()));
  EXPECT_EQ(store().get("memory/key"), StoreValue(1)) << "the other area is as it was";
}

TEST_F(TouchedFiles, TheWholeFolderMovedAwayIsAnErrorOnceAndANewOneIsUsed) {
  store().set("db/key", 1);
  std::filesystem::rename(stateFolder(), folder() / "away");
  EXPECT_EQ(nextError(), inStore("data.mdb was moved away or deleted while it was in use; from now "
                                 "on a new one is used"));
  store().set("db/key", 2);
  EXPECT_TRUE(std::filesystem::exists(data()));
}

TEST_F(TouchedFiles, TheDataFileReplacedIsAnErrorOnceAndTheNewOneIsUsed) {
  const auto other = otherStore(5);
  store().set("db/key", 1);
  std::filesystem::rename(other / "data.mdb", data());
  EXPECT_EQ(nextError(), inStore("data.mdb was replaced while it was in use; from now on the new "
                                 "one is used"));
  EXPECT_EQ(store().get("db/key"), StoreValue(5));
}

TEST_F(TouchedFiles, EveryProcessGoesOnWithTheReplacedDataFile) {
  const auto other = otherStore(5);
  Process user(useWhenTold);
  ASSERT_EQ(user.channel().receiveLine(), "ready");
  std::filesystem::rename(other / "data.mdb", data());
  store().set("db/key", 6);
  user.channel().sendLine("use");
  EXPECT_EQ(user.channel().receiveLine(),
            inStore("data.mdb was replaced while it was in use; from now on the new one is used"));
  expectCommonFiles(user, 1);
}

TEST_F(TouchedFiles, TheDataFileCutShortIsAnErrorAndRefused) {
  store().set("db/key", std::string(kMebibyte, 'x'));
  const std::string whole = std::to_string(std::filesystem::file_size(data()));
  std::filesystem::resize_file(data(), 20'000);
  EXPECT_EQ(nextError(),
            inStore("data.mdb was cut short while it was in use: 20000 of " + whole + " bytes"));
  EXPECT_EQ(nextError(), inStore("data.mdb is cut short: 20000 of " + whole +
                                 " bytes; move it away, and the store starts with its defaults"));
  std::filesystem::rename(data(), folder() / "data.mdb");
  store().set("db/key", 1);
  EXPECT_EQ(store().get("db/key"), StoreValue(1)) << "moved away, as the message says";
}

TEST_F(TouchedFiles, TheDataFileCutShortToNothingIsAnErrorOnceAndMadeAnew) {
  store().set("db/key", 1);
  std::filesystem::resize_file(data(), 0);
  EXPECT_TRUE(nextError().starts_with(inStore("data.mdb was cut short while it was in use: 0 of")));
  EXPECT_EQ(store().get("db/key"), std::nullopt);
  store().set("db/key", 2);
}

struct Touch {
  const char* name;
  const char* happened;
  void (*touch)(const std::filesystem::path& lock);
};

void PrintTo(const Touch& touch, std::ostream* out) {
  *out << touch.name;
}

class TheLockFile : public TouchedFiles, public testing::WithParamInterface<Touch> {};

INSTANTIATE_TEST_SUITE_P(
    That, TheLockFile,
    testing::Values(
        Touch{"IsDeleted", "moved away or deleted while it was in use; from now on a new one",
              [](const auto& lock) { std::filesystem::remove(lock); }},
        Touch{"IsCutShort", "overwritten while it was in use; from now on a new one",
              [](const auto& lock) { std::filesystem::resize_file(lock, 1); }},
        Touch{"IsCutShortToNothing", "overwritten while it was in use; from now on a new one",
              [](const auto& lock) { std::filesystem::resize_file(lock, 0); }},
        Touch{"IsOverwrittenWithZeros", "overwritten while it was in use; from now on a new one",
              [](const auto& lock) {
                const auto size = std::filesystem::file_size(lock);
                std::filesystem::resize_file(lock, 0);
                std::filesystem::resize_file(lock, size);
              }}),
    [](const auto& touch) { return touch.param.name; });

TEST_P(TheLockFile, IsAnErrorOnceInEveryProcessAndNoValueIsLost) {
  Process user(useWhenTold);
  ASSERT_EQ(user.channel().receiveLine(), "ready");
  store().set("db/key", 1);
  GetParam().touch(lock());
  const std::string happened =
      inStore(std::string("lock.mdb was ") + GetParam().happened + " is used");
  EXPECT_EQ(nextError(), happened);
  EXPECT_EQ(store().get("db/key"), StoreValue(1));
  user.channel().sendLine("use");
  const std::string told = user.channel().receiveLine().value_or("");
  EXPECT_TRUE(told.starts_with(inStore("lock.mdb was "))) << told;
  expectCommonFiles(user, 2);
}

TEST_P(TheLockFile, IsMadeAnewByAProcessThatComesLater) {
  Process user(useWhenTold);
  ASSERT_EQ(user.channel().receiveLine(), "ready");
  GetParam().touch(lock());
  EXPECT_EQ(nextError(), "");
  EXPECT_EQ(store().get("db/other"), StoreValue(1));
}

TEST_F(TouchedFiles, TheVersionAfterTheErrorIsThatOfTheNewFiles) {
  store().set("db/key", 1);
  const auto before = store().version("db/key");
  std::filesystem::rename(data(), folder() / "data.mdb");
  EXPECT_NE(nextError(), "");
  EXPECT_NE(store().version("db/key"), before);
}

TEST_F(TouchedFiles, TheSubscribersAreToldOfChangesAfterTheWholeFolderWasMovedAway) {
  Process setter([](Channel& test) {
    test.receiveLine();
    store().set("db/set", 1);
  });
  store().set("db/key", 1);
  Keys told;
  const auto subscription = listen("db/set", told);
  std::filesystem::rename(stateFolder(), folder() / "away");
  setter.channel().sendLine("go");
  setter.join();
  EXPECT_TRUE(iterateUntil([&] { return !told.empty(); }));
}

TEST_F(TouchedFiles, TheSubscribersAreToldOfEveryKeyOfTheNewDataFile) {
  const auto other = otherStore(5);
  Process setter([](Channel& test) {
    test.receiveLine();
    store().set("db/set", 1);
  });
  store().set("db/key", 1);
  Keys told;
  const auto subscription = listen("db/", told);
  std::filesystem::rename(other / "data.mdb", data());
  setter.channel().sendLine("go");
  setter.join();
  const auto heard = [&](const std::string& key) {
    return std::ranges::find(told, key) != told.end();
  };
  ASSERT_TRUE(iterateUntil([&] { return heard("db/set"); }));
  EXPECT_TRUE(heard("db/key"));
  EXPECT_TRUE(heard(kFactoryKey));
  told.clear();
  store().set("db/key", 6);
  hearAll();
  EXPECT_EQ(told, (Keys{"db/key", "db/the/last/key"}));
}

// Touches a page of the store's map that is gone.
void readWhatIsCutShort(const std::filesystem::path& data) {
  store().set("db/key", std::string(kMebibyte, 'x'));
  store().read("db/key", [&](const platform::host::StoreView& value) {
    const auto text = std::get<std::string_view>(value);
    std::filesystem::resize_file(data, 0);
    const volatile char last = text.back();
    static_cast<void>(last);
  });
}

TEST_F(TouchedFiles, ADataFileCutShortUnderAReaderEndsTheProgramWithAMessage) {
  EXPECT_EXIT(readWhatIsCutShort(data()), testing::ExitedWithCode(1),
              "ventaro: .*/state/data.mdb was cut short while it was in use, or is damaged; the "
              "program ends");
}

// Touches a page that is gone of a map that is not the store's.
void touchMapOfTheProgram(const std::filesystem::path& file) {
  store().set("db/key", 1);
  std::FILE* const opened = std::fopen(file.c_str(), "r+");
  void* const map = mmap(nullptr, 1, PROT_READ, MAP_SHARED, fileno(opened), 0);
  if (truncate(file.c_str(), 0) != 0) std::exit(3);
  const volatile char first = *static_cast<const volatile char*>(map);
  static_cast<void>(first);
}

TEST_F(TouchedFiles, AMapOfTheProgramsOwnIsLeftToItsHandler) {
  const std::string file = write("own", "text");
  const auto useHandlerAndTouch = [&] {
    std::signal(SIGBUS, [](int) { _exit(7); });
    touchMapOfTheProgram(file);
  };
  EXPECT_EXIT(useHandlerAndTouch(), testing::ExitedWithCode(7), "");
}

TEST_F(TouchedFiles, AMapOfTheProgramsOwnWithoutAHandlerEndsItAsAlways) {
  const std::string file = write("own", "text");
  const auto touchWithoutHandler = [&] {
    std::signal(SIGBUS, SIG_DFL);
    touchMapOfTheProgram(file);
  };
  EXPECT_EXIT(touchWithoutHandler(), testing::KilledBySignal(SIGBUS), "");
}

TEST_F(TouchedFiles, ASignalThatSomebodySendsEndsTheProgramAsAlways) {
  const auto sendToItself = [] {
    std::signal(SIGBUS, SIG_DFL);
    store().set("db/key", 1);
    kill(getpid(), SIGBUS);
  };
  EXPECT_EXIT(sendToItself(), testing::KilledBySignal(SIGBUS), "");
}

}  // namespace
}  // namespace platform_tests
