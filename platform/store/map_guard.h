// What happens when a file that is mapped into memory is cut short: touching a page that is gone
// raises SIGBUS, which nothing can recover from, because it comes in the middle of LMDB's work.
#ifndef PLATFORM_STORE_MAP_GUARD_H
#define PLATFORM_STORE_MAP_GUARD_H

#include <cstddef>
#include <filesystem>
#include <string>

namespace platform {

// While it lives, a SIGBUS inside this process's maps of an open file ends the process with the
// exit code 1 and a message on standard error, instead of silently.
//
// The first one makes a signal handler for the process, which stays. A SIGBUS anywhere else goes to
// the handler that was there before, or does what it would have done without one. A program that
// makes its own handler later should pass on what is not its own; it only loses the message if it
// does not. The handler runs on the thread's alternative stack if it has one.
class MapGuard {
 public:
  // The message names the path. Without /proc there is no message.
  MapGuard(int file, const std::filesystem::path& path);
  ~MapGuard();
  MapGuard(const MapGuard&) = delete;
  MapGuard& operator=(const MapGuard&) = delete;

 private:
  int place_ = -1;  // in the handler's list; negative when there is none
};

}  // namespace platform

#endif  // PLATFORM_STORE_MAP_GUARD_H
