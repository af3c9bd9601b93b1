#include <cstdio>
#include <exception>
#include <stdexcept>

#include "store.h"

namespace bench {

namespace {

struct Product {
  const char* name;
  OpenStore* open;
};

constexpr Product kProducts[] = {{"ventaro", openVentaro},
                                 {"LMDB", openLmdb},
                                 {"SQLite", openSqlite},
                                 {"GSettings", openGsettings},
                                 {"files", openFiles}};

}  // namespace

void Store::watch(const std::string& /*key*/, std::function<void()> /*changed*/) {
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

int guarded(const std::function<void()>& body) {
  try {
    body();
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}

void fail(std::initializer_list<std::string_view> parts) {
  std::string message;
  for (const std::string_view part : parts) message += part;
  throw std::runtime_error(message);
}

}  // namespace bench
