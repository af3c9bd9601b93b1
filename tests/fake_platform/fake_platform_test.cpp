#include "fake_platform.h"

#include <dlfcn.h>
#include <glib.h>
#include <gtest/gtest.h>
#include <pthread.h>

#include <cerrno>
#include <mutex>
#include <stdexcept>
#include <string>

#include "platform/app_util.h"
#include "platform/config_store.h"
#include "platform/connection.h"
#include "platform/log.h"
#include "platform/markup.h"
#include "platform/path.h"
#include "platform/structured_log.h"
#include "platform/system_info.h"
#include "platform/wifi.h"

namespace fake_platform {
namespace {

class FakePlatform : public testing::Test {
 protected:
  void SetUp() override { reset(); }
};

std::string libraryOf(const void* address) {
  Dl_info info;
  if (dladdr(address, &info) == 0) return "none";
  const std::string path = info.dli_fname;
  return path.substr(path.rfind('/') + 1);
}

// The library from which a loaded library gets a symbol.
std::string libraryOf(const char* symbol) {
  return libraryOf(dlsym(RTLD_DEFAULT, symbol));
}

TEST_F(FakePlatform, StandsInForEveryPlatformFunction) {
#define PLATFORM_FUNCTION(header, result, name, parameters, failure) \
  EXPECT_EQ(libraryOf(reinterpret_cast<const void*>(&(name))), "libfake_platform.so") << #name;
#include "platform_functions.def"
#undef PLATFORM_FUNCTION
}

TEST_F(FakePlatform, StandsInForGLibsTimersAndForTheMutexOfLibc) {
  EXPECT_EQ(libraryOf("g_timeout_add_seconds"), "libfake_platform.so");
  EXPECT_EQ(libraryOf("g_source_remove"), "libfake_platform.so");
  EXPECT_EQ(libraryOf("pthread_mutex_lock"), "fake_platform_tests");
  EXPECT_EQ(libraryOf("pthread_mutex_unlock"), "fake_platform_tests");
}

TEST_F(FakePlatform, AFailingCallLeavesItsOutputUntouchedUnlessToldOtherwise) {
  store().set("db/key", 5);
  int value = 7;
  failWith("vconf_get_int", -3);
  EXPECT_EQ(vconf_get_int("db/key", &value), -3);
  EXPECT_EQ(value, 7);
  failWith("vconf_get_int", -3, Effect::kAsSuccess);
  EXPECT_EQ(vconf_get_int("db/key", &value), -3);
  EXPECT_EQ(value, 5);
}

TEST_F(FakePlatform, AFailureCanBeForOneKeyOrForOneCall) {
  failWith("vconf_set_int", "db/bad", -7);
  EXPECT_EQ(vconf_set_int("db/bad", 1), -7);
  EXPECT_EQ(vconf_set_int("db/good", 1), 0);
  failCall("vconf_set_int", 2, -8);
  EXPECT_EQ(vconf_set_int("db/good", 2), 0);
  EXPECT_EQ(vconf_set_int("db/good", 3), -8);
  EXPECT_EQ(vconf_set_int("db/good", 4), 0);
  EXPECT_EQ(store().intAt("db/bad"), std::nullopt);
  EXPECT_EQ(store().intAt("db/good"), 4);
}

TEST_F(FakePlatform, AFlagsNameStandsForItsWholeKey) {
  flags().setBool("product.b2b_option_support", true);
  bool value = false;
  EXPECT_EQ(
      system_info_get_custom_bool("com.norvane/featureconf/product.b2b_option_support", &value), 0);
  EXPECT_TRUE(value);
  failWith("system_info_get_custom_bool", "product.b2b_option_support", -5);
  EXPECT_EQ(
      system_info_get_custom_bool("com.norvane/featureconf/product.b2b_option_support", &value),
      -5);
}

TEST_F(FakePlatform, AWrongFunctionNameIsRefused) {
  EXPECT_THROW(failWith("vconf_get_integer", -1), std::invalid_argument);
  EXPECT_THROW(onCall("vconf_get_integer", nullptr), std::invalid_argument);
}

int countFiring(void* count) {
  ++*static_cast<int*>(count);
  return G_SOURCE_CONTINUE;
}

TEST_F(FakePlatform, TimersFireWhenTheirPeriodHasPassedAndNotOnceRemoved) {
  int often = 0;
  int seldom = 0;
  const unsigned first = g_timeout_add_seconds(2, countFiring, &often);
  g_timeout_add_seconds(4, countFiring, &seldom);
  advanceTimers(3);
  EXPECT_EQ(often, 3);
  EXPECT_EQ(seldom, 1);
  g_source_remove(first);
  advanceTimers();
  EXPECT_EQ(often, 3);
  EXPECT_EQ(seldom, 2);
  EXPECT_EQ(runningTimers(), 1);
  g_source_remove(first);
  EXPECT_EQ(wrongRemovals(), std::vector<unsigned>{first});
}

TEST_F(FakePlatform, ATimersIdIsNeverGivenAgain) {
  int count = 0;
  const unsigned first = g_timeout_add_seconds(2, countFiring, &count);
  g_source_remove(first);
  EXPECT_NE(g_timeout_add_seconds(2, countFiring, &count), first);
}

TEST_F(FakePlatform, ATimerThatSaysSoEndsAfterItsFiring) {
  g_timeout_add_seconds(
      2, [](void*) { return G_SOURCE_REMOVE; }, nullptr);
  advanceTimers();
  EXPECT_EQ(runningTimers(), 0);
}

TEST_F(FakePlatform, OnlyTheKeysOwnSubscribersAreNotified) {
  int told = 0;
  const auto tell = [](keynode_t*, void* count) { ++*static_cast<int*>(count); };
  vconf_notify_key_changed("db/key", tell, &told);
  store().notify("db/other");
  EXPECT_EQ(told, 0);
  store().notify("db/key");
  EXPECT_EQ(told, 1);
}

TEST_F(FakePlatform, AHookRunsInsideTheCallBeforeItTakesEffect) {
  std::optional<int> seen = 0;
  onCall("vconf_set_int", [&] { seen = store().intAt("db/key"); });
  vconf_set_int("db/key", 1);
  EXPECT_EQ(seen, std::nullopt);
  EXPECT_EQ(store().intAt("db/key"), 1);
}

TEST_F(FakePlatform, PlaceholdersAreFilledOnceAndTheResultIsCut) {
  char text[8] = "";
  CStringUtil::CombinateStrings(text, sizeof(text), "<<A>>|<<B>>|<<C>>|<<E>>", "<<B>>", nullptr,
                                "c", "d");
  EXPECT_STREQ(text, "<<B>>||");
}

TEST_F(FakePlatform, AnInvalidOrReleasedHandleIsMisuse) {
  setProfiles({kEthernetProfile});
  setConnectedAp(5955);
  connection_h connection = nullptr;
  connection_profile_iterator_h iterator = nullptr;
  connection_profile_h profile = nullptr;
  wifi_ap_h ap = nullptr;
  connection_create(&connection);
  connection_get_profile_iterator(connection, 0, &iterator);
  connection_profile_iterator_next(iterator, &profile);
  wifi_get_connected_ap(&ap);
  wifi_ap_destroy(ap);
  connection_destroy(connection);
  wifi_ap_destroy(nullptr);
  connection_destroy(nullptr);
  EXPECT_EQ(misuses(), std::vector<std::string>());
  int type = 0;
  wifi_ap_destroy(ap);
  connection_destroy(connection);
  connection_profile_iterator_has_next(iterator);
  connection_profile_get_type(profile, &type);
  EXPECT_EQ(misuses(), (std::vector<std::string>{
                           "an access point is used until it is destroyed",
                           "a connection is used until it is destroyed",
                           "an iterator is used while its connection is open",
                           "a profile is used while its connection is open",
                       }));
}

TEST_F(FakePlatform, AnIteratorIsMisusedBeyondItsEndAndAProfileThatIsKnownToBeAnother) {
  setProfiles({kWifiProfile});
  connection_h connection = nullptr;
  connection_profile_iterator_h iterator = nullptr;
  connection_profile_h profile = nullptr;
  int type = 0;
  connection_create(&connection);
  connection_get_profile_iterator(connection, 0, &iterator);
  connection_profile_iterator_next(iterator, &profile);
  connection_profile_enable_ethernet_eap(profile, true);
  failWith("connection_profile_get_type", -1, Effect::kAsSuccess);
  connection_profile_get_type(profile, &type);
  connection_profile_enable_ethernet_eap(profile, true);
  EXPECT_EQ(misuses(), std::vector<std::string>());
  succeedAgain("connection_profile_get_type");
  connection_profile_get_type(profile, &type);
  connection_profile_enable_ethernet_eap(profile, true);
  connection_profile_iterator_next(iterator, &profile);
  EXPECT_EQ(misuses(), (std::vector<std::string>{"802.1X is switched on Ethernet",
                                                 "an iterator is not moved beyond its end"}));
}

TEST_F(FakePlatform, CallsThatAreNotRecordedStillFailAndCountAsMisuse) {
  record(false);
  failWith("vconf_set_int", "db/bad", -7);
  EXPECT_EQ(vconf_set_int("db/bad", 1), -7);
  EXPECT_EQ(vconf_set_int("db/good", 1), 0);
  __dlog_print(0, 3, "VENTARO", "text");
  ht::TSLoggerHelper::Log({"src/file.cpp", 12, "int function(int)"}, "text");
  EXPECT_EQ(journal(), Journal());
  EXPECT_EQ(logMistakes(), std::vector<std::string>());
  EXPECT_EQ(misuses(), std::vector<std::string>{"a line has its tag"});
}

TEST_F(FakePlatform, NewValuesLeaveWhatAProviderHolds) {
  int told = 0;
  int fired = 0;
  int hooked = 0;
  connection_h connection = nullptr;
  connection_create(&connection);
  vconf_notify_key_changed(
      "db/key", [](keynode_t*, void* count) { ++*static_cast<int*>(count); }, &told);
  g_timeout_add_seconds(2, countFiring, &fired);
  onCall("connection_destroy", [&] { ++hooked; });
  store().set("db/key", 1);
  flags().setBool("product.b2b_option_support", true);
  setRadio(1);
  setWakeOnMobile(true);
  failWith("vconf_get_int", -3);
  resetValues();
  int value = 7;
  EXPECT_EQ(vconf_get_int("db/key", &value), -1) << "neither there nor failing";
  bool flag = false;
  EXPECT_NE(
      system_info_get_custom_bool("com.norvane/featureconf/product.b2b_option_support", &flag), 0);
  EXPECT_EQ(radio(), 0);
  EXPECT_FALSE(wakeOnMobile());
  store().notify("db/key");
  advanceTimers();
  EXPECT_EQ(connection_destroy(connection), 0);
  EXPECT_EQ(told, 1);
  EXPECT_EQ(fired, 1);
  EXPECT_EQ(hooked, 1);
}

TEST_F(FakePlatform, TheLockThatIsWatchedIsTheProviders) {
  std::mutex other;
  std::mutex mutex;
  watchLock(mutex.native_handle());
  other.lock();
  EXPECT_FALSE(holdsLock());
  mutex.lock();
  EXPECT_TRUE(holdsLock());
  mutex.unlock();
  other.unlock();
  EXPECT_FALSE(holdsLock());
  EXPECT_EQ(journal(), (Journal{locks(), unlocks()}));
}

TEST_F(FakePlatform, TheLockFailsWithItsErrorUntilItSucceedsAgain) {
  std::mutex mutex;
  watchLock(mutex.native_handle());
  failWith("pthread_mutex_lock", EINVAL);
  EXPECT_EQ(pthread_mutex_lock(mutex.native_handle()), EINVAL);
  EXPECT_EQ(pthread_mutex_lock(mutex.native_handle()), EINVAL);
  EXPECT_FALSE(holdsLock());
  succeedAgain("pthread_mutex_lock");
  EXPECT_EQ(pthread_mutex_lock(mutex.native_handle()), 0);
  EXPECT_EQ(pthread_mutex_unlock(mutex.native_handle()), 0);
  EXPECT_EQ(journal(), (Journal{lockFails(EINVAL), lockFails(EINVAL), locks(), unlocks()}));
}

TEST_F(FakePlatform, AThreadThatTakesTheLockTwiceIsRefusedInsteadOfWaitingForEver) {
  std::mutex mutex;
  watchLock(mutex.native_handle());
  EXPECT_EQ(pthread_mutex_lock(mutex.native_handle()), 0);
  EXPECT_EQ(pthread_mutex_lock(mutex.native_handle()), EDEADLK);
  EXPECT_EQ(pthread_mutex_unlock(mutex.native_handle()), 0);
  EXPECT_EQ(misuses(), std::vector<std::string>{"a thread takes the lock once"});
}

const ht::TSCodeLocation kPlace = {"src/file.cpp", 12, "int function(int)"};

TEST_F(FakePlatform, AProperLogStatementIsNoMistake) {
  __dlog_print(0, 4, "VENTARO", "%s: %s(%d) > %s", "file.cpp", "function", 12, "text (1) > 0");
  ht::TSLoggerHelper::Log(kPlace, "text (1) > %d", 0);
  EXPECT_EQ(journal(), Journal{mainLog("text (1) > 0")});
  EXPECT_EQ(logMistakes(), std::vector<std::string>());
}

TEST_F(FakePlatform, ALogStatementThatFailsIsStillRecorded) {
  failCall("__dlog_print", 2, -9);
  for (const int result : {0, -9, 0}) {
    EXPECT_EQ(__dlog_print(0, 4, "VENTARO", "file.cpp: function(12) > text"), result);
    ht::TSLoggerHelper::Log(kPlace, "text");
  }
  EXPECT_EQ(journal(), (Journal{mainLog("text"), mainLog("text"), mainLog("text")}));
  EXPECT_EQ(logMistakes(), std::vector<std::string>());
}

TEST_F(FakePlatform, EveryDifferenceBetweenTheLogChannelsIsAMistake) {
  struct Case {
    const char* what;
    int priority;
    const char* tag;
    const char* line;
    const char* record;
  };
  const Case cases[] = {
      {"priority", 3, "VENTARO", "file.cpp: function(12) > text", "text"},
      {"tag", 4, "OTHER", "file.cpp: function(12) > text", "text"},
      {"no prefix", 4, "VENTARO", "text", "text"},
      {"no line number", 4, "VENTARO", "file.cpp: function(x) > text", "text"},
      {"text", 4, "VENTARO", "file.cpp: function(12) > text", "other"},
      {"file", 4, "VENTARO", "other.cpp: function(12) > text", "text"},
      {"function", 4, "VENTARO", "file.cpp: other(12) > text", "text"},
      {"line", 4, "VENTARO", "file.cpp: function(13) > text", "text"},
      {"no record", 4, "VENTARO", "file.cpp: function(12) > text", nullptr},
      {"no line", 4, "VENTARO", nullptr, "text"},
  };
  for (const Case& each : cases) {
    reset();
    if (each.line != nullptr) __dlog_print(0, each.priority, each.tag, "%s", each.line);
    if (each.record != nullptr) ht::TSLoggerHelper::Log(kPlace, "%s", each.record);
    EXPECT_FALSE(logMistakes().empty()) << each.what;
  }
}

}  // namespace
}  // namespace fake_platform
