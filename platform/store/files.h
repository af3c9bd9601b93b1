// The files below the store's folders. They are this user's alone: a link, a pipe or a file of
// somebody else in their place is refused. All functions raise StoreError with the path.
#ifndef PLATFORM_STORE_FILES_H
#define PLATFORM_STORE_FILES_H

#include <sys/stat.h>

#include <filesystem>
#include <optional>
#include <string>

namespace platform {

// Owns an open file.
class File {
 public:
  explicit File(int file = -1) : file_(file) {}
  ~File();
  File(File&& other) noexcept;
  File& operator=(File&& other) noexcept;

  int get() const { return file_; }
  explicit operator bool() const { return file_ >= 0; }

 private:
  int file_;
};

// Makes the folder, with the mode 0700, when it is missing. It must belong to this user or to the
// super-user, and no other user may write to it. The super-user must not use another user's,
// because what he leaves in it would lock that user out. Folders above it that are missing are made
// the same.
void makeOwnFolder(const std::filesystem::path& folder);

// The same for a folder in that folder, which must not be a link.
void makeOwnFolderIn(const std::filesystem::path& folder, const char* name);

// Opens the file with open()'s flags, never through a link. With O_CREAT, it gets the mode 0600; so
// does a file that others may write to.
File openFile(const std::filesystem::path& path, int flags);

// As openFile(), but returns no file when there is none at the path.
File openFileIfAny(const std::filesystem::path& path, int flags);

// The file's first bytes, up to 4,096; empty when there is no such file.
std::string contentOf(const std::filesystem::path& path);

// The first line of one of the kernel's files, whoever owns it; empty when it cannot be read.
std::string lineOfKernel(const std::filesystem::path& path);

// Which file is at a path, and its size.
struct FileState {
  dev_t device = 0;
  ino_t number = 0;
  off_t size = 0;  // bytes

  bool isSameFileAs(const FileState& other) const {
    return device == other.device && number == other.number;
  }
};

// Nothing, with an errno, when the file at the path cannot be looked at.
std::optional<FileState> stateOf(const std::filesystem::path& path);

FileState stateOf(int file);

}  // namespace platform

#endif  // PLATFORM_STORE_FILES_H
