// The connection service's C functions.
#include "platform/connection.h"

#include <vector>

#include "handles.h"
#include "network.h"
#include "network_code.h"

namespace {

using platform::guarded;
using platform::handlesOf;
using platform::kNetwork;
using platform::network;
using platform::NetworkCode;
using platform::Profile;

constexpr int kRegisteredProfiles = 0;

struct Connection {
  // What ends with the connection.
  std::vector<void*> iterators;
  std::vector<void*> profiles;
};

struct ProfileIterator {
  std::vector<void*> profiles;
  std::size_t next = 0;
};

void* makeIterator(Connection& connection) {
  ProfileIterator iterator;
  for (const Profile& profile : network().profiles()) {
    iterator.profiles.push_back(handlesOf<Profile>().add(profile));
    connection.profiles.push_back(iterator.profiles.back());
  }
  connection.iterators.push_back(handlesOf<ProfileIterator>().add(iterator));
  return connection.iterators.back();
}

}  // namespace

int connection_create(connection_h* connection) {
  return guarded(kNetwork, __func__, [connection] {
    if (connection == nullptr) return NetworkCode::kNullArgument;
    *connection = handlesOf<Connection>().add({});
    return NetworkCode::kOk;
  });
}

int connection_destroy(connection_h connection) {
  return guarded(kNetwork, __func__, [connection] {
    if (connection == nullptr) return NetworkCode::kNullArgument;
    const auto object = handlesOf<Connection>().find(connection);
    if (object == nullptr) return NetworkCode::kBadHandle;
    for (void* iterator : object->iterators) handlesOf<ProfileIterator>().remove(iterator);
    for (void* profile : object->profiles) handlesOf<Profile>().remove(profile);
    handlesOf<Connection>().remove(connection);
    return NetworkCode::kOk;
  });
}

int connection_get_profile_iterator(connection_h connection, int iterator_type,
                                    connection_profile_iterator_h* iterator) {
  return guarded(kNetwork, __func__, [&] {
    if (connection == nullptr || iterator == nullptr) return NetworkCode::kNullArgument;
    const auto object = handlesOf<Connection>().find(connection);
    if (object == nullptr) return NetworkCode::kBadHandle;
    if (iterator_type != kRegisteredProfiles) return NetworkCode::kWrongType;
    *iterator = makeIterator(*object);
    return NetworkCode::kOk;
  });
}

bool connection_profile_iterator_has_next(connection_profile_iterator_h iterator) {
  if (platform::injectedFault(__func__) != 0) return false;
  const auto object = handlesOf<ProfileIterator>().find(iterator);
  return object != nullptr && object->next < object->profiles.size();
}

int connection_profile_iterator_next(connection_profile_iterator_h iterator,
                                     connection_profile_h* profile) {
  return guarded(kNetwork, __func__, [&] {
    if (iterator == nullptr || profile == nullptr) return NetworkCode::kNullArgument;
    const auto object = handlesOf<ProfileIterator>().find(iterator);
    if (object == nullptr) return NetworkCode::kBadHandle;
    if (object->next >= object->profiles.size()) return NetworkCode::kEnd;
    *profile = object->profiles[object->next++];
    return NetworkCode::kOk;
  });
}

int connection_profile_get_type(connection_profile_h profile, int* type) {
  return guarded(kNetwork, __func__, [&] {
    if (profile == nullptr || type == nullptr) return NetworkCode::kNullArgument;
    const auto object = handlesOf<Profile>().find(profile);
    if (object == nullptr) return NetworkCode::kBadHandle;
    *type = static_cast<int>(object->type);
    return NetworkCode::kOk;
  });
}

int connection_profile_enable_ethernet_eap(connection_profile_h profile, bool enable) {
  return guarded(kNetwork, __func__, [&] {
    if (profile == nullptr) return NetworkCode::kNullArgument;
    const auto object = handlesOf<Profile>().find(profile);
    if (object == nullptr) return NetworkCode::kBadHandle;
    if (object->type != platform::ProfileType::kEthernet) return NetworkCode::kWrongType;
    network().setEthernetEap(*object, enable);
    return NetworkCode::kOk;
  });
}
