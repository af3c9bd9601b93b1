// Notifies this process's subscribers of changes to a database, whichever process made them.
#ifndef PLATFORM_STORE_NOTIFIER_H
#define PLATFORM_STORE_NOTIFIER_H

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "database.h"
#include "watcher.h"

namespace platform {

// Calls them from the default GLib main context. The functions may be called from any thread.
class Notifier {
 public:
  using Callback = std::function<void(const std::string& key)>;

  // Both must outlive it.
  Notifier(const Database& database, Watcher& watcher);
  ~Notifier();
  Notifier(const Notifier&) = delete;
  Notifier& operator=(const Notifier&) = delete;

  // Calls `changed` for every later change of a key that begins with `prefix`. Returns a number for
  // remove(). Raises StoreError when the notice file cannot be watched.
  int add(const std::string& prefix, Callback changed);
  void remove(int number);

 private:
  struct Subscriber {
    std::string prefix;
    Callback changed;
    Database::Position since;  // the last change before the subscription
  };

  void watchFile();
  void dispatch(bool mayBeGone);
  bool tryToDispatch(bool mayBeGone);
  void deliver(const Database::Change& change);

  const Database& database_;
  Watcher& watcher_;
  std::mutex mutex_;
  std::map<int, std::shared_ptr<Subscriber>> subscribers_;
  int nextNumber_ = 1;
  Database::Position delivered_;  // the last change that subscribers were notified of
  std::set<int> watches_;         // none before the first subscription
};

}  // namespace platform

#endif  // PLATFORM_STORE_NOTIFIER_H
