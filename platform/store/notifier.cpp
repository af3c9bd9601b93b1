#include "notifier.h"

#include <utility>

#include "platform/log.h"

namespace platform {

using host::StoreCode;
using host::StoreError;

namespace {

// Returns the changes after the position, and sets it to the last one's.
std::vector<Database::Change> takeChanges(const Database& database, Database::Position& delivered) {
  Database::Changes news = database.changesAfter(delivered);
  if (!news.complete || news.last.opening != delivered.opening) {
    // It is not known what changed, so every key is reported.
    news.changes.clear();
    for (const auto& [key, value] : database.snapshot("").values)
      news.changes.push_back({news.last, key});
  }
  delivered = news.last;
  return news.changes;
}

void logRaised(const std::string& key, const char* what) {
  __dlog_print(PLATFORM_LOG_SYSTEM, PLATFORM_LOG_INFO, "CONFIG_STORE",
               "a subscriber of %s raised: %s", key.c_str(), what);
}

}  // namespace

Notifier::Notifier(const Database& database, Watcher& watcher)
    : database_(database), watcher_(watcher) {}

Notifier::~Notifier() {
  for (const int watch : watches_) watcher_.remove(watch);
}

int Notifier::add(const std::string& prefix, Callback changed) {
  const std::lock_guard lock(mutex_);
  // Before the journal is first read, so that no change is missed.
  if (watches_.empty()) watchFile();
  const Database::Position last = database_.lastChange();
  if (subscribers_.empty()) delivered_ = last;
  const int number = nextNumber_++;
  subscribers_.emplace(number,
                       std::make_shared<Subscriber>(Subscriber{prefix, std::move(changed), last}));
  return number;
}

void Notifier::remove(int number) {
  const std::lock_guard lock(mutex_);
  subscribers_.erase(number);
}

// Requires the mutex. Watches the file now at the path, and creates it if missing: before the first
// change, or after somebody cleared the folder.
void Notifier::watchFile() {
  try {
    database_.makeNoticeFile();
  } catch (const StoreError& error) {
    if (error.code() != StoreCode::kReadOnly) throw;  // one that is there can still be watched
  }
  // The file is not touched when its folder is moved away.
  std::set<int> watches;
  for (const auto& path : {database_.noticeFile(), database_.noticeFile().parent_path()}) {
    watches.insert(watcher_.add(path, [this](bool mayBeGone) { dispatch(mayBeGone); }));
  }
  for (const int watch : std::exchange(watches_, watches)) {
    if (!watches.contains(watch)) watcher_.remove(watch);
  }
}

void Notifier::dispatch(bool mayBeGone) {
  // When somebody touched the files, the first attempt is told so, and the second reads the new.
  if (!tryToDispatch(mayBeGone)) tryToDispatch(mayBeGone);
}

bool Notifier::tryToDispatch(bool mayBeGone) {
  std::vector<Database::Change> changes;
  try {
    const std::lock_guard lock(mutex_);
    database_.lastChange();  // makes the folder again if it is gone
    if (mayBeGone) watchFile();
    changes = takeChanges(database_, delivered_);
  } catch (const std::exception& error) {
    // The main loop has no caller to report to. The changes are read after the next one.
    __dlog_print(PLATFORM_LOG_SYSTEM, PLATFORM_LOG_INFO, "CONFIG_STORE",
                 "cannot read what changed: %s", error.what());
    return false;
  }
  for (const Database::Change& change : changes) deliver(change);
  return true;
}

// Runs subscribers without the mutex, because they may subscribe or end a subscription.
void Notifier::deliver(const Database::Change& change) {
  std::vector<int> numbers;
  {
    const std::lock_guard lock(mutex_);
    for (const auto& [number, subscriber] : subscribers_) {
      if (change.at.isAfter(subscriber->since) && change.key.starts_with(subscriber->prefix)) {
        numbers.push_back(number);
      }
    }
  }
  for (const int number : numbers) {
    std::shared_ptr<Subscriber> subscriber;
    {
      const std::lock_guard lock(mutex_);
      const auto found = subscribers_.find(number);
      if (found == subscribers_.end()) continue;  // removed by an earlier subscriber
      subscriber = found->second;
    }
    // An exception must not reach the main loop, which is C, and the others must still be notified.
    try {
      subscriber->changed(change.key);
    } catch (const std::exception& error) {
      logRaised(change.key, error.what());
    } catch (...) {
      logRaised(change.key, "something that is no std::exception");
    }
  }
}

}  // namespace platform
