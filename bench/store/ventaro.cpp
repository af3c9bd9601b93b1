// The host platform's store, through its C functions, as the provider calls them.
#include <cstdlib>

#include "contents.h"
#include "platform/config_store.h"
#include "platform/host/config_store.h"
#include "store.h"

namespace bench {

namespace {

using platform::host::ConfigStore;
using platform::host::StoreValue;

class VentaroReader : public Reader {
 public:
  int number(const std::string& key) override {
    int value = 0;
    require(vconf_get_int(key.c_str(), &value) == 0, "ventaro: cannot read ", key);
    return value;
  }
  char* text(const std::string& key) override {
    char* copy = vconf_get_str(key.c_str());
    require(copy != nullptr, "ventaro: cannot read ", key);
    return copy;
  }
};

class Ventaro : public Store {
 public:
  explicit Ventaro(std::string prefix) : prefix_(std::move(prefix)) {}

  std::string prefix() const override { return prefix_; }

  void fill(int count) override {
    constexpr std::size_t kBatch = 10'000;
    std::map<std::string, StoreValue> batch;
    for (int index = 0; index < count; ++index) {
      StoreValue& value = batch[prefix_ + nameOf(index)];
      if (kindOf(index) == Kind::kNumber) {
        value = numberOf(index);
      } else {
        value = textOf(index);
      }
      if (batch.size() < kBatch && index + 1 < count) continue;
      ConfigStore::instance().set(batch);
      batch.clear();
    }
  }

  std::unique_ptr<Reader> reader() override { return std::make_unique<VentaroReader>(); }

  void setNumber(const std::string& key, int value) override {
    require(vconf_set_int(key.c_str(), value) == 0, "ventaro: cannot set ", key);
  }

  void watch(const std::string& key, const std::function<void()>& changed) override {
    const auto call = [](keynode_t*, void* data) {
      (*static_cast<std::function<void()>*>(data))();
    };
    auto* const kept = new std::function(changed);  // a subscription never ends
    require(vconf_notify_key_changed(key.c_str(), call, kept) == 0, "ventaro: cannot watch ", key);
  }

 private:
  std::string prefix_;
};

}  // namespace

std::unique_ptr<Store> openVentaro(const std::filesystem::path& folder, Durability durability,
                                   int /*count*/) {
  const bool durable = durability == Durability::kDurable;
  const char* const variable = durable ? "VENTARO_STATE_DIR" : "VENTARO_RUNTIME_DIR";
  const char* const value = std::getenv(variable);
  require(value != nullptr && value == folder, variable, " must be ", folder.native());
  // Sorts after all initial keys of a store, so that it is filled in key order like the others.
  return std::make_unique<Ventaro>(durable ? "db/store/" : "memory/store/");
}

}  // namespace bench
