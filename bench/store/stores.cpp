#include "programs.h"

namespace bench {

namespace {

struct Product {
  const char* name;
  OpenStore* open;
};

constexpr Product kProducts[] = {{"ventaro", openVentaro},
                                 {"LMDB", openLmdb},
                                 {"SQLite", openSqlite},
                                 {"GSettings", openGsettings}};

}  // namespace

void Store::watch(const std::string& /*key*/, const std::function<void()>& /*changed*/) {
  fail({"the store does not tell other processes of a set"});
}

std::unique_ptr<Store> open(const std::string& name, const std::filesystem::path& folder,
                            Durability durability, int count) {
  for (const Product& product : kProducts) {
    if (name != product.name) continue;
    std::filesystem::create_directories(folder / name);
    return product.open(folder / name, durability, count);
  }
  fail({"there is no store \"", name, "\""});
}

}  // namespace bench

int main(int count, char** words) {
  return bench::printed([&] {
    const std::string name = count > 1 ? words[1] : "";
    bench::require(name == "operations" || name == "readers" || name == "notification",
                   "usage: store operations|readers|notification WORD...");
    const auto measure = name == "operations" ? bench::operations
                         : name == "readers"  ? bench::readers
                                              : bench::notification;
    return measure(count - 2, words + 2);
  });
}
