// A file for each key, which a set replaces as a whole: a temporary file that is renamed. Durable
// syncs the file before and the folder after that.
#include <fcntl.h>
#include <glib-unix.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <string_view>

#include "contents.h"
#include "store.h"

namespace bench {

namespace {

class File {
 public:
  File(int folder, const std::string& name, int flags)
      : file_(openat(folder, name.c_str(), flags | O_CLOEXEC, 0600)) {
    require(file_ >= 0, "files: cannot open ", name);
  }
  ~File() { close(file_); }
  File(const File&) = delete;
  File& operator=(const File&) = delete;

  int get() const { return file_; }

 private:
  int file_;
};

class FilesReader : public Reader {
 public:
  explicit FilesReader(int folder) : folder_(folder) {}

  int number(const std::string& key) override {
    std::array<char, 16> digits{};
    const File file(folder_, key, O_RDONLY);
    require(read(file.get(), digits.data(), digits.size() - 1) > 0, "files: cannot read ", key);
    return std::atoi(digits.data());
  }

  char* text(const std::string& key) override {
    const File file(folder_, key, O_RDONLY);
    struct stat info {};
    require(fstat(file.get(), &info) == 0, "files: cannot read ", key);
    auto* const copy = static_cast<char*>(std::malloc(info.st_size + 1));
    require(read(file.get(), copy, info.st_size) == info.st_size, "files: cannot read ", key);
    copy[info.st_size] = '\0';
    return copy;
  }

 private:
  int folder_;
};

class Files : public Store {
 public:
  Files(std::filesystem::path path, Durability durability)
      : path_(std::move(path)),
        durable_(durability == Durability::kDurable),
        folder_(AT_FDCWD, path_.string(), O_RDONLY | O_DIRECTORY) {}

  void fill(int count) override {
    for (int index = 0; index < count; ++index) {
      const std::string text =
          kindOf(index) == Kind::kNumber ? std::to_string(numberOf(index)) : textOf(index);
      writeFile(nameOf(index), text, false);
    }
    syncfs(folder_.get());
  }

  std::unique_ptr<Reader> reader() override { return std::make_unique<FilesReader>(folder_.get()); }

  void setNumber(const std::string& key, int value) override {
    static const std::string temporary = "temporary-" + std::to_string(getpid());
    writeFile(temporary, std::to_string(value), durable_);
    require(renameat(folder_.get(), temporary.c_str(), folder_.get(), key.c_str()) == 0,
            "files: cannot rename to ", key);
    if (durable_) require(fsync(folder_.get()) == 0, "files: cannot sync the folder");
  }

  // Without GIO's monitor, which may look at its events only ten times a second.
  void watch(const std::string& key, std::function<void()> changed) override {
    key_ = key;
    changed_ = std::move(changed);
    events_ = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    require(inotify_add_watch(events_, path_.c_str(), IN_MOVED_TO) >= 0, "files: cannot watch ",
            path_.native());
    const auto call = [](int, GIOCondition, void* self) {
      static_cast<Files*>(self)->dispatch();
      return gboolean{G_SOURCE_CONTINUE};
    };
    g_unix_fd_add(events_, G_IO_IN, call, this);
  }

 private:
  void dispatch() {
    alignas(inotify_event) std::array<char, 4096> bytes{};
    bool isOurs = false;
    for (ssize_t size = 0; (size = read(events_, bytes.data(), bytes.size())) > 0;) {
      for (ssize_t place = 0; place < size;) {
        const auto* event = reinterpret_cast<const inotify_event*>(&bytes[place]);
        isOurs = isOurs || key_ == event->name;
        place += static_cast<ssize_t>(sizeof *event) + event->len;
      }
    }
    if (isOurs) changed_();
  }

  void writeFile(const std::string& name, std::string_view text, bool sync) {
    const File file(folder_.get(), name, O_WRONLY | O_CREAT | O_TRUNC);
    const auto size = static_cast<ssize_t>(text.size());
    require(write(file.get(), text.data(), text.size()) == size, "files: cannot write ", name);
    if (sync) require(fsync(file.get()) == 0, "files: cannot sync ", name);
  }

  std::filesystem::path path_;
  bool durable_;
  File folder_;
  std::string key_;
  std::function<void()> changed_;
  int events_ = -1;
};

}  // namespace

std::unique_ptr<Store> openFiles(const std::filesystem::path& folder, Durability durability,
                                 int /*count*/) {
  return std::make_unique<Files>(folder, durability);
}

}  // namespace bench
