// The provider and the host platform under everything that runs concurrently in a TV: the
// framework's threads, other programs that change the store, and the main loop, which delivers the
// notifications, fires the Wi-Fi timer and runs the network service.
#include <glib.h>

#include <atomic>
#include <clocale>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <iterator>
#include <latch>
#include <memory>
#include <random>
#include <string>
#include <thread>

#include "../platform/platform_test.h"
#include "callers.h"
#include "clock.h"
#include "platform/host/network_service.h"
#include "seed.h"

namespace threads_tests {
namespace {

using contract::Provider;
using platform::host::NetworkService;
using platform_tests::iterateUntil;
using platform_tests::StoreValue;

constexpr char kRefreshKey[] = "db/menu/refresh_menu";
constexpr char kWifi[] = VENTARO_KEY_WIFI;
constexpr int kFirings = 4;  // until the timer asks for the refresh

struct Change {
  const char* key;
  StoreValue value;
};

// What a TV's other programs set. Two of the documents are misshapen.
const Change kChanges[] = {
    {"db/menu/network/TopSavedAP", R"({"count": 2, "values": [
        {"SSID": "Net One", "SIGNAL_STRENGTH": -50, "STATUS": "Connected"},
        {"SSID": "Net Two", "SIGNAL_STRENGTH": -90, "STATUS": "Connecting"}]})"},
    {"db/menu/network/TopSavedAP", R"({"count": 1, "values": [
        {"SSID": "Net Two", "SIGNAL_STRENGTH": -64, "STATUS": ""}]})"},
    {"db/menu/network/TopSavedAP", R"({"count": 0, "values": []})"},
    {"db/menu/network/TopSavedAP", R"({"count": 1, "values": [{"SSID": "Net One"}]})"},
    {"db/menu/network/TopSavedAP", R"({"values": 1})"},
    {"db/menu/network/TopSavedAP", "no document"},
    {"db/menu/network/devicename/tv_name", "Kitchen <TV>"},
    {"db/menu/network/wifidirect", 0},
    {"db/menu/network/wifidirect", 2},
    {"db/menu/network/wiredeap", 1},
    {"db/menu/system/accessibility/highcontrast", 1},
    {"db/menu/system/accessibility/highcontrast", 0},
    {"db/menu_widget/language", "ko_KR"},
    {"db/host/wake_on_mobile", true},
    {"memory/ephotel/hotelmenu/hotelfactorymode", true},
    {"memory/multiscreen/state", R"({"end": {"style": "PAP_FN"}, "status": "PostCondition"})"},
    {"memory/multiscreen/state", "no document"},
    {"memory/host/feature/product.b2b_option_support", true},
    {"memory/host/feature/product.b2b_option_support", false},
    {"memory/host/feature/network.network_support", 0},
    {"memory/host/feature/setting.eu_energy_regulation", false},
    {"memory/host/feature/setting.eu_energy_regulation", true},
    {"memory/host/structured_log", true},
    {"memory/host/structured_log", false},
    {"memory/host/network/radio", false},
    {"memory/host/network/radio", true},
    {"memory/NW-Daemon/Command", R"({"COMMAND": "1", "SSID": "Garden Shed"})"},
};

// Iterates the default main context on a thread of its own, which also owns the network service.
class MainLoop {
 public:
  MainLoop() : thread_([this] { run(); }) { started_.wait(); }
  ~MainLoop() {
    ended_ = true;
    g_main_context_wakeup(nullptr);
    thread_.join();
  }
  MainLoop(const MainLoop&) = delete;
  MainLoop& operator=(const MainLoop&) = delete;

 private:
  void run() {
    const auto service = NetworkService::start();
    EXPECT_NE(service, nullptr);
    started_.count_down();
    while (!ended_) g_main_context_iteration(nullptr, TRUE);
  }

  std::latch started_{1};
  std::atomic<bool> ended_ = false;
  std::thread thread_;
};

class OnTheHostPlatform : public platform_tests::PlatformTest {
 protected:
  OnTheHostPlatform() {
    setenv("LANGUAGE", "en", 1);
    std::setlocale(LC_ALL, "C.UTF-8");
    g_log_set_default_handler(
        [](const char*, GLogLevelFlags, const char* message, gpointer complaints) {
          ++*static_cast<std::atomic<int>*>(complaints);
          std::cout << "GLib: " << message << std::endl;
        },
        &complaints_);
  }

  // GLib warns about a timer that is removed twice, or does not exist.
  int complaintsOfGlib() const { return complaints_; }

  // Everything still works: there is one refresh, four firings after the switch.
  static void expectARefreshAfterTheNextSwitch(const Provider& provider) {
    while (g_main_context_iteration(nullptr, FALSE)) {
    }
    int refreshes = 0;
    const auto subscription =
        platform_tests::store().subscribe(kRefreshKey, [&](const std::string& key) {
          if (platform_tests::store().get(key) == StoreValue(1)) ++refreshes;
        });
    EXPECT_EQ(provider.table().set_int(kWifi, 1), 1);
    clock::letFire(kFirings - 1);
    while (g_main_context_iteration(nullptr, FALSE)) {
    }
    EXPECT_EQ(refreshes, 0);
    clock::letFire(1);
    EXPECT_TRUE(iterateUntil([&] { return refreshes == 1; }));
  }

  static void changeTheStoreUntil(const std::function<bool()>& done, std::uint64_t seed) {
    std::mt19937_64 random(seed);
    while (!done()) {
      const Change& change = kChanges[random() % std::size(kChanges)];
      platform_tests::store().set(change.key, change.value);
    }
  }

 private:
  std::atomic<int> complaints_ = 0;
};

TEST_F(OnTheHostPlatform, EveryFunctionAnswersRightWhateverRunsBesideIt) {
  const std::uint64_t seed = testSeed();
  const Provider provider(VENTARO_PROVIDER);
  Callers callers(provider, seed);
  {
    const MainLoop mainLoop;
    std::thread changing([&] { changeTheStoreUntil([&] { return !callers.isRunning(); }, seed); });
    callers.run(CALLS_OF_EACH_THREAD);
    changing.join();
  }
  EXPECT_EQ(callers.notCalled(), std::vector<std::string>());
  EXPECT_EQ(clock::wrongTimersRemoved(), 0);
  EXPECT_EQ(complaintsOfGlib(), 0);
  expectARefreshAfterTheNextSwitch(provider);
}

// The timer takes no lock, so its last firing and the next switch may come at the same time.
TEST_F(OnTheHostPlatform, ASwitchKeepsItsTimerWhenTheTimerBeforeItFiresMeanwhile) {
  bool switched = false;
  const Provider provider(VENTARO_PROVIDER);
  const auto end = platform_tests::store().subscribe("memory/test/switched",
                                                     [&](const std::string&) { switched = true; });
  std::thread switching([&] {
    for (int i = 0; i < SWITCHES; ++i) {
      provider.table().set_int(kWifi, i % 2);
      clock::letFire(kFirings - 1);
      clock::waitForFirings();
      clock::letFire(1);
    }
    platform_tests::store().set("memory/test/switched", true);
  });
  EXPECT_TRUE(iterateUntil([&] { return switched; }));
  switching.join();
  EXPECT_EQ(clock::wrongTimersRemoved(), 0);
  EXPECT_EQ(complaintsOfGlib(), 0);
  expectARefreshAfterTheNextSwitch(provider);
}

}  // namespace
}  // namespace threads_tests
