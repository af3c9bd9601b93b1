#include "notice_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <utility>

namespace platform {

namespace {

constexpr mode_t kFileMode = 0600;

// Whether the file still has a name, by which others can watch it.
bool isThere(int file) {
  struct stat status {};
  return fstat(file, &status) == 0 && status.st_nlink > 0;
}

}  // namespace

NoticeFile::~NoticeFile() {
  close();
}

void NoticeFile::write() {
  const std::lock_guard lock(mutex_);
  if (file_ >= 0 && !isThere(file_)) close();
  if (file_ < 0) file_ = open(path_.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, kFileMode);
  if (file_ < 0) return;
  [[maybe_unused]] const ssize_t written = pwrite(file_, "!", 1, 0);
}

void NoticeFile::close() {
  if (file_ >= 0) ::close(std::exchange(file_, -1));
}

}  // namespace platform
