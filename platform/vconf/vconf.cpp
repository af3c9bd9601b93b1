// The store's C functions.
#include <dlfcn.h>
#include <link.h>
#include <sys/auxv.h>

#include <atomic>
#include <cstring>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "../host/guard.h"
#include "../host/never_destroyed.h"
#include "platform/config_store.h"
#include "platform/host/config_store.h"

using platform::guarded;
using platform::neverDestroyed;
using platform::Service;
using platform::host::ConfigStore;
using platform::host::StoreCode;
using platform::host::StoreError;
using platform::host::StoreView;
using platform::host::Subscription;
using platform::host::typeName;

struct keynode_t {
  std::string key;
};

namespace {

constexpr Service kStore = {"CONFIG_STORE", platform::storeCodeOf};

void requireArgument(const void* argument, const char* name) {
  if (argument != nullptr) return;
  throw StoreError(StoreCode::kNullArgument, std::string(name) + " is null");
}

// Calls `take` with the key's value, which must have that type. A missing key is not logged: many
// keys are read before they are first set.
template <typename T, typename Take>
StoreCode readAs(const char* key, const Take& take) {
  requireArgument(key, "the key");
  const bool isThere = ConfigStore::instance().read(key, [&](const StoreView& value) {
    const T* const typed = std::get_if<T>(&value);
    if (typed == nullptr) {
      throw StoreError(StoreCode::kWrongType, std::string("the value of ") + key + " is of type " +
                                                  typeName(value) + ", not " +
                                                  typeName(StoreView(T())));
    }
    take(*typed);
  });
  return isThere ? StoreCode::kOk : StoreCode::kNoSuchKey;
}

// How many libraries this process has loaded and unloaded so far.
struct LoadCounts {
  unsigned long long loads = 0;
  unsigned long long unloads = 0;
};

LoadCounts loadCounts() {
  LoadCounts counts;
  const auto read = [](dl_phdr_info* info, std::size_t /*size*/, void* data) {
    *static_cast<LoadCounts*>(data) = {info->dlpi_adds, info->dlpi_subs};
    return 1;  // all libraries carry the same counts
  };
  dl_iterate_phdr(read, &counts);
  return counts;
}

// The library that a callback belongs to. Its code must not be called once it is unloaded, and it
// cannot tell us, so this checks whether it is still loaded.
class Library {
 public:
  explicit Library(vconf_callback_fn callback)
      : callback_(reinterpret_cast<const void*>(callback)),
        loaded_(find(callback_)),
        countsThen_(loadCounts()) {}

  bool isLoaded() const { return find(callback_) == loaded_; }

  // Whether it may have been unloaded and loaded again at the same address. The program itself
  // cannot.
  bool mayHaveBeenReloaded() const {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the kernel passes the address as a number.
    if (loaded_ == find(reinterpret_cast<const void*>(getauxval(AT_PHDR)))) return false;
    const LoadCounts now = loadCounts();
    return now.loads != countsThen_.loads && now.unloads != countsThen_.unloads;
  }

 private:
  struct Identity {
    const void* base = nullptr;
    std::string file;
    bool operator==(const Identity&) const = default;
  };

  static Identity find(const void* address) {
    Dl_info info{};
    if (dladdr(address, &info) == 0) return {};
    return {info.dli_fbase, info.dli_fname};
  }

  const void* callback_;
  Identity loaded_;
  LoadCounts countsThen_;
};

struct CSubscription {
  std::string key;
  vconf_callback_fn callback;
  void* userData;
  Library library;
  Subscription subscription;
  std::atomic<bool> wasUnloaded = false;

  CSubscription(const char* subscribedKey, vconf_callback_fn function, void* data)
      : key(subscribedKey), callback(function), userData(data), library(function) {}

  // Once seen as unloaded it stays so, even if another library is loaded at its address.
  bool isLibraryGone() {
    if (!library.isLoaded()) wasUnloaded = true;
    return wasUnloaded;
  }

  void tell(const std::string& changedKey) {
    if (changedKey != key || isLibraryGone()) return;
    keynode_t node{key};
    callback(&node, userData);
  }
};

using Entry = std::shared_ptr<CSubscription>;

// The subscriptions of C callers. The loader is never asked with the mutex held: it may be loading
// a library whose constructor subscribes.
class CSubscriptions {
 public:
  std::vector<Entry> all() {
    const std::lock_guard lock(mutex_);
    return entries_;
  }

  void add(const Entry& entry) {
    const std::lock_guard lock(mutex_);
    entries_.push_back(entry);
  }

  // Another thread may be ending the same one.
  void end(const Entry& entry) {
    const std::lock_guard lock(mutex_);
    entry->subscription = Subscription();
    std::erase(entries_, entry);
  }

 private:
  std::mutex mutex_;
  std::vector<Entry> entries_;
};

// They last as long as the process or the caller's library. Those of unloaded libraries are dropped
// at the next subscription. If the library may have been loaded again, its new subscription
// replaces the old one, which still looks valid. So a library that subscribes one callback to one
// key twice keeps only the last, if in between any library was loaded and any unloaded. That is
// better than calling a callback with the data of an unloaded library.
void keepSubscribed(const char* key, vconf_callback_fn callback, void* userData) {
  static auto& subscriptions = neverDestroyed(new CSubscriptions);
  for (const Entry& each : subscriptions.all()) {
    const bool same = each->key == key && each->callback == callback;
    if (each->isLibraryGone() || (same && each->library.mayHaveBeenReloaded())) {
      subscriptions.end(each);
    }
  }
  const auto entry = std::make_shared<CSubscription>(key, callback, userData);
  // The notifier keeps a reference too: another thread may be using the entry when it is dropped.
  entry->subscription = ConfigStore::instance().subscribe(
      key, [entry](const std::string& changedKey) { entry->tell(changedKey); });
  subscriptions.add(entry);
}

}  // namespace

const char* platform::host::keyOf(const keynode_t* node) {
  return node->key.c_str();
}

int vconf_get_int(const char* key, int* value) {
  return guarded(kStore, __func__, [&] {
    requireArgument(value, "the output");
    return readAs<int>(key, [&](int found) { *value = found; });
  });
}

int vconf_set_int(const char* key, int value) {
  return guarded(kStore, __func__, [&] {
    requireArgument(key, "the key");
    ConfigStore::instance().set(key, value);
  });
}

char* vconf_get_str(const char* key) {
  char* copy = nullptr;
  guarded(kStore, __func__, [&] {
    return readAs<std::string_view>(
        key, [&](std::string_view text) { copy = strndup(text.data(), text.size()); });
  });
  return copy;
}

int vconf_set_str(const char* key, const char* value) {
  return guarded(kStore, __func__, [&] {
    requireArgument(key, "the key");
    requireArgument(value, "the value");
    ConfigStore::instance().set(key, std::string(value));
  });
}

int vconf_get_bool(const char* key, int* value) {
  return guarded(kStore, __func__, [&] {
    requireArgument(value, "the output");
    return readAs<bool>(key, [&](bool found) { *value = found ? 1 : 0; });
  });
}

int vconf_notify_key_changed(const char* key, vconf_callback_fn callback, void* user_data) {
  return guarded(kStore, __func__, [&] {
    requireArgument(key, "the key");
    requireArgument(reinterpret_cast<const void*>(callback), "the callback");
    ConfigStore::instance().get(key);  // raises for an invalid key
    keepSubscribed(key, callback, user_data);
  });
}
