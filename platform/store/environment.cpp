#include "environment.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <ctime>
#include <utility>

#include "data_file.h"
#include "platform/host/config_store.h"

namespace platform {

using host::StoreCode;
using host::StoreError;

namespace {

constexpr char kDataFile[] = "data.mdb";
constexpr char kLockFile[] = "lock.mdb";
constexpr std::size_t kMapSize = std::size_t{72} << 20;  // bytes; the file grows as it is used
constexpr unsigned kMaxReaders = 512;
constexpr unsigned kTables = 2;
constexpr off_t kLockFileSize = off_t{64} * (kMaxReaders + 4);  // bytes; 64 for each reader
constexpr mdb_mode_t kFileMode = 0600;
constexpr std::chrono::seconds kPatience{5};  // with another process that changes the store

struct FileSize {
  int file = -1;
  std::uint64_t is = 0;      // bytes
  std::uint64_t wanted = 0;  // bytes, for all pages that are in use
};

FileSize fileSize(MDB_env* environment) {
  FileSize size;
  check(mdb_env_get_fd(environment, &size.file), "cannot open");
  size.wanted = sizeOfPages(environment);
  // Read after the number of pages, because other processes may grow the file in between.
  struct stat status {};
  if (fstat(size.file, &status) != 0) check(errno, "cannot open");
  size.is = static_cast<std::uint64_t>(status.st_size);
  return size;
}

// LMDB maps its lock file into memory as a sparse file: filling its holes on a full disk would kill
// the process.
File reserveLockFile(const std::filesystem::path& path) {
  File file = openFile(path, O_RDWR | O_CREAT);
  struct stat info {};
  const bool isThere = fstat(file.get(), &info) == 0 && info.st_size >= kLockFileSize;
  const int error = isThere ? 0 : posix_fallocate(file.get(), 0, kLockFileSize);
  if (error != 0) {
    throw StoreError(codeOf(error), "cannot make " + path.string() + ": " + std::strerror(error));
  }
  return file;
}

// A reader that may not write to the files cannot register, so a writer may overwrite the pages
// that it reads, which would crash it.
void refuseWhatOthersMayWrite(const std::filesystem::path& data) {
  constexpr mode_t kWritable = S_IWUSR | S_IWGRP | S_IWOTH;
  struct stat status {};
  struct statvfs disk {};
  if (stat(data.c_str(), &status) != 0 || (status.st_mode & kWritable) == 0) return;
  if (statvfs(data.c_str(), &disk) == 0 && (disk.f_flag & ST_RDONLY) != 0) return;
  throw StoreError(StoreCode::kReadOnly,
                   data.string() +
                       " may be written by others and not by this user, who can therefore not read "
                       "it either; VENTARO_STATE_DIR and VENTARO_RUNTIME_DIR name other folders");
}

std::string sizes(std::uint64_t is, std::uint64_t wanted) {
  return ": " + std::to_string(is) + " of " + std::to_string(wanted) + " bytes";
}

// LMDB maps the whole file; touching a page beyond the end of a truncated one would kill the
// process.
void requireWholeFile(MDB_env* environment) {
  const FileSize size = fileSize(environment);
  if (size.is >= size.wanted) return;
  // A damaged header may ask for more than there can be.
  if (size.wanted <= kMapSize && lacksOnlyFreePages(size.file, static_cast<std::size_t>(size.is),
                                                    static_cast<std::size_t>(size.wanted))) {
    return;
  }
  throw StoreError(StoreCode::kUnavailable,
                   "data.mdb is cut short" + sizes(size.is, size.wanted) + kAdviceOnDamage);
}

void removeFile(const std::filesystem::path& path) {
  if (!openFileIfAny(path, O_RDONLY)) return;  // refuses what is no file of the store's
  if (unlink(path.c_str()) != 0 && errno != ENOENT) check(errno, "cannot empty");
}

std::string fromNowOn(const char* file, const char* what, const char* which) {
  return std::string(file) + " was " + what + " while it was in use; from now on " + which +
         " one is used";
}

// What happened to the file at that path since it was opened; empty when it is still the same, or
// cannot be looked at.
std::string whatHappenedTo(const std::filesystem::path& path, const char* name,
                           const FileState& opened, FileState& now) {
  now = opened;
  const auto found = stateOf(path);
  if (!found && errno != ENOENT && errno != ENOTDIR) return "";
  if (!found) return fromNowOn(name, "moved away or deleted", "a new");
  now = *found;
  return now.isSameFileAs(opened) ? "" : fromNowOn(name, "replaced", "the new");
}

}  // namespace

Environment::Environment(const std::filesystem::path& folder, Durability durability)
    : folder_(folder), data_(folder / kDataFile), lock_(folder / kLockFile) {
  makeOwnFolder(folder);
  const unsigned flags = MDB_NOTLS | (durability == Durability::kInMemory ? MDB_NOSYNC : 0U);
  try {
    openToWrite(durability, flags);
  } catch (const StoreError& error) {
    if (error.code() != StoreCode::kReadOnly) throw;
    writeLock_ = nullptr;
    openToRead(flags);
  }
  if (!isEmpty_) openTables();
}

Environment::~Environment() {
  if (environment_ == nullptr || !lockFile_) return;
  // LMDB writes to it once more, which would end the process if somebody had cut it short.
  struct stat info {};
  if (fstat(lockFile_.get(), &info) == 0 && info.st_size < openedLock_.size) {
    posix_fallocate(lockFile_.get(), 0, openedLock_.size);
  }
}

void Environment::openToWrite(Durability durability, unsigned flags) {
  writeLock_ = std::make_unique<WriteLock>(folder_ / "writer", kPatience);
  if (durability == Durability::kInMemory) dropWhatAnOlderBootLeft();
  std::optional<WriteLock::Hold> making;
  if (!isLockFileOfData()) {
    making.emplace(*writeLock_);
    if (!isLockFileOfData()) makeAnew();  // unless another process did while this one waited
  }
  int error = open(flags);
  // What LMDB says of a bad lock file is the same as of a bad data file.
  if (error == MDB_INVALID && open(flags | MDB_RDONLY | MDB_NOLOCK) == MDB_SUCCESS) {
    if (!making) making.emplace(*writeLock_);
    removeFile(lock_);
    error = open(flags);
  }
  check(error, "cannot open");
  requireWholeFile(environment_.get());
  fillUpFile();
  dropDeadReaders(environment_.get());
}

// Without a lock file: a process that may not write to the folder cannot lock in it.
void Environment::openToRead(unsigned flags) {
  refuseWhatOthersMayWrite(data_);
  isEmpty_ = !hasHeader(data_);
  if (isEmpty_) return;
  check(open(flags | MDB_RDONLY | MDB_NOLOCK), "cannot open");
  requireWholeFile(environment_.get());
}

// Returns LMDB's error.
int Environment::open(unsigned flags) {
  MDB_env* environment = nullptr;
  check(mdb_env_create(&environment), "cannot open");
  environment_.reset(environment);
  check(mdb_env_set_mapsize(environment, kMapSize), "cannot open");
  check(mdb_env_set_maxdbs(environment, kTables), "cannot open");
  check(mdb_env_set_maxreaders(environment, kMaxReaders), "cannot open");
  const bool locks = (flags & MDB_NOLOCK) == 0;
  lockFile_ = locks ? reserveLockFile(lock_) : File();
  if (const int error = mdb_env_open(environment, folder_.c_str(), flags, kFileMode)) return error;
  int data = -1;
  check(mdb_env_get_fd(environment, &data), "cannot open");
  openedData_ = stateOf(data);
  dataSize_ = openedData_.size;
  dataGuard_.emplace(data, data_);
  if (!locks) return MDB_SUCCESS;
  openedLock_ = stateOf(lockFile_.get());
  lockHeader_ = readLockHeader();
  lockGuard_.emplace(lockFile_.get(), lock_);
  return MDB_SUCCESS;
}

// Reads first: a process that only reads must not wait for one that writes.
void Environment::openTables() {
  if (openTables(Access::kRead)) return;
  isEmpty_ = isReadOnly();
  if (isEmpty_) return;
  const WriteLock::Hold hold(*writeLock_);
  openTables(Access::kWrite);
}

// False when there are no tables yet, which a write transaction makes.
bool Environment::openTables(Access access) {
  Transaction transaction(environment_.get(), access);
  const unsigned flags = access == Access::kWrite ? MDB_CREATE : 0;
  for (const auto& [table, name] :
       {std::pair{&tables_.values, "values"}, {&tables_.journal, "journal"}}) {
    const int error = mdb_dbi_open(transaction.get(), name, flags, table);
    if (error == MDB_NOTFOUND) return false;
    check(error, "cannot open");
  }
  transaction.commit();
  return true;
}

// The changes of a memory/ area were never synced, so after a power cut its file may hold any
// mixture of them.
void Environment::dropWhatAnOlderBootLeft() {
  const std::string boot = lineOfKernel("/proc/sys/kernel/random/boot_id");
  const auto isOfThisBoot = [&] { return contentOf(folder_ / "boot_id") == boot; };
  if (boot.empty() || isOfThisBoot()) return;
  const WriteLock::Hold hold(*writeLock_);
  if (isOfThisBoot()) return;  // another process dropped it while this one waited
  removeFile(data_);
  removeFile(lock_);
  const File file = openFile(folder_ / "boot_id", O_WRONLY | O_CREAT | O_TRUNC);
  if (write(file.get(), boot.data(), boot.size()) < 0) check(errno, "cannot write boot_id");
}

// Processes that still have another data file open count its commits in the lock file, so the two
// must belong together.
bool Environment::isLockFileOfData() const {
  const auto data = stateOf(data_);
  return data && data->number == writeLock_->dataFile() && hasHeader(data_);
}

// Requires the write lock. Makes the data file if there was never a store in it, and lets LMDB make
// the lock file.
void Environment::makeAnew() {
  if (!hasHeader(data_)) makeEmpty(data_);
  const FileState data = stateOf(data_).value_or(FileState());
  if (writeLock_->dataFile() != 0) removeFile(lock_);
  writeLock_->setDataFile(data.number);
}

Environment::LockHeader Environment::readLockHeader() const {
  LockHeader header{};
  [[maybe_unused]] const ssize_t size = pread(lockFile_.get(), header.data(), header.size(), 0);
  return header;
}

std::string Environment::whatHappened() const {
  if (isEmpty_) return "";
  FileState data;
  if (std::string what = whatHappenedTo(data_, kDataFile, openedData_, data); !what.empty())
    return what;
  const off_t seen = dataSize_.load(std::memory_order_relaxed);
  if (data.size < seen) {
    return "data.mdb was cut short while it was in use" +
           sizes(static_cast<std::uint64_t>(data.size), static_cast<std::uint64_t>(seen));
  }
  if (data.size > seen) dataSize_.store(data.size, std::memory_order_relaxed);
  return isReadOnly() ? "" : whatHappenedToLockFile();
}

bool Environment::isTouched(Look look) const {
  if (look == Look::kNow) return !whatHappened().empty();
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
  const std::int64_t tick = std::int64_t{now.tv_sec} * 1'000'000'000 + now.tv_nsec;
  if (lastLook_.load(std::memory_order_relaxed) == tick) return false;
  if (!whatHappened().empty()) return true;
  lastLook_.store(tick, std::memory_order_relaxed);
  return false;
}

std::string Environment::whatHappenedToLockFile() const {
  FileState lock;
  if (std::string what = whatHappenedTo(lock_, kLockFile, openedLock_, lock); !what.empty())
    return what;
  if (lock.size >= openedLock_.size && readLockHeader() == lockHeader_) return "";
  return fromNowOn(kLockFile, "overwritten", "a new");
}

// A page allocated and freed in one transaction is counted but not written. If it is the last one,
// the file ends before it.
void Environment::fillUpFile() try {
  MDB_envinfo info{};
  check(mdb_env_info(environment_.get(), &info), "cannot look at the file");
  if (info.me_last_pgno <= filledUpTo_) return;  // the file has not shrunk since
  const FileSize size = fileSize(environment_.get());
  // On a full disk, the file stays as short as it is.
  if (size.is < size.wanted && posix_fallocate(size.file, static_cast<off_t>(size.is),
                                               static_cast<off_t>(size.wanted - size.is)) != 0) {
    return;
  }
  dataSize_ = static_cast<off_t>(std::max(size.is, size.wanted));
  filledUpTo_ = info.me_last_pgno;
} catch (const StoreError&) {
  // The values are already stored, so the set has not failed.
}

}  // namespace platform
