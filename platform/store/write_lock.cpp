#include "write_lock.h"

#include <fcntl.h>
#include <sys/types.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <string>
#include <thread>

#include "platform/host/config_store.h"
#include "transactions.h"

namespace platform {

using Clock = std::chrono::steady_clock;

namespace {

// The kernel's wait for a lock has no end that could be set, so it is tried again and again. A
// change takes some hundred microseconds in memory, and some milliseconds on a disk.
constexpr std::chrono::microseconds kFirstPause{50};
constexpr std::chrono::microseconds kLongestPause{1000};

// Where in the file, in bytes.
constexpr off_t kTimePlace = 0;
constexpr off_t kDataFilePlace = sizeof(std::int64_t);

std::string inSeconds(Clock::duration time) {
  return std::to_string(std::chrono::duration_cast<std::chrono::seconds>(time).count()) + " s";
}

}  // namespace

WriteLock::WriteLock(const std::filesystem::path& path, std::chrono::milliseconds patience)
    : path_(path), patience_(patience), file_(openFile(path, O_RDWR | O_CREAT)) {}

bool WriteLock::tryToLock() {
  struct flock lock {};
  lock.l_type = F_WRLCK;
  lock.l_whence = SEEK_SET;
  while (fcntl(file_.get(), F_SETLK, &lock) == 0) {
    const auto there = stateOf(path_);
    if (there && there->isSameFileAs(stateOf(file_.get()))) return true;
    // Somebody removed the file, so those who come later lock another.
    file_ = openFile(path_, O_RDWR | O_CREAT);
  }
  if (errno != EAGAIN && errno != EACCES) check(errno, "cannot lock");
  return false;
}

void WriteLock::unlock() const {
  struct flock lock {};
  lock.l_type = F_UNLCK;
  lock.l_whence = SEEK_SET;
  fcntl(file_.get(), F_SETLK, &lock);
}

// Since when the lock is held, for those who wait. The clock is the same for all processes.
void WriteLock::noteWhen() const {
  const std::int64_t now = Clock::now().time_since_epoch().count();
  [[maybe_unused]] const ssize_t written = pwrite(file_.get(), &now, sizeof now, kTimePlace);
}

// As noteWhen() wrote it; 0 when nobody did.
std::int64_t WriteLock::heldSince() const {
  std::int64_t since = 0;
  const bool isThere = pread(file_.get(), &since, sizeof since, kTimePlace) == sizeof since;
  return isThere ? since : 0;
}

ino_t WriteLock::dataFile() const {
  ino_t number = 0;
  const bool isThere = pread(file_.get(), &number, sizeof number, kDataFilePlace) == sizeof number;
  return isThere ? number : 0;
}

// Where the disk is full, the next one to open the store sets it.
void WriteLock::setDataFile(ino_t number) const {
  [[maybe_unused]] const ssize_t written =
      pwrite(file_.get(), &number, sizeof number, kDataFilePlace);
}

void WriteLock::tellWhoHoldsIt() const {
  struct flock lock {};
  lock.l_type = F_WRLCK;
  lock.l_whence = SEEK_SET;
  std::string holder = "another process";
  if (fcntl(file_.get(), F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK) {
    holder = "process " + std::to_string(lock.l_pid);
  }
  const std::int64_t since = heldSince();
  const Clock::duration held =
      since == 0 ? patience_ : Clock::now() - Clock::time_point(Clock::duration(since));
  throw StoreIsBusy("cannot begin: " + holder + " has been changing the store for " +
                    inSeconds(held) + "; let it go on, or end it");
}

// Sleeps between the attempts, because the kernel's wait for a lock cannot be limited; for the
// mutex, too, because gcc 12's thread sanitizer does not see that a limited wait takes it.
bool WriteLock::retry(const std::function<bool()>& attempt) const {
  auto end = Clock::now() + patience_;
  std::int64_t since = 0;
  for (auto pause = kFirstPause; !attempt(); pause = std::min(pause * 2, kLongestPause)) {
    // The next one in a row has not been changing it for long.
    if (const std::int64_t now = heldSince(); now != since) {
      since = now;
      end = Clock::now() + patience_;
    }
    if (Clock::now() >= end) return false;
    std::this_thread::sleep_for(pause);
  }
  return true;
}

WriteLock::Hold::Hold(WriteLock& lock) : lock_(lock), thread_(lock.threads_, std::defer_lock) {
  if (!lock.retry([&] { return thread_.try_lock(); })) {
    throw StoreIsBusy(
        "cannot begin: another thread of this process has been changing the store "
        "for longer than " +
        inSeconds(lock.patience_));
  }
  if (!lock.retry([&] { return lock.tryToLock(); })) lock.tellWhoHoldsIt();
  lock.noteWhen();
}

WriteLock::Hold::~Hold() {
  lock_.unlock();
}

}  // namespace platform
