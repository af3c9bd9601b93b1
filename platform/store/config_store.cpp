#include "platform/host/config_store.h"

#include <atomic>
#include <mutex>
#include <string_view>

#include "database.h"
#include "notifier.h"
#include "watcher.h"

namespace platform::host {

namespace {

using Values = std::map<std::string, StoreValue>;

constexpr std::string_view kPersistent = "db/";
constexpr std::string_view kVolatile = "memory/";
constexpr std::size_t kMaxKeySize = 511;  // bytes, what LMDB can hold

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

struct ConfigStore::Impl {
  // Opened at its first use; after a failure, tried again at the next.
  struct Area {
    std::string_view prefix;
    Durability durability;
    std::filesystem::path (*folder)();
    std::unique_ptr<Database> database = nullptr;
    std::unique_ptr<Notifier> notifier = nullptr;
    std::atomic<bool> isOpen = false;
  };
  std::mutex mutex;  // guards the opening
  Watcher watcher;
  Area persistent;
  Area transient;
  Values (*readFactorySettings)();
  std::optional<Values> factorySettings;

  explicit Impl(const Origin& origin)
      : persistent{kPersistent, Durability::kSynced, origin.stateFolder},
        transient{kVolatile, Durability::kInMemory, origin.runtimeFolder},
        readFactorySettings(origin.factorySettings) {}

  // Requires the mutex.
  Values factorySettingsOf(const Area& area) try {
    if (!factorySettings) factorySettings = readFactorySettings();
    Values values;
    for (const auto& [key, value] : *factorySettings) {
      if (key.starts_with(area.prefix)) values.emplace(key, value);
    }
    return values;
  } catch (const StoreError& error) {
    throw inFolder(area.folder(), error);
  }

  // A process must not open one database twice.
  static void requireOtherFolder(const std::filesystem::path& folder, const Area& other) {
    std::error_code error;  // a folder that does not exist yet is another
    if (!other.isOpen ||
        !std::filesystem::equivalent(folder, other.database->noticeFile().parent_path(), error)) {
      return;
    }
    throw StoreError(StoreCode::kUnavailable,
                     "VENTARO_STATE_DIR and VENTARO_RUNTIME_DIR are both " + folder.string() +
                         "; they must be two folders");
  }

  void open(Area& area) {
    if (area.isOpen) return;
    // Before the lock: looking for the folder may load a library, whose constructor may use the
    // store.
    const auto folder = area.folder();
    const std::lock_guard lock(mutex);
    if (area.isOpen) return;
    requireOtherFolder(folder, &area == &persistent ? transient : persistent);
    area.database = std::make_unique<Database>(folder, area.durability, factorySettingsOf(area));
    area.notifier = std::make_unique<Notifier>(*area.database, watcher);
    area.isOpen = true;
  }

  Area& areaOf(std::string_view key) {
    Area& area = key.starts_with(kPersistent) ? persistent : transient;
    open(area);
    return area;
  }

  bool put(const Values& values, Overwrite overwrite) {
    bool changed = false;
    Values split[2];
    for (const auto& [key, value] : values) {
      check(key, value);
      split[key.starts_with(kPersistent) ? 0 : 1].emplace(key, value);
    }
    for (const auto& part : split) {
      if (part.empty()) continue;
      try {
        changed = areaOf(part.begin()->first).database->put(part, overwrite) || changed;
      } catch (const StoreError& error) {
        throw StoreError(error.code(), inQuotes(part.begin()->first) + ": " + error.what());
      }
    }
    return changed;
  }
};

ConfigStore::ConfigStore(const Origin& origin) : impl_(std::make_unique<Impl>(origin)) {}
ConfigStore::~ConfigStore() = default;

void ConfigStore::check(const std::string& key, const StoreValue& value) {
  checkKey(key);
  checkValue(key, value);
}

void ConfigStore::open() {
  for (Impl::Area* const area : {&impl_->persistent, &impl_->transient}) {
    impl_->open(*area);
    if (const auto error = area->database->unwritten()) throw StoreError(*error);
  }
}

std::optional<StoreValue> ConfigStore::get(std::string_view key) const {
  std::optional<StoreValue> found;
  read(key, [&](const StoreView& value) { found = copyOf(value); });
  return found;
}

bool ConfigStore::read(std::string_view key,
                       const std::function<void(const StoreView&)>& take) const {
  checkKey(key);
  return impl_->areaOf(key).database->read(key, take);
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

bool ConfigStore::unset(const std::string& key) {
  checkKey(key);
  try {
    return impl_->areaOf(key).database->erase(key);
  } catch (const StoreError& error) {
    throw StoreError(error.code(), inQuotes(key) + ": " + error.what());
  }
}

void ConfigStore::reset() {
  for (Impl::Area* const area : {&impl_->persistent, &impl_->transient}) {
    impl_->open(*area);
    area->database->reset();
  }
}

std::map<std::string, StoreValue> ConfigStore::list(const std::string& prefix) const {
  std::map<std::string, StoreValue> found;
  for (const std::string_view area : {kPersistent, kVolatile}) {
    const bool reaches = area.starts_with(prefix) || prefix.starts_with(area);
    if (reaches) found.merge(impl_->areaOf(area).database->snapshot(prefix).values);
  }
  return found;
}

ConfigStore::Snapshot ConfigStore::snapshot(const std::string& prefix) const {
  checkKey(prefix);
  return impl_->areaOf(prefix).database->snapshot(prefix);
}

std::uint64_t ConfigStore::version(std::string_view key) const {
  checkKey(key);
  return impl_->areaOf(key).database->version();
}

Subscription ConfigStore::subscribe(const std::string& prefix,
                                    std::function<void(const std::string&)> changed) {
  if (!prefix.starts_with(kPersistent) && !prefix.starts_with(kVolatile)) checkKey(prefix);
  Notifier& notifier = *impl_->areaOf(prefix).notifier;
  const int number = notifier.add(prefix, std::move(changed));
  return {&notifier, [number](Notifier* subscribed) { subscribed->remove(number); }};
}

}  // namespace platform::host
