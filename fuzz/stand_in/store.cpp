// The configuration store and the feature flags.
#include <cstring>
#include <string_view>

#include "../require.h"
#include "platform/config_store.h"
#include "platform/system_info.h"
#include "tv.h"

namespace fuzz {

namespace {

constexpr std::string_view kFlagDomain = "com.norvane/featureconf/";
constexpr int kNoValue = -3;

struct Subscriber {
  std::string key;
  vconf_callback_fn callback;
  void* data;
};

// They last as long as the process.
std::list<Subscriber>& subscribers() {
  static auto& instance = *new std::list<Subscriber>;
  return instance;
}

template <typename Map, typename T>
int read(const Map& map, const std::string& key, int failure, T& value) {
  if (failure != 0 && !answers().failsAfterWork) return failure;
  const auto found = map.find(key);
  const T* typed = found != map.end() ? std::get_if<T>(&found->second) : nullptr;
  if (typed != nullptr) value = *typed;
  if (failure != 0) return failure;
  return typed != nullptr ? 0 : kNoValue;
}

int set(const char* key, int failure, std::variant<int, std::string> value) {
  if (failure == 0 || answers().failsAfterWork) answers().store[key] = std::move(value);
  return failure;
}

std::string flagName(const char* key) {
  require(std::string_view(key).starts_with(kFlagDomain), "a flag's key is of the flags' domain");
  return key + kFlagDomain.size();
}

}  // namespace

void notify(const std::string& key) {
  for (const Subscriber& subscriber : subscribers()) {
    if (subscriber.key == key) subscriber.callback(nullptr, subscriber.data);
  }
}

}  // namespace fuzz

using namespace fuzz;

int vconf_get_int(const char* key, int* value) {
  return read(answers().store, key, enter(Function::kVconfGetInt), *value);
}

int vconf_set_int(const char* key, int value) {
  return set(key, enter(Function::kVconfSetInt), value);
}

char* vconf_get_str(const char* key) {
  std::string text;
  const int result = read(answers().store, key, enter(Function::kVconfGetStr), text);
  return result == 0 ? strdup(text.c_str()) : nullptr;
}

int vconf_set_str(const char* key, const char* value) {
  require(value != nullptr, "no null text is stored");
  return set(key, enter(Function::kVconfSetStr), std::string(value));
}

int vconf_get_bool(const char* key, int* value) {
  return read(answers().store, key, enter(Function::kVconfGetBool), *value);
}

int vconf_notify_key_changed(const char* key, vconf_callback_fn callback, void* user_data) {
  enter();
  require(callback != nullptr, "a subscriber has a callback");
  subscribers().push_back({key, callback, user_data});
  return 0;
}

int system_info_get_custom_bool(const char* key, bool* value) {
  return read(answers().flags, flagName(key), enter(Function::kSystemInfoBool), *value);
}

int system_info_get_custom_int(const char* key, int* value) {
  return read(answers().flags, flagName(key), enter(Function::kSystemInfoInt), *value);
}

// The provider keeps this text on purpose, so it stays the TV's.
int system_info_get_custom_string(const char* key, char** value) {
  std::string text;
  const int result = read(answers().flags, flagName(key), enter(Function::kSystemInfoString), text);
  if (result == 0 || answers().failsAfterWork) *value = keep(text);
  return result;
}
