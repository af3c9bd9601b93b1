// The host platform's configuration store, beyond what platform/config_store.h offers: values of
// any type, sets of several values at once, listing, and subscriptions that end.
//
// "db/..." keys are kept in $VENTARO_STATE_DIR (default $XDG_STATE_HOME/ventaro, else
// ~/.local/state/ventaro), and a set has reached the disk when it returns. "memory/..." keys are
// kept in $VENTARO_RUNTIME_DIR (default $XDG_RUNTIME_DIR/ventaro, else a folder of this user under
// /tmp). Several processes may use one store at once. A child forked from a process that opened the
// store must exec before it uses it. All functions may be called from any thread.
//
// A folder that nobody may write to is read-only: sets fail. One that others may write to, but not
// this user, is refused.
#ifndef PLATFORM_HOST_CONFIG_STORE_H
#define PLATFORM_HOST_CONFIG_STORE_H

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>

#include "platform/config_store.h"
#include "platform/export.h"

namespace platform::host {

// What the store's C functions return, and what a StoreError carries.
enum class StoreCode : int {
  kOk = 0,
  kNullArgument = -1,
  kBadKey = -2,  // empty, too long, or neither in "db/" nor in "memory/"
  kNoSuchKey = -3,
  kWrongType = -4,     // the key holds a value of another type
  kValueTooLong = -5,  // more than kMaxValueSize bytes
  kReadOnly = -6,      // the folder cannot be written
  kNoSpace = -7,       // the disk or the store is full
  kUnavailable = -8,   // any other error of the store's files
};

inline constexpr std::size_t kMaxValueSize = std::size_t{4} << 20;  // bytes

class PLATFORM_API StoreError : public std::runtime_error {
 public:
  StoreError(StoreCode code, const std::string& message)
      : std::runtime_error(message), code_(code) {}
  StoreCode code() const { return code_; }

 private:
  StoreCode code_;
};

using StoreValue = std::variant<int, bool, std::string>;

// The same, but pointing to the text inside the store.
using StoreView = std::variant<int, bool, std::string_view>;

PLATFORM_API StoreValue copyOf(const StoreView& value);

// The word for a value's type: "int", "bool" or "string".
template <typename... Types>
const char* typeName(const std::variant<Types...>& value) {
  constexpr const char* kNames[] = {"int", "bool", "string"};
  return kNames[value.index()];
}

// The subscription ends when its last copy is destroyed; that must be on the thread that iterates
// the main context.
using Subscription = std::shared_ptr<void>;

class PLATFORM_API ConfigStore {
 public:
  // The store of this process's environment, opened at the first use. Opening adds the factory
  // settings that it lacks, from the resource "products/factory/settings.json".
  static ConfigStore& instance();

  // All functions raise StoreError.

  // Opens the files of both areas, which otherwise happens when a key in them is first used. Unlike
  // the other functions, it refuses an area that was never written and cannot be: that is no TV's
  // store.
  void open();

  // Raises StoreError for a key or a value that no store can hold.
  static void check(const std::string& key, const StoreValue& value);

  // The value, or nothing when there is no such key.
  std::optional<StoreValue> get(std::string_view key) const;

  // Calls `take` with the value, whose text is valid until `take` returns. Avoids the copy that
  // get() makes. Returns whether there is such a key.
  bool read(std::string_view key, const std::function<void(const StoreView&)>& take) const;

  void set(const std::string& key, const StoreValue& value);

  // Sets several values. Those of "db/", and those of "memory/", become visible together.
  void set(const std::map<std::string, StoreValue>& values);

  // As set(), but skips keys that already have a value. Returns whether it set any.
  bool setAbsent(const std::map<std::string, StoreValue>& values);

  // Removes a key and notifies its subscribers as after a set. Returns whether the key existed. A
  // factory setting comes back when the store is next opened.
  bool unset(const std::string& key);

  // Replaces everything in the store with the factory settings.
  void reset();

  // All values whose keys begin with `prefix`, in the order of their keys.
  std::map<std::string, StoreValue> list(const std::string& prefix) const;

  // All values whose keys begin with `prefix`, which must name an area ("db/", "memory/"), as of
  // one commit, and that commit's version.
  struct Snapshot {
    std::uint64_t version = 0;
    std::map<std::string, StoreValue> values;
  };
  Snapshot snapshot(const std::string& prefix) const;

  // The number of the last commit in the area of that key, by any process; it may be one ahead of a
  // snapshot. 0 for an area that was never written. Much cheaper than a read.
  std::uint64_t version(std::string_view key) const;

  // Calls `changed` with the key after every set or unset of a key that begins with `prefix`, by
  // any process, even to an equal value. The calls come from the default GLib main context; an
  // exception that leaves one is logged and dropped. A process that falls thousands of changes
  // behind is notified once of every key.
  [[nodiscard]] Subscription subscribe(const std::string& prefix,
                                       std::function<void(const std::string& key)> changed);

  ConfigStore(const ConfigStore&) = delete;
  ConfigStore& operator=(const ConfigStore&) = delete;

 private:
  // Where a store is, and its initial values. Each function may raise StoreError.
  struct Origin {
    std::filesystem::path (*stateFolder)();    // for "db/..."
    std::filesystem::path (*runtimeFolder)();  // for "memory/..."
    std::map<std::string, StoreValue> (*factorySettings)();
  };
  explicit ConfigStore(const Origin& origin);
  ~ConfigStore();

  struct Impl;
  std::unique_ptr<Impl> impl_;
};

// The key of a notification of platform/config_store.h; valid as long as the node.
PLATFORM_API const char* keyOf(const keynode_t* node);

}  // namespace platform::host

#endif  // PLATFORM_HOST_CONFIG_STORE_H
