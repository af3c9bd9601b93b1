#include "platform/host/product.h"

#include <cstdlib>

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

StoreValue flagValue(const JsonFile& file, const std::string& name, const Json::Value& value) {
  const auto convert = [&]() -> StoreValue {
    if (value.isBool()) return value.asBool();
    if (value.isInt()) return value.asInt();
    if (value.isString()) return value.asString();
    file.expected("true, false, an integer or a string", name, value);
  };
  const StoreValue flag = convert();
  const auto known = kKnownTypes.find(name);
  if (known != kKnownTypes.end() && known->second.index() != flag.index()) {
    file.expected(expectedType(known->second), name, value);
  }
  return flag;
}

}  // namespace

Product loadProduct() {
  const char* name = std::getenv("VENTARO_PRODUCT");
  return loadProduct(name != nullptr && *name != '\0' ? name : kDefaultProduct);
}

Product loadProduct(const std::string& nameOrPath) {
  const JsonFile file(findResource("products", nameOrPath));
  Product product{file.path(), file.text(file.root(), "description"), {}};
  const Json::Value& flags = file.dictionary(file.root(), "flags");
  for (const std::string& name : flags.getMemberNames()) {
    product.flags.emplace(name, flagValue(file, name, flags[name]));
  }
  return product;
}

}  // namespace platform::host
