// The Wi-Fi and connection services, and the wake-on-mobile mode.
#include <set>

#include "../require.h"
#include "platform/app_util.h"
#include "platform/connection.h"
#include "platform/wifi.h"
#include "tv.h"

namespace fuzz {

namespace {

constexpr int kError = -101;
constexpr int kEthernet = 2;

struct Profile {
  const void* connection;
  int type;
  bool typeIsTold = false;
};

struct Iterator {
  const void* connection;
  std::vector<void*> profiles;
  std::size_t next = 0;
};

struct State {
  std::set<const void*> connections;
  std::map<const void*, Iterator> iterators;
  std::map<const void*, Profile> profiles;
  std::set<const void*> accessPoints;
};

State& state() {
  static State& instance = *new State;
  return instance;
}

Profile& profileOf(const void* handle) {
  const auto found = state().profiles.find(handle);
  require(found != state().profiles.end(), "a profile is used while its connection is open");
  return found->second;
}

Iterator& iteratorOf(const void* handle) {
  const auto found = state().iterators.find(handle);
  require(found != state().iterators.end(), "an iterator is used while its connection is open");
  return found->second;
}

bool works(int failure) {
  return failure == 0 || answers().failsAfterWork;
}

void* newIterator(const void* connection) {
  Iterator iterator{connection, {}};
  for (const int type : answers().profileTypes) {
    iterator.profiles.push_back(newHandle());
    state().profiles.emplace(iterator.profiles.back(), Profile{connection, type});
  }
  void* handle = newHandle();
  state().iterators.emplace(handle, std::move(iterator));
  return handle;
}

}  // namespace

std::size_t openConnections() {
  return state().connections.size();
}

std::size_t openAccessPoints() {
  return state().accessPoints.size();
}

}  // namespace fuzz

using namespace fuzz;

int wifi_initialize() {
  return enter(Function::kWifiInitialize);
}

int wifi_get_connected_ap(wifi_ap_h* ap) {
  const int failure = enter(Function::kWifiGetConnectedAp);
  if (!works(failure)) return failure;
  if (!answers().connectedMhz) return failure != 0 ? failure : kError;
  *ap = newHandle();
  state().accessPoints.insert(*ap);
  return failure;
}

// The provider asks for null where there is none, on purpose.
int wifi_ap_get_frequency(wifi_ap_h ap, int* mhz) {
  const int failure = enter(Function::kWifiApGetFrequency);
  require(ap == nullptr || state().accessPoints.contains(ap), "an access point is used while open");
  if (ap == nullptr) return kError;
  if (works(failure)) *mhz = answers().connectedMhz.value_or(0);
  return failure;
}

// As above. The handle goes also when this fails.
int wifi_ap_destroy(wifi_ap_h ap) {
  const int failure = enter(Function::kWifiApDestroy);
  if (ap == nullptr) return kError;
  require(state().accessPoints.erase(ap) == 1, "an access point is destroyed once");
  return failure;
}

int wifi_get_enable_qx(int* radio) {
  const int failure = enter(Function::kWifiGetEnable);
  if (works(failure)) *radio = answers().radio;
  return failure;
}

int wifi_set_enable_qx(int enable) {
  const int failure = enter(Function::kWifiSetEnable);
  require(enable == 0 || enable == 1, "the radio is switched with 0 or 1");
  if (works(failure)) answers().radio = enable;
  return failure;
}

int connection_create(connection_h* connection) {
  const int failure = enter(Function::kConnectionCreate);
  if (!works(failure)) return failure;
  *connection = newHandle();
  state().connections.insert(*connection);
  return failure;
}

// Two objects return null where they have no connection, on purpose.
int connection_destroy(connection_h connection) {
  const int failure = enter(Function::kConnectionDestroy);
  if (connection == nullptr) return kError;
  require(state().connections.erase(connection) == 1, "a connection is destroyed once");
  const auto isOfIt = [connection](const auto& entry) {
    return entry.second.connection == connection;
  };
  std::erase_if(state().iterators, isOfIt);
  std::erase_if(state().profiles, isOfIt);
  return failure;
}

int connection_get_profile_iterator(connection_h connection, int iterator_type,
                                    connection_profile_iterator_h* iterator) {
  const int failure = enter(Function::kGetProfileIterator);
  if (connection == nullptr) return kError;
  require(state().connections.contains(connection), "a connection is used while open");
  require(iterator_type == 0, "the registered profiles are asked for");
  if (works(failure)) *iterator = newIterator(connection);
  return failure;
}

bool connection_profile_iterator_has_next(connection_profile_iterator_h iterator) {
  if (enter(Function::kIteratorHasNext) != 0) return false;
  const Iterator& found = iteratorOf(iterator);
  return found.next < found.profiles.size();
}

int connection_profile_iterator_next(connection_profile_iterator_h iterator,
                                     connection_profile_h* profile) {
  const int failure = enter(Function::kIteratorNext);
  Iterator& found = iteratorOf(iterator);
  require(found.next < found.profiles.size(), "an iterator is not moved beyond its end");
  if (works(failure)) *profile = found.profiles[found.next++];
  return failure;
}

int connection_profile_get_type(connection_profile_h profile, int* type) {
  const int failure = enter(Function::kProfileGetType);
  Profile& found = profileOf(profile);
  found.typeIsTold = failure == 0;
  if (works(failure)) *type = found.type;
  return failure;
}

int connection_profile_enable_ethernet_eap(connection_profile_h profile, bool /*enable*/) {
  const int failure = enter(Function::kEnableEthernetEap);
  const Profile& found = profileOf(profile);
  require(found.type == kEthernet || !found.typeIsTold, "802.1X is switched on Ethernet");
  if (failure != 0) return failure;
  return found.type == kEthernet ? 0 : kError;
}

int util_get_wakeOnMobile_mode(bool* enabled) {
  const int failure = enter(Function::kGetWakeOnMobile);
  if (works(failure)) *enabled = answers().wakeOnMobile;
  return failure;
}

int util_set_wakeOnMobile_mode(bool enable) {
  const int failure = enter(Function::kSetWakeOnMobile);
  if (works(failure)) answers().wakeOnMobile = enable;
  return failure;
}
