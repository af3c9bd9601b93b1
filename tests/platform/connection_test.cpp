// The connection service's C functions.
#include "platform/connection.h"

#include <cstdlib>
#include <string>
#include <vector>

#include "platform/app_util.h"
#include "simulated_network.h"

namespace platform_tests {
namespace {

constexpr int kRegistered = 0;
constexpr int kWifi = 1;
constexpr int kEthernet = 2;

class Connection : public NetworkTest {
 protected:
  void SetUp() override {
    use(scenarioText(0));
    ASSERT_EQ(connection_create(&connection_), 0);
    ASSERT_NE(connection_, nullptr);
  }

  ~Connection() override {
    if (connection_ != nullptr) connection_destroy(connection_);
  }

  connection_profile_iterator_h iterate() const {
    connection_profile_iterator_h iterator = nullptr;
    EXPECT_EQ(connection_get_profile_iterator(connection_, kRegistered, &iterator), 0);
    return iterator;
  }

  std::vector<connection_profile_h> profiles() const {
    std::vector<connection_profile_h> found;
    connection_profile_iterator_h iterator = iterate();
    while (connection_profile_iterator_has_next(iterator)) {
      found.push_back(nullptr);
      EXPECT_EQ(connection_profile_iterator_next(iterator, &found.back()), 0);
    }
    return found;
  }

  void destroy() {
    EXPECT_EQ(connection_destroy(connection_), 0);
    destroyed_ = connection_;
    connection_ = nullptr;
  }

  connection_h connection_ = nullptr;
  connection_h destroyed_ = nullptr;
};

TEST_F(Connection, GivesTheProfilesInTheirOrder) {
  std::vector<int> types;
  for (connection_profile_h profile : profiles()) {
    types.push_back(0);
    EXPECT_EQ(connection_profile_get_type(profile, &types.back()), 0);
  }
  EXPECT_EQ(types, (std::vector<int>{kWifi, kEthernet, kEthernet}));
}

TEST_F(Connection, GivesNoMoreProfilesAtTheEnd) {
  connection_profile_iterator_h iterator = iterate();
  connection_profile_h profile = nullptr;
  for (int i = 0; i < 3; ++i) {
    EXPECT_TRUE(connection_profile_iterator_has_next(iterator));
    EXPECT_EQ(connection_profile_iterator_next(iterator, &profile), 0);
  }
  const void* const last = profile;
  for (int i = 0; i < 2; ++i) {
    EXPECT_FALSE(connection_profile_iterator_has_next(iterator));
    EXPECT_NE(connection_profile_iterator_next(iterator, &profile), 0);
  }
  EXPECT_EQ(profile, last);
}

TEST_F(Connection, GivesIteratorsThatDoNotDisturbEachOther) {
  connection_profile_iterator_h first = iterate();
  connection_profile_h profile = nullptr;
  EXPECT_EQ(connection_profile_iterator_next(first, &profile), 0);
  EXPECT_EQ(profiles().size(), 3U);
  EXPECT_EQ(connection_profile_iterator_next(first, &profile), 0);
  EXPECT_TRUE(connection_profile_iterator_has_next(first));
}

TEST_F(Connection, GivesNoIteratorOfAnotherType) {
  connection_profile_iterator_h iterator = nullptr;
  for (const int type : {1, 2, -1}) {
    EXPECT_NE(connection_get_profile_iterator(connection_, type, &iterator), 0) << type;
  }
  EXPECT_EQ(iterator, nullptr);
}

TEST_F(Connection, RefusesNullPointers) {
  connection_profile_iterator_h iterator = iterate();
  connection_profile_h profile = nullptr;
  int type = 7;
  EXPECT_NE(connection_create(nullptr), 0);
  EXPECT_NE(connection_destroy(nullptr), 0);
  EXPECT_NE(connection_get_profile_iterator(nullptr, kRegistered, &iterator), 0);
  EXPECT_NE(connection_get_profile_iterator(connection_, kRegistered, nullptr), 0);
  EXPECT_FALSE(connection_profile_iterator_has_next(nullptr));
  EXPECT_NE(connection_profile_iterator_next(nullptr, &profile), 0);
  EXPECT_NE(connection_profile_iterator_next(iterator, nullptr), 0);
  EXPECT_NE(connection_profile_get_type(nullptr, &type), 0);
  EXPECT_NE(connection_profile_get_type(profiles().front(), nullptr), 0);
  EXPECT_NE(connection_profile_enable_ethernet_eap(nullptr, true), 0);
  EXPECT_EQ(profile, nullptr);
  EXPECT_EQ(type, 7);
}

TEST_F(Connection, RefusesHandlesOfAnotherKind) {
  connection_profile_iterator_h iterator = iterate();
  connection_profile_h profile = profiles().front();
  connection_profile_iterator_h anotherIterator = nullptr;
  connection_profile_h anotherProfile = nullptr;
  int type = 7;
  for (void* foreign : {static_cast<void*>(&type), iterator, profile}) {
    EXPECT_NE(connection_destroy(foreign), 0);
    EXPECT_NE(connection_get_profile_iterator(foreign, kRegistered, &anotherIterator), 0);
  }
  for (void* foreign : {static_cast<void*>(&type), connection_, profile}) {
    EXPECT_FALSE(connection_profile_iterator_has_next(foreign));
    EXPECT_NE(connection_profile_iterator_next(foreign, &anotherProfile), 0);
  }
  for (void* foreign : {static_cast<void*>(&type), connection_, iterator}) {
    EXPECT_NE(connection_profile_get_type(foreign, &type), 0);
    EXPECT_NE(connection_profile_enable_ethernet_eap(foreign, true), 0);
  }
  EXPECT_EQ(anotherIterator, nullptr);
  EXPECT_EQ(anotherProfile, nullptr);
  EXPECT_EQ(type, 7);
}

TEST_F(Connection, EndsWithAllThatCameFromIt) {
  connection_profile_iterator_h iterator = iterate();
  connection_profile_h profile = profiles()[1];
  destroy();
  connection_profile_iterator_h anotherIterator = nullptr;
  connection_profile_h anotherProfile = nullptr;
  int type = 7;
  EXPECT_NE(connection_destroy(destroyed_), 0);
  EXPECT_NE(connection_get_profile_iterator(destroyed_, kRegistered, &anotherIterator), 0);
  EXPECT_FALSE(connection_profile_iterator_has_next(iterator));
  EXPECT_NE(connection_profile_iterator_next(iterator, &anotherProfile), 0);
  EXPECT_NE(connection_profile_get_type(profile, &type), 0);
  EXPECT_NE(connection_profile_enable_ethernet_eap(profile, true), 0);
  EXPECT_EQ(type, 7);
}

TEST_F(Connection, EndsWithoutHarmToAnother) {
  connection_h other = nullptr;
  ASSERT_EQ(connection_create(&other), 0);
  EXPECT_NE(other, connection_);
  connection_profile_h profile = profiles()[1];
  EXPECT_EQ(connection_destroy(other), 0);
  int type = 7;
  EXPECT_EQ(connection_profile_get_type(profile, &type), 0);
  EXPECT_EQ(type, kEthernet);
}

TEST_F(Connection, SwitchesEapOnTheEthernetProfileAndNoOther) {
  const auto found = profiles();
  EXPECT_EQ(connection_profile_enable_ethernet_eap(found[1], true), 0);
  EXPECT_EQ(networkState("eap/eth0"), StoreValue(true));
  EXPECT_EQ(networkState("eap/eth1"), StoreValue("never set"));
  EXPECT_EQ(connection_profile_enable_ethernet_eap(found[1], false), 0);
  EXPECT_EQ(connection_profile_enable_ethernet_eap(found[2], true), 0);
  EXPECT_EQ(networkState("eap/eth0"), StoreValue(false));
  EXPECT_EQ(networkState("eap/eth1"), StoreValue(true));
}

TEST_F(Connection, HasNoEapOnAWifiProfile) {
  EXPECT_NE(connection_profile_enable_ethernet_eap(profiles()[0], true), 0);
  EXPECT_EQ(networkState("eap/wifi0"), StoreValue("never set"));
}

class WakeOnMobile : public PlatformTest {};

TEST_F(WakeOnMobile, IsOffUntilItIsSwitchedOn) {
  bool enabled = true;
  EXPECT_EQ(util_get_wakeOnMobile_mode(&enabled), 0);
  EXPECT_FALSE(enabled);
  EXPECT_EQ(util_set_wakeOnMobile_mode(true), 0);
  EXPECT_EQ(util_get_wakeOnMobile_mode(&enabled), 0);
  EXPECT_TRUE(enabled);
  EXPECT_EQ(store().get("db/host/wake_on_mobile"), StoreValue(true));
  EXPECT_EQ(util_set_wakeOnMobile_mode(false), 0);
  EXPECT_EQ(util_get_wakeOnMobile_mode(&enabled), 0);
  EXPECT_FALSE(enabled);
  EXPECT_NE(util_get_wakeOnMobile_mode(nullptr), 0);
}

TEST_F(WakeOnMobile, IsAnErrorWithoutAStore) {
  setenv("VENTARO_STATE_DIR", write("file", "").c_str(), 1);
  bool enabled = true;
  EXPECT_NE(util_get_wakeOnMobile_mode(&enabled), 0);
  EXPECT_NE(util_set_wakeOnMobile_mode(true), 0);
  EXPECT_TRUE(enabled);
}

}  // namespace
}  // namespace platform_tests
