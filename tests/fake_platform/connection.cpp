#include "platform/connection.h"

#include <map>
#include <set>
#include <utility>

#include "call.h"

namespace fake_platform {
namespace {

struct Iterator {
  const void* connection;
  std::size_t next = 0;
};

struct State {
  std::set<const void*> connections;
  int created = 0;
  std::vector<int> types;
  std::vector<void*> profiles;
  // These end with their connections.
  std::map<const void*, Iterator> iterators;
  std::set<std::pair<const void*, const void*>> handedOut;  // a profile and its connection
  std::set<const void*> known;                              // the profiles whose types were read
};

State& state() {
  static State& instance = *new State;
  return instance;
}

bool isOpen(const void* connection) {
  const StateLock lock(stateMutex());
  return state().connections.contains(connection);
}

// Null is allowed: objects of the provider without a connection pass null.
void demandOpen(const void* connection) {
  demand(connection == nullptr || isOpen(connection), "a connection is used until it is destroyed");
}

bool isOfOpenConnection(const void* profile) {
  const StateLock lock(stateMutex());
  const auto found = state().handedOut.lower_bound({profile, nullptr});
  return found != state().handedOut.end() && found->first == profile;
}

void demandProfile(const void* profile) {
  demand(isOfOpenConnection(profile), "a profile is used while its connection is open");
}

bool isOfOpenIterator(const void* iterator) {
  const StateLock lock(stateMutex());
  return state().iterators.contains(iterator);
}

void demandIterator(const void* iterator) {
  demand(isOfOpenIterator(iterator), "an iterator is used while its connection is open");
}

// The iterator; null at its end and for none.
Iterator* iteratorWithNext(const void* handle) {
  const auto found = state().iterators.find(handle);
  const bool hasNext =
      found != state().iterators.end() && found->second.next < state().profiles.size();
  return hasNext ? &found->second : nullptr;
}

bool hasNext(const void* iterator) {
  const StateLock lock(stateMutex());
  return iteratorWithNext(iterator) != nullptr;
}

std::optional<int> typeOf(const void* profile) {
  for (std::size_t i = 0; i < state().profiles.size(); ++i) {
    if (state().profiles[i] == profile) return state().types[i];
  }
  return std::nullopt;
}

// Unless the provider has read another type.
bool mayBeEthernet(const void* profile) {
  const StateLock lock(stateMutex());
  return typeOf(profile) == kEthernetProfile || !state().known.contains(profile);
}

void close(const void* connection) {
  std::erase_if(state().iterators,
                [&](const auto& each) { return each.second.connection == connection; });
  std::erase_if(state().handedOut, [&](const auto& each) { return each.second == connection; });
}

}  // namespace

void resetConnections(Extent extent) {
  if (extent == Extent::kAll) state() = State();
  state().types.clear();
  state().profiles.clear();
}

void setProfiles(std::vector<int> types) {
  const StateLock lock(stateMutex());
  state().types = std::move(types);
  state().profiles.clear();
  state().known.clear();
  int number = 0;
  for ([[maybe_unused]] const int type : state().types) {
    state().profiles.push_back(newHandle("profile", ++number));
  }
}

int openConnections() {
  const StateLock lock(stateMutex());
  return static_cast<int>(state().connections.size());
}

}  // namespace fake_platform

using namespace fake_platform;

int connection_create(connection_h* connection) {
  return Call("connection_create").answer([&] {
    *connection = newHandle("connection", ++state().created);
    state().connections.insert(*connection);
    return 0;
  });
}

int connection_destroy(connection_h connection) {
  demandOpen(connection);
  return Call("connection_destroy", Handle{connection}).answer([&] {
    close(connection);
    return state().connections.erase(connection) == 1 ? 0 : kError;
  });
}

int connection_get_profile_iterator(connection_h connection, int iterator_type,
                                    connection_profile_iterator_h* iterator) {
  demandOpen(connection);
  demand(iterator_type == 0, "the registered profiles are asked for");
  return Call("connection_get_profile_iterator", Handle{connection}, iterator_type).answer([&] {
    if (!state().connections.contains(connection) || iterator_type != 0) return kError;
    *iterator = newHandle("iterator", 0);
    state().iterators[*iterator] = {connection};
    return 0;
  });
}

bool connection_profile_iterator_has_next(connection_profile_iterator_h iterator) {
  demandIterator(iterator);
  const Call call("connection_profile_iterator_has_next", Handle{iterator});
  return call.answer([&] { return iteratorWithNext(iterator) != nullptr ? 0 : kError; }) == 0;
}

int connection_profile_iterator_next(connection_profile_iterator_h iterator,
                                     connection_profile_h* profile) {
  demandIterator(iterator);
  demand(hasNext(iterator), "an iterator is not moved beyond its end");
  return Call("connection_profile_iterator_next", Handle{iterator}).answer([&] {
    Iterator* found = iteratorWithNext(iterator);
    if (found == nullptr) return kError;
    *profile = state().profiles[found->next++];
    state().handedOut.emplace(*profile, found->connection);
    return 0;
  });
}

int connection_profile_get_type(connection_profile_h profile, int* type) {
  demandProfile(profile);
  const int result = Call("connection_profile_get_type", Handle{profile}).answer([&] {
    const std::optional<int> found = typeOf(profile);
    if (!found) return kError;
    *type = *found;
    return 0;
  });
  if (result == 0) {
    const StateLock lock(stateMutex());
    state().known.insert(profile);
  }
  return result;
}

int connection_profile_enable_ethernet_eap(connection_profile_h profile, bool enable) {
  demandProfile(profile);
  demand(mayBeEthernet(profile), "802.1X is switched on Ethernet");
  return Call("connection_profile_enable_ethernet_eap", Handle{profile}, enable).answer([&] {
    return typeOf(profile) == kEthernetProfile ? 0 : kError;
  });
}
