// The feature flags' C functions: the product's file, overridden by the store's keys
// "memory/host/feature/<flag>".
#include "platform/system_info.h"

#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include "../config_store/host_switches.h"
#include "platform/host/errors.h"
#include "platform/host/product.h"
#include "platform/log.h"

namespace {

using platform::host::ConfigStore;
using platform::host::Product;
using platform::host::StoreCode;
using platform::host::StoreValue;

constexpr std::string_view kKeyPrefix = "com.norvane/featureconf/";

// Read once per process: a product's flags are fixed when it is made.
const Product& product() {
  static const auto* const loaded = new Product(platform::host::loadProduct());  // never destroyed
  return *loaded;
}

std::optional<StoreValue> findFlag(std::string_view key) {
  if (!key.starts_with(kKeyPrefix)) return std::nullopt;
  const std::string flag(key.substr(kKeyPrefix.size()));
  if (flag.empty()) return std::nullopt;
  if (auto overridden = ConfigStore::instance().get("memory/host/feature/" + flag)) {
    return overridden;
  }
  const auto found = product().flags.find(flag);
  return found != product().flags.end() ? std::optional(found->second) : std::nullopt;
}

int fail(const char* function, StoreCode code, const std::string& reason) {
  __dlog_print(PLATFORM_LOG_SYSTEM, PLATFORM_LOG_INFO, "SYSTEM_INFO", "%s: %s", function,
               reason.c_str());
  return static_cast<int>(code);
}

template <typename T>
int read(const char* function, const char* key, T* value) {
  if (const int fault = platform::injectedFault(function)) return fault;
  if (key == nullptr || value == nullptr) {
    return fail(function, StoreCode::kNullArgument, "an argument is null");
  }
  try {
    const auto flag = findFlag(key);
    if (!flag) return fail(function, StoreCode::kNoSuchKey, std::string("there is no flag ") + key);
    const T* typed = std::get_if<T>(&*flag);
    if (typed == nullptr) {
      return fail(function, StoreCode::kWrongType,
                  std::string(key) + " is of type " + platform::host::typeName(*flag));
    }
    *value = *typed;
    return static_cast<int>(StoreCode::kOk);
  } catch (const platform::host::StoreError& error) {
    return fail(function, error.code(), error.what());
  } catch (const platform::host::ConfigurationError& error) {
    return fail(function, StoreCode::kUnavailable, error.what());
  }
}

}  // namespace

int system_info_get_custom_bool(const char* key, bool* value) {
  return read("system_info_get_custom_bool", key, value);
}

int system_info_get_custom_int(const char* key, int* value) {
  return read("system_info_get_custom_int", key, value);
}

int system_info_get_custom_string(const char* key, char** value) {
  if (value == nullptr) return static_cast<int>(StoreCode::kNullArgument);
  std::string text;
  const int result = read("system_info_get_custom_string", key, &text);
  if (result == 0) *value = strdup(text.c_str());
  return result;
}
