#include "notice_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <utility>

namespace platform {

namespace {

constexpr mode_t kFileMode = 0600;

// Whether it is that file which others find by its name, and watch.
bool isAt(const std::filesystem::path& path, int file) {
  struct stat there {};
  struct stat ours {};
  return stat(path.c_str(), &there) == 0 && fstat(file, &ours) == 0 &&
         there.st_ino == ours.st_ino && there.st_dev == ours.st_dev;
}

}  // namespace

NoticeFile::~NoticeFile() {
  close();
}

void NoticeFile::write() {
  const std::lock_guard lock(mutex_);
  if (file_ >= 0 && !isAt(path_, file_)) close();
  if (file_ < 0) file_ = open(path_.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, kFileMode);
  if (file_ < 0) return;
  [[maybe_unused]] const ssize_t written = pwrite(file_, "!", 1, 0);
}

void NoticeFile::close() {
  if (file_ >= 0) ::close(std::exchange(file_, -1));
}

}  // namespace platform
