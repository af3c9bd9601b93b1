// The products whose feature flags the host platform can take on.
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
  // By name, without the "com.norvane/featureconf/" before it.
  std::map<std::string, StoreValue> flags;
};

// While the TV runs, the value of the store's key with a flag's name after this overrides the flag.
inline constexpr char kFlagOverrides[] = "memory/host/feature/";

// The flags that the TV's software reads, which are all that a product may have: an example of each
// one's type.
PLATFORM_API const std::map<std::string, StoreValue>& knownFlags();

// Reads the product that $VENTARO_PRODUCT names (a name or a path; default "tv"). Raises
// ConfigurationError, also when a flag is of another type than the TV's software reads.
PLATFORM_API Product loadProduct();

// Reads the product of that name or path.
PLATFORM_API Product loadProduct(const std::string& nameOrPath);

}  // namespace platform::host

#endif  // PLATFORM_HOST_PRODUCT_H
