// The provider under eight threads of a framework, with everything that a platform may do at the
// same time on its own threads: notifications, and firing the Wi-Fi timer.
#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "../provider/language.h"
#include "callers.h"
#include "fake_platform.h"
#include "seed.h"

namespace threads_tests {
namespace {

constexpr char kDocumentKey[] = "db/menu/network/TopSavedAP";
constexpr char kRefreshKey[] = "db/menu/refresh_menu";
constexpr int kFirings = 4;  // until the timer asks for the refresh

void makePlatform() {
  fake_platform::reset();
  useLanguage("en");
  fake_platform::Store store = fake_platform::store();
  store.set("db/menu/network/devicename/default_tv_name", "TV One");
  store.set("db/menu/network/devicename/tv_name", "TV One");
  store.set("db/menu_widget/language", "en");
  fake_platform::setProfiles({fake_platform::kWifiProfile, fake_platform::kEthernetProfile});
}

void setDocument(int number) {
  const std::string document = number % 3 == 0 ? R"({"count": 1, "values": [{"SSID": "Net One"}]})"
                                               : R"({"count": 1, "values": [
      {"SSID": "Net One", "SIGNAL_STRENGTH": -50, "STATUS": "Connected"}]})";
  fake_platform::store().set(kDocumentKey, document);
}

TEST(OnAnyPlatform, EveryFunctionAnswersRightWhateverThePlatformDoesBesideIt) {
  const std::uint64_t seed = testSeed();
  makePlatform();
  {
    const contract::Provider provider(VENTARO_PROVIDER);
    Callers callers(provider, seed);
    std::atomic<int> firings = 0;
    // The radio is asked while nobody switches it. Then the timer's time passes.
    fake_platform::onCall("wifi_get_enable_qx", [&] { firings = kFirings - 1; });
    const auto beside = [&](const auto& action) {
      return std::thread([&callers, action] {
        for (int i = 0; callers.isRunning(); ++i) {
          action(i);
          std::this_thread::yield();
        }
      });
    };
    std::thread changing = beside([](int i) { setDocument(i); });
    std::thread notifying = beside([](int) { fake_platform::store().notify(kDocumentKey); });
    std::thread firing = beside([&firings](int) {
      if (firings == 0) return;
      --firings;
      fake_platform::advanceTimers();
    });
    callers.run(CALLS_OF_EACH_THREAD);
    for (std::thread* thread : {&changing, &notifying, &firing}) thread->join();
    fake_platform::clearHooks();
    EXPECT_EQ(callers.notCalled(), std::vector<std::string>());

    // The last switch's refresh comes, once.
    provider.table().set_int(VENTARO_KEY_WIFI, 1);
    fake_platform::store().erase(kRefreshKey);
    fake_platform::advanceTimers(kFirings);
    EXPECT_EQ(fake_platform::store().intAt(kRefreshKey), 1);
    EXPECT_EQ(fake_platform::runningTimers(), 0);
  }
  EXPECT_EQ(fake_platform::wrongRemovals(), std::vector<unsigned>());
  EXPECT_EQ(fake_platform::logMistakes(), std::vector<std::string>());
  EXPECT_EQ(fake_platform::openConnections(), 0);
  EXPECT_EQ(fake_platform::openAps(), 0);
  fake_platform::reset();
}

}  // namespace
}  // namespace threads_tests
