// Where the host platform keeps its files.
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "platform/config_store.h"
#include "platform_test.h"
#include "process.h"

namespace platform_tests {
namespace {

using std::filesystem::exists;

class Folders : public PlatformTest {
 protected:
  void SetUp() override {
    unsetenv("VENTARO_STATE_DIR");
    unsetenv("VENTARO_RUNTIME_DIR");
    setenv("HOME", (folder() / "home").c_str(), 1);
    // For the values that a test ignores.
    setenv("XDG_RUNTIME_DIR", (folder() / "xdg-runtime").c_str(), 1);
  }

  static bool holdsAStore(const std::filesystem::path& path) { return exists(path / "data.mdb"); }
};

TEST_F(Folders, OfTheStateIsTheOneNamedBeforeAllOthers) {
  setenv("VENTARO_STATE_DIR", (folder() / "named/deep").c_str(), 1);
  setenv("XDG_STATE_HOME", (folder() / "xdg").c_str(), 1);
  EXPECT_EQ(vconf_set_int("db/key", 1), 0);
  EXPECT_TRUE(holdsAStore(folder() / "named/deep"));
  EXPECT_FALSE(exists(folder() / "xdg"));
  EXPECT_FALSE(exists(folder() / "home"));
}

TEST_F(Folders, OfTheStateIsBelowTheUsersStateHome) {
  setenv("VENTARO_STATE_DIR", "", 1);  // empty is not set
  setenv("XDG_STATE_HOME", (folder() / "xdg").c_str(), 1);
  EXPECT_EQ(vconf_set_int("db/key", 1), 0);
  EXPECT_TRUE(holdsAStore(folder() / "xdg/ventaro"));
  EXPECT_FALSE(exists(folder() / "home"));
}

TEST_F(Folders, OfTheStateIsBelowTheHomeOtherwise) {
  setenv("XDG_STATE_HOME", "", 1);
  EXPECT_EQ(vconf_set_int("db/key", 1), 0);
  EXPECT_TRUE(holdsAStore(folder() / "home/.local/state/ventaro"));
}

TEST_F(Folders, OfTheLogIsInThatOfTheState) {
  EXPECT_NE(vconf_set_int("", 1), 0);
  EXPECT_TRUE(exists(folder() / "home/.local/state/ventaro/log/platform.log"));
}

TEST_F(Folders, OfTheRuntimeIsTheOneNamedBeforeAllOthers) {
  setenv("VENTARO_RUNTIME_DIR", (folder() / "named").c_str(), 1);
  EXPECT_EQ(vconf_set_int("memory/key", 1), 0);
  EXPECT_TRUE(holdsAStore(folder() / "named"));
  EXPECT_FALSE(exists(folder() / "xdg-runtime"));
}

TEST_F(Folders, OfTheRuntimeIsBelowTheUsersRuntimeFolder) {
  setenv("VENTARO_RUNTIME_DIR", "", 1);
  EXPECT_EQ(vconf_set_int("memory/key", 1), 0);
  EXPECT_TRUE(holdsAStore(folder() / "xdg-runtime/ventaro"));
}

TEST_F(Folders, KeepTheirFilesFromOtherUsers) {
  store().set({{"db/key", 1}, {"memory/key", 1}});
  for (const auto& path :
       {folder() / "home/.local/state/ventaro", folder() / "xdg-runtime/ventaro"}) {
    for (const char* file : {"data.mdb", "lock.mdb", "changed"}) {
      struct stat info {};
      ASSERT_EQ(stat((path / file).c_str(), &info), 0) << file;
      EXPECT_EQ(info.st_mode & 0777U, 0600U) << file;
    }
  }
}

TEST_F(Folders, AreForTheUserAloneWhateverTheUmask) {
  inOwnProcess([this] {
    umask(0);
    store().set({{"db/key", 1}, {"memory/key", 1}});
    EXPECT_NE(vconf_set_int("", 1), 0);  // logs
    const auto state = folder() / "home/.local/state/ventaro";
    const auto modeOf = [](const std::filesystem::path& path) {
      return static_cast<unsigned>(std::filesystem::status(path).permissions());
    };
    EXPECT_EQ(modeOf(folder() / "home"), 0700U);
    EXPECT_EQ(modeOf(state.parent_path()), 0700U);
    EXPECT_EQ(modeOf(state), 0700U);
    EXPECT_EQ(modeOf(state / "log"), 0700U);
    EXPECT_EQ(modeOf(folder() / "xdg-runtime/ventaro"), 0700U);
    EXPECT_EQ(modeOf(state / "log/platform.log"), 0600U);
    for (const char* file : {"data.mdb", "lock.mdb", "changed", "writer"}) {
      EXPECT_EQ(modeOf(state / file), 0600U) << file;
    }
  });
}

TEST_F(Folders, TakeFromOthersWhatTheyMayWrite) {
  inOwnProcess([] { store().set("db/key", 1); });
  const auto data = folder() / "home/.local/state/ventaro/data.mdb";
  std::filesystem::permissions(data, std::filesystem::perms(0666));
  EXPECT_EQ(store().get("db/key"), StoreValue(1));
  EXPECT_EQ(std::filesystem::status(data).permissions(), std::filesystem::perms(0600));
}

TEST_F(Folders, WithAFileOfAnotherUserAreRefusedByName) {
  if (geteuid() != 0) GTEST_SKIP() << "needs the super-user, to make another user's file";
  inOwnProcess([] { store().set("db/key", 1); });
  const auto data = folder() / "home/.local/state/ventaro/data.mdb";
  ASSERT_EQ(chown(data.c_str(), 65534, 65534), 0);
  const std::string error = errorRaisedBy([] { store().get("db/key"); });
  EXPECT_TRUE(error.ends_with(data.string() + " belongs to another user; move it away")) << error;
}

TEST_F(Folders, ThatOthersMayWriteAreRefusedByName) {
  const auto state = folder() / "state";
  std::filesystem::create_directory(state);
  std::filesystem::permissions(state, std::filesystem::perms(0770));
  setenv("VENTARO_STATE_DIR", state.c_str(), 1);
  EXPECT_EQ(errorRaisedBy([] { store().set("db/key", 1); }),
            "\"db/key\": the store in " + state.string() + ": " + state.string() +
                " may be written by other users; take that from them (chmod go-w), or name another "
                "folder");
}

TEST_F(Folders, OfAnotherUserAreRefusedByNameToTheSuperUserToo) {
  if (geteuid() != 0) GTEST_SKIP() << "needs the super-user, to make another user's folder";
  const auto home = folder() / "home";
  std::filesystem::create_directory(home);
  ASSERT_EQ(chown(home.c_str(), 65534, 65534), 0);
  EXPECT_EQ(errorRaisedBy([] { store().set("db/key", 1); }),
            "\"db/key\": the store in " + (home / ".local/state/ventaro").string() + ": " +
                home.string() + " belongs to another user (65534); name another folder");
  EXPECT_FALSE(exists(home / ".local"));
}

// The user's folder under /tmp. The test switches to an unused user ID, so it needs root rights.
class TemporaryFolder : public Folders {
 protected:
  void SetUp() override {
    if (geteuid() != 0) GTEST_SKIP() << "needs the super-user, to become a user without a folder";
    Folders::SetUp();
    unsetenv("XDG_RUNTIME_DIR");
    // The state, with the log in it, is the new user's too.
    setenv("VENTARO_STATE_DIR", stateFolder().c_str(), 1);
    std::filesystem::create_directory(stateFolder());
    ASSERT_EQ(chown(stateFolder().c_str(), user_, user_), 0);
    ASSERT_FALSE(exists(temporary_)) << "in the way";
  }

  ~TemporaryFolder() override {
    if (geteuid() == 0) std::filesystem::remove_all(temporary_);
  }

  void makeTemporary(mode_t mode, uid_t owner) const {
    ASSERT_EQ(mkdir(temporary_.c_str(), 0700), 0);
    ASSERT_EQ(chmod(temporary_.c_str(), mode), 0);
    ASSERT_EQ(chown(temporary_.c_str(), owner, owner), 0);
  }

  // Sets a value as the new user.
  void expectSet(StoreCode code) const {
    inOwnProcess([&] {
      becomeUser(user_);
      EXPECT_EQ(vconf_set_int("memory/key", 1), codeOf(code));
    });
  }

  testing::AssertionResult refused() const {
    return logged("vconf_set_int: \"memory/key\": " + temporary_.string() +
                  " is not a folder of this user alone (mode 0700); set VENTARO_RUNTIME_DIR to "
                  "another folder");
  }

  const uid_t user_ = 1'000'000 + static_cast<uid_t>(getpid());
  const std::filesystem::path temporary_ = "/tmp/ventaro-" + std::to_string(user_);
};

TEST_F(TemporaryFolder, IsMadeForTheUserAloneWhenNoOtherIsSet) {
  expectSet(StoreCode::kOk);
  EXPECT_TRUE(holdsAStore(temporary_));
  struct stat info {};
  ASSERT_EQ(stat(temporary_.c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 07777U, 0700U);
  EXPECT_EQ(info.st_uid, user_);
}

TEST_F(TemporaryFolder, OfThisUserAloneIsUsed) {
  makeTemporary(0700, user_);
  expectSet(StoreCode::kOk);
  EXPECT_TRUE(holdsAStore(temporary_));
}

TEST_F(TemporaryFolder, ThatOthersCanReadIsRefused) {
  makeTemporary(0750, user_);
  expectSet(StoreCode::kUnavailable);
  EXPECT_TRUE(refused());
  EXPECT_FALSE(holdsAStore(temporary_));
}

TEST_F(TemporaryFolder, ThatIsRefusedCostsTheDbKeysNothing) {
  makeTemporary(0750, user_);
  inOwnProcess([this] {
    becomeUser(user_);
    EXPECT_EQ(vconf_set_int("db/key", 1), 0);
    int read = 0;
    EXPECT_EQ(vconf_get_int("db/key", &read), 0);
    EXPECT_EQ(read, 1);
  });
}

TEST_F(TemporaryFolder, ThatOthersCanWriteIsRefused) {
  makeTemporary(0702, user_);
  expectSet(StoreCode::kUnavailable);
  EXPECT_TRUE(refused());
}

TEST_F(TemporaryFolder, OfAnotherUserIsRefused) {
  makeTemporary(0700, user_ + 1);
  expectSet(StoreCode::kUnavailable);
  EXPECT_TRUE(refused());
}

TEST_F(TemporaryFolder, ThatIsALinkIsRefused) {
  std::filesystem::permissions(stateFolder(), std::filesystem::perms(0700));
  std::filesystem::create_directory_symlink(stateFolder(), temporary_);
  ASSERT_EQ(lchown(temporary_.c_str(), user_, user_), 0);
  expectSet(StoreCode::kUnavailable);
  EXPECT_TRUE(refused());
}

TEST_F(TemporaryFolder, ThatIsAFileIsRefused) {
  ASSERT_TRUE(std::ofstream(temporary_).is_open());
  ASSERT_EQ(chown(temporary_.c_str(), user_, user_), 0);
  expectSet(StoreCode::kUnavailable);
  EXPECT_TRUE(refused());
}

}  // namespace
}  // namespace platform_tests
