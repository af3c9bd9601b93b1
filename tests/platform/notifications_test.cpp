// Who is notified of which changes in the store.
#include <glib.h>
#include <sys/inotify.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "notifications_test.h"
#include "platform/config_store.h"
#include "process.h"

namespace platform_tests {
namespace {

constexpr int kJournalLength = 4096;  // a process this many changes behind misses nothing
constexpr int kTooMany = 4096 + 256;  // too many changes for a process that is behind

TEST_F(ASubscriber, IsNotifiedOfEverySetByItsProcessEvenToAnEqualValue) {
  Keys told;
  const auto subscription = listen("db/key", told);
  for (const int value : {1, 2, 2, 2}) store().set("db/key", value);
  hearAll();
  EXPECT_EQ(told, Keys(4, "db/key"));
}

TEST_F(ASubscriber, IsNotifiedOfEverySetByAnotherProcessEvenToAnEqualValue) {
  Process other([](Channel& test) {
    test.receiveLine();
    for (const int value : {1, 2, 2, 2}) store().set({{"db/key", value}, {"memory/key", value}});
  });
  Keys told;
  Keys toldOfMemory;
  const auto subscription = listen("db/key", told);
  const auto memorySubscription = listen("memory/key", toldOfMemory);
  other.channel().sendLine("go");
  ASSERT_TRUE(iterateUntil([&] { return told.size() >= 4 && toldOfMemory.size() >= 4; }));
  other.join();
  hearAll("db/");
  hearAll("memory/");
  EXPECT_EQ(told, Keys(4, "db/key"));
  EXPECT_EQ(toldOfMemory, Keys(4, "memory/key"));
}

TEST_F(ASubscriber, IsToldInTheOrderOfTheSets) {
  Keys told;
  const auto subscription = listen("db/order/", told);
  Keys expected;
  for (const char* name : {"b", "a", "c", "a", "b", "b"}) {
    expected.push_back(std::string("db/order/") + name);
    store().set(expected.back(), 1);
  }
  hearAll();
  EXPECT_EQ(told, expected);
}

TEST_F(ASubscriber, IsNotifiedOnceOfEachKeyOfASetOfSeveral) {
  Keys told;
  const auto subscription = listen("db/set/", told);
  store().set({{"db/set/b", 1}, {"db/set/c", 2}, {"db/set/a", 3}});
  hearAll();
  EXPECT_EQ(told, (Keys{"db/set/a", "db/set/b", "db/set/c"}));
}

TEST_F(ASubscriber, FindsTheNewValueWhenItIsTold) {
  std::vector<std::optional<StoreValue>> found;
  const auto subscription = store().subscribe(
      "db/key", [&](const std::string& key) { found.push_back(store().get(key)); });
  store().set("db/key", "new");
  hearAll();
  EXPECT_EQ(found, (std::vector<std::optional<StoreValue>>{StoreValue("new")}));
}

TEST_F(ASubscriber, IsNotToldWhatWasSetBefore) {
  store().set("db/key", 1);
  Keys early;
  const auto earlySubscription = listen("db/key", early);
  store().set("db/key", 2);
  Keys late;
  const auto lateSubscription = listen("db/key", late);
  store().set("db/key", 3);
  hearAll();
  EXPECT_EQ(early, Keys(2, "db/key"));
  EXPECT_EQ(late, Keys(1, "db/key"));
}

TEST_F(ASubscriber, IsNotToldWhatWasSetWhileThereWasNone) {
  Keys told;
  { const auto first = listen("db/key", told); }
  store().set("db/key", 1);
  const auto second = listen("db/key", told);
  hearAll();
  EXPECT_EQ(told, Keys());
}

TEST_F(ASubscriber, IsNotifiedOnlyOfKeysThatBeginWithItsPrefix) {
  Keys told;
  const auto subscription = listen("db/a", told);
  for (const char* key : {"db/a", "db/ab", "db/a/b", "db/b", "db/A", "memory/a"})
    store().set(key, 1);
  hearAll("db/");
  hearAll("memory/");
  EXPECT_EQ(told, (Keys{"db/a", "db/ab", "db/a/b"}));
}

TEST_F(ASubscriber, OfAWholeAreaIsNotifiedOfAllItsKeys) {
  Keys told;
  const auto subscription = listen("memory/", told);
  store().set({{"memory/a", 1}, {"memory/b", 1}, {"db/a", 1}});
  hearAll("memory/");
  EXPECT_EQ(told, (Keys{"memory/a", "memory/b", "memory/the/last/key"}));
}

TEST_F(ASubscriber, CannotSubscribeOutsideTheAreas) {
  const auto subscribe = [](const std::string& prefix) {
    return codeRaisedBy(
        [&] { const auto subscription = store().subscribe(prefix, [](const std::string&) {}); });
  };
  EXPECT_EQ(subscribe(""), StoreCode::kBadKey);
  EXPECT_EQ(subscribe("db"), StoreCode::kBadKey);
  EXPECT_EQ(subscribe("file/"), StoreCode::kBadKey);
  EXPECT_EQ(subscribe("db/"), StoreCode::kOk);
}

TEST_F(ASubscriber, IsNotToldOfASetThatFailed) {
  Keys told;
  const auto subscription = listen("db/key", told);
  EXPECT_EQ(vconf_set_str("db/key", std::string(platform::host::kMaxValueSize + 1, 'x').c_str()),
            codeOf(StoreCode::kValueTooLong));
  EXPECT_EQ(codeRaisedBy([] {
              store().set({{"db/key", 1}, {"none/key", 1}});
            }),
            StoreCode::kBadKey);
  hearAll();
  EXPECT_EQ(told, Keys());
}

TEST_F(ASubscriber, IsNotifiedOfSettingAnAbsentValueAndNotOfSkippingAPresentOne) {
  store().set("db/set/there", 1);
  Keys told;
  const auto subscription = listen("db/set/", told);
  store().setAbsent({{"db/set/there", 2}, {"db/set/new", 2}});
  hearAll();
  EXPECT_EQ(told, Keys{"db/set/new"});
}

TEST_F(ASubscriber, IsNotifiedTogetherWithOthers) {
  Keys first;
  Keys second;
  const auto firstSubscription = listen("db/key", first);
  const auto secondSubscription = listen("db/", second);
  store().set("db/key", 1);
  hearAll();
  EXPECT_EQ(first, Keys{"db/key"});
  EXPECT_EQ(second, (Keys{"db/key", "db/the/last/key"}));
}

TEST_F(ASubscriber, OfAnotherProcessSleepsUntilItIsNotified) {
  Process subscriber([](Channel& test) {
    Keys told;
    const auto subscription = listen("db/key", told);
    test.sendLine("ready");
    while (told.size() < 2) {
      const std::size_t before = told.size();
      // Only a readable file wakes it: no source has a timeout.
      gint timeout = 0;
      gint priority = 0;
      GMainContext* context = g_main_context_default();
      ASSERT_TRUE(g_main_context_acquire(context));
      EXPECT_FALSE(g_main_context_prepare(context, &priority)) << "a source is ready already";
      g_main_context_query(context, G_MAXINT, &timeout, nullptr, 0);
      g_main_context_release(context);
      EXPECT_EQ(timeout, -1);
      g_main_context_iteration(nullptr, TRUE);
      if (told.size() > before) test.sendLine(told.back());
    }
  });
  ASSERT_EQ(subscriber.channel().receiveLine(), "ready");
  for (int i = 0; i < 2; ++i) {
    store().set("db/key", 1);
    EXPECT_EQ(subscriber.channel().receiveLine(), "db/key");
  }
  subscriber.join();
}

TEST_F(ASubscriber, OfAnotherProcessIsNotifiedEvenWhenTheFileItWatchesIsNewToTheWriter) {
  Process subscriber([](Channel& test) {
    test.receiveLine();
    Keys told;
    const auto subscription = listen("db/key", told);
    test.sendLine("ready");
    EXPECT_TRUE(iterateUntil([&] { return !told.empty(); }));
    test.sendLine(told.back());
  });
  store().set("db/key", 1);
  ASSERT_TRUE(std::filesystem::remove(stateFolder() / "changed"));
  subscriber.channel().sendLine("go");
  ASSERT_EQ(subscriber.channel().receiveLine(), "ready");
  store().set("db/key", 2);
  EXPECT_EQ(subscriber.channel().receiveLine(), "db/key");
  subscriber.join();
}

TEST_F(ASubscriber, IsStillNotifiedAfterTheFileItWatchesIsRemovedOrReplaced) {
  Keys told;
  const auto subscription = listen("db/key", told);
  Keys expected;
  for (int round = 0; round < 6; ++round) {
    const auto file = stateFolder() / "changed";
    if (round % 2 == 0) {
      std::filesystem::remove(file);
    } else {
      std::filesystem::rename(file, stateFolder() / "moved");
    }
    hearAll();
    for (int i = 0; i < 2; ++i) {
      expected.push_back("db/key/" + std::to_string(round));
      store().set(expected.back(), i);
      ASSERT_TRUE(iterateUntil([&] { return told.size() >= expected.size(); })) << round;
    }
  }
  EXPECT_EQ(told, expected);
}

TEST_F(ASubscriber, ThatIsAWholeJournalBehindMissesNothing) {
  Keys told;
  const auto subscription = listen("db/", told);
  Keys expected;
  for (int i = 0; i < kJournalLength; ++i) {
    expected.push_back("db/key" + std::to_string(i % 100));
    store().set(expected.back(), i);
  }
  ASSERT_TRUE(iterateUntil([&] { return told.size() >= expected.size(); }));
  EXPECT_EQ(told, expected);
}

TEST_F(ASubscriber, ThatIsFurtherBehindIsNotifiedOfEveryKeyOnce) {
  store().set("db/key/unchanged", 1);
  Keys told;
  const auto subscription = listen("db/key/", told);
  Keys exact;
  const auto exactSubscription = listen("db/key/once", exact);
  store().set("db/key/once", 1);
  for (int i = 0; i < kTooMany; ++i) store().set("db/key/often", i);
  ASSERT_TRUE(iterateUntil([&] { return told.size() >= 3; }));
  EXPECT_EQ(told, (Keys{"db/key/often", "db/key/once", "db/key/unchanged"}));
  EXPECT_EQ(exact, Keys{"db/key/once"});
  // And it is no longer behind.
  told.clear();
  store().set("db/key/often", 0);
  hearAll();
  EXPECT_EQ(told, Keys{"db/key/often"});
}

TEST_F(ASubscriber, ThatEndedIsSilent) {
  Keys told;
  Keys other;
  auto subscription = listen("db/key", told);
  const auto otherSubscription = listen("db/key", other);
  store().set("db/key", 1);
  hearAll();
  store().set("db/key", 2);  // pending when the subscription ends
  subscription = Subscription();
  store().set("db/key", 3);
  hearAll();
  EXPECT_EQ(told, Keys{"db/key"});
  EXPECT_EQ(other, Keys(3, "db/key"));
}

TEST_F(ASubscriber, MayEndItsOwnSubscription) {
  Keys told;
  Keys other;
  Subscription subscription;
  subscription = store().subscribe("db/key", [&](const std::string& key) {
    told.push_back(key);
    subscription = Subscription();
  });
  const auto otherSubscription = listen("db/key", other);
  store().set("db/key", 1);
  store().set("db/key", 2);
  hearAll();
  EXPECT_EQ(told, Keys{"db/key"});
  EXPECT_EQ(other, Keys(2, "db/key"));
}

TEST_F(ASubscriber, MayEndAnothersSubscriptionAndNoMore) {
  Keys told;
  Keys other;
  Subscription second;
  const auto first =
      store().subscribe("db/key", [&](const std::string&) { second = Subscription(); });
  second = listen("db/key", told);
  const auto third = listen("db/key", other);
  store().set("db/key", 1);
  store().set("db/key", 2);
  hearAll();
  EXPECT_EQ(told, Keys());
  EXPECT_EQ(other, Keys(2, "db/key"));
}

TEST_F(ASubscriber, MaySetValues) {
  Keys told;
  const auto subscription = store().subscribe("db/chain/", [&](const std::string& key) {
    told.push_back(key);
    if (told.size() < 4) store().set("db/chain/" + std::to_string(told.size()), 1);
    EXPECT_EQ(told.back(), key) << "told of another change while it was told of this one";
  });
  store().set("db/chain/0", 1);
  ASSERT_TRUE(iterateUntil([&] { return told.size() >= 4; }));
  EXPECT_EQ(told, (Keys{"db/chain/0", "db/chain/1", "db/chain/2", "db/chain/3"}));
}

TEST_F(ASubscriber, MaySubscribeInACallWithoutGettingTheSameChangeAgain) {
  Keys late;
  std::vector<Subscription> subscriptions;
  subscriptions.push_back(store().subscribe("db/key", [&](const std::string&) {
    if (subscriptions.size() == 1) subscriptions.push_back(listen("db/key", late));
  }));
  store().set("db/key", 1);
  hearAll();
  EXPECT_EQ(late, Keys());
  store().set("db/key", 2);
  hearAll();
  EXPECT_EQ(late, Keys{"db/key"});
}

TEST_F(ASubscriber, CanHandItsSubscriptionOn) {
  Keys told;
  Subscription kept;
  {
    Subscription first = listen("db/key", told);
    Subscription second(std::move(first));
    kept = std::move(second);
  }
  store().set("db/key", 1);
  hearAll();
  EXPECT_EQ(told, Keys{"db/key"});
}

TEST_F(ASubscriber, EndsTheSubscriptionThatIsReplaced) {
  Keys first;
  Keys second;
  Subscription kept = listen("db/key", first);
  Subscription replacing = listen("db/key", second);
  kept = std::move(replacing);
  store().set("db/key", 1);
  hearAll();
  EXPECT_EQ(first, Keys());
  EXPECT_EQ(second, Keys{"db/key"});
}

TEST_F(ASubscriber, ThatRaisesIsLoggedAndDisturbsNobody) {
  Keys told;
  const auto raising = store().subscribe(
      "db/key", [](const std::string&) { throw std::runtime_error("no, thank you"); });
  const auto other = listen("db/key", told);
  store().set("db/key", 1);
  store().set("db/key", 2);
  hearAll();
  EXPECT_EQ(told, Keys(2, "db/key"));
  EXPECT_TRUE(logged("system CONFIG_STORE: a subscriber of db/key raised: no, thank you"));
}

TEST_F(ASubscriber, ThatRaisesNoStandardExceptionIsLoggedAndDisturbsNobody) {
  Keys told;
  const auto raising = store().subscribe("db/key", [](const std::string&) { throw 42; });
  const auto other = listen("db/key", told);
  store().set("db/key", 1);
  store().set("db/key", 2);
  hearAll();
  EXPECT_EQ(told, Keys(2, "db/key"));
  EXPECT_TRUE(logged(
      "system CONFIG_STORE: a subscriber of db/key raised: something that is no std::exception"));
}

int countInotifyInstances() {
  int count = 0;
  for (const auto& file : std::filesystem::directory_iterator("/proc/self/fd")) {
    std::error_code error;
    const auto target = std::filesystem::read_symlink(file.path(), error);
    if (target == "anon_inode:inotify") ++count;
  }
  return count;
}

TEST_F(ASubscriber, SharesOneInotifyInstanceWithAllOfItsProcess) {
  Keys told;
  const auto db = listen("db/", told);
  const auto memory = listen("memory/", told);
  EXPECT_EQ(countInotifyInstances(), 1);
}

// While it lives, this process may have only so many more files open.
class FewFiles {
 public:
  explicit FewFiles(rlim_t more) {
    const int next = dup(0);
    close(next);
    getrlimit(RLIMIT_NOFILE, &before_);
    const rlimit limit{static_cast<rlim_t>(next) + more, before_.rlim_max};
    EXPECT_EQ(setrlimit(RLIMIT_NOFILE, &limit), 0);
  }
  ~FewFiles() { setrlimit(RLIMIT_NOFILE, &before_); }
  FewFiles(const FewFiles&) = delete;
  FewFiles& operator=(const FewFiles&) = delete;

 private:
  rlimit before_{};
};

TEST_F(ASubscriber, IsRefusedWhenNoMoreFilesCanBeOpened) {
  for (const rlim_t more : {0U, 1U}) {
    inOwnProcess([&] {
      store().set("db/key", 1);
      const FewFiles limit(more);
      Keys told;
      const std::string error = errorRaisedBy([&] { const auto none = listen("db/key", told); });
      EXPECT_TRUE(
          error.starts_with("cannot watch for changes: Too many open files; this process "
                            "may have "))
          << error;
      EXPECT_TRUE(error.ends_with(" files open (ulimit -n)")) << error;
    });
  }
}

TEST_F(ASubscriber, IsToldWhenNoMoreFilesCanBeOpenedLater) {
  inOwnProcess([] {
    Keys told;
    const auto subscription = listen("db/key", told);
    const FewFiles limit(0);
    store().set("db/key", 1);
    ASSERT_TRUE(iterateUntil([&] { return !told.empty(); }));
  });
}

// As a user that has no instances yet, so that nobody else runs out of them.
TEST_F(ASubscriber, IsRefusedByTheNameOfTheLimitWhenTheKernelAllowsNoMoreInstances) {
  if (geteuid() != 0) GTEST_SKIP() << "needs the super-user, to become an unused user";
  rlimit files{};
  ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &files), 0);
  const std::string allowed = linesOf("/proc/sys/fs/inotify/max_user_instances").at(0);
  if (std::stoul(allowed) + 100 > files.rlim_max) GTEST_SKIP() << "so many cannot be opened";
  inOwnProcess([&] {
    const uid_t user = 1'000'000 + static_cast<uid_t>(getpid());
    std::filesystem::create_directory(stateFolder());
    ASSERT_EQ(chown(stateFolder().c_str(), user, user), 0);
    std::filesystem::create_directory(runtimeFolder());
    ASSERT_EQ(chown(runtimeFolder().c_str(), user, user), 0);
    files.rlim_cur = files.rlim_max;
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &files), 0);
    becomeUser(user);
    while (inotify_init1(IN_CLOEXEC) >= 0) {
    }
    ASSERT_EQ(errno, EMFILE);
    Keys told;
    EXPECT_EQ(errorRaisedBy([&] { const auto none = listen("db/key", told); }),
              "cannot watch for changes: this user has as many as the kernel allows, "
              "fs.inotify.max_user_instances = " +
                  allowed);
  });
}

}  // namespace
}  // namespace platform_tests
