#include "database.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "platform/host/config_store.h"
#include "transactions.h"
#include "value_bytes.h"
#include "write_lock.h"

namespace platform {

using host::ConfigStore;
using host::StoreCode;
using host::StoreError;
using host::StoreValue;
using host::StoreView;

namespace {

using Action = Database::Action;
using Values = Database::Values;

// The limit for sets. The rest of the map is kept free for removals, which need new pages too.
constexpr std::size_t kMaxContent = std::size_t{64} << 20;  // bytes
constexpr std::uint64_t kJournalLength = 4096;              // the least number of changes kept
constexpr std::uint64_t kPruningStep = 256;                 // changes between two prunings

MDB_val asVal(std::string_view bytes) {
  return {bytes.size(), const_cast<char*>(bytes.data())};
}

std::string_view asView(const MDB_val& val) {
  return {static_cast<const char*>(val.mv_data), val.mv_size};
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

std::size_t sizeOf(MDB_txn* transaction, MDB_dbi table) {
  MDB_stat pages{};
  check(mdb_stat(transaction, table, &pages), "cannot write");
  return pages.ms_psize * (pages.ms_branch_pages + pages.ms_leaf_pages + pages.ms_overflow_pages);
}

void requireRoom(MDB_txn* transaction, Tables tables) {
  const std::size_t size = sizeOf(transaction, tables.values) + sizeOf(transaction, tables.journal);
  if (size > kMaxContent) check(MDB_MAP_FULL, "cannot write");
}

// Whether any of the values was written.
bool write(MDB_txn* transaction, Tables tables, const Values& values, Overwrite overwrite) {
  const std::size_t before = sizeOf(transaction, tables.values);
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
  // A full store is emptied by shorter values, too.
  if (sizeOf(transaction, tables.values) > before) requireRoom(transaction, tables);
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

bool read(Environment& environment, std::string_view key,
          const std::function<void(const StoreView&)>& take) {
  if (environment.isEmpty()) return false;
  const Reading reading(environment.get(), environment.readers());
  MDB_val name = asVal(key);
  MDB_val data{};
  const int error = mdb_get(reading.get(), environment.tables().values, &name, &data);
  if (error == MDB_NOTFOUND) return false;
  check(error, "cannot read");
  take(decode(key, asView(data)));
  return true;
}

// Carries out the action in a transaction, which is rolled back when the action changes nothing.
bool commit(Environment& environment, const Action& action) {
  const WriteLock::Hold hold(environment.writeLock());
  // That may have taken long enough for somebody to touch the files.
  if (const std::string what = environment.whatHappened(); !what.empty()) {
    throw StoreError(StoreCode::kUnavailable, what);
  }
  Transaction transaction(environment.get(), Access::kWrite);
  if (!action(transaction.get(), environment.tables())) return false;
  try {
    transaction.commit();
  } catch (const StoreError&) {
    environment.giveUp();
    throw;
  }
  return true;
}

// Carries out the action in one transaction. Returns the action's result: whether it changed
// anything.
bool change(Environment& environment, const std::filesystem::path& folder, const Action& action) {
  if (environment.isReadOnly()) {
    throw StoreError(StoreCode::kReadOnly, "the folder cannot be written: " + folder.string());
  }
  bool changed = false;
  try {
    changed = commit(environment, action);
  } catch (const StoreError& error) {
    if (error.code() != StoreCode::kNoSpace || environment.isGivenUp()) throw;
    if (!dropDeadReaders(environment.get())) {
      throw StoreError(error.code(), error.what() + whoKeepsPages(environment.get()));
    }
    changed = commit(environment, action);
  }
  if (changed) environment.fillUpFile();
  return changed;
}

// A store that is read-only or full, or in which a process was stopped in the middle of a change.
bool canStillBeRead(const StoreError& error) {
  return error.code() == StoreCode::kReadOnly || error.code() == StoreCode::kNoSpace ||
         dynamic_cast<const StoreIsBusy*>(&error) != nullptr;
}

}  // namespace

StoreError inFolder(const std::filesystem::path& folder, const StoreError& error) {
  return {error.code(), "the store in " + folder.string() + ": " + error.what()};
}

Database::Database(const std::filesystem::path& folder, Durability durability, Values settings)
    : folder_(std::filesystem::absolute(folder)),
      durability_(durability),
      settings_(std::move(settings)),
      noticeFile_(folder_ / "changed") {
  const std::unique_lock lock(use_);
  open();
}

// Requires the lock, alone.
void Database::open() const try {
  auto environment = std::make_unique<Environment>(folder_, durability_);
  if (!environment->isReadOnly()) noticeFile_.make();
  seed(*environment);
  environment_ = std::move(environment);
  ++openings_;
} catch (const StoreError& error) {
  throw inFolder(folder_, error);
}

// Adds the settings that are missing.
void Database::seed(Environment& environment) const {
  Values missing = settings_;
  std::erase_if(missing, [&](const auto& setting) {
    return platform::read(environment, setting.first, [](const StoreView&) {});
  });
  unwritten_.reset();
  if (missing.empty()) return;
  try {
    platform::change(environment, folder_, [&](MDB_txn* transaction, Tables tables) {
      return write(transaction, tables, missing, Overwrite::kNo);
    });
  } catch (const StoreError& error) {
    if (!canStillBeRead(error)) throw;
    if (missing.size() == settings_.size()) unwritten_ = inFolder(folder_, error);
  }
}

Database::Use Database::use(Look look) const {
  while (true) {
    std::shared_lock lock(use_);
    if (environment_ != nullptr && !environment_->isGivenUp() && !environment_->isTouched(look)) {
      return {std::move(lock), *environment_};
    }
    lock.unlock();
    renew();
  }
}

// Others may have renewed it meanwhile.
void Database::renew() const {
  const std::unique_lock lock(use_);
  if (environment_ != nullptr && environment_->isGivenUp()) environment_.reset();
  if (environment_ == nullptr) {
    open();
    noticeFile_.write();  // the subscribers do not know the new files yet
    return;
  }
  const std::string what = environment_->whatHappened();
  if (what.empty()) return;
  environment_.reset();
  throw inFolder(folder_, StoreError(StoreCode::kUnavailable, what));
}

bool Database::read(std::string_view key, const std::function<void(const StoreView&)>& take) const {
  return platform::read(use(Look::kOnceInATick).environment, key, take);
}

ConfigStore::Snapshot Database::snapshot(const std::string& prefix) const {
  ConfigStore::Snapshot found;
  const Use use = this->use(Look::kOnceInATick);
  if (use.environment.isEmpty()) return found;
  const Reading reading(use.environment.get(), use.environment.readers());
  found.version = versionOf(mdb_txn_id(reading.get()));
  Cursor cursor(reading.get(), use.environment.tables().values);
  MDB_val key = asVal(prefix);
  MDB_val data{};
  // LMDB has no empty keys and refuses to search for one.
  const MDB_cursor_op start = prefix.empty() ? MDB_FIRST : MDB_SET_RANGE;
  for (bool more = cursor.move(key, data, start); more && asView(key).starts_with(prefix);
       more = cursor.move(key, data, MDB_NEXT)) {
    found.values.emplace(asView(key), host::copyOf(decode(asView(key), asView(data))));
  }
  return found;
}

bool Database::put(const Values& values, Overwrite overwrite) {
  return change([&](MDB_txn* transaction, Tables tables) {
    return write(transaction, tables, values, overwrite);
  });
}

bool Database::erase(const std::string& key) {
  return change([&](MDB_txn* transaction, Tables tables) {
    return platform::erase(transaction, tables, key);
  });
}

void Database::reset() {
  change([&](MDB_txn* transaction, Tables tables) {
    eraseAll(transaction, tables);
    write(transaction, tables, settings_, Overwrite::kYes);
    return true;
  });
}

bool Database::change(const Action& action) {
  const Use use = this->use(Look::kNow);
  if (!platform::change(use.environment, folder_, action)) return false;
  noticeFile_.write();
  return true;
}

std::optional<StoreError> Database::unwritten() const {
  const std::shared_lock lock(use_);
  return unwritten_;
}

// The number of the opening tells apart commits of different files.
std::uint64_t Database::versionOf(std::size_t commit) const {
  return (openings_ << 48U) + commit;
}

// Does not look whether the files were touched, to be cheap: reads do.
std::uint64_t Database::version() const {
  std::shared_lock lock(use_);
  if (environment_ == nullptr) {
    lock.unlock();
    lock = use(Look::kOnceInATick).lock;
  }
  if (environment_->isEmpty()) return 0;
  MDB_envinfo info{};
  check(mdb_env_info(environment_->get(), &info), "cannot read");
  return versionOf(info.me_last_txnid);
}

Database::Position Database::lastChange() const {
  const Use use = this->use(Look::kNow);
  if (use.environment.isEmpty()) return {openings_, 0};
  const Reading reading(use.environment.get(), use.environment.readers());
  return {openings_, lastNumber(reading.get(), use.environment.tables().journal)};
}

Database::Changes Database::changesAfter(const Position& position) const {
  Changes result;
  const Use use = this->use(Look::kNow);
  result.last = {openings_, 0};
  if (use.environment.isEmpty()) return result;
  const Reading reading(use.environment.get(), use.environment.readers());
  const MDB_dbi journal = use.environment.tables().journal;
  result.last.number = lastNumber(reading.get(), journal);
  Cursor cursor(reading.get(), journal);
  const std::uint64_t first = position.opening == openings_ ? position.number + 1 : 0;
  const JournalKey start = encodeNumber(first);
  MDB_val key = asVal({start.data(), start.size()});
  MDB_val data{};
  for (bool more = cursor.move(key, data, MDB_SET_RANGE); more;
       more = cursor.move(key, data, MDB_NEXT)) {
    result.changes.push_back({{openings_, decodeNumber(key)}, std::string(asView(data))});
  }
  result.complete = result.changes.empty() || result.changes.front().at.number == first;
  return result;
}

}  // namespace platform
