// What the configuration store refuses, and its messages. Stored values stay intact.
#include <lmdb.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/config_store.h"
#include "platform/structured_log.h"
#include "platform/system_info.h"
#include "platform_test.h"
#include "process.h"

namespace platform_tests {
namespace {

using platform::host::kMaxValueSize;

using Values = std::map<std::string, StoreValue>;
using OwnedText = std::unique_ptr<char, decltype(&std::free)>;

constexpr std::size_t kMebibyte = std::size_t{1} << 20;

OwnedText textAt(const char* key) {
  return {vconf_get_str(key), &std::free};
}

void ignore(keynode_t* /*node*/, void* /*data*/) {}

class StoreRefuses : public PlatformTest {
 protected:
  static constexpr int kNull = codeOf(StoreCode::kNullArgument);
};

TEST_F(StoreRefuses, NullPointers) {
  int read = 7;
  EXPECT_EQ(vconf_get_int(nullptr, &read), kNull);
  EXPECT_TRUE(logged("system CONFIG_STORE: vconf_get_int: the key is null"));
  EXPECT_EQ(vconf_get_int("db/host/wake_on_mobile", nullptr), kNull);
  EXPECT_TRUE(logged("vconf_get_int: the output is null"));
  EXPECT_EQ(vconf_set_int(nullptr, 1), kNull);
  EXPECT_TRUE(logged("vconf_set_int: the key is null"));
  EXPECT_EQ(textAt(nullptr), nullptr);
  EXPECT_TRUE(logged("vconf_get_str: the key is null"));
  EXPECT_EQ(vconf_set_str(nullptr, "text"), kNull);
  EXPECT_TRUE(logged("vconf_set_str: the key is null"));
  EXPECT_EQ(vconf_set_str("db/text", nullptr), kNull);
  EXPECT_TRUE(logged("vconf_set_str: the value is null"));
  EXPECT_EQ(vconf_get_bool(nullptr, &read), kNull);
  EXPECT_TRUE(logged("vconf_get_bool: the key is null"));
  EXPECT_EQ(vconf_get_bool("db/host/wake_on_mobile", nullptr), kNull);
  EXPECT_TRUE(logged("vconf_get_bool: the output is null"));
  EXPECT_EQ(vconf_notify_key_changed(nullptr, ignore, nullptr), kNull);
  EXPECT_TRUE(logged("vconf_notify_key_changed: the key is null"));
  EXPECT_EQ(vconf_notify_key_changed("db/text", nullptr, nullptr), kNull);
  EXPECT_TRUE(logged("vconf_notify_key_changed: the callback is null"));
  EXPECT_EQ(read, 7);
  EXPECT_EQ(store().get("db/text"), std::nullopt);
}

struct BadKey {
  const char* name;
  std::string key;
  const char* reason;
};

void PrintTo(const BadKey& bad, std::ostream* out) {
  *out << bad.name;
}

constexpr char kNoArea[] = "it begins neither with \"db/\" nor with \"memory/\"";
constexpr char kNoName[] = "it ends where its name should begin";
constexpr char kTooLong[] = "it is longer than 511 bytes";

class StoreRefusesKey : public PlatformTest, public testing::WithParamInterface<BadKey> {};

INSTANTIATE_TEST_SUITE_P(
    That, StoreRefusesKey,
    testing::Values(BadKey{"IsEmpty", "", "it is empty"},
                    BadKey{"IsTheAreaDbAlone", "db/", kNoName},
                    BadKey{"IsTheAreaMemoryAlone", "memory/", kNoName},
                    BadKey{"HasNoSlash", "db", kNoArea}, BadKey{"IsOfNoArea", "file/key", kNoArea},
                    BadKey{"BeginsWithASlash", "/db/key", kNoArea},
                    BadKey{"BeginsInCapitals", "DB/key", kNoArea},
                    BadKey{"HasADbKeyOf512Bytes", "db/" + std::string(509, 'k'), kTooLong},
                    BadKey{"HasAMemoryKeyOf512Bytes", "memory/" + std::string(505, 'k'), kTooLong},
                    BadKey{"HasAMebibyte", std::string(kMebibyte, 'k'), kTooLong}),
    [](const auto& bad) { return bad.param.name; });

TEST_P(StoreRefusesKey, InEveryFunctionAndSaysWhy) {
  const char* key = GetParam().key.c_str();
  const std::string ending = ": bad key \"" + GetParam().key + "\": " + GetParam().reason;
  const int bad = codeOf(StoreCode::kBadKey);
  const Values before = store().list("");
  int read = 7;
  EXPECT_EQ(vconf_get_int(key, &read), bad);
  EXPECT_TRUE(logged("vconf_get_int" + ending));
  EXPECT_EQ(vconf_set_int(key, 1), bad);
  EXPECT_TRUE(logged("vconf_set_int" + ending));
  EXPECT_EQ(textAt(key), nullptr);
  EXPECT_TRUE(logged("vconf_get_str" + ending));
  EXPECT_EQ(vconf_set_str(key, "text"), bad);
  EXPECT_TRUE(logged("vconf_set_str" + ending));
  EXPECT_EQ(vconf_get_bool(key, &read), bad);
  EXPECT_TRUE(logged("vconf_get_bool" + ending));
  EXPECT_EQ(vconf_notify_key_changed(key, ignore, nullptr), bad);
  EXPECT_TRUE(logged("vconf_notify_key_changed" + ending));
  EXPECT_EQ(read, 7);
  EXPECT_EQ(store().list(""), before);
}

TEST_F(StoreRefuses, NoKeyOfUpTo511Bytes) {
  for (const std::string& key : {"db/" + std::string(508, 'k'), "memory/" + std::string(504, 'k'),
                                 std::string("db/k"), std::string("memory/k")}) {
    EXPECT_EQ(vconf_set_int(key.c_str(), 5), 0);
    int read = 0;
    EXPECT_EQ(vconf_get_int(key.c_str(), &read), 0);
    EXPECT_EQ(read, 5);
    EXPECT_EQ(vconf_notify_key_changed(key.c_str(), ignore, nullptr), 0);
  }
}

TEST_F(StoreRefuses, NoValueOfUpTo4Mebibytes) {
  for (const std::size_t size : {kMebibyte, kMaxValueSize}) {
    const std::string value(size, 'v');
    EXPECT_EQ(vconf_set_str("db/long", value.c_str()), 0);
    const OwnedText read = textAt("db/long");
    ASSERT_NE(read, nullptr);
    EXPECT_TRUE(value == read.get());
  }
}

TEST_F(StoreRefuses, ALongerValueAndKeepsTheOld) {
  ASSERT_EQ(vconf_set_str("db/long", "old"), 0);
  for (const std::size_t size : {kMaxValueSize + 1, 100 * kMebibyte}) {
    EXPECT_EQ(vconf_set_str("db/long", std::string(size, 'v').c_str()),
              codeOf(StoreCode::kValueTooLong));
    EXPECT_TRUE(logged("vconf_set_str: the value for \"db/long\" has " + std::to_string(size) +
                       " bytes, more than 4194304"));
    EXPECT_STREQ(textAt("db/long").get(), "old");
  }
}

// A folder that the test's processes can read but not write.
class AReadOnlyStore : public PlatformTest {
 protected:
  void hold(const Values& values) const {
    inOwnProcess([&] {
      store().list("");  // makes both areas
      store().set(values);
    });
    makeReadOnly(stateFolder());
    makeReadOnly(runtimeFolder());
  }

  static void makeReadOnly(const std::filesystem::path& path) {
    using std::filesystem::perms;
    if (std::filesystem::is_directory(path)) {
      for (const auto& entry : std::filesystem::directory_iterator(path))
        makeReadOnly(entry.path());
      std::filesystem::permissions(path, perms(0555));
    } else {
      std::filesystem::permissions(path, perms(0444));
    }
  }

  ~AReadOnlyStore() override {
    for (const auto& path : {stateFolder(), runtimeFolder()}) {
      if (std::filesystem::exists(path)) {
        std::filesystem::permissions(path, std::filesystem::perms(0755));
      }
    }
  }
};

TEST_F(AReadOnlyStore, GivesItsValuesAndTakesNone) {
  hold({{"db/kept", 5}, {"db/text", "five"}, {"memory/kept", true}});
  inOwnProcess([] {
    becomeOrdinaryUser();
    const int readOnly = codeOf(StoreCode::kReadOnly);
    EXPECT_EQ(vconf_set_int("db/kept", 6), readOnly);
    EXPECT_EQ(vconf_set_str("db/new", "value"), readOnly);
    EXPECT_EQ(vconf_set_int("memory/kept", 6), readOnly);
    int read = 0;
    EXPECT_EQ(vconf_get_int("db/kept", &read), 0);
    EXPECT_EQ(read, 5);
    EXPECT_STREQ(textAt("db/text").get(), "five");
    EXPECT_EQ(vconf_get_bool("memory/kept", &read), 0);
    EXPECT_EQ(read, 1);
    EXPECT_EQ(vconf_get_int("db/new", &read), codeOf(StoreCode::kNoSuchKey));
    EXPECT_EQ(store().list("db/k").size(), 1U);
  });
  EXPECT_EQ(store().get("db/kept"), StoreValue(5));
  EXPECT_EQ(store().get("db/new"), std::nullopt);
}

TEST_F(AReadOnlyStore, SaysSoInTheLog) {
  hold({{"db/kept", 5}});
  setenv("VENTARO_LOG", "stderr", 1);
  inOwnProcess([] {
    becomeOrdinaryUser();
    testing::internal::CaptureStderr();
    vconf_set_int("db/kept", 6);
    const std::string line = testing::internal::GetCapturedStderr();
    EXPECT_NE(line.find("system CONFIG_STORE: vconf_set_int: \"db/kept\": the folder cannot be "
                        "written: /"),
              std::string::npos)
        << line;
  });
}

TEST_F(AReadOnlyStore, TellsItsSubscribersNothing) {
  hold({{"db/kept", 5}});
  inOwnProcess([] {
    becomeOrdinaryUser();
    const auto subscription = store().subscribe(
        "db/", [](const std::string& key) { ADD_FAILURE() << "told of " << key; });
    EXPECT_EQ(vconf_set_int("db/kept", 6), codeOf(StoreCode::kReadOnly));
  });
}

TEST_F(AReadOnlyStore, ThatOthersMayWriteIsRefused) {
  hold({{"db/kept", 5}});
  std::filesystem::permissions(stateFolder() / "data.mdb", std::filesystem::perms(0644));
  setenv("VENTARO_LOG", "stderr", 1);
  inOwnProcess([this] {
    becomeOrdinaryUser();
    testing::internal::CaptureStderr();
    int read = 7;
    EXPECT_EQ(vconf_get_int("db/kept", &read), codeOf(StoreCode::kReadOnly));
    EXPECT_EQ(read, 7);
    const std::string line = testing::internal::GetCapturedStderr();
    EXPECT_NE(line.find("vconf_get_int: the store in " + stateFolder().string() + ": " +
                        (stateFolder() / "data.mdb").string() +
                        " may be written by others and not by this user, who can therefore not "
                        "read it either; VENTARO_STATE_DIR and VENTARO_RUNTIME_DIR name other "
                        "folders"),
              std::string::npos)
        << line;
  });
}

TEST_F(AReadOnlyStore, ThatNobodyEverWroteIsEmptyAndNoTvs) {
  std::filesystem::create_directories(stateFolder());
  makeReadOnly(stateFolder());
  inOwnProcess([this] {
    becomeOrdinaryUser();
    int read = 7;
    EXPECT_EQ(vconf_set_int("db/key", 6), codeOf(StoreCode::kReadOnly));
    EXPECT_EQ(vconf_get_int("db/key", &read), codeOf(StoreCode::kNoSuchKey));
    EXPECT_EQ(read, 7);
    EXPECT_EQ(store().list("db/"), Values());
    EXPECT_EQ(errorRaisedBy([] { store().open(); }),
              "the store in " + stateFolder().string() +
                  ": the folder cannot be written: " + stateFolder().string());
  });
}

TEST_F(AReadOnlyStore, ThatSomebodyWroteIsOpened) {
  hold({});
  inOwnProcess([] {
    becomeOrdinaryUser();
    EXPECT_EQ(errorRaisedBy([] { store().open(); }), "");
  });
}

TEST_F(AReadOnlyStore, WhoseFolderCannotBeMadeIsAnError) {
  std::filesystem::create_directories(stateFolder());
  makeReadOnly(stateFolder());
  inOwnProcess([this] {
    becomeOrdinaryUser();
    setenv("VENTARO_STATE_DIR", (stateFolder() / "below").c_str(), 1);
    int read = 7;
    EXPECT_EQ(vconf_set_int("db/key", 6), codeOf(StoreCode::kReadOnly));
    EXPECT_NE(vconf_get_int("db/key", &read), 0);
    EXPECT_EQ(textAt("db/key"), nullptr);
    EXPECT_EQ(read, 7);
  });
}

class AStoreFolder : public PlatformTest {
 protected:
  static constexpr int kUnavailable = codeOf(StoreCode::kUnavailable);
};

TEST_F(AStoreFolder, ThatIsAFileIsRefusedByName) {
  const std::string file = write("file", "");
  setenv("VENTARO_RUNTIME_DIR", file.c_str(), 1);
  EXPECT_EQ(vconf_set_int("memory/key", 1), kUnavailable);
  EXPECT_TRUE(logged("vconf_set_int: \"memory/key\": the store in " + file +
                     ": cannot make the folder: Not a directory"));
  EXPECT_EQ(vconf_set_int("db/key", 1), 0) << "the other area is well";
}

TEST_F(AStoreFolder, WithADamagedFileIsRefusedAndLeftAsItIs) {
  const std::string garbage(std::size_t{64} << 10, 'x');
  const std::string file = write("state/data.mdb", garbage);
  EXPECT_EQ(vconf_set_int("db/key", 1), kUnavailable);
  int read = 7;
  EXPECT_EQ(vconf_get_int("db/key", &read), kUnavailable);
  EXPECT_EQ(read, 7);
  EXPECT_TRUE(logged("vconf_get_int: the store in " + stateFolder().string() +
                     ": cannot open: MDB_INVALID: File is not an LMDB file; data.mdb is damaged; "
                     "move it away, and the store starts with its defaults"));
  EXPECT_EQ(vconf_set_int("memory/key", 1), 0) << "the other area is well";
  EXPECT_TRUE(readFile(file) == garbage);
}

TEST_F(AStoreFolder, WithAFileThatIsCutShortIsRefusedAndLeftAsItIs) {
  inOwnProcess([] {
    store().set("db/before", 5);
    store().set("db/long", std::string(kMebibyte, 'x'));
  });
  const std::filesystem::path file = stateFolder() / "data.mdb";
  const auto whole = static_cast<std::size_t>(std::filesystem::file_size(file));
  const std::string bytes = readFile(file);
  for (const std::size_t size : {whole - 1, whole / 2, std::size_t{8192}}) {
    std::filesystem::resize_file(file, size);
    inOwnProcess([&] {
      int read = 7;
      EXPECT_EQ(vconf_get_int("db/before", &read), kUnavailable);
      EXPECT_EQ(read, 7);
      EXPECT_EQ(vconf_set_int("db/before", 1), kUnavailable);
      EXPECT_TRUE(logged("vconf_get_int: the store in " + stateFolder().string() +
                         ": data.mdb is cut short: " + std::to_string(size) + " of " +
                         std::to_string(whole) +
                         " bytes; move it away, and the store starts with "
                         "its defaults"));
    });
    EXPECT_TRUE(readFile(file) == bytes.substr(0, size));
  }
  std::filesystem::remove(file);
  EXPECT_EQ(vconf_set_int("db/before", 1), 0) << "moved away, as the message says";
}

// What a power cut or a full disk during the very first opening leaves.
TEST_F(AStoreFolder, WithAPartOfAHeaderOrZerosInItsPlaceWasNeverAStore) {
  inOwnProcess([] { store().set("db/before", 5); });
  const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  const std::string header = readFile(stateFolder() / "data.mdb").substr(0, 2 * page);
  const std::string zeros(page, '\0');
  const std::string twoZeros(2 * page, '\0');
  const std::string threeZeros(3 * page, '\0');
  for (const std::string& bytes :
       {header.substr(0, page), header.substr(0, 100), header.substr(0, 2 * page - 1), zeros,
        twoZeros, threeZeros, header.substr(0, page) + zeros, zeros + header.substr(page)}) {
    write("state/data.mdb", bytes);
    inOwnProcess([] {
      EXPECT_EQ(errorRaisedBy([] { store().open(); }), "");
      EXPECT_EQ(store().get("db/before"), std::nullopt);
      EXPECT_EQ(vconf_set_int("db/after", 1), 0);
    });
  }
  write("state/data.mdb", header.substr(0, page));
  std::filesystem::permissions(stateFolder() / "data.mdb", std::filesystem::perms(0444));
  std::filesystem::permissions(stateFolder(), std::filesystem::perms(0555));
  inOwnProcess([] {
    becomeOrdinaryUser();
    EXPECT_EQ(store().get("db/before"), std::nullopt) << "as an empty one that may only be read";
  });
  std::filesystem::permissions(stateFolder(), std::filesystem::perms(0755));
}

// A process that was killed, or found the disk full, between a commit and the filling up of the
// file leaves it without its last pages, which hold nothing.
TEST_F(AStoreFolder, WithAFileThatLacksOnlyFreePagesIsFilledUp) {
  inOwnProcess([] {
    store().set("db/kept", "kept");
    store().set("db/long", std::string(100'000, 'x'));
    store().unset("db/long");
  });
  const std::filesystem::path file = stateFolder() / "data.mdb";
  const auto whole = std::filesystem::file_size(file);
  const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  for (const std::size_t lost : {std::size_t{1}, page, 3 * page}) {
    std::filesystem::resize_file(file, whole - lost);
    inOwnProcess([] { EXPECT_EQ(store().get("db/kept"), StoreValue("kept")); });
    EXPECT_EQ(std::filesystem::file_size(file), whole);
  }
}

// A memory/ value is not synced, so after a power cut its file may hold anything.
TEST_F(AStoreFolder, OfMemoryFromAnEarlierBootIsDropped) {
  inOwnProcess([] { store().set({{"memory/key", 1}, {"db/key", 1}}); });
  inOwnProcess([] { EXPECT_EQ(store().get("memory/key"), StoreValue(1)) << "of this boot"; });
  write("runtime/boot_id", "of an earlier boot\n");
  write("runtime/data.mdb", std::string(std::size_t{64} << 10, 'x'));
  inOwnProcess([] {
    EXPECT_EQ(errorRaisedBy([] { store().open(); }), "");
    EXPECT_EQ(store().get("memory/key"), std::nullopt);
    EXPECT_EQ(store().get("db/key"), StoreValue(1));
    store().set("memory/key", 2);
  });
  EXPECT_EQ(store().get("memory/key"), StoreValue(2));
}

class AStoreFile : public AStoreFolder, public testing::WithParamInterface<const char*> {};

INSTANTIATE_TEST_SUITE_P(
    Named, AStoreFile, testing::Values("data.mdb", "lock.mdb", "writer", "changed"),
    [](const auto& file) {
      return std::string(file.param).substr(0, std::string(file.param).find('.'));
    });

TEST_P(AStoreFile, ThatIsALinkAPipeOrAFolderIsRefusedByName) {
  std::filesystem::create_directories(stateFolder());
  const auto file = stateFolder() / GetParam();
  const std::string target = write("target", "left as it is");
  const auto expectRefused = [&](const std::string& reason) {
    inOwnProcess([&] {
      const std::string error = errorRaisedBy(
          [] { const auto subscription = store().subscribe("db/", [](const std::string&) {}); });
      EXPECT_TRUE(error.ends_with(file.string() + reason + "; move it away")) << error;
    });
    std::filesystem::remove(file);
  };
  std::filesystem::create_symlink(target, file);
  expectRefused(" is a link");
  ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
  expectRefused(" is not a file");
  std::filesystem::create_directory(file);
  expectRefused(" is not a file");
  EXPECT_EQ(readFile(target), "left as it is");
}

TEST_F(AStoreFolder, CannotServeBothAreas) {
  setenv("VENTARO_RUNTIME_DIR", (stateFolder() / "../state").c_str(), 1);
  EXPECT_EQ(vconf_set_int("memory/key", 1), 0);
  EXPECT_EQ(vconf_set_int("db/key", 1), kUnavailable);
  EXPECT_TRUE(
      logged("vconf_set_int: \"db/key\": VENTARO_STATE_DIR and VENTARO_RUNTIME_DIR are both " +
             stateFolder().string() + "; they must be two folders"));
}

TEST_F(AStoreFolder, ThatIsALinkToItselfIsAnErrorOfThatAreaAlone) {
  std::filesystem::create_symlink("runtime", runtimeFolder());
  int read = 7;
  EXPECT_EQ(vconf_get_int("memory/key", &read), kUnavailable);
  EXPECT_EQ(vconf_set_int("db/key", 1), 0);
  bool flag = true;
  EXPECT_EQ(system_info_get_custom_bool("com.norvane/featureconf/orlex_version", &flag),
            kUnavailable);
  ht::TSLoggerHelper::Log({"src/Here.cpp", 1, "void here()"}, "is not kept");
  EXPECT_EQ(read, 7);
  EXPECT_TRUE(flag);
}

TEST_F(AStoreFolder, IsTriedAgainWhenItCouldNotBeOpened) {
  const std::string file = write("runtime", "in the way");
  EXPECT_EQ(vconf_set_int("memory/key", 1), kUnavailable);
  std::filesystem::remove(file);
  EXPECT_EQ(vconf_set_int("memory/key", 1), 0);
  EXPECT_EQ(store().get("memory/key"), StoreValue(1));
}

}  // namespace
}  // namespace platform_tests
