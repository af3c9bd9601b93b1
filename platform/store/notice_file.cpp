#include "notice_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <utility>

namespace platform {

namespace {

constexpr mode_t kFileMode = 0600;

}  // namespace

NoticeFile::~NoticeFile() {
  close();
}

void NoticeFile::write() {
  const std::lock_guard lock(mutex_);
  if (file_ >= 0 && !isWatched()) close();
  if (file_ < 0) open();
  if (file_ < 0) return;
  [[maybe_unused]] const ssize_t written = pwrite(file_, "!", 1, 0);
}

void NoticeFile::open() {
  file_ = ::open(path_.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, kFileMode);
  struct stat ours {};
  if (file_ < 0 || fstat(file_, &ours) != 0) return;
  device_ = ours.st_dev;
  number_ = ours.st_ino;
}

bool NoticeFile::isWatched() const {
  struct stat there {};
  return stat(path_.c_str(), &there) == 0 && there.st_dev == device_ && there.st_ino == number_;
}

void NoticeFile::close() {
  if (file_ >= 0) ::close(std::exchange(file_, -1));
}

}  // namespace platform
