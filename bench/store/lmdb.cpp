// LMDB alone, as fast as possible: one table, plain bytes, one put per transaction, and a read
// transaction that each thread keeps and renews for each read.
#include <lmdb.h>

#include <cstring>

#include "contents.h"
#include "store.h"

namespace bench {

namespace {

constexpr std::size_t kMapSize = std::size_t{1} << 30;  // bytes; enough for all sizes

void check(int error) {
  if (error != MDB_SUCCESS) fail({"LMDB: ", mdb_strerror(error)});
}

MDB_val asVal(const std::string& bytes) {
  return {bytes.size(), const_cast<char*>(bytes.data())};
}

class LmdbReader : public Reader {
 public:
  LmdbReader(MDB_env* environment, MDB_dbi table) : table_(table) {
    check(mdb_txn_begin(environment, nullptr, MDB_RDONLY, &transaction_));
    mdb_txn_reset(transaction_);
  }
  ~LmdbReader() override { mdb_txn_abort(transaction_); }

  int number(const std::string& key) override {
    int value = 0;
    read(key, [&](const MDB_val& data) { std::memcpy(&value, data.mv_data, sizeof value); });
    return value;
  }

  char* text(const std::string& key) override {
    char* copy = nullptr;
    read(key, [&](const MDB_val& data) { copy = copyOf(data.mv_data, data.mv_size); });
    return copy;
  }

 private:
  template <typename Take>
  void read(const std::string& key, Take take) {
    check(mdb_txn_renew(transaction_));
    MDB_val name = asVal(key);
    MDB_val data{};
    check(mdb_get(transaction_, table_, &name, &data));
    take(data);
    mdb_txn_reset(transaction_);
  }

  MDB_txn* transaction_ = nullptr;
  MDB_dbi table_;
};

class Lmdb : public Store {
 public:
  Lmdb(const std::filesystem::path& folder, Durability durability) {
    check(mdb_env_create(&environment_));
    check(mdb_env_set_mapsize(environment_, kMapSize));
    const unsigned flags = durability == Durability::kDurable ? 0 : MDB_NOSYNC;
    check(mdb_env_open(environment_, folder.c_str(), MDB_NOTLS | flags, 0600));
    write([&](MDB_txn* transaction) { check(mdb_dbi_open(transaction, nullptr, 0, &table_)); });
  }
  ~Lmdb() override { mdb_env_close(environment_); }

  std::string prefix() const override { return "db/store/"; }

  void fill(int count) override {
    write([&](MDB_txn* transaction) {
      for (int index = 0; index < count; ++index) {
        const int number = numberOf(index);
        const std::string bytes =
            kindOf(index) == Kind::kNumber
                ? std::string(reinterpret_cast<const char*>(&number), sizeof number)
                : textOf(index);
        put(transaction, prefix() + nameOf(index), asVal(bytes));
      }
    });
  }

  std::unique_ptr<Reader> reader() override {
    return std::make_unique<LmdbReader>(environment_, table_);
  }

  void setNumber(const std::string& key, int value) override {
    write([&](MDB_txn* transaction) { put(transaction, key, {sizeof value, &value}); });
  }

 private:
  void put(MDB_txn* transaction, const std::string& key, MDB_val data) const {
    MDB_val name = asVal(key);
    check(mdb_put(transaction, table_, &name, &data, 0));
  }

  template <typename Body>
  void write(Body body) {
    MDB_txn* transaction = nullptr;
    check(mdb_txn_begin(environment_, nullptr, 0, &transaction));
    body(transaction);
    check(mdb_txn_commit(transaction));
  }

  MDB_env* environment_ = nullptr;
  MDB_dbi table_ = 0;
};

}  // namespace

std::unique_ptr<Store> openLmdb(const std::filesystem::path& folder, Durability durability,
                                int /*count*/) {
  return std::make_unique<Lmdb>(folder, durability);
}

}  // namespace bench
