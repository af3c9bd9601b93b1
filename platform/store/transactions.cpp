#include "transactions.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <sstream>
#include <string>
#include <utility>

namespace platform {

using host::StoreCode;
using host::StoreError;

namespace {

constexpr std::size_t kMostOthers = 15;  // each occupies a reader slot of the environment

bool isReadOnlyError(int error) {
  return error == EACCES || error == EROFS || error == EPERM;
}

bool isDamage(int error) {
  return error == MDB_INVALID || error == MDB_VERSION_MISMATCH || error == MDB_CORRUPTED ||
         error == MDB_PAGE_NOTFOUND;
}

MDB_txn* begin(MDB_env* environment, Access access) {
  const unsigned flags = access == Access::kRead ? MDB_RDONLY : 0;
  MDB_txn* transaction = nullptr;
  int error = mdb_txn_begin(environment, nullptr, flags, &transaction);
  if (error == MDB_READERS_FULL && dropDeadReaders(environment)) {
    error = mdb_txn_begin(environment, nullptr, flags, &transaction);
  }
  check(error, "cannot begin");
  return transaction;
}

}  // namespace

StoreCode codeOf(int error) {
  if (isReadOnlyError(error)) return StoreCode::kReadOnly;
  switch (error) {
    case MDB_MAP_FULL:
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return StoreCode::kNoSpace;
    default:
      return StoreCode::kUnavailable;
  }
}

void check(int error, const char* action) {
  if (error == MDB_SUCCESS) return;
  std::string message = std::string(action) + ": " + mdb_strerror(error);
  if (isDamage(error)) message += std::string("; data.mdb is damaged") + kAdviceOnDamage;
  throw StoreError(codeOf(error), message);
}

bool dropDeadReaders(MDB_env* environment) {
  int dead = 0;
  check(mdb_reader_check(environment, &dead), "cannot look for dead readers");
  return dead > 0;
}

std::vector<pid_t> readersOfOldStates(MDB_env* environment) {
  MDB_envinfo info{};
  check(mdb_env_info(environment, &info), "cannot look for readers");
  std::string lines;
  const auto append = [](const char* line, void* text) {
    *static_cast<std::string*>(text) += line;
    return 0;
  };
  if (mdb_reader_list(environment, append, &lines) < 0) return {};
  // A line for each: process, thread, and the state's number or, when it does not read, a dash.
  std::vector<pid_t> found;
  std::istringstream stream(lines);
  for (std::string line; std::getline(stream, line);) {
    std::istringstream words(line);
    pid_t process = 0;
    std::string thread;
    std::size_t state = 0;
    if (!(words >> process >> thread >> state) || state >= info.me_last_txnid) continue;
    if (process != getpid() && std::ranges::find(found, process) == found.end()) {
      found.push_back(process);
    }
  }
  return found;
}

Transaction::Transaction(MDB_env* environment, Access access)
    : transaction_(begin(environment, access)) {}

Transaction::~Transaction() {
  if (transaction_ != nullptr) mdb_txn_abort(transaction_);
}

void Transaction::commit() {
  const int error = mdb_txn_commit(std::exchange(transaction_, nullptr));
  // LMDB also returns this for a partial write, which is the likelier cause.
  if (error == EIO) {
    throw StoreError(StoreCode::kNoSpace,
                     "cannot commit: the disk is full, or failed while it was written");
  }
  check(error, "cannot commit");
}

IdleReaders::~IdleReaders() {
  while (MDB_txn* const transaction = pop()) mdb_txn_abort(transaction);
}

MDB_txn* IdleReaders::pop() {
  if (MDB_txn* const transaction = spare_.exchange(nullptr)) return transaction;
  const std::lock_guard lock(mutex_);
  if (others_.empty()) return nullptr;
  MDB_txn* const transaction = others_.back();
  others_.pop_back();
  return transaction;
}

MDB_txn* IdleReaders::take(MDB_env* environment) {
  MDB_txn* const transaction = pop();
  if (transaction == nullptr) return begin(environment, Access::kRead);
  const int error = mdb_txn_renew(transaction);
  if (error != MDB_SUCCESS) mdb_txn_abort(transaction);
  check(error, "cannot begin");
  return transaction;
}

void IdleReaders::giveBack(MDB_txn* transaction) {
  mdb_txn_reset(transaction);
  MDB_txn* none = nullptr;
  if (spare_.compare_exchange_strong(none, transaction)) return;
  {
    const std::lock_guard lock(mutex_);
    if (others_.size() < kMostOthers) {
      others_.push_back(transaction);
      return;
    }
  }
  mdb_txn_abort(transaction);
}

Cursor::Cursor(MDB_txn* transaction, MDB_dbi table) {
  check(mdb_cursor_open(transaction, table, &cursor_), "cannot read");
}

bool Cursor::move(MDB_val& key, MDB_val& data, MDB_cursor_op operation) {
  const int error = mdb_cursor_get(cursor_, &key, &data, operation);
  if (error != MDB_NOTFOUND) check(error, "cannot read");
  return error == MDB_SUCCESS;
}

void Cursor::erase() {
  check(mdb_cursor_del(cursor_, 0), "cannot write");
}

}  // namespace platform
