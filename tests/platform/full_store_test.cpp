// A full store or a full disk: stored values stay intact.
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>
#include <map>
#include <string>

#include "platform/config_store.h"
#include "platform_test.h"
#include "process.h"

namespace platform_tests {
namespace {

using Values = std::map<std::string, StoreValue>;

constexpr std::size_t kMebibyte = std::size_t{1} << 20;

class AFullStore : public PlatformTest {
 protected:
  static constexpr int kNoSpace = codeOf(StoreCode::kNoSpace);

  // Sets values of that size until one does not fit; returns the number that did, or -1 after
  // another error.
  static int fill(const std::string& prefix, std::size_t size) {
    for (int number = 0; number < 100'000; ++number) {
      const int result = vconf_set_str((prefix + std::to_string(number)).c_str(),
                                       std::string(size, letter(number)).c_str());
      if (result == kNoSpace) return number;
      EXPECT_EQ(result, 0);
      if (result != 0) return -1;
    }
    return -1;
  }

  static void expectAllReadable(const std::string& prefix, int count, std::size_t size) {
    for (int number = 0; number < count; ++number) {
      const auto value = store().get(prefix + std::to_string(number));
      ASSERT_TRUE(value == StoreValue(std::string(size, letter(number)))) << number;
    }
    EXPECT_EQ(store().list(prefix).size(), static_cast<std::size_t>(count));
  }

  static char letter(int number) { return static_cast<char>('a' + number % 26); }
};

TEST_F(AFullStore, KeepsWhatItHolds) {
  store().set("db/before", "still here");
  const int count = fill("db/full/", kMebibyte);
  EXPECT_GT(count, 32);
  EXPECT_TRUE(logged("vconf_set_str: \"db/full/" + std::to_string(count) +
                     "\": cannot write: MDB_MAP_FULL: Environment mapsize limit reached"));
  EXPECT_EQ(vconf_set_str("db/before", std::string(kMebibyte, 'x').c_str()), kNoSpace);
  expectAllReadable("db/full/", count, kMebibyte);
  EXPECT_EQ(store().get("db/before"), StoreValue("still here"));
}

TEST_F(AFullStore, IsAsFullForTheNextProcessAndTheOtherAreaIsNot) {
  int count = 0;
  Process filler(
      [](Channel& test) { test.sendLine(std::to_string(fill("memory/full/", kMebibyte))); });
  count = std::stoi(filler.channel().receiveLine().value_or("-1"));
  filler.join();
  ASSERT_GT(count, 32);
  expectAllReadable("memory/full/", count, kMebibyte);
  EXPECT_EQ(vconf_set_str("memory/full/more", std::string(kMebibyte, 'x').c_str()), kNoSpace);
  EXPECT_EQ(vconf_set_str("db/more", std::string(kMebibyte, 'x').c_str()), 0);
}

class AFullStoreOfValues : public AFullStore, public testing::WithParamInterface<std::size_t> {};

INSTANTIATE_TEST_SUITE_P(OfBytes, AFullStoreOfValues, testing::Values(1000, 5000, 1'000'000),
                         testing::PrintToStringParamName());

// Many at once, because single sets would take minutes; then fewer and fewer, down to one.
void fillUp(std::size_t size) {
  int number = 0;
  for (std::size_t count = 1 + 200'000 / size; count > 0; count /= 2) {
    do {
      Values values;
      for (std::size_t i = 0; i < count; ++i) {
        values["memory/full/" + std::to_string(++number)] = std::string(size, 'x');
      }
      if (codeRaisedBy([&] { store().set(values); }) != StoreCode::kOk) break;
    } while (true);
  }
}

StoreCode setOneMore(std::size_t size) {
  return codeRaisedBy([&] { store().set("memory/full/more", std::string(size, 'x')); });
}

TEST_P(AFullStoreOfValues, GivesThemUpOneByOneUntilThereIsRoom) {
  fillUp(GetParam());
  ASSERT_EQ(setOneMore(GetParam()), StoreCode::kNoSpace);
  for (const auto& entry : store().list("memory/full/")) {
    ASSERT_EQ(errorRaisedBy([&] { store().unset(entry.first); }), "") << entry.first;
    if (setOneMore(GetParam()) == StoreCode::kOk) return;
  }
  FAIL() << "there is no room though all is gone";
}

TEST_P(AFullStoreOfValues, TakesAShorterOneInThePlaceOfEach) {
  fillUp(GetParam());
  ASSERT_EQ(setOneMore(GetParam()), StoreCode::kNoSpace);
  for (const auto& entry : store().list("memory/full/")) {
    ASSERT_EQ(errorRaisedBy([&] { store().set(entry.first, "short"); }), "") << entry.first;
    if (setOneMore(GetParam()) == StoreCode::kOk) return;
  }
  FAIL() << "there is no room though all is short";
}

TEST_P(AFullStoreOfValues, CanBeReset) {
  fillUp(GetParam());
  store().reset();
  EXPECT_EQ(store().list("memory/full/"), Values());
  EXPECT_EQ(setOneMore(GetParam()), StoreCode::kOk);
}

// A disk on which no file can become larger than that.
void limitFileSize(std::size_t bytes) {
  std::signal(SIGXFSZ, SIG_IGN);
  const rlimit limit{bytes, bytes};
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
}

class AFullDisk : public AFullStore, public testing::WithParamInterface<std::size_t> {};

INSTANTIATE_TEST_SUITE_P(ForValuesOfBytes, AFullDisk,
                         testing::Values(1, 1000, 5000, 100'000, 1'000'000),
                         testing::PrintToStringParamName());

TEST_P(AFullDisk, IsAnErrorAndKeepsWhatTheStoreHolds) {
  const std::size_t size = GetParam();
  inOwnProcess([] { store().set({{"db/before", 5}, {"memory/before", "five"}}); });
  // At several positions within a block and a page.
  for (const std::size_t odd : {0U, 1U, 2048U, 4096U, 6000U}) {
    const std::string prefix = "db/full" + std::to_string(odd) + "/";
    const auto before =
        static_cast<std::size_t>(std::filesystem::file_size(stateFolder() / "data.mdb"));
    Process filler([&](Channel& test) {
      limitFileSize(before + (size < kMebibyte / 2 ? 20'000 : 3 * kMebibyte) + odd);
      const int count = fill(prefix, size);
      EXPECT_GE(count, 0);
      expectAllReadable(prefix, count, size);
      EXPECT_EQ(store().get("db/before"), StoreValue(5));
      test.sendLine(std::to_string(count));
    });
    const int count = std::stoi(filler.channel().receiveLine().value_or("-1"));
    filler.join();
    inOwnProcess([&] {
      expectAllReadable(prefix, count, size);
      EXPECT_EQ(store().get("db/before"), StoreValue(5));
      EXPECT_EQ(vconf_set_str((prefix + "more").c_str(), std::string(size, 'x').c_str()), 0);
    });
  }
}

// Writing to a mapped hole of a file kills the process when the disk is full.
TEST_F(AFullStore, HasALockFileWithoutHoles) {
  store().set("db/key", 1);
  struct stat info {};
  ASSERT_EQ(stat((stateFolder() / "lock.mdb").c_str(), &info), 0);
  EXPECT_GE(info.st_blocks * 512, info.st_size);
}

TEST_F(AFullStore, OnADiskWithoutRoomForItsFilesIsAnError) {
  Process([&](Channel& /*test*/) {
    limitFileSize(0);
    EXPECT_EQ(vconf_set_int("db/key", 1), kNoSpace);
    int read = 7;
    EXPECT_EQ(vconf_get_int("db/key", &read), kNoSpace);
    EXPECT_EQ(read, 7);
  }).join();
  EXPECT_EQ(vconf_set_int("db/key", 1), 0) << "it is well when there is room again";
}

}  // namespace
}  // namespace platform_tests
