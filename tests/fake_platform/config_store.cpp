#include "platform/config_store.h"

#include <cstring>
#include <functional>
#include <map>
#include <string_view>
#include <variant>

#include "call.h"

struct keynode_t {
  const char* key;
};

namespace fake_platform {
namespace {

struct RawBool {
  int value;
};

using Value = std::variant<int, RawBool, std::string>;
using Values = std::map<std::string, Value, std::less<>>;

struct Subscription {
  std::string key;
  vconf_callback_fn callback;
  void* userData;
};

struct State {
  Values values;
  std::vector<Subscription> subscriptions;
};

State& state() {
  static State& instance = *new State;
  return instance;
}

template <typename Type>
const Type* find(std::string_view key) {
  const auto found = state().values.find(key);
  return found != state().values.end() ? std::get_if<Type>(&found->second) : nullptr;
}

void put(const std::string& key, Value value) {
  const StateLock lock(stateMutex());
  state().values.insert_or_assign(key, std::move(value));
}

}  // namespace

void resetStore(Extent extent) {
  state().values.clear();
  if (extent == Extent::kAll) state().subscriptions.clear();
}

Store store() {
  return {};
}

void Store::set(const std::string& key, int value) {
  put(key, value);
}

void Store::set(const std::string& key, const std::string& text) {
  put(key, text);
}

void Store::setBool(const std::string& key, bool value) {
  put(key, RawBool{value ? 1 : 0});
}

void Store::setRawBool(const std::string& key, int value) {
  put(key, RawBool{value});
}

void Store::erase(const std::string& key) {
  const StateLock lock(stateMutex());
  state().values.erase(key);
}

std::optional<int> Store::intAt(const std::string& key) const {
  const StateLock lock(stateMutex());
  const int* value = find<int>(key);
  return value != nullptr ? std::optional(*value) : std::nullopt;
}

std::optional<std::string> Store::stringAt(const std::string& key) const {
  const StateLock lock(stateMutex());
  const auto* text = find<std::string>(key);
  return text != nullptr ? std::optional(*text) : std::nullopt;
}

std::vector<std::string> Store::subscriptions() const {
  const StateLock lock(stateMutex());
  std::vector<std::string> keys;
  for (const Subscription& each : state().subscriptions) keys.push_back(each.key);
  return keys;
}

void Store::notify(const std::string& key) const {
  std::vector<Subscription> subscriptions;
  {
    const StateLock lock(stateMutex());
    subscriptions = state().subscriptions;
  }
  keynode_t node{key.c_str()};
  for (const Subscription& each : subscriptions) {
    if (each.key == key) each.callback(&node, each.userData);
  }
}

}  // namespace fake_platform

using namespace fake_platform;

int vconf_get_int(const char* key, int* value) {
  return Call("vconf_get_int", key).answer([&] {
    const int* found = find<int>(key);
    if (found == nullptr) return kError;
    *value = *found;
    return 0;
  });
}

int vconf_set_int(const char* key, int value) {
  return Call("vconf_set_int", key, value).answer([&] {
    state().values.insert_or_assign(key, value);
    return 0;
  });
}

char* vconf_get_str(const char* key) {
  char* copy = nullptr;
  const int result = Call("vconf_get_str", key).answer([&] {
    const auto* found = find<std::string>(key);
    if (found != nullptr) copy = strdup(found->c_str());
    return 0;
  });
  if (result == 0) return copy;
  std::free(copy);
  return nullptr;
}

int vconf_set_str(const char* key, const char* value) {
  demand(value != nullptr, "a text that is stored is not null");
  return Call("vconf_set_str", key, value).answer([&] {
    if (value == nullptr) return kError;
    state().values.insert_or_assign(key, std::string(value));
    return 0;
  });
}

int vconf_get_bool(const char* key, int* value) {
  return Call("vconf_get_bool", key).answer([&] {
    const auto* found = find<RawBool>(key);
    if (found == nullptr) return kError;
    *value = found->value;
    return 0;
  });
}

int vconf_notify_key_changed(const char* key, vconf_callback_fn callback, void* user_data) {
  demand(callback != nullptr, "a subscriber has a callback");
  return Call("vconf_notify_key_changed", key).answer([&] {
    state().subscriptions.push_back({key, callback, user_data});
    return 0;
  });
}
