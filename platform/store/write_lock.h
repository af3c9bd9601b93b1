// The lock that a process holds while it changes a store. LMDB has one of its own, but waits for it
// without end and does not say who holds it.
#ifndef PLATFORM_STORE_WRITE_LOCK_H
#define PLATFORM_STORE_WRITE_LOCK_H

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <mutex>
#include <string>

#include "files.h"
#include "platform/host/config_store.h"

namespace platform {

// What a Hold raises when the lock was not to be had.
class StoreIsBusy : public host::StoreError {
 public:
  explicit StoreIsBusy(const std::string& message)
      : StoreError(host::StoreCode::kUnavailable, message) {}
};

// At most one for each file in a process: the kernel drops the lock when any descriptor of the file
// is closed.
class WriteLock {
 public:
  // Waits for another process at most as long as `patience`. Opens the file and creates it when
  // missing; raises StoreError.
  WriteLock(const std::filesystem::path& path, std::chrono::milliseconds patience);
  WriteLock(const WriteLock&) = delete;
  WriteLock& operator=(const WriteLock&) = delete;

  // The number of the data file that the store's other files belong to; 0 when there is none. To be
  // set while the lock is held.
  ino_t dataFile() const;
  void setDataFile(ino_t number) const;

  // Held while this exists. Any thread. Raises StoreIsBusy, which names the process that holds the
  // lock, when one holds it for longer than the patience.
  class Hold {
   public:
    explicit Hold(WriteLock& lock);
    ~Hold();
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;

   private:
    WriteLock& lock_;
    std::unique_lock<std::mutex> thread_;
  };

 private:
  // Tries until it succeeds; false when the same process has the lock for longer than the patience.
  bool retry(const std::function<bool()>& attempt) const;
  // False when another process has the lock.
  bool tryToLock();
  void unlock() const;
  void noteWhen() const;
  std::int64_t heldSince() const;
  // Raises the error.
  [[noreturn]] void tellWhoHoldsIt() const;

  const std::filesystem::path path_;
  const std::chrono::milliseconds patience_;
  std::mutex threads_;  // the file's lock belongs to the process, not to a thread
  File file_;
};

}  // namespace platform

#endif  // PLATFORM_STORE_WRITE_LOCK_H
