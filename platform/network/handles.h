// Handles that C callers hold: a pointer that no longer is, or never was, a handle is told apart.
#ifndef PLATFORM_NETWORK_HANDLES_H
#define PLATFORM_NETWORK_HANDLES_H

#include <memory>
#include <mutex>
#include <unordered_map>
#include <utility>

#include "../host/never_destroyed.h"

namespace platform {

// Owns the objects behind the handles of one kind. Any thread.
template <typename T>
class Handles {
 public:
  void* add(T object) {
    const std::lock_guard lock(mutex_);
    auto shared = std::make_shared<T>(std::move(object));
    void* handle = shared.get();
    objects_.emplace(handle, std::move(shared));
    return handle;
  }

  // Null for what is no handle.
  std::shared_ptr<T> find(void* handle) const {
    const std::lock_guard lock(mutex_);
    const auto found = objects_.find(handle);
    return found != objects_.end() ? found->second : nullptr;
  }

  // False for what is no handle.
  bool remove(void* handle) {
    const std::lock_guard lock(mutex_);
    return objects_.erase(handle) > 0;
  }

 private:
  mutable std::mutex mutex_;
  std::unordered_map<void*, std::shared_ptr<T>> objects_;
};

// All handles to objects of that kind.
template <typename T>
Handles<T>& handlesOf() {
  static auto& handles = neverDestroyed(new Handles<T>);
  return handles;
}

}  // namespace platform

#endif  // PLATFORM_NETWORK_HANDLES_H
