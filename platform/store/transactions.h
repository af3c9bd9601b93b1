// RAII wrappers for LMDB's transactions and cursors, and its errors as StoreError.
#ifndef PLATFORM_STORE_TRANSACTIONS_H
#define PLATFORM_STORE_TRANSACTIONS_H

#include <lmdb.h>
#include <sys/types.h>

#include <atomic>
#include <mutex>
#include <vector>

#include "platform/host/config_store.h"

namespace platform {

// What to do about a damaged file. It is not changed, so that its contents can be rescued.
inline constexpr char kAdviceOnDamage[] = "; move it away, and the store starts with its defaults";

// The code for an error of LMDB or errno.
host::StoreCode codeOf(int error);

// Raises StoreError unless the error is MDB_SUCCESS.
void check(int error, const char* action);

// Frees the reader slots of processes that were killed while reading, and thereby the pages that
// they kept. Returns whether there were any.
bool dropDeadReaders(MDB_env* environment);

// The other processes that read an older state than the last, each once. They keep the pages that
// were given up since.
std::vector<pid_t> readersOfOldStates(MDB_env* environment);

enum class Access { kRead, kWrite };

// Rolls back unless it was committed.
class Transaction {
 public:
  Transaction(MDB_env* environment, Access access);
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  void commit();
  MDB_txn* get() const { return transaction_; }

 private:
  MDB_txn* transaction_ = nullptr;
};

// A pool of read transactions. Renewing one costs a tenth of beginning one, because it already has
// its reader slot. Any thread. Must be destroyed before its environment.
class IdleReaders {
 public:
  IdleReaders() = default;
  ~IdleReaders();
  IdleReaders(const IdleReaders&) = delete;
  IdleReaders& operator=(const IdleReaders&) = delete;

  // A transaction that sees the current contents.
  MDB_txn* take(MDB_env* environment);
  void giveBack(MDB_txn* transaction);

 private:
  MDB_txn* pop();

  // None of these keeps old pages. A process with one reading thread needs only one, and gets it
  // without the mutex.
  std::atomic<MDB_txn*> spare_ = nullptr;
  std::mutex mutex_;
  std::vector<MDB_txn*> others_;
};

// A read transaction in a scope.
class Reading {
 public:
  Reading(MDB_env* environment, IdleReaders& readers)
      : readers_(readers), transaction_(readers.take(environment)) {}
  ~Reading() { readers_.giveBack(transaction_); }
  Reading(const Reading&) = delete;
  Reading& operator=(const Reading&) = delete;

  MDB_txn* get() const { return transaction_; }

 private:
  IdleReaders& readers_;
  MDB_txn* transaction_;
};

class Cursor {
 public:
  Cursor(MDB_txn* transaction, MDB_dbi table);
  ~Cursor() { mdb_cursor_close(cursor_); }
  Cursor(const Cursor&) = delete;
  Cursor& operator=(const Cursor&) = delete;

  // False at the end.
  bool move(MDB_val& key, MDB_val& data, MDB_cursor_op operation);

  // The current entry.
  void erase();

 private:
  MDB_cursor* cursor_ = nullptr;
};

}  // namespace platform

#endif  // PLATFORM_STORE_TRANSACTIONS_H
