// The files that this process watches: one inotify instance, because the kernel gives a user only
// few, and one source in the default GLib main context. Nothing polls.
#ifndef PLATFORM_STORE_WATCHER_H
#define PLATFORM_STORE_WATCHER_H

#include <filesystem>
#include <functional>
#include <map>
#include <mutex>

#include "files.h"

namespace platform {

// All functions may be called from any thread.
class Watcher {
 public:
  // Called from the main context after the file was written. `mayBeGone` says that it may also have
  // been replaced or removed.
  using Touched = std::function<void(bool mayBeGone)>;

  Watcher() = default;
  ~Watcher();
  Watcher(const Watcher&) = delete;
  Watcher& operator=(const Watcher&) = delete;

  // Watches the file that is now at the path, or whether the folder that is there goes away.
  // Returns a number for remove(), the same one for the same file. Raises StoreError, which names
  // the limit when the kernel allows no more.
  int add(const std::filesystem::path& path, Touched touched);

  // Without effect for a number that was removed. Not while the main context is iterated by another
  // thread.
  void remove(int watch);

 private:
  void start();
  void dispatch();
  std::map<int, bool> drain() const;

  std::mutex mutex_;
  std::map<int, Touched> watched_;
  File inotify_;
  unsigned source_ = 0;
};

}  // namespace platform

#endif  // PLATFORM_STORE_WATCHER_H
