// A framework that loads and unloads the provider again and again, in one process over the host
// platform: nothing may stay behind.
#include <glib.h>
#include <malloc.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <ostream>
#include <string>

#include "../broken_promises.h"
#include "../platform/platform_test.h"

namespace cycles_tests {
namespace {

using contract::Provider;
using platform_tests::iterateUntil;
using platform_tests::store;
using platform_tests::StoreValue;

constexpr char kDocumentKey[] = "db/menu/network/TopSavedAP";
constexpr char kRefreshKey[] = "db/menu/refresh_menu";
constexpr StoreValue kRefreshOfNetworkMenu = 100002;

// The system resources that a process holds, as the kernel counts them.
struct Holdings {
  std::ptrdiff_t mappings;
  std::ptrdiff_t descriptors;
  std::ptrdiff_t threads;
  bool operator==(const Holdings&) const = default;
};

void PrintTo(const Holdings& held, std::ostream* out) {
  *out << held.mappings << " mappings, " << held.descriptors << " descriptors, " << held.threads
       << " threads";
}

std::ptrdiff_t entriesOf(const char* folder) {
  return std::distance(std::filesystem::directory_iterator(folder), {});
}

std::ptrdiff_t mappings() {
  std::ifstream maps("/proc/self/maps");
  std::ptrdiff_t count = 0;
  for (std::string line; std::getline(maps, line);) {
    if (COUNTS_ANONYMOUS_MAPPINGS || line.find('/') != std::string::npos) ++count;
  }
  return count;
}

Holdings holdings() {
  return {mappings(), entriesOf("/proc/self/fd"), entriesOf("/proc/self/task")};
}

std::size_t heapInUse() {
  const struct mallinfo2 info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

// Whether a timer runs on the default main context.
bool isATimerRunning() {
  while (g_main_context_iteration(nullptr, FALSE)) {  // those that are due
  }
  gint timeout = 0;
  gint priority = 0;
  GMainContext* context = g_main_context_default();
  EXPECT_TRUE(g_main_context_acquire(context));
  g_main_context_prepare(context, &priority);
  g_main_context_query(context, priority, &timeout, nullptr, 0);
  g_main_context_release(context);
  return timeout >= 0;
}

class LoadingAndUnloading : public platform_tests::PlatformTest {
 protected:
  // What a framework does in between, with a subscription, a timer and a list, so that the provider
  // keeps state.
  static void use(const Provider& provider) {
    FailsTheTest observer;
    contract::Calls calls(provider, observer);
    calls.displayName(VENTARO_KEY_SAVED_NETWORK_1);
    EXPECT_EQ(calls.setInt(VENTARO_KEY_WIFI, 1).result, 1);
    calls.listItems(VENTARO_KEY_WIRED_EAP);
    EXPECT_EQ(calls.isEnabledInt(VENTARO_KEY_SAVED_NETWORK_1).result, 1);
  }

  static void runCycles(int count) {
    for (int i = 0; i < count && !HasFailure(); ++i) use(Provider(VENTARO_PROVIDER));
  }

  // How many callbacks answer a change of the saved networks while one provider is loaded.
  static int refreshesPerChange() {
    const Provider provider(VENTARO_PROVIDER);
    use(provider);
    int refreshes = 0;
    bool last = false;
    const auto refreshed = store().subscribe(kRefreshKey, [&](const std::string& key) {
      if (store().get(key) == kRefreshOfNetworkMenu) ++refreshes;
    });
    store().set(kDocumentKey, R"({"count": 0, "values": []})");
    while (g_main_context_iteration(nullptr, FALSE)) {
    }
    const auto end = store().subscribe("db/test/last", [&](const std::string&) { last = true; });
    store().set("db/test/last", true);
    EXPECT_TRUE(iterateUntil([&] { return last; }));
    return refreshes;
  }
};

TEST_F(LoadingAndUnloading, LeavesNothingBehindHoweverOften) {
  constexpr int kWarmUp = CYCLES / 10;
  constexpr std::size_t kSlack = 64UL * 1024;  // bytes; less than seven for each cycle
  runCycles(kWarmUp);
  const Holdings held = holdings();
  const std::size_t heap = heapInUse();
  runCycles(CYCLES - kWarmUp);
  const Holdings heldAfterwards = holdings();
  const std::size_t heapAfterwards = heapInUse();
  std::cout << CYCLES << " cycles: " << testing::PrintToString(heldAfterwards) << ", heap " << heap
            << " -> " << heapAfterwards << " bytes" << std::endl;
  EXPECT_EQ(heldAfterwards, held);
  EXPECT_LT(heapAfterwards, heap + kSlack);
  EXPECT_FALSE(isATimerRunning());
  EXPECT_EQ(refreshesPerChange(), 1);
}

TEST_F(LoadingAndUnloading, LeavesNothingBehindEvenWithNotificationsInBetween) {
  constexpr int kCycles = CYCLES / 10;
  constexpr std::size_t kSlack = 64UL * 1024;
  const auto runWithNews = [] {
    for (int i = 0; i < kCycles; ++i) {
      runCycles(1);
      store().set(kDocumentKey, R"({"count": 0, "values": []})");
      store().set(kDocumentKey, R"({"count": 1, "values": [
        {"SSID": "Net One", "SIGNAL_STRENGTH": -50, "STATUS": ""}]})");
      while (g_main_context_iteration(nullptr, FALSE)) {
      }
    }
  };
  runWithNews();
  const Holdings held = holdings();
  const std::size_t heap = heapInUse();
  runWithNews();
  const std::size_t heapAfterwards = heapInUse();
  std::cout << 2 * kCycles << " cycles: heap " << heap << " -> " << heapAfterwards << " bytes"
            << std::endl;
  EXPECT_EQ(holdings(), held);
  EXPECT_LT(heapAfterwards, heap + kSlack);
  EXPECT_EQ(refreshesPerChange(), 1);
}

// The provider's own old subscription is dropped when it subscribes again; nobody else's is.
TEST_F(LoadingAndUnloading, LeavesTheSubscriptionsOfTheProgramAlone) {
  const auto count = [](keynode_t*, void* calls) { ++*static_cast<int*>(calls); };
  int first = 0;
  int second = 0;
  ASSERT_EQ(vconf_notify_key_changed("db/test/key", count, &first), 0);
  runCycles(2);
  ASSERT_EQ(vconf_notify_key_changed("db/test/key", count, &second), 0);
  runCycles(2);
  ASSERT_EQ(vconf_set_int("db/test/key", 1), 0);
  EXPECT_TRUE(iterateUntil([&] { return first == 1 && second == 1; }));
}

}  // namespace
}  // namespace cycles_tests
