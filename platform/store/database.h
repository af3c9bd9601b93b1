// One LMDB environment: values by key, and a journal of changes, from which other processes learn
// of them. Both are written in one transaction, so every change has its entry.
#ifndef PLATFORM_STORE_DATABASE_H
#define PLATFORM_STORE_DATABASE_H

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <shared_mutex>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "environment.h"
#include "notice_file.h"
#include "platform/host/config_store.h"

namespace platform {

enum class Overwrite { kYes, kNo };

// The error with the store's folder before its message.
host::StoreError inFolder(const std::filesystem::path& folder, const host::StoreError& error);

// When somebody moves, replaces or cuts short a file that is in use, the next function to notice it
// raises StoreError, and the one after that opens the files that are there then.
class Database {
 public:
  using Values = std::map<std::string, host::StoreValue>;

  // Opens the folder and creates it when missing; a read-only folder is opened for reading. Adds
  // the settings whose keys it lacks. Raises StoreError.
  Database(const std::filesystem::path& folder, Durability durability, Values settings);

  // All functions may be called from any thread and raise StoreError. `take` must not use the
  // database.
  bool read(std::string_view key, const std::function<void(const host::StoreView&)>& take) const;
  host::ConfigStore::Snapshot snapshot(const std::string& prefix) const;

  // Writes the values in one transaction, each with its journal entry, and wakes the subscribers.
  // Returns whether it wrote any.
  bool put(const Values& values, Overwrite overwrite);

  // Removes the key, with a journal entry like that of a put. Returns whether it existed.
  bool erase(const std::string& key);

  // Replaces all values with the settings, in one transaction.
  void reset();

  // Why not even one of the settings could be added when the store was opened; nothing when they
  // are there.
  std::optional<host::StoreError> unwritten() const;

  // The number of the last commit, which a snapshot may not include yet; 0 when there was none.
  std::uint64_t version() const;

  // A place in the journal. Each opening of the files has a new one.
  struct Position {
    std::uint64_t opening = 0;
    std::uint64_t number = 0;  // of a change; 0 before the first

    bool isAfter(const Position& other) const {
      return std::tie(opening, number) > std::tie(other.opening, other.number);
    }
  };

  // That of the last change.
  Position lastChange() const;

  struct Change {
    Position at;
    std::string key;
  };

  // The changes after a position, in order. The journal is finite: for a reader that is too far
  // behind, or whose position is that of an earlier opening, `complete` is false when changes may
  // be missing.
  struct Changes {
    std::vector<Change> changes;
    Position last;  // of the journal
    bool complete = true;
  };
  Changes changesAfter(const Position& position) const;

  // Written after every put(), by any process: what a subscriber watches.
  const std::filesystem::path& noticeFile() const { return noticeFile_.path(); }

  // Creates it when missing.
  void makeNoticeFile() const { noticeFile_.make(); }

  using Action = std::function<bool(MDB_txn*, Tables)>;

 private:
  // What is held while the environment is used, so that it is not closed meanwhile.
  struct Use {
    std::shared_lock<std::shared_mutex> lock;
    Environment& environment;
  };
  Use use(Look look) const;

  void open() const;
  void renew() const;
  void seed(Environment& environment) const;
  bool change(const Action& action);
  std::uint64_t versionOf(std::size_t commit) const;

  const std::filesystem::path folder_;
  const Durability durability_;
  const Values settings_;
  mutable std::shared_mutex use_;
  mutable std::unique_ptr<Environment> environment_;  // null after somebody touched its files
  mutable std::uint64_t openings_ = 0;
  mutable std::optional<host::StoreError> unwritten_;
  mutable NoticeFile noticeFile_;
};

}  // namespace platform

#endif  // PLATFORM_STORE_DATABASE_H
