// LMDB's transactions and cursors as objects that end themselves, and its errors as StoreError.
#ifndef PLATFORM_STORE_TRANSACTIONS_H
#define PLATFORM_STORE_TRANSACTIONS_H

#include <lmdb.h>

#include <atomic>
#include <mutex>
#include <vector>

#include "platform/host/config_store.h"

namespace platform {

// What to do about a damaged file, which is left as it is for whoever wants to rescue what it
// holds.
inline constexpr char kAdviceOnDamage[] = "; move it away, and the store starts with its defaults";

// The code for an error of LMDB or errno.
host::StoreCode codeOf(int error);

// Raises StoreError unless the error is MDB_SUCCESS.
void check(int error, const char* action);

// Gives the places of processes that were killed while they read back, and with them the space that
// what they read takes. Whether there were any.
bool dropDeadReaders(MDB_env* environment);

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

// Transactions for reading that wait to be used again, which costs a tenth of beginning one: each
// has its place among the readers already. Any thread. Ends before its environment does.
class IdleReaders {
 public:
  IdleReaders() = default;
  ~IdleReaders();
  IdleReaders(const IdleReaders&) = delete;
  IdleReaders& operator=(const IdleReaders&) = delete;

  // One that sees what is stored now.
  MDB_txn* take(MDB_env* environment);
  void giveBack(MDB_txn* transaction);

 private:
  MDB_txn* pop();

  // None of these keeps old pages. One is all that a process with one reading thread needs, and is
  // had without the mutex.
  std::atomic<MDB_txn*> spare_ = nullptr;
  std::mutex mutex_;
  std::vector<MDB_txn*> others_;
};

// A transaction for reading, as long as it lives.
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

  // The entry that it is at.
  void erase();

 private:
  MDB_cursor* cursor_ = nullptr;
};

}  // namespace platform

#endif  // PLATFORM_STORE_TRANSACTIONS_H
