#include "platform/connection.h"

#include <map>
#include <set>

#include "call.h"

namespace fake_platform {
namespace {

struct State {
  std::set<const void*> connections;
  int created = 0;
  std::vector<int> types;
  std::vector<void*> profiles;
  std::map<const void*, std::size_t> positions;  // by iterator
};

State& state() {
  static State& instance = *new State;
  return instance;
}

// The next profile's position, or null at the end and for no iterator.
std::size_t* positionOf(const void* iterator) {
  const auto found = state().positions.find(iterator);
  const bool hasNext = found != state().positions.end() && found->second < state().profiles.size();
  return hasNext ? &found->second : nullptr;
}

std::optional<int> typeOf(const void* profile) {
  for (std::size_t i = 0; i < state().profiles.size(); ++i) {
    if (state().profiles[i] == profile) return state().types[i];
  }
  return std::nullopt;
}

}  // namespace

void resetConnections() {
  state() = State();
}

void setProfiles(std::vector<int> types) {
  const StateLock lock(stateMutex());
  state().types = std::move(types);
  state().profiles.clear();
  for (std::size_t i = 1; i <= state().types.size(); ++i) {
    state().profiles.push_back(newHandle("profile " + std::to_string(i)));
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
    *connection = newHandle("connection " + std::to_string(++state().created));
    state().connections.insert(*connection);
    return 0;
  });
}

int connection_destroy(connection_h connection) {
  return Call("connection_destroy", handleName(connection)).answer([&] {
    return state().connections.erase(connection) == 1 ? 0 : kError;
  });
}

int connection_get_profile_iterator(connection_h connection, int iterator_type,
                                    connection_profile_iterator_h* iterator) {
  return Call("connection_get_profile_iterator", handleName(connection), iterator_type).answer([&] {
    if (!state().connections.contains(connection) || iterator_type != 0) return kError;
    *iterator = newHandle("iterator");
    state().positions[*iterator] = 0;
    return 0;
  });
}

bool connection_profile_iterator_has_next(connection_profile_iterator_h iterator) {
  const Call call("connection_profile_iterator_has_next", handleName(iterator));
  return call.answer([&] { return positionOf(iterator) != nullptr ? 0 : kError; }) == 0;
}

int connection_profile_iterator_next(connection_profile_iterator_h iterator,
                                     connection_profile_h* profile) {
  return Call("connection_profile_iterator_next", handleName(iterator)).answer([&] {
    std::size_t* position = positionOf(iterator);
    if (position == nullptr) return kError;
    *profile = state().profiles[(*position)++];
    return 0;
  });
}

int connection_profile_get_type(connection_profile_h profile, int* type) {
  return Call("connection_profile_get_type", handleName(profile)).answer([&] {
    const std::optional<int> found = typeOf(profile);
    if (!found) return kError;
    *type = *found;
    return 0;
  });
}

int connection_profile_enable_ethernet_eap(connection_profile_h profile, bool enable) {
  return Call("connection_profile_enable_ethernet_eap", handleName(profile), enable).answer([&] {
    return typeOf(profile) == kEthernetProfile ? 0 : kError;
  });
}
