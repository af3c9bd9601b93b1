#include "notice_file.h"

#include <fcntl.h>
#include <unistd.h>

#include "platform/host/config_store.h"

namespace platform {

void NoticeFile::write() try {
  make();
  const std::lock_guard lock(mutex_);
  [[maybe_unused]] const ssize_t written = pwrite(file_.get(), "!", 1, 0);
} catch (const host::StoreError&) {
  // The change is already stored.
}

void NoticeFile::make() {
  const std::lock_guard lock(mutex_);
  if (file_ && isWatched()) return;
  file_ = openFile(path_, O_WRONLY | O_CREAT);
  opened_ = stateOf(file_.get());
}

bool NoticeFile::isWatched() const {
  const auto there = stateOf(path_);
  return there && there->isSameFileAs(opened_);
}

}  // namespace platform
