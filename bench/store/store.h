// The interface of the compared stores: what every one of them can do.
#ifndef BENCH_STORE_STORE_H
#define BENCH_STORE_STORE_H

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "common.h"

namespace bench {

enum class Durability {
  kDurable,   // a set has reached the disk when it returns
  kVolatile,  // a set outlives the process, not the machine
};

// A reader for one thread. Both functions raise std::runtime_error when there is no such value.
class Reader {
 public:
  virtual ~Reader() = default;
  virtual int number(const std::string& key) = 0;

  // A copy that the caller frees with free().
  virtual char* text(const std::string& key) = 0;
};

class Store {
 public:
  virtual ~Store() = default;

  // The prefix of a key.
  virtual std::string prefix() const { return ""; }

  // Stores the contents that contents.h defines for that many keys.
  virtual void fill(int count) = 0;

  virtual std::unique_ptr<Reader> reader() = 0;
  virtual void setNumber(const std::string& key, int value) = 0;

  // Calls `changed` from the default GLib main context after a set by any process.
  virtual void watch(const std::string& key, const std::function<void()>& changed);

  // Does the work that it deferred to the main loop.
  virtual void rest() {}
};

// A store in that folder, which holds or will hold `count` keys.
using OpenStore = std::unique_ptr<Store>(const std::filesystem::path& folder, Durability durability,
                                         int count);

OpenStore openVentaro;
OpenStore openLmdb;
OpenStore openSqlite;
OpenStore openGsettings;

// By its name in the report; raises std::runtime_error for an unknown name. Each store has its own
// folder in `folder`.
std::unique_ptr<Store> open(const std::string& name, const std::filesystem::path& folder,
                            Durability durability, int count);

// What a reader returns for bytes that it has in memory.
inline char* copyOf(const void* bytes, std::size_t size) {
  auto* const copy = static_cast<char*>(std::malloc(size + 1));
  std::memcpy(copy, bytes, size);
  copy[size] = '\0';
  return copy;
}

}  // namespace bench

#endif  // BENCH_STORE_STORE_H
