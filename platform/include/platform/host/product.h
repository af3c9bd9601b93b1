// The products that the host platform can simulate, as sets of feature flags.
#ifndef PLATFORM_HOST_PRODUCT_H
#define PLATFORM_HOST_PRODUCT_H

#include <filesystem>
#include <map>
#include <string>

#include "platform/export.h"
#include "platform/host/config_store.h"

namespace platform::host {

struct Product {
  std::filesystem::path file;
  std::string description;
  // By name, without the prefix "com.norvane/featureconf/".
  std::map<std::string, StoreValue> flags;
};

// The prefix of the store's keys that override a flag while the TV runs; the flag's name follows.
inline constexpr char kFlagOverrides[] = "memory/host/feature/";

// The flags that the TV's software reads, each with an example of its type. A product may have no
// others.
PLATFORM_API const std::map<std::string, StoreValue>& knownFlags();

// Reads the product that $VENTARO_PRODUCT names (a name or a path; default "tv"). Raises
// ConfigurationError, also when a flag has another type than the TV's software expects.
PLATFORM_API Product loadProduct();

// Reads the product with that name or path.
PLATFORM_API Product loadProduct(const std::string& nameOrPath);

}  // namespace platform::host

#endif  // PLATFORM_HOST_PRODUCT_H
