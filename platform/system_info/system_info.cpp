// The feature flags' C functions: the product's file, overridden by the store's keys
// "memory/host/feature/<flag>".
#include "platform/system_info.h"

#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include "../host/guard.h"
#include "../host/never_destroyed.h"
#include "platform/host/product.h"

namespace {

using platform::host::ConfigStore;
using platform::host::Product;
using platform::host::StoreCode;
using platform::host::StoreError;
using platform::host::StoreValue;

constexpr platform::Service kSystemInfo = {"SYSTEM_INFO", platform::storeCodeOf};
constexpr std::string_view kKeyPrefix = "com.norvane/featureconf/";

// Read once per process: a product's flags are fixed in the factory.
const Product& product() {
  static const auto& loaded = platform::neverDestroyed(new Product(platform::host::loadProduct()));
  return loaded;
}

std::optional<StoreValue> findFlag(std::string_view key) {
  if (!key.starts_with(kKeyPrefix)) return std::nullopt;
  const std::string flag(key.substr(kKeyPrefix.size()));
  if (flag.empty()) return std::nullopt;
  if (auto overridden = ConfigStore::instance().get(platform::host::kFlagOverrides + flag)) {
    return overridden;
  }
  const auto found = product().flags.find(flag);
  return found != product().flags.end() ? std::optional(found->second) : std::nullopt;
}

// Calls `take` with the flag's value, which must have that type.
template <typename T, typename Take>
int read(const char* function, const char* key, const void* output, const Take& take) {
  return platform::guarded(kSystemInfo, function, [&] {
    if (key == nullptr || output == nullptr) {
      throw StoreError(StoreCode::kNullArgument, "an argument is null");
    }
    const auto flag = findFlag(key);
    if (!flag) throw StoreError(StoreCode::kNoSuchKey, std::string("there is no flag ") + key);
    const T* const typed = std::get_if<T>(&*flag);
    if (typed == nullptr) {
      throw StoreError(StoreCode::kWrongType,
                       std::string(key) + " is of type " + platform::host::typeName(*flag));
    }
    take(*typed);
  });
}

}  // namespace

int system_info_get_custom_bool(const char* key, bool* value) {
  return read<bool>(__func__, key, value, [value](bool flag) { *value = flag; });
}

int system_info_get_custom_int(const char* key, int* value) {
  return read<int>(__func__, key, value, [value](int flag) { *value = flag; });
}

int system_info_get_custom_string(const char* key, char** value) {
  return read<std::string>(__func__, key, value,
                           [value](const std::string& flag) { *value = strdup(flag.c_str()); });
}
