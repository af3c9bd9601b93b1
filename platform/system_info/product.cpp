#include "platform/host/product.h"

#include <vector>

#include "../host/environment.h"
#include "platform/host/json_file.h"
#include "platform/host/resources.h"

namespace platform::host {

namespace {

constexpr char kDefaultProduct[] = "tv";

// An example of each flag's type.
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

std::vector<std::string> namesOf(const std::map<std::string, StoreValue>& flags) {
  std::vector<std::string> names;
  names.reserve(flags.size());
  for (const auto& [name, value] : flags) names.push_back(name);
  return names;
}

const char* expectedType(const StoreValue& example) {
  constexpr const char* kWords[] = {"an integer", "true or false", "a string"};
  return kWords[example.index()];
}

}  // namespace

const std::map<std::string, StoreValue>& knownFlags() {
  return kKnownTypes;
}

Product loadProduct() {
  return loadProduct(variableOr("VENTARO_PRODUCT", kDefaultProduct));
}

Product loadProduct(const std::string& nameOrPath) {
  const JsonFile file(findResource("products", nameOrPath));
  file.allowOnly(file.root(), {"description", "flags"});
  const std::string description = file.text(file.root(), "description");
  const Json::Value& flags = file.dictionary(file.root(), "flags");
  file.allowOnly(flags, namesOf(kKnownTypes));
  Product product{file.path(), description, file.values(flags)};
  for (const auto& [name, flag] : product.flags) {
    const StoreValue& known = kKnownTypes.at(name);
    if (known.index() != flag.index()) file.expected(expectedType(known), name, flags[name]);
  }
  return product;
}

}  // namespace platform::host
