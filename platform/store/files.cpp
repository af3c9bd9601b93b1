#include "files.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <string>
#include <utility>

#include "platform/host/config_store.h"
#include "transactions.h"

namespace platform {

using host::StoreCode;
using host::StoreError;

namespace {

constexpr mode_t kFileMode = 0600;
constexpr mode_t kFolderMode = 0700;
constexpr mode_t kWritableByOthers = S_IWGRP | S_IWOTH;

[[noreturn]] void fail(const std::filesystem::path& path, int error) {
  throw StoreError(codeOf(error), "cannot open " + path.string() + ": " + std::strerror(error));
}

[[noreturn]] void refuse(const std::filesystem::path& path, const char* reason) {
  throw StoreError(StoreCode::kUnavailable, path.string() + " " + reason + "; move it away");
}

bool isOwn(const struct stat& info) {
  return info.st_uid == geteuid() || info.st_uid == 0;
}

void requireOwnRegularFile(const File& file, const std::filesystem::path& path) {
  struct stat info {};
  if (fstat(file.get(), &info) != 0) fail(path, errno);
  if (!S_ISREG(info.st_mode)) refuse(path, "is not a file");
  if (!isOwn(info)) refuse(path, "belongs to another user");
  // What others may write is taken from them.
  if ((info.st_mode & kWritableByOthers) != 0 && fchmod(file.get(), kFileMode) != 0) {
    refuse(path, "may be written by other users");
  }
}

[[noreturn]] void failToMake(int error) {
  throw StoreError(codeOf(error), std::string("cannot make the folder: ") + std::strerror(error));
}

struct stat requireOwner(const std::filesystem::path& folder) {
  struct stat info {};
  if (stat(folder.c_str(), &info) != 0) failToMake(errno);
  if (isOwn(info)) return info;
  throw StoreError(StoreCode::kUnavailable, folder.string() + " belongs to another user (" +
                                                std::to_string(info.st_uid) +
                                                "); name another folder");
}

// Not through a link, and without waiting for the other end of a pipe.
int openOnce(const std::filesystem::path& path, int flags) {
  return open(path.c_str(), flags | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, kFileMode);
}

// With the folders above it that are missing, too.
void makeMissing(const std::filesystem::path& folder) {
  struct stat info {};
  if (stat(folder.c_str(), &info) == 0) return;
  const std::filesystem::path above = folder.parent_path();
  if (above.empty() || stat(above.c_str(), &info) == 0) {
    if (geteuid() == 0) requireOwner(above.empty() ? "." : above);
  } else {
    makeMissing(above);
  }
  if (mkdir(folder.c_str(), kFolderMode) != 0 && errno != EEXIST) failToMake(errno);
}

}  // namespace

void makeOwnFolder(const std::filesystem::path& folder) {
  makeMissing(folder.lexically_normal());
  const struct stat info = requireOwner(folder);
  if (!S_ISDIR(info.st_mode)) failToMake(ENOTDIR);
  if ((info.st_mode & kWritableByOthers) == 0) return;
  throw StoreError(StoreCode::kUnavailable,
                   folder.string() + " may be written by other users; take that from them (chmod " +
                       "go-w), or name another folder");
}

void makeOwnFolderIn(const std::filesystem::path& folder, const char* name) {
  makeOwnFolder(folder);
  const auto below = folder / name;
  std::error_code error;
  if (std::filesystem::is_symlink(below, error)) refuse(below, "is a link");
  makeOwnFolder(below);
}

File::~File() {
  if (file_ >= 0) close(file_);
}

File::File(File&& other) noexcept : file_(std::exchange(other.file_, -1)) {}

File& File::operator=(File&& other) noexcept {
  std::swap(file_, other.file_);
  return *this;
}

File openFileIfAny(const std::filesystem::path& path, int flags) {
  File file(openOnce(path, flags));
  if (!file) {
    // What a link, a pipe without a reader and a folder give.
    if (errno == ELOOP) refuse(path, "is a link");
    if (errno == ENXIO || errno == EISDIR) refuse(path, "is not a file");
    if (errno == ENOENT && (flags & O_CREAT) == 0) return file;
    fail(path, errno);
  }
  requireOwnRegularFile(file, path);
  return file;
}

File openFile(const std::filesystem::path& path, int flags) {
  File file = openFileIfAny(path, flags);
  if (!file) fail(path, ENOENT);
  return file;
}

std::string contentOf(const std::filesystem::path& path) {
  const File file = openFileIfAny(path, O_RDONLY);
  std::string content(4096, '\0');
  const ssize_t size = file ? read(file.get(), content.data(), content.size()) : 0;
  content.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
  return content;
}

std::string lineOfKernel(const std::filesystem::path& path) {
  std::string line;
  std::ifstream stream(path);
  std::getline(stream, line);
  return line;
}

std::optional<FileState> stateOf(const std::filesystem::path& path) {
  struct stat info {};
  if (stat(path.c_str(), &info) != 0) return std::nullopt;
  return FileState{info.st_dev, info.st_ino, info.st_size};
}

FileState stateOf(int file) {
  struct stat info {};
  check(fstat(file, &info) == 0 ? 0 : errno, "cannot open");
  return {info.st_dev, info.st_ino, info.st_size};
}

}  // namespace platform
