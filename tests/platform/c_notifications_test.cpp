// Who is notified of a change in the store through the C interface.
#include <dlfcn.h>

#include <string>
#include <vector>

#include "notifications_test.h"
#include "platform/config_store.h"

namespace platform_tests {
namespace {

using platform::host::keyOf;

struct CCall {
  std::string key;
  void* data;
  bool operator==(const CCall&) const = default;
};
using CCalls = std::vector<CCall>;

void recordCall(keynode_t* node, void* data) {
  static_cast<CCalls*>(data)->push_back({keyOf(node), data});
}

class ACSubscriber : public ASubscriber {};

TEST_F(ACSubscriber, IsNotifiedOfExactlyItsKeyWithItsData) {
  CCalls calls;
  ASSERT_EQ(vconf_notify_key_changed("db/a", recordCall, &calls), 0);
  for (const char* key : {"db/a", "db/ab", "db/a/b", "db/", "db/b"}) vconf_set_int(key, 1);
  hearAll();
  EXPECT_EQ(calls, (CCalls{{"db/a", &calls}}));
}

TEST_F(ACSubscriber, IsNotifiedOfEverySetEvenToAnEqualValue) {
  CCalls calls;
  ASSERT_EQ(vconf_notify_key_changed("memory/a", recordCall, &calls), 0);
  for (int i = 0; i < 3; ++i) vconf_set_str("memory/a", "equal");
  hearAll("memory/");
  EXPECT_EQ(calls.size(), 3U);
}

TEST_F(ACSubscriber, MayHaveNoData) {
  static int calls = 0;
  ASSERT_EQ(
      vconf_notify_key_changed(
          "db/a", [](keynode_t*, void* data) { calls += data == nullptr ? 1 : 100; }, nullptr),
      0);
  vconf_set_int("db/a", 1);
  hearAll();
  EXPECT_EQ(calls, 1);
}

TEST_F(ACSubscriber, ThatSubscribesTwiceIsNotifiedTwice) {
  CCalls first;
  CCalls second;
  ASSERT_EQ(vconf_notify_key_changed("db/a", recordCall, &first), 0);
  ASSERT_EQ(vconf_notify_key_changed("db/a", recordCall, &second), 0);
  vconf_set_int("db/a", 1);
  hearAll();
  EXPECT_EQ(first.size(), 1U);
  EXPECT_EQ(second.size(), 1U);
}

// The library whose function is subscribed.
class Library {
 public:
  Library() : handle_(dlopen(SUBSCRIBER_LIBRARY, RTLD_NOW | RTLD_LOCAL)) {}
  bool subscribe(const char* key, int* calls) const {
    const auto function = reinterpret_cast<int (*)(const char*, int*)>(dlsym(handle_, "subscribe"));
    return function(key, calls) == 0;
  }
  void unload() const { dlclose(handle_); }
  static bool isLoaded() { return dlopen(SUBSCRIBER_LIBRARY, RTLD_NOW | RTLD_NOLOAD) != nullptr; }

 private:
  void* handle_;
};

TEST_F(ACSubscriber, WhoseLibraryWasUnloadedIsNotCalled) {
  int calls = 0;
  const Library library;
  ASSERT_TRUE(library.subscribe("db/a", &calls));
  vconf_set_int("db/a", 1);
  hearAll();
  EXPECT_EQ(calls, 1);
  vconf_set_int("db/a", 2);  // pending when the library is unloaded
  library.unload();
  ASSERT_FALSE(Library::isLoaded());
  vconf_set_int("db/a", 3);
  hearAll();
  vconf_set_int("db/a", 4);
  hearAll();
  EXPECT_EQ(calls, 1);
}

TEST_F(ACSubscriber, WhoseLibraryIsLoadedAgainIsNotifiedOnceItSubscribesAgain) {
  int calls = 0;
  int callsAgain = 0;
  const Library library;
  ASSERT_TRUE(library.subscribe("db/a", &calls));
  library.unload();
  ASSERT_FALSE(Library::isLoaded());
  vconf_set_int("db/a", 1);
  hearAll();
  const Library again;
  vconf_set_int("db/a", 2);
  hearAll();
  ASSERT_TRUE(again.subscribe("db/a", &callsAgain));
  vconf_set_int("db/a", 3);
  hearAll();
  EXPECT_EQ(calls, 0);
  EXPECT_EQ(callsAgain, 1);
}

}  // namespace
}  // namespace platform_tests
