// The store's C functions.
#include <dlfcn.h>

#include <cstring>
#include <functional>
#include <list>
#include <mutex>
#include <string>

#include "faults.h"
#include "platform/config_store.h"
#include "platform/host/config_store.h"
#include "platform/log.h"

using platform::injectedFault;
using platform::host::ConfigStore;
using platform::host::StoreCode;
using platform::host::StoreError;
using platform::host::StoreValue;
using platform::host::Subscription;

struct keynode_t {
  std::string key;
};

namespace {

// Carries out `action`; an error becomes a line in the log and the function's result.
int guarded(const char* function, const std::function<void()>& action) {
  if (const int fault = injectedFault(function)) return fault;
  try {
    action();
    return static_cast<int>(StoreCode::kOk);
  } catch (const StoreError& error) {
    // A key that is not there is no event, many are asked for before they are first set.
    if (error.code() != StoreCode::kNoSuchKey) {
      __dlog_print(PLATFORM_LOG_SYSTEM, PLATFORM_LOG_INFO, "CONFIG_STORE", "%s: %s", function,
                   error.what());
    }
    return static_cast<int>(error.code());
  } catch (const std::exception& error) {
    __dlog_print(PLATFORM_LOG_SYSTEM, PLATFORM_LOG_INFO, "CONFIG_STORE", "%s: %s", function,
                 error.what());
    return static_cast<int>(StoreCode::kUnavailable);
  }
}

void requireArgument(const void* argument, const char* name) {
  if (argument != nullptr) return;
  throw StoreError(StoreCode::kNullArgument, std::string(name) + " is null");
}

template <typename T>
T valueOf(const char* key) {
  requireArgument(key, "the key");
  const auto value = ConfigStore::instance().get(key);
  if (!value) throw StoreError(StoreCode::kNoSuchKey, std::string("no value for ") + key);
  if (const T* typed = std::get_if<T>(&*value)) return *typed;
  throw StoreError(StoreCode::kWrongType, std::string("the value of ") + key + " is of type " +
                                              platform::host::typeName(*value) + ", not " +
                                              platform::host::typeName(T()));
}

// The library that a callback belongs to, to see whether it is still loaded. Its code must not be
// called when it is not, and there is no way for it to say that it goes.
class Library {
 public:
  explicit Library(vconf_callback_fn callback) : callback_(callback), loaded_(find()) {}
  bool isLoaded() const { return find() == loaded_; }

 private:
  struct Identity {
    const void* base = nullptr;
    std::string file;
    bool operator==(const Identity&) const = default;
  };

  Identity find() const {
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(callback_), &info) == 0) return {};
    return {info.dli_fbase, info.dli_fname};
  }

  vconf_callback_fn callback_;
  Identity loaded_;
};

struct CSubscription {
  std::string key;
  vconf_callback_fn callback;
  void* userData;
  Library library;
  Subscription subscription;

  void tell(const std::string& changedKey) {
    if (changedKey != key) return;
    if (!library.isLoaded()) {
      subscription = Subscription();
      return;
    }
    keynode_t node{key};
    callback(&node, userData);
  }
};

// The subscriptions of C callers last as long as the process, or as the caller's library.
void keepSubscribed(const char* key, vconf_callback_fn callback, void* userData) {
  static std::mutex mutex;
  static auto* const subscriptions = new std::list<CSubscription>;  // never destroyed, see above
  const std::lock_guard lock(mutex);
  CSubscription& entry =
      subscriptions->emplace_back(CSubscription{key, callback, userData, Library(callback), {}});
  try {
    entry.subscription = ConfigStore::instance().subscribe(
        key, [&entry](const std::string& changedKey) { entry.tell(changedKey); });
  } catch (...) {
    subscriptions->pop_back();
    throw;
  }
}

}  // namespace

const char* platform::host::keyOf(const keynode_t* node) {
  return node->key.c_str();
}

int vconf_get_int(const char* key, int* value) {
  return guarded("vconf_get_int", [&] {
    requireArgument(value, "the output");
    *value = valueOf<int>(key);
  });
}

int vconf_set_int(const char* key, int value) {
  return guarded("vconf_set_int", [&] {
    requireArgument(key, "the key");
    ConfigStore::instance().set(key, value);
  });
}

char* vconf_get_str(const char* key) {
  char* copy = nullptr;
  guarded("vconf_get_str", [&] { copy = strdup(valueOf<std::string>(key).c_str()); });
  return copy;
}

int vconf_set_str(const char* key, const char* value) {
  return guarded("vconf_set_str", [&] {
    requireArgument(key, "the key");
    requireArgument(value, "the value");
    ConfigStore::instance().set(key, std::string(value));
  });
}

int vconf_get_bool(const char* key, int* value) {
  return guarded("vconf_get_bool", [&] {
    requireArgument(value, "the output");
    *value = valueOf<bool>(key) ? 1 : 0;
  });
}

int vconf_notify_key_changed(const char* key, vconf_callback_fn callback, void* user_data) {
  return guarded("vconf_notify_key_changed", [&] {
    requireArgument(key, "the key");
    requireArgument(reinterpret_cast<const void*>(callback), "the callback");
    ConfigStore::instance().get(key);  // raises for a key that cannot be
    keepSubscribed(key, callback, user_data);
  });
}
