#include "scratch_store.h"

#include <dlfcn.h>
#include <lmdb.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <map>
#include <vector>

#include "require.h"

namespace fuzz {

namespace {

constexpr char kValues[] = "values";

// The environments that the store opened, and their saved contents.
struct Area {
  MDB_env* environment;
  std::map<std::string, std::string> values = {};
};

std::vector<Area>& areas() {
  static auto& instance = *new std::vector<Area>;
  return instance;
}

std::filesystem::path& folder() {
  static auto& instance = *new std::filesystem::path;
  return instance;
}

constexpr char kFolders[] = "/dev/shm";
constexpr char kName[] = "ventaro-fuzz-";

// A process that ends with a finding leaves its folder behind.
void removeFoldersOfTheDead() {
  for (const auto& entry : std::filesystem::directory_iterator(kFolders)) {
    const std::string name = entry.path().filename();
    if (!name.starts_with(kName)) continue;
    const std::filesystem::path process = "/proc/" + name.substr(std::strlen(kName));
    if (!std::filesystem::exists(process)) std::filesystem::remove_all(entry.path());
  }
}

void check(int error) {
  require(error == MDB_SUCCESS, mdb_strerror(error));
}

// Carries out `action` on the value table in one transaction.
template <typename Action>
void change(const Area& area, const Action& action) {
  MDB_txn* transaction = nullptr;
  MDB_dbi table = 0;
  check(mdb_txn_begin(area.environment, nullptr, 0, &transaction));
  check(mdb_dbi_open(transaction, kValues, 0, &table));
  action(transaction, table);
  check(mdb_txn_commit(transaction));
}

std::string asString(const MDB_val& value) {
  return {static_cast<const char*>(value.mv_data), value.mv_size};
}

MDB_val asVal(const std::string& text) {
  return {text.size(), const_cast<char*>(text.data())};
}

void remember(Area& area, MDB_txn* transaction, MDB_dbi table) {
  area.values.clear();
  MDB_cursor* cursor = nullptr;
  check(mdb_cursor_open(transaction, table, &cursor));
  MDB_val key{};
  MDB_val value{};
  while (mdb_cursor_get(cursor, &key, &value, MDB_NEXT) == MDB_SUCCESS) {
    area.values.emplace(asString(key), asString(value));
  }
  mdb_cursor_close(cursor);
}

void restore(const Area& area, MDB_txn* transaction, MDB_dbi table) {
  check(mdb_drop(transaction, table, 0));
  for (const auto& [name, text] : area.values) {
    MDB_val key = asVal(name);
    MDB_val value = asVal(text);
    check(mdb_put(transaction, table, &key, &value, 0));
  }
}

}  // namespace

void makeScratchFolder() {
  removeFoldersOfTheDead();
  folder() = std::filesystem::path(kFolders) / (kName + std::to_string(getpid()));
  std::filesystem::create_directory(folder());
  setenv("VENTARO_STATE_DIR", (folder() / "state").c_str(), 1);
  setenv("VENTARO_RUNTIME_DIR", (folder() / "runtime").c_str(), 1);
  setenv("VENTARO_LOG", "", 1);
  std::atexit([] { std::filesystem::remove_all(folder()); });
}

std::string scratchFile(const std::string& name) {
  return folder() / name;
}

void rememberStore() {
  for (Area& area : areas()) {
    change(area, [&](MDB_txn* transaction, MDB_dbi table) { remember(area, transaction, table); });
  }
}

void restoreStore() {
  for (const Area& area : areas()) {
    change(area, [&](MDB_txn* transaction, MDB_dbi table) { restore(area, transaction, table); });
  }
}

}  // namespace fuzz

// Overrides LMDB's function, to learn which environments the store opens.
extern "C" __attribute__((visibility("default"))) int mdb_env_open(MDB_env* env, const char* path,
                                                                   unsigned flags,
                                                                   mdb_mode_t mode) {
  using Open = int (*)(MDB_env*, const char*, unsigned, mdb_mode_t);
  const auto open = reinterpret_cast<Open>(dlsym(RTLD_NEXT, "mdb_env_open"));
  const int error = open(env, path, flags, mode);
  if (error == MDB_SUCCESS) fuzz::areas().push_back({env});
  return error;
}
