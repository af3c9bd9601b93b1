#include "platform/system_info.h"

#include <cstring>
#include <functional>
#include <map>
#include <string_view>
#include <variant>

#include "call.h"

namespace fake_platform {
namespace {

struct NullText {};
using Value = std::variant<bool, int, std::string, NullText>;

struct State {
  std::map<std::string, Value, std::less<>> values;
  std::vector<char*> handedOut;
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

void put(const std::string& name, Value value) {
  const StateLock lock(stateMutex());
  state().values.insert_or_assign(flagKey(name), std::move(value));
}

constexpr std::string_view kDomain = "com.norvane/featureconf/";

void demandFlag(std::string_view key) {
  demand(key.starts_with(kDomain), "a flag's key is of the flags' domain");
}

template <typename Type>
int read(FunctionName function, const char* key, Type* value) {
  demandFlag(key);
  return Call(function, key).answer([&] {
    const Type* found = find<Type>(key);
    if (found == nullptr) return kError;
    *value = *found;
    return 0;
  });
}

}  // namespace

std::string flagKey(const std::string& name) {
  const bool isFull = name.find('/') != std::string::npos;
  return isFull ? name : std::string(kDomain) + name;
}

// The provider must never free these texts: freeing them here would then be a double free, which
// aborts.
void resetFlags() {
  for (char* text : state().handedOut) std::free(text);
  state() = State();
}

Flags flags() {
  return {};
}

void Flags::setBool(const std::string& name, bool value) {
  put(name, value);
}

void Flags::set(const std::string& name, int value) {
  put(name, value);
}

void Flags::set(const std::string& name, const std::string& text) {
  put(name, text);
}

void Flags::setNullText(const std::string& name) {
  put(name, NullText());
}

void Flags::erase(const std::string& name) {
  const StateLock lock(stateMutex());
  state().values.erase(flagKey(name));
}

}  // namespace fake_platform

using namespace fake_platform;

int system_info_get_custom_bool(const char* key, bool* value) {
  return read("system_info_get_custom_bool", key, value);
}

int system_info_get_custom_int(const char* key, int* value) {
  return read("system_info_get_custom_int", key, value);
}

int system_info_get_custom_string(const char* key, char** value) {
  demandFlag(key);
  return Call("system_info_get_custom_string", key).answer([&] {
    if (find<NullText>(key) != nullptr) {
      *value = nullptr;
      return 0;
    }
    const auto* found = find<std::string>(key);
    if (found == nullptr) return kError;
    *value = strdup(found->c_str());
    state().handedOut.push_back(*value);
    return 0;
  });
}
