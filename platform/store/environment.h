// LMDB's environment of a store, with its tables: one opening of the files in a folder.
#ifndef PLATFORM_STORE_ENVIRONMENT_H
#define PLATFORM_STORE_ENVIRONMENT_H

#include <lmdb.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "files.h"
#include "map_guard.h"
#include "transactions.h"
#include "write_lock.h"

namespace platform {

enum class Durability {
  kSynced,    // a commit has reached the disk when it returns
  kInMemory,  // commits survive the process, not the machine
};

// How hard to look whether somebody touched the files. Reading, which is to be cheap, may miss it
// until the next tick of the kernel's clock (1 to 10 ms). A change must not be written to where
// nobody will read it, and a subscriber is woken only once.
enum class Look { kOnceInATick, kNow };

struct Tables {
  MDB_dbi values = 0;
  MDB_dbi journal = 0;
};

// A process must not open the same files twice at a time, because of the kernel's locks.
class Environment {
 public:
  // Opens the files and makes them when missing, with their folder; in a folder that cannot be
  // written, opens them for reading. Raises StoreError.
  Environment(const std::filesystem::path& folder, Durability durability);
  ~Environment();
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;

  MDB_env* get() const { return environment_.get(); }
  Tables tables() const { return tables_; }
  IdleReaders& readers() { return readers_; }
  WriteLock& writeLock() { return *writeLock_; }

  bool isReadOnly() const { return writeLock_ == nullptr; }

  // Whether it is read-only and was never written. There is no environment then.
  bool isEmpty() const { return isEmpty_; }

  // What somebody did to the files since they were opened, as a sentence; empty when they are as
  // they were. Only closing may follow then. Any thread; costs a dozen gets.
  std::string whatHappened() const;

  // Whether anything happened to them. Any thread.
  bool isTouched(Look look) const;

  // After a failed commit LMDB may refuse everything; then only closing may follow, too. Any
  // thread.
  void giveUp() { isGivenUp_ = true; }
  bool isGivenUp() const { return isGivenUp_; }

  // Makes the file as long as its pages are many, so that only a truncated one is too short. Any
  // thread, after a commit.
  void fillUpFile();

 private:
  struct Close {
    void operator()(MDB_env* environment) const { mdb_env_close(environment); }
  };
  using LockHeader = std::array<char, 8>;  // bytes, which LMDB writes once

  void openToWrite(Durability durability, unsigned flags);
  void openToRead(unsigned flags);
  int open(unsigned flags);
  void openTables();
  bool openTables(Access access);
  void dropWhatAnOlderBootLeft();
  bool isLockFileOfData() const;
  void makeAnew();
  LockHeader readLockHeader() const;
  std::string whatHappenedToLockFile() const;

  const std::filesystem::path folder_;
  const std::filesystem::path data_;
  const std::filesystem::path lock_;
  std::unique_ptr<WriteLock> writeLock_;  // null when read-only
  // Closed after the environment: closing any descriptor of the file drops the kernel's locks on
  // it.
  File lockFile_;
  LockHeader lockHeader_{};
  std::unique_ptr<MDB_env, Close> environment_;
  std::optional<MapGuard> dataGuard_;
  std::optional<MapGuard> lockGuard_;
  IdleReaders readers_;
  Tables tables_;
  bool isEmpty_ = false;
  std::atomic<bool> isGivenUp_ = false;
  mutable std::atomic<std::int64_t> lastLook_ = 0;  // nanoseconds of the kernel's clock
  FileState openedData_;
  FileState openedLock_;
  mutable std::atomic<off_t> dataSize_ = 0;  // bytes, the largest seen: the file never shrinks
  std::atomic<std::size_t> filledUpTo_ = 0;  // the last page known to be in the file
};

}  // namespace platform

#endif  // PLATFORM_STORE_ENVIRONMENT_H
