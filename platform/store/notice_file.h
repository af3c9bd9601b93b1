// The file that is written after every change of a database, by any process: what a subscriber
// watches. What is in it does not matter.
#ifndef PLATFORM_STORE_NOTICE_FILE_H
#define PLATFORM_STORE_NOTICE_FILE_H

#include <filesystem>
#include <mutex>

#include "files.h"

namespace platform {

class NoticeFile {
 public:
  explicit NoticeFile(std::filesystem::path path) : path_(std::move(path)) {}
  NoticeFile(const NoticeFile&) = delete;
  NoticeFile& operator=(const NoticeFile&) = delete;

  const std::filesystem::path& path() const { return path_; }

  // Creates the file when missing. Any thread. Fails silently: the change is already stored, and
  // the watchers notice it at the next one.
  void write();

  // Opens the file, and creates it when missing. Any thread. Raises StoreError, also when what is
  // at the path is no file of the store's.
  void make();

 private:
  // Whether the open file is still the one at its path, which the others watch.
  bool isWatched() const;

  const std::filesystem::path path_;
  std::mutex mutex_;
  File file_;
  FileState opened_;  // which file it is
};

}  // namespace platform

#endif  // PLATFORM_STORE_NOTICE_FILE_H
