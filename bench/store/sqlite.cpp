// SQLite with a write-ahead log, the file mapped into memory, and prepared statements. Durable is
// synchronous=FULL, which syncs the log at each commit; volatile is synchronous=OFF.
#include <sqlite3.h>

#include "contents.h"
#include "store.h"

namespace bench {

namespace {

void check(int result, sqlite3* connection) {
  const bool good = result == SQLITE_OK || result == SQLITE_DONE || result == SQLITE_ROW;
  if (!good) fail({"SQLite: ", sqlite3_errmsg(connection)});
}

// Used by one thread, so it needs no lock.
class Connection {
 public:
  Connection(const std::filesystem::path& file, Durability durability) {
    constexpr int kFlags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
    check(sqlite3_open_v2(file.c_str(), &connection_, kFlags, nullptr), connection_);
    sqlite3_busy_timeout(connection_, 10'000);  // milliseconds
    run("PRAGMA journal_mode=WAL");
    run(durability == Durability::kDurable ? "PRAGMA synchronous=FULL" : "PRAGMA synchronous=OFF");
    run("PRAGMA mmap_size=1073741824");
    run("CREATE TABLE IF NOT EXISTS settings(key TEXT PRIMARY KEY, value) WITHOUT ROWID");
  }
  ~Connection() { sqlite3_close(connection_); }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  void run(const char* statement) {
    check(sqlite3_exec(connection_, statement, nullptr, nullptr, nullptr), connection_);
  }
  sqlite3* get() const { return connection_; }

 private:
  sqlite3* connection_ = nullptr;
};

// Prepared once, and run with a key and, if any, a value.
class Statement {
 public:
  Statement(const Connection& connection, const char* text) : connection_(connection.get()) {
    check(
        sqlite3_prepare_v3(connection_, text, -1, SQLITE_PREPARE_PERSISTENT, &statement_, nullptr),
        connection_);
  }
  ~Statement() { sqlite3_finalize(statement_); }
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  void bindText(int place, const std::string& text) {
    const int size = static_cast<int>(text.size());
    check(sqlite3_bind_text(statement_, place, text.data(), size, SQLITE_STATIC), connection_);
  }
  void bindNumber(int place, int number) {
    check(sqlite3_bind_int(statement_, place, number), connection_);
  }

  template <typename Take>
  void run(Take take) {
    const int result = sqlite3_step(statement_);
    check(result, connection_);
    if (result == SQLITE_ROW) take(statement_);
    check(sqlite3_reset(statement_), connection_);
  }
  void run() {
    run([](sqlite3_stmt*) {});
  }

 private:
  sqlite3* connection_;
  sqlite3_stmt* statement_ = nullptr;
};

class SqliteReader : public Reader {
 public:
  SqliteReader(const std::filesystem::path& file, Durability durability)
      : connection_(file, durability) {}

  int number(const std::string& key) override {
    int value = -1;
    get_.bindText(1, key);
    get_.run([&](sqlite3_stmt* row) { value = sqlite3_column_int(row, 0); });
    return value;
  }

  char* text(const std::string& key) override {
    char* copy = nullptr;
    get_.bindText(1, key);
    get_.run([&](sqlite3_stmt* row) {
      const unsigned char* const text = sqlite3_column_text(row, 0);
      copy = copyOf(text, sqlite3_column_bytes(row, 0));
    });
    require(copy != nullptr, "SQLite: cannot read ", key);
    return copy;
  }

 private:
  Connection connection_;
  Statement get_{connection_, "SELECT value FROM settings WHERE key=?1"};
};

class Sqlite : public Store {
 public:
  Sqlite(std::filesystem::path file, Durability durability)
      : file_(std::move(file)), durability_(durability), connection_(file_, durability) {}

  std::string prefix() const override { return "db/store/"; }

  void fill(int count) override {
    connection_.run("BEGIN");
    for (int index = 0; index < count; ++index) {
      const std::string key = prefix() + nameOf(index);
      const std::string text = textOf(index);
      set_.bindText(1, key);
      if (kindOf(index) == Kind::kNumber) {
        set_.bindNumber(2, numberOf(index));
      } else {
        set_.bindText(2, text);
      }
      set_.run();
    }
    connection_.run("COMMIT");
    connection_.run("PRAGMA wal_checkpoint(TRUNCATE)");
  }

  std::unique_ptr<Reader> reader() override {
    return std::make_unique<SqliteReader>(file_, durability_);
  }

  void setNumber(const std::string& key, int value) override {
    set_.bindText(1, key);
    set_.bindNumber(2, value);
    set_.run();
  }

 private:
  std::filesystem::path file_;
  Durability durability_;
  Connection connection_;
  Statement set_{connection_, "REPLACE INTO settings VALUES(?1, ?2)"};
};

}  // namespace

std::unique_ptr<Store> openSqlite(const std::filesystem::path& folder, Durability durability,
                                  int /*count*/) {
  return std::make_unique<Sqlite>(folder / "settings.sqlite", durability);
}

}  // namespace bench
