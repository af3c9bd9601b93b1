// The fixture of the tests of the simulated network's service.
#ifndef NETWORK_SERVICE_TEST_H
#define NETWORK_SERVICE_TEST_H

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "platform/host/network_service.h"
#include "simulated_network.h"

namespace platform_tests {

using platform::host::kConnectCommandKey;
using platform::host::NetworkService;
using platform::host::Subscription;

inline constexpr char kDocumentKey[] = "db/menu/network/TopSavedAP";
inline constexpr int kAMoment = 20;  // milliseconds

inline void command(const std::string& text) {
  store().set(kConnectCommandKey, text);
}

inline void connectTo(const std::string& ssid) {
  command(R"({"COMMAND": "1", "SSID": ")" + ssid + "\"}");
}

class Service : public NetworkTest {
 protected:
  void SetUp() override { use(scenarioText(kForEver)); }

  // Starts the service, and notes from now on what it publishes.
  void start() {
    service_ = NetworkService::start();
    ASSERT_NE(service_, nullptr);
    subscription_ = store().subscribe(kDocumentKey, [this](const std::string&) {
      const std::string networks = publishedNetworks();
      if (published_.empty() || published_.back() != networks) published_.push_back(networks);
    });
  }

  // Waits until that is published, as the last of what was.
  testing::AssertionResult publishes(const std::string& networks) const {
    const bool done =
        iterateUntil([&] { return !published_.empty() && published_.back() == networks; });
    if (done) return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << "published last: " << (published_.empty() ? "nothing" : published_.back());
  }

  // How many lines of the log end with that text.
  int countLogged(const std::string& ending) const {
    const auto lines = linesOf(logFile());
    return static_cast<int>(std::ranges::count_if(
        lines, [&](const std::string& line) { return line.ends_with(ending); }));
  }

  std::unique_ptr<NetworkService> service_;
  Subscription subscription_;
  std::vector<std::string> published_;
};

}  // namespace platform_tests

#endif  // NETWORK_SERVICE_TEST_H
