// The file that is written after every change of a database, by any process: what a subscriber
// watches. What is in it does not matter.
#ifndef PLATFORM_STORE_NOTICE_FILE_H
#define PLATFORM_STORE_NOTICE_FILE_H

#include <sys/types.h>

#include <filesystem>
#include <mutex>

namespace platform {

class NoticeFile {
 public:
  explicit NoticeFile(std::filesystem::path path) : path_(std::move(path)) {}
  ~NoticeFile();
  NoticeFile(const NoticeFile&) = delete;
  NoticeFile& operator=(const NoticeFile&) = delete;

  const std::filesystem::path& path() const { return path_; }

  // Creates the file when missing. Any thread. Fails silently: the change is already stored, and
  // the watchers notice it at the next one.
  void write();

 private:
  void open();
  void close();
  // Whether the open file is still the one at its path, which the others watch.
  bool isWatched() const;

  const std::filesystem::path path_;
  std::mutex mutex_;
  int file_ = -1;
  dev_t device_ = 0;  // which file it is
  ino_t number_ = 0;
};

}  // namespace platform

#endif  // PLATFORM_STORE_NOTICE_FILE_H
