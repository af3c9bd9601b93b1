// The fixture of the tests of notifications.
#ifndef NOTIFICATIONS_TEST_H
#define NOTIFICATIONS_TEST_H

#include <string>
#include <vector>

#include "platform_test.h"

namespace platform_tests {

using platform::host::Subscription;
using Keys = std::vector<std::string>;

class ASubscriber : public PlatformTest {
 protected:
  // Subscribes with a list that the keys are added to.
  [[nodiscard]] static Subscription listen(const std::string& prefix, Keys& told) {
    return store().subscribe(prefix, [&told](const std::string& key) { told.push_back(key); });
  }

  // Sets a last key and waits for its notification: those of all earlier changes have then arrived.
  static void hearAll(const std::string& area = "db/") {
    const std::string last = area + "the/last/key";
    bool heard = false;
    const auto subscription = store().subscribe(last, [&](const std::string&) { heard = true; });
    store().set(last, true);
    ASSERT_TRUE(iterateUntil([&] { return heard; }));
  }
};

}  // namespace platform_tests

#endif  // NOTIFICATIONS_TEST_H
