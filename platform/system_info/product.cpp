#include "platform/host/product.h"

#include "../host/environment.h"
#include "platform/host/json_file.h"
#include "platform/host/resources.h"

namespace platform::host {

namespace {

constexpr char kDefaultProduct[] = "tv";

// The types of the flags that the TV's software reads; a product may have others of any type.
const std::map<std::string, StoreValue> kKnownTypes = {
    {"broadcast.removable_rf_tuner_support", false},
    {"network.network_support", 0},
    {"orlex_version", 0},
    {"product.b2b_option_support", false},
    {"product.device_sid", ""},
    {"product.smart_monitor_feature_support", false},
    {"projector_feature_support", false},
    {"setting.eu_energy_regulation", false},
};

const char* expectedType(const StoreValue& example) {
  constexpr const char* kWords[] = {"an integer", "true or false", "a string"};
  return kWords[example.index()];
}

}  // namespace

Product loadProduct() {
  return loadProduct(variableOr("VENTARO_PRODUCT", kDefaultProduct));
}

Product loadProduct(const std::string& nameOrPath) {
  const JsonFile file(findResource("products", nameOrPath));
  const std::string description = file.text(file.root(), "description");
  const Json::Value& flags = file.dictionary(file.root(), "flags");
  Product product{file.path(), description, file.values(flags)};
  for (const auto& [name, flag] : product.flags) {
    const auto known = kKnownTypes.find(name);
    if (known != kKnownTypes.end() && known->second.index() != flag.index()) {
      file.expected(expectedType(known->second), name, flags[name]);
    }
  }
  return product;
}

}  // namespace platform::host
