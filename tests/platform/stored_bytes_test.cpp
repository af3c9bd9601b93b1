// Bytes of a stored value that the store itself never writes: they are no value.
#include <lmdb.h>

#include <string>
#include <string_view>
#include <vector>

#include "platform/config_store.h"
#include "platform_test.h"
#include "process.h"

namespace platform_tests {
namespace {

constexpr char kKey[] = "db/value";

MDB_val asVal(std::string_view text) {
  return {text.size(), const_cast<char*>(text.data())};
}

class StoredBytes : public PlatformTest {
 protected:
  // Puts bytes behind those that the store wrote for the value. In a process of its own, because
  // none may open a store twice.
  void store(const StoreValue& value, std::string_view behind) const {
    inOwnProcess([&] { platform_tests::store().set(kKey, value); });
    inOwnProcess([&] {
      MDB_env* environment = nullptr;
      MDB_txn* transaction = nullptr;
      MDB_dbi values = 0;
      MDB_val key = asVal(kKey);
      MDB_val data{};
      mdb_env_create(&environment);
      mdb_env_set_maxdbs(environment, 8);
      ASSERT_EQ(mdb_env_open(environment, stateFolder().c_str(), 0, 0600), 0);
      ASSERT_EQ(mdb_txn_begin(environment, nullptr, 0, &transaction), 0);
      ASSERT_EQ(mdb_dbi_open(transaction, "values", 0, &values), 0);
      ASSERT_EQ(mdb_get(transaction, values, &key, &data), 0);
      const std::string bytes =
          std::string(static_cast<const char*>(data.mv_data), data.mv_size).append(behind);
      data = asVal(bytes);
      ASSERT_EQ(mdb_put(transaction, values, &key, &data, 0), 0);
      ASSERT_EQ(mdb_txn_commit(transaction), 0);
      mdb_env_close(environment);
    });
  }
};

using namespace std::string_view_literals;

TEST_F(StoredBytes, BehindAnIntAreNoInt) {
  store(5, "\0garbage"sv);
  int read = 7;
  EXPECT_EQ(vconf_get_int(kKey, &read), codeOf(StoreCode::kUnavailable));
  EXPECT_EQ(read, 7);
  EXPECT_TRUE(logged(
      "vconf_get_int: the value stored under \"db/value\" is damaged; set it anew, or unset it"));
}

TEST_F(StoredBytes, OfANumberThatIsTooLargeAreNoInt) {
  store(5, "0000000000");
  int read = 7;
  EXPECT_EQ(vconf_get_int(kKey, &read), codeOf(StoreCode::kUnavailable));
  EXPECT_EQ(read, 7);
}

TEST_F(StoredBytes, BehindABoolAreNoBool) {
  store(true, "\0"sv);
  int read = 7;
  EXPECT_EQ(vconf_get_bool(kKey, &read), codeOf(StoreCode::kUnavailable));
  EXPECT_EQ(read, 7);
}

}  // namespace
}  // namespace platform_tests
