// One LMDB environment: values by key, and a journal of changes, from which other processes learn
// of them. Both are written in one transaction, so every change has its entry.
#ifndef PLATFORM_STORE_DATABASE_H
#define PLATFORM_STORE_DATABASE_H

#include <lmdb.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "notice_file.h"
#include "platform/host/config_store.h"
#include "transactions.h"
#include "write_lock.h"

namespace platform {

enum class Durability {
  kSynced,    // a commit has reached the disk when it returns
  kInMemory,  // commits survive the process, not the machine
};

enum class Overwrite { kYes, kNo };

class Database {
 public:
  // Opens the folder and creates it when missing; a read-only folder is opened for reading. Raises
  // StoreError.
  Database(const std::filesystem::path& folder, Durability durability);

  // All functions may be called from any thread and raise StoreError.
  bool read(std::string_view key, const std::function<void(const host::StoreView&)>& take) const;
  host::ConfigStore::Snapshot snapshot(const std::string& prefix) const;

  // Writes the values in one transaction, each with its journal entry, and wakes the subscribers.
  // Returns whether it wrote any.
  bool put(const std::map<std::string, host::StoreValue>& values, Overwrite overwrite);

  // Removes the key, with a journal entry like that of a put. Returns whether it existed.
  bool erase(const std::string& key);

  // Replaces all values with these, in one transaction.
  void replaceAll(const std::map<std::string, host::StoreValue>& values);

  // The number of the last commit, which a snapshot may not include yet; 0 when there was none.
  std::uint64_t version() const;

  // The number of the last change; 0 when there was none.
  std::uint64_t lastChange() const;

  struct Change {
    std::uint64_t number;
    std::string key;
  };

  // The changes after that number, in order. The journal is finite: for a reader that is too far
  // behind, `complete` is false, and only the remaining changes are returned.
  struct Changes {
    std::vector<Change> changes;
    bool complete = true;
  };
  Changes changesAfter(std::uint64_t number) const;

  // Written after every put(), by any process: what a subscriber watches.
  const std::filesystem::path& noticeFile() const { return noticeFile_.path(); }
  void makeNoticeFile() const { noticeFile_.make(); }

 private:
  struct CloseEnvironment {
    void operator()(MDB_env* environment) const { mdb_env_close(environment); }
  };

  // Drops a memory/ area that was written before the machine was booted.
  void dropWhatAnOlderBootLeft(const std::filesystem::path& folder);
  void openEnvironment(const std::filesystem::path& folder, unsigned flags);
  void openTables();
  // False when there are no tables yet, which a write transaction makes.
  bool openTables(Access access);
  void fillUpFile();
  // Carries out the action in one transaction and wakes the subscribers. Returns the action's
  // result: whether it changed anything.
  bool change(const std::function<bool(MDB_txn*)>& action);

  std::unique_ptr<WriteLock> writeLock_;  // null when opened read-only
  std::unique_ptr<MDB_env, CloseEnvironment> environment_;
  mutable IdleReaders readers_;
  MDB_dbi values_ = 0;
  MDB_dbi journal_ = 0;
  const Durability durability_;
  bool readOnly_ = false;
  bool empty_ = false;                       // opened read-only and never written
  std::atomic<std::size_t> filledUpTo_ = 0;  // the last page known to be in the file
  NoticeFile noticeFile_;
};

}  // namespace platform

#endif  // PLATFORM_STORE_DATABASE_H
