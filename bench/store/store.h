// What the compared stores have in common, in the words of the least that each of them can do.
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

// One thread's way to read. Both functions raise std::runtime_error where there is no such value.
class Reader {
 public:
  virtual ~Reader() = default;
  virtual int number(const std::string& key) = 0;

  // A copy of the caller's own, who frees it with free().
  virtual char* text(const std::string& key) = 0;
};

class Store {
 public:
  virtual ~Store() = default;

  // What a key begins with.
  virtual std::string prefix() const { return ""; }

  // Stores what contents.h says is in a store of that many keys.
  virtual void fill(int count) = 0;

  virtual std::unique_ptr<Reader> reader() = 0;
  virtual void setNumber(const std::string& key, int value) = 0;

  // Calls `changed` from the default GLib main context after a set by any process.
  virtual void watch(const std::string& key, const std::function<void()>& changed);

  // Does what it put off until the main loop would run.
  virtual void rest() {}
};

// A store in that folder. `count` keys are in it, or will be.
using OpenStore = std::unique_ptr<Store>(const std::filesystem::path& folder, Durability durability,
                                         int count);

OpenStore openVentaro;
OpenStore openLmdb;
OpenStore openSqlite;
OpenStore openGsettings;

// By the name it has in the report; raises std::runtime_error for a name that there is not. Each
// store has a folder of its own in `folder`.
std::unique_ptr<Store> open(const std::string& name, const std::filesystem::path& folder,
                            Durability durability, int count);

// What a reader hands out of bytes that it has at hand.
inline char* copyOf(const void* bytes, std::size_t size) {
  auto* const copy = static_cast<char*>(std::malloc(size + 1));
  std::memcpy(copy, bytes, size);
  copy[size] = '\0';
  return copy;
}

}  // namespace bench

#endif  // BENCH_STORE_STORE_H
