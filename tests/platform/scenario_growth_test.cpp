// How the work with a scenario grows with its access points. It is counted, not timed: all the
// platform's comparisons of texts come to the memcmp() below.
#include <atomic>
#include <cstddef>
#include <cstring>
#include <string>

#include "platform/host/network_service.h"
#include "simulated_network.h"

namespace platform_tests {
namespace {

std::atomic<std::size_t> comparisons = 0;

std::string scenarioOf(int accessPoints) {
  std::string points;
  for (int i = 0; i < accessPoints; ++i) {
    points += (i == 0 ? "" : ",") + std::string(R"({"ssid": "Network )") +
              std::to_string(100'000 + i) +
              R"(", "frequency_mhz": 2437, "signal_dbm": -60, "saved": true})";
  }
  return R"({"radio": true, "connected": "", "connect_milliseconds": 0, "profiles": [],
             "access_points": [)" +
         points + "]}";
}

class TheWorkWithAScenario : public NetworkTest {
 protected:
  std::size_t comparisonsFor(int accessPoints) const {
    const std::string file = write("grown.json", scenarioOf(accessPoints));
    comparisons = 0;
    platform::host::loadScenario(file);
    return comparisons;
  }
};

TEST_F(TheWorkWithAScenario, GrowsAsItsAccessPointsDo) {
  platform::host::openNetwork();
  const std::size_t some = comparisonsFor(1'000);
  EXPECT_GT(some, 1'000U);
  EXPECT_LT(comparisonsFor(4'000), some * 6);
}

}  // namespace
}  // namespace platform_tests

extern "C" __attribute__((visibility("default"), no_sanitize("address", "undefined", "thread"))) int
memcmp(const void* one, const void* other, std::size_t size) noexcept {
  platform_tests::comparisons.fetch_add(1, std::memory_order_relaxed);
  const auto* left = static_cast<const unsigned char*>(one);
  const auto* right = static_cast<const unsigned char*>(other);
  for (std::size_t i = 0; i < size; ++i) {
    if (left[i] != right[i]) return left[i] < right[i] ? -1 : 1;
  }
  return 0;
}
