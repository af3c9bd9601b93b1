// The connection service's C functions.
#include "platform/connection.h"

#include <vector>

#include "../config_store/host_switches.h"
#include "guard.h"
#include "handles.h"
#include "network.h"

namespace {

using platform::guarded;
using platform::Handles;
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

// Never destroyed: a library that is unloaded at exit still returns its connections.
Handles<Connection>& connections() {
  static auto* const handles = new Handles<Connection>;
  return *handles;
}

Handles<ProfileIterator>& iterators() {
  static auto* const handles = new Handles<ProfileIterator>;
  return *handles;
}

Handles<Profile>& profiles() {
  static auto* const handles = new Handles<Profile>;
  return *handles;
}

void* makeIterator(Connection& connection) {
  ProfileIterator iterator;
  for (const Profile& profile : network().profiles()) {
    iterator.profiles.push_back(profiles().add(profile));
    connection.profiles.push_back(iterator.profiles.back());
  }
  connection.iterators.push_back(iterators().add(iterator));
  return connection.iterators.back();
}

}  // namespace

int connection_create(connection_h* connection) {
  return guarded("connection_create", [connection] {
    if (connection == nullptr) return NetworkCode::kNullArgument;
    *connection = connections().add({});
    return NetworkCode::kOk;
  });
}

int connection_destroy(connection_h connection) {
  return guarded("connection_destroy", [connection] {
    if (connection == nullptr) return NetworkCode::kNullArgument;
    const auto object = connections().find(connection);
    if (object == nullptr) return NetworkCode::kBadHandle;
    for (void* iterator : object->iterators) iterators().remove(iterator);
    for (void* profile : object->profiles) profiles().remove(profile);
    connections().remove(connection);
    return NetworkCode::kOk;
  });
}

int connection_get_profile_iterator(connection_h connection, int iterator_type,
                                    connection_profile_iterator_h* iterator) {
  return guarded("connection_get_profile_iterator", [&] {
    if (connection == nullptr || iterator == nullptr) return NetworkCode::kNullArgument;
    const auto object = connections().find(connection);
    if (object == nullptr) return NetworkCode::kBadHandle;
    if (iterator_type != kRegisteredProfiles) return NetworkCode::kWrongType;
    *iterator = makeIterator(*object);
    return NetworkCode::kOk;
  });
}

bool connection_profile_iterator_has_next(connection_profile_iterator_h iterator) {
  if (platform::injectedFault("connection_profile_iterator_has_next") != 0) return false;
  const auto object = iterators().find(iterator);
  return object != nullptr && object->next < object->profiles.size();
}

int connection_profile_iterator_next(connection_profile_iterator_h iterator,
                                     connection_profile_h* profile) {
  return guarded("connection_profile_iterator_next", [&] {
    if (iterator == nullptr || profile == nullptr) return NetworkCode::kNullArgument;
    const auto object = iterators().find(iterator);
    if (object == nullptr) return NetworkCode::kBadHandle;
    if (object->next >= object->profiles.size()) return NetworkCode::kEnd;
    *profile = object->profiles[object->next++];
    return NetworkCode::kOk;
  });
}

int connection_profile_get_type(connection_profile_h profile, int* type) {
  return guarded("connection_profile_get_type", [&] {
    if (profile == nullptr || type == nullptr) return NetworkCode::kNullArgument;
    const auto object = profiles().find(profile);
    if (object == nullptr) return NetworkCode::kBadHandle;
    *type = static_cast<int>(object->type);
    return NetworkCode::kOk;
  });
}

int connection_profile_enable_ethernet_eap(connection_profile_h profile, bool enable) {
  return guarded("connection_profile_enable_ethernet_eap", [&] {
    if (profile == nullptr) return NetworkCode::kNullArgument;
    const auto object = profiles().find(profile);
    if (object == nullptr) return NetworkCode::kBadHandle;
    if (object->type != platform::ProfileType::kEthernet) return NetworkCode::kWrongType;
    network().setEthernetEap(*object, enable);
    return NetworkCode::kOk;
  });
}
