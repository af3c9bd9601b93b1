#include "watcher.h"

#include <glib-unix.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <string>
#include <utility>

#include "platform/host/config_store.h"
#include "platform/host/descriptors.h"

namespace platform {

using host::StoreCode;
using host::StoreError;

namespace {

constexpr std::uint32_t kWritten = IN_MODIFY;
constexpr std::uint32_t kGone = IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF;  // possibly gone
constexpr std::uint32_t kFolderGone = IN_DELETE_SELF | IN_MOVE_SELF;
constexpr int kAll = -1;  // the number of the event that says that events were lost

[[noreturn]] void failToWatch(const std::string& reason) {
  throw StoreError(StoreCode::kUnavailable, "cannot watch for changes: " + reason);
}

std::string reachedLimit(const char* name) {
  return std::string("this user has as many as the kernel allows, fs.inotify.") + name + " = " +
         lineOfKernel(std::string("/proc/sys/fs/inotify/") + name);
}

void requireDescriptor() try { host::requireDescriptors(1); } catch (const StoreError& error) {
  failToWatch(error.what());
}

}  // namespace

Watcher::~Watcher() {
  if (source_ != 0) g_source_remove(source_);
}

int Watcher::add(const std::filesystem::path& path, Touched touched) {
  const std::lock_guard lock(mutex_);
  start();
  const std::uint32_t events = std::filesystem::is_directory(path) ? kFolderGone : kWritten | kGone;
  const int watch = inotify_add_watch(inotify_.get(), path.c_str(), events);
  if (watch < 0) {
    failToWatch(path.string() + ": " +
                (errno == ENOSPC ? reachedLimit("max_user_watches") : std::strerror(errno)));
  }
  watched_[watch] = std::move(touched);
  return watch;
}

void Watcher::remove(int watch) {
  const std::lock_guard lock(mutex_);
  if (watched_.erase(watch) > 0) inotify_rm_watch(inotify_.get(), watch);
}

// Requires the mutex.
void Watcher::start() {
  if (source_ != 0) return;
  requireDescriptor();  // so that an EMFILE is about the instances
  if (!inotify_) inotify_ = File(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
  if (!inotify_) {
    failToWatch(errno == EMFILE ? reachedLimit("max_user_instances") : std::strerror(errno));
  }
  requireDescriptor();  // GLib ends the process when it finds none for its main loop
  source_ = g_unix_fd_add(
      inotify_.get(), G_IO_IN,
      [](int, GIOCondition, void* self) {
        static_cast<Watcher*>(self)->dispatch();
        return gboolean{G_SOURCE_CONTINUE};
      },
      this);
}

// Reads all events. Returns the files that were touched, and whether each may be gone.
std::map<int, bool> Watcher::drain() const {
  alignas(inotify_event) std::array<char, 4096> events{};
  std::map<int, bool> touched;
  while (true) {
    const ssize_t size = read(inotify_.get(), events.data(), events.size());
    if (size <= 0) return touched;
    for (ssize_t at = 0; at < size;) {
      const auto* event = reinterpret_cast<const inotify_event*>(events.data() + at);
      touched[event->wd] |= (event->mask & ~kWritten) != 0;
      at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
    }
  }
}

// Calls without the mutex, because those who are told may add a file.
void Watcher::dispatch() {
  const std::map<int, bool> touched = drain();
  std::map<int, Touched> watched;
  {
    const std::lock_guard lock(mutex_);
    watched = watched_;
  }
  for (const auto& [watch, tell] : watched) {
    const auto found = touched.find(touched.contains(kAll) ? kAll : watch);
    if (found != touched.end()) tell(found->second);
  }
}

}  // namespace platform
