#include "platform/host/config_store.h"

#include <atomic>
#include <mutex>
#include <string_view>

#include "database.h"
#include "folders.h"
#include "notifier.h"

namespace platform::host {

namespace {

constexpr std::string_view kPersistent = "db/";
constexpr std::string_view kVolatile = "memory/";
constexpr const char* kTypeNames[] = {"int", "bool", "string"};  // as the types' indices
constexpr std::size_t kMaxKeySize = 511;                         // bytes, what LMDB can hold

// What a TV has when it leaves the factory.
const std::map<std::string, StoreValue> kFactorySettings = {
    {"db/menu_widget/language", "en_US"},
    {"db/menu/network/devicename/default_tv_name", "Living Room TV"},
    {"db/menu/network/devicename/tv_name", "Living Room TV"},
    {"db/menu/network/wifidirect", 0},
    {"db/menu/network/wiredeap", 0},
    {"db/menu/system/accessibility/highcontrast", 0},
    {"db/host/wake_on_mobile", false},
    {"memory/ephotel/hotelmenu/hotelfactorymode", false},
};

// A database and those who want to know of its changes.
struct Area {
  Area(const std::filesystem::path& folder, Durability durability)
      : database(folder, durability), notifier(database) {}
  Database database;
  Notifier notifier;
};

std::string inQuotes(std::string_view key) {
  return "\"" + std::string(key) + "\"";
}

void checkKey(std::string_view key) {
  const auto fail = [&](const char* reason) {
    throw StoreError(StoreCode::kBadKey, "bad key " + inQuotes(key) + ": " + reason);
  };
  if (key.empty()) fail("it is empty");
  if (key.size() > kMaxKeySize) fail("it is longer than 511 bytes");
  if (!key.starts_with(kPersistent) && !key.starts_with(kVolatile)) {
    fail("it begins neither with \"db/\" nor with \"memory/\"");
  }
  if (key == kPersistent || key == kVolatile) fail("it ends where its name should begin");
}

void checkValue(const std::string& key, const StoreValue& value) {
  const auto* text = std::get_if<std::string>(&value);
  if (text == nullptr || text->size() <= kMaxValueSize) return;
  throw StoreError(StoreCode::kValueTooLong,
                   "the value for " + inQuotes(key) + " has " + std::to_string(text->size()) +
                       " bytes, more than " + std::to_string(kMaxValueSize));
}

}  // namespace

StoreValue copyOf(const StoreView& value) {
  if (const auto* text = std::get_if<std::string_view>(&value)) return std::string(*text);
  if (const bool* flag = std::get_if<bool>(&value)) return *flag;
  return std::get<int>(value);
}

const char* typeName(const StoreValue& value) {
  return kTypeNames[value.index()];
}

const char* typeName(const StoreView& value) {
  return kTypeNames[value.index()];
}

struct ConfigStore::Impl {
  // Opened at its first use, and tried again when that failed.
  struct Slot {
    std::unique_ptr<Area> owned;
    std::atomic<Area*> opened = nullptr;
  };
  std::mutex mutex;  // of the opening
  Slot persistent;
  Slot transient;

  static void seed(Area& area, std::string_view prefix) {
    std::map<std::string, StoreValue> missing;
    for (const auto& [key, value] : kFactorySettings) {
      if (!key.starts_with(prefix)) continue;
      if (!area.database.read(key, [](const StoreView&) {})) missing.emplace(key, value);
    }
    try {
      area.database.put(missing, Overwrite::kNo);
    } catch (const StoreError& error) {
      // A store that can only be read, or is full, shows what it holds.
      if (error.code() != StoreCode::kReadOnly && error.code() != StoreCode::kNoSpace) throw;
    }
  }

  // A process must not open one database twice.
  static void requireOtherFolder(const std::filesystem::path& folder, const Slot& other) {
    std::error_code error;  // a folder that is not there yet is another
    if (other.owned == nullptr ||
        !std::filesystem::equivalent(folder, other.owned->database.noticeFile().parent_path(),
                                     error)) {
      return;
    }
    throw StoreError(StoreCode::kUnavailable,
                     "VENTARO_STATE_DIR and VENTARO_RUNTIME_DIR are both " + folder.string() +
                         "; they must be two folders");
  }

  void open(Slot& slot, std::string_view prefix, Durability durability) {
    const std::lock_guard lock(mutex);
    if (slot.owned != nullptr) return;
    const auto folder = durability == Durability::kSynced ? stateFolder() : runtimeFolder();
    requireOtherFolder(folder, durability == Durability::kSynced ? transient : persistent);
    try {
      auto opened = std::make_unique<Area>(folder, durability);
      seed(*opened, prefix);
      slot.owned = std::move(opened);
      slot.opened = slot.owned.get();
    } catch (const StoreError& error) {
      throw StoreError(error.code(), "the store in " + folder.string() + ": " + error.what());
    }
  }

  Area& areaOf(std::string_view key) {
    const bool isPersistent = key.starts_with(kPersistent);
    Slot& slot = isPersistent ? persistent : transient;
    if (slot.opened == nullptr) {
      open(slot, isPersistent ? kPersistent : kVolatile,
           isPersistent ? Durability::kSynced : Durability::kInMemory);
    }
    return *slot.opened;
  }

  bool put(const std::map<std::string, StoreValue>& values, Overwrite overwrite) {
    bool changed = false;
    std::map<std::string, StoreValue> split[2];
    for (const auto& [key, value] : values) {
      checkKey(key);
      checkValue(key, value);
      split[key.starts_with(kPersistent) ? 0 : 1].emplace(key, value);
    }
    for (const auto& part : split) {
      if (part.empty()) continue;
      try {
        changed = areaOf(part.begin()->first).database.put(part, overwrite) || changed;
      } catch (const StoreError& error) {
        throw StoreError(error.code(), inQuotes(part.begin()->first) + ": " + error.what());
      }
    }
    return changed;
  }
};

ConfigStore::ConfigStore() : impl_(std::make_unique<Impl>()) {}
ConfigStore::~ConfigStore() = default;

ConfigStore& ConfigStore::instance() {
  // Never destroyed: a library that is unloaded at exit may still ask.
  static auto* const store = new ConfigStore;
  return *store;
}

std::optional<StoreValue> ConfigStore::get(std::string_view key) const {
  std::optional<StoreValue> found;
  read(key, [&](const StoreView& value) { found = copyOf(value); });
  return found;
}

bool ConfigStore::read(std::string_view key,
                       const std::function<void(const StoreView&)>& take) const {
  checkKey(key);
  return impl_->areaOf(key).database.read(key, take);
}

void ConfigStore::set(const std::string& key, const StoreValue& value) {
  impl_->put({{key, value}}, Overwrite::kYes);
}

void ConfigStore::set(const std::map<std::string, StoreValue>& values) {
  impl_->put(values, Overwrite::kYes);
}

bool ConfigStore::setAbsent(const std::map<std::string, StoreValue>& values) {
  return impl_->put(values, Overwrite::kNo);
}

std::map<std::string, StoreValue> ConfigStore::list(const std::string& prefix) const {
  std::map<std::string, StoreValue> found;
  for (const std::string_view area : {kPersistent, kVolatile}) {
    const bool reaches = area.starts_with(prefix) || prefix.starts_with(area);
    if (reaches) found.merge(impl_->areaOf(area).database.snapshot(prefix).values);
  }
  return found;
}

ConfigStore::Snapshot ConfigStore::snapshot(const std::string& prefix) const {
  checkKey(prefix);
  return impl_->areaOf(prefix).database.snapshot(prefix);
}

std::uint64_t ConfigStore::version(std::string_view key) const {
  checkKey(key);
  return impl_->areaOf(key).database.version();
}

Subscription ConfigStore::subscribe(const std::string& prefix,
                                    std::function<void(const std::string&)> changed) {
  if (!prefix.starts_with(kPersistent) && !prefix.starts_with(kVolatile)) checkKey(prefix);
  Notifier& notifier = impl_->areaOf(prefix).notifier;
  const int number = notifier.add(
      [prefix](const std::string& key) { return key.starts_with(prefix); }, std::move(changed));
  return Subscription([&notifier, number] { notifier.remove(number); });
}

}  // namespace platform::host
