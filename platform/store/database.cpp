#include "database.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <cstring>
#include <fstream>
#include <optional>
#include <string_view>
#include <system_error>

#include "data_file.h"
#include "files.h"
#include "platform/host/config_store.h"
#include "transactions.h"

namespace platform {

using host::ConfigStore;
using host::StoreCode;
using host::StoreError;
using host::StoreValue;
using host::StoreView;

namespace {

constexpr std::size_t kMapSize = std::size_t{72} << 20;  // bytes; the file grows as it is used
// The limit for sets. The rest is kept free for removals, which need new pages too.
constexpr std::size_t kMaxContent = std::size_t{64} << 20;  // bytes
constexpr unsigned kMaxReaders = 512;
constexpr unsigned kTables = 2;
constexpr mdb_mode_t kFileMode = 0600;
constexpr char kDataFile[] = "data.mdb";
constexpr char kLockFile[] = "lock.mdb";
constexpr std::chrono::seconds kPatience{5};    // with another process that changes the store
constexpr std::uint64_t kJournalLength = 4096;  // the least number of changes kept
constexpr std::uint64_t kPruningStep = 256;     // changes between two prunings

MDB_val asVal(std::string_view bytes) {
  return {bytes.size(), const_cast<char*>(bytes.data())};
}

std::string_view asView(const MDB_val& val) {
  return {static_cast<const char*>(val.mv_data), val.mv_size};
}

// A value is stored as a letter for its type, followed by its text.
std::string encode(const StoreValue& value) {
  if (const int* number = std::get_if<int>(&value)) return "i" + std::to_string(*number);
  if (const bool* flag = std::get_if<bool>(&value)) return *flag ? "b1" : "b0";
  return "s" + std::get<std::string>(value);
}

StoreView decode(std::string_view bytes) {
  if (bytes.empty()) throw StoreError(StoreCode::kUnavailable, "a stored value is damaged");
  const std::string_view text = bytes.substr(1);
  switch (bytes.front()) {
    case 'i': {
      int number = 0;
      const char* const end = text.data() + text.size();
      const auto [rest, error] = std::from_chars(text.data(), end, number);
      if (error == std::errc() && rest == end) return number;
      break;
    }
    case 'b':
      if (text == "0" || text == "1") return text == "1";
      break;
    case 's':
      return text;
    default:
      throw StoreError(StoreCode::kUnavailable, "a stored value is of an unknown type");
  }
  throw StoreError(StoreCode::kUnavailable, "a stored value is damaged");
}

// Journal keys sort by their bytes, so the number is stored with its highest byte first.
using JournalKey = std::array<char, sizeof(std::uint64_t)>;

JournalKey encodeNumber(std::uint64_t number) {
  JournalKey key{};
  for (auto byte = key.rbegin(); byte != key.rend(); ++byte, number >>= 8U) {
    *byte = static_cast<char>(number & 0xFFU);
  }
  return key;
}

std::uint64_t decodeNumber(const MDB_val& key) {
  std::uint64_t number = 0;
  for (const char byte : asView(key)) number = (number << 8U) | static_cast<unsigned char>(byte);
  return number;
}

std::uint64_t lastNumber(MDB_txn* transaction, MDB_dbi journal) {
  MDB_val key{};
  MDB_val data{};
  return Cursor(transaction, journal).move(key, data, MDB_LAST) ? decodeNumber(key) : 0;
}

// Drops many at once, because each set that drops one has to write another page.
void pruneJournal(MDB_txn* transaction, MDB_dbi journal, std::uint64_t last) {
  Cursor cursor(transaction, journal);
  MDB_val key{};
  MDB_val data{};
  while (cursor.move(key, data, MDB_FIRST) && decodeNumber(key) + kJournalLength <= last) {
    cursor.erase();
  }
}

void appendChange(MDB_txn* transaction, MDB_dbi journal, std::string_view changedKey) {
  const std::uint64_t number = lastNumber(transaction, journal) + 1;
  const JournalKey numberBytes = encodeNumber(number);
  MDB_val key = asVal({numberBytes.data(), numberBytes.size()});
  MDB_val data = asVal(changedKey);
  check(mdb_put(transaction, journal, &key, &data, MDB_APPEND), "cannot write");
  if (number % kPruningStep == 0) pruneJournal(transaction, journal, number);
}

struct FileSize {
  int file = -1;
  std::uint64_t is = 0;      // bytes
  std::uint64_t wanted = 0;  // bytes, for all pages that are in use
};

FileSize fileSize(MDB_env* environment) {
  MDB_envinfo info{};
  MDB_stat pages{};
  FileSize size;
  check(mdb_env_info(environment, &info), "cannot open");
  check(mdb_env_stat(environment, &pages), "cannot open");
  check(mdb_env_get_fd(environment, &size.file), "cannot open");
  size.wanted = (std::uint64_t{info.me_last_pgno} + 1) * pages.ms_psize;
  // Read after the number of pages, because other processes may grow the file in between.
  struct stat status {};
  if (fstat(size.file, &status) != 0) check(errno, "cannot open");
  size.is = static_cast<std::uint64_t>(status.st_size);
  return size;
}

struct Tables {
  MDB_dbi values;
  MDB_dbi journal;
};

using Values = std::map<std::string, StoreValue>;

// Whether any of the values was written.
bool write(MDB_txn* transaction, Tables tables, const Values& values, Overwrite overwrite) {
  bool changed = false;
  for (const auto& [name, value] : values) {
    const std::string bytes = encode(value);
    MDB_val key = asVal(name);
    MDB_val data = asVal(bytes);
    const unsigned flags = overwrite == Overwrite::kNo ? MDB_NOOVERWRITE : 0;
    const int error = mdb_put(transaction, tables.values, &key, &data, flags);
    if (error == MDB_KEYEXIST) continue;
    check(error, "cannot write");
    appendChange(transaction, tables.journal, name);
    changed = true;
  }
  return changed;
}

// Whether the key was there.
bool erase(MDB_txn* transaction, Tables tables, const std::string& name) {
  MDB_val key = asVal(name);
  const int error = mdb_del(transaction, tables.values, &key, nullptr);
  if (error == MDB_NOTFOUND) return false;
  check(error, "cannot write");
  appendChange(transaction, tables.journal, name);
  return true;
}

void eraseAll(MDB_txn* transaction, Tables tables) {
  {
    Cursor cursor(transaction, tables.values);
    MDB_val key{};
    MDB_val data{};
    while (cursor.move(key, data, MDB_NEXT)) {
      const std::string name(asView(key));  // the key's bytes move as the journal grows
      appendChange(transaction, tables.journal, name);
    }
  }
  check(mdb_drop(transaction, tables.values, 0), "cannot write");
}

std::size_t sizeOf(MDB_txn* transaction, MDB_dbi table) {
  MDB_stat pages{};
  check(mdb_stat(transaction, table, &pages), "cannot write");
  return pages.ms_psize * (pages.ms_branch_pages + pages.ms_leaf_pages + pages.ms_overflow_pages);
}

void requireRoom(MDB_txn* transaction, Tables tables) {
  const std::size_t size = sizeOf(transaction, tables.values) + sizeOf(transaction, tables.journal);
  if (size > kMaxContent) check(MDB_MAP_FULL, "cannot write");
}

// Carries out the action in a transaction, which is rolled back when the action changes nothing.
bool commit(MDB_env* environment, WriteLock& lock, const std::function<bool(MDB_txn*)>& action) {
  const WriteLock::Hold hold(lock);
  Transaction transaction(environment, Access::kWrite);
  if (!action(transaction.get())) return false;
  transaction.commit();
  return true;
}

// LMDB maps its lock file into memory as a sparse file: filling its holes on a full disk would kill
// the process.
void reserveLockFile(const std::filesystem::path& path) {
  constexpr off_t kSize = off_t{64} * (kMaxReaders + 4);  // bytes; a cache line for each reader
  const File file = openFile(path, O_RDWR | O_CREAT);
  struct stat info {};
  const bool isThere = fstat(file.get(), &info) == 0 && info.st_size >= kSize;
  const int error = isThere ? 0 : posix_fallocate(file.get(), 0, kSize);
  if (error != 0) {
    throw StoreError(codeOf(error), "cannot make " + path.string() + ": " + std::strerror(error));
  }
}

// Empty where there is no /proc.
std::string idOfThisBoot() {
  std::string id;
  std::getline(std::ifstream("/proc/sys/kernel/random/boot_id"), id);
  return id;
}

// A reader that may not write to the files cannot register, so a writer may overwrite the pages
// that it reads, which would crash it.
void refuseWhatOthersMayWrite(const std::filesystem::path& data) {
  constexpr mode_t kWritable = S_IWUSR | S_IWGRP | S_IWOTH;
  struct stat status {};
  struct statvfs disk {};
  if (stat(data.c_str(), &status) != 0 || (status.st_mode & kWritable) == 0) return;
  if (statvfs(data.c_str(), &disk) == 0 && (disk.f_flag & ST_RDONLY) != 0) return;
  throw StoreError(StoreCode::kReadOnly,
                   data.string() +
                       " may be written by others and not by this user, who can therefore not read "
                       "it either; VENTARO_STATE_DIR and VENTARO_RUNTIME_DIR name other folders");
}

// LMDB maps the whole file; touching a page beyond the end of a truncated one would kill the
// process.
void requireWholeFile(MDB_env* environment) {
  const FileSize size = fileSize(environment);
  if (size.is >= size.wanted || lacksOnlyFreePages(size.file, size.is, size.wanted)) return;
  throw StoreError(StoreCode::kUnavailable, "data.mdb is cut short: " + std::to_string(size.is) +
                                                " of " + std::to_string(size.wanted) + " bytes" +
                                                kAdviceOnDamage);
}

// What to add to the message about a full store: processes that read an old state are why it cannot
// use the pages that were given up since.
std::string whoKeepsPages(MDB_env* environment) {
  std::string text;
  for (const pid_t process : readersOfOldStates(environment)) {
    text += "; process " + std::to_string(process) +
            " reads an old state and keeps its pages; let it go on, or end it";
  }
  return text;
}

}  // namespace

Database::Database(const std::filesystem::path& folder, Durability durability)
    : durability_(durability), noticeFile_(folder / "changed") {
  makeOwnFolder(folder);
  const unsigned flags = MDB_NOTLS | (durability == Durability::kInMemory ? MDB_NOSYNC : 0U);
  try {
    openEnvironment(folder, flags);
  } catch (const StoreError& error) {
    if (error.code() != StoreCode::kReadOnly) throw;
    // Opened without a lock file: a process that may not write to the folder cannot lock in it.
    readOnly_ = true;
    refuseWhatOthersMayWrite(folder / kDataFile);
    if (!hasHeader(folder / kDataFile)) {
      empty_ = true;
      return;
    }
    openEnvironment(folder, flags | MDB_RDONLY | MDB_NOLOCK);
  }
  openTables();
}

// Its changes were never synced, so after a power cut the file may hold any mixture of them.
void Database::dropWhatAnOlderBootLeft(const std::filesystem::path& folder) {
  const std::string boot = idOfThisBoot();
  const auto isOfThisBoot = [&] { return contentOf(folder / "boot_id") == boot; };
  if (boot.empty() || isOfThisBoot()) return;
  const WriteLock::Hold hold(*writeLock_);
  if (isOfThisBoot()) return;  // another process dropped it while this one waited
  for (const char* const name : {kDataFile, kLockFile}) {
    if (unlink((folder / name).c_str()) != 0 && errno != ENOENT) check(errno, "cannot empty");
  }
  const File file = openFile(folder / "boot_id", O_WRONLY | O_CREAT | O_TRUNC);
  if (::write(file.get(), boot.data(), boot.size()) < 0) check(errno, "cannot write boot_id");
}

void Database::openEnvironment(const std::filesystem::path& folder, unsigned flags) {
  MDB_env* environment = nullptr;
  check(mdb_env_create(&environment), "cannot open");
  environment_.reset(environment);
  check(mdb_env_set_mapsize(environment, kMapSize), "cannot open");
  check(mdb_env_set_maxdbs(environment, kTables), "cannot open");
  check(mdb_env_set_maxreaders(environment, kMaxReaders), "cannot open");
  const bool locks = (flags & MDB_NOLOCK) == 0;
  std::optional<WriteLock::Hold> making;
  if (locks) {
    writeLock_ = std::make_unique<WriteLock>(folder / "writer", kPatience);
    if (durability_ == Durability::kInMemory) dropWhatAnOlderBootLeft(folder);
    reserveLockFile(folder / kLockFile);
    if (!hasHeader(folder / kDataFile)) {
      making.emplace(*writeLock_);
      // Unless another process made the store while this one waited.
      if (!hasHeader(folder / kDataFile)) dropContents(folder / kDataFile);
    }
  }
  check(mdb_env_open(environment, folder.c_str(), flags, kFileMode), "cannot open");
  requireWholeFile(environment);
  if (!locks) return;
  fillUpFile();
  dropDeadReaders(environment);
}

// Reads first: a process that only reads must not wait for one that writes.
void Database::openTables() {
  if (openTables(Access::kRead)) return;
  if (readOnly_) {
    empty_ = true;
    return;
  }
  const WriteLock::Hold hold(*writeLock_);
  openTables(Access::kWrite);
}

bool Database::openTables(Access access) {
  Transaction transaction(environment_.get(), access);
  const unsigned flags = access == Access::kWrite ? MDB_CREATE : 0;
  for (const auto& [table, name] : {std::pair{&values_, "values"}, {&journal_, "journal"}}) {
    const int error = mdb_dbi_open(transaction.get(), name, flags, table);
    if (error == MDB_NOTFOUND) return false;
    check(error, "cannot open");
  }
  transaction.commit();
  return true;
}

bool Database::read(std::string_view key, const std::function<void(const StoreView&)>& take) const {
  if (empty_) return false;
  const Reading reading(environment_.get(), readers_);
  MDB_val name = asVal(key);
  MDB_val data{};
  const int error = mdb_get(reading.get(), values_, &name, &data);
  if (error == MDB_NOTFOUND) return false;
  check(error, "cannot read");
  take(decode(asView(data)));
  return true;
}

ConfigStore::Snapshot Database::snapshot(const std::string& prefix) const {
  ConfigStore::Snapshot found;
  if (empty_) return found;
  const Reading reading(environment_.get(), readers_);
  found.version = mdb_txn_id(reading.get());
  Cursor cursor(reading.get(), values_);
  MDB_val key = asVal(prefix);
  MDB_val data{};
  // LMDB has no empty keys and refuses to search for one.
  const MDB_cursor_op start = prefix.empty() ? MDB_FIRST : MDB_SET_RANGE;
  for (bool more = cursor.move(key, data, start); more && asView(key).starts_with(prefix);
       more = cursor.move(key, data, MDB_NEXT)) {
    found.values.emplace(asView(key), host::copyOf(decode(asView(data))));
  }
  return found;
}

bool Database::put(const std::map<std::string, StoreValue>& values, Overwrite overwrite) {
  if (values.empty()) return false;
  return change([&](MDB_txn* transaction) {
    const std::size_t before = sizeOf(transaction, values_);
    const bool changed = write(transaction, {values_, journal_}, values, overwrite);
    // A full store is emptied by shorter values, too.
    if (sizeOf(transaction, values_) > before) requireRoom(transaction, {values_, journal_});
    return changed;
  });
}

bool Database::erase(const std::string& key) {
  return change([&](MDB_txn* transaction) {
    return platform::erase(transaction, {values_, journal_}, key);
  });
}

void Database::replaceAll(const std::map<std::string, StoreValue>& values) {
  change([&](MDB_txn* transaction) {
    eraseAll(transaction, {values_, journal_});
    write(transaction, {values_, journal_}, values, Overwrite::kYes);
    return true;
  });
}

bool Database::change(const std::function<bool(MDB_txn*)>& action) {
  if (readOnly_) {
    throw StoreError(StoreCode::kReadOnly,
                     "the folder cannot be written: " + noticeFile_.path().parent_path().string());
  }
  bool changed = false;
  try {
    changed = commit(environment_.get(), *writeLock_, action);
  } catch (const StoreError& error) {
    if (error.code() != StoreCode::kNoSpace) throw;
    if (!dropDeadReaders(environment_.get())) {
      throw StoreError(error.code(), error.what() + whoKeepsPages(environment_.get()));
    }
    changed = commit(environment_.get(), *writeLock_, action);
  }
  if (!changed) return false;
  fillUpFile();
  noticeFile_.write();
  return true;
}

// A page allocated and freed in one transaction is counted but not written. If it is the last one,
// the file ends before it. The file is extended, so that only a truncated file is too short.
void Database::fillUpFile() try {
  MDB_envinfo info{};
  check(mdb_env_info(environment_.get(), &info), "cannot look at the file");
  if (info.me_last_pgno <= filledUpTo_) return;  // the file has not shrunk since
  const FileSize size = fileSize(environment_.get());
  // On a full disk, the file stays as short as it is.
  if (size.is < size.wanted && posix_fallocate(size.file, static_cast<off_t>(size.is),
                                               static_cast<off_t>(size.wanted - size.is)) != 0) {
    return;
  }
  filledUpTo_ = info.me_last_pgno;
} catch (const StoreError&) {
  // The values are already stored, so the set has not failed.
}

std::uint64_t Database::version() const {
  if (empty_) return 0;
  MDB_envinfo info{};
  check(mdb_env_info(environment_.get(), &info), "cannot read");
  return info.me_last_txnid;
}

std::uint64_t Database::lastChange() const {
  if (empty_) return 0;
  return lastNumber(Reading(environment_.get(), readers_).get(), journal_);
}

Database::Changes Database::changesAfter(std::uint64_t number) const {
  Changes result;
  if (empty_) return result;
  const Reading reading(environment_.get(), readers_);
  Cursor cursor(reading.get(), journal_);
  const JournalKey start = encodeNumber(number + 1);
  MDB_val key = asVal({start.data(), start.size()});
  MDB_val data{};
  for (bool more = cursor.move(key, data, MDB_SET_RANGE); more;
       more = cursor.move(key, data, MDB_NEXT)) {
    result.changes.push_back({decodeNumber(key), std::string(asView(data))});
  }
  result.complete = result.changes.empty() || result.changes.front().number == number + 1;
  return result;
}

}  // namespace platform
