#include "map_guard.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <charconv>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <mutex>

namespace platform {

namespace {

constexpr int kExitCode = 1;

// What the handler needs, in a form that it can read at any moment.
struct GuardedMap {
  std::atomic<std::uintptr_t> begin = 0;  // zero while the place is free
  std::atomic<std::uintptr_t> end = 0;
  std::array<char, 4200> message{};
};

constinit std::array<GuardedMap, 16> guardedMaps{};
std::mutex changes;  // of the list
struct sigaction previous {};

const GuardedMap* mapAround(const void* address) {
  const auto at = reinterpret_cast<std::uintptr_t>(address);
  const auto* const found = std::ranges::find_if(guardedMaps, [at](const GuardedMap& map) {
    const std::uintptr_t begin = map.begin;
    return begin != 0 && begin <= at && at < map.end;
  });
  return found != guardedMaps.end() ? found : nullptr;
}

void passOn(int signal, siginfo_t* info, void* context) {
  if ((previous.sa_flags & SA_SIGINFO) != 0) return previous.sa_sigaction(signal, info, context);
  if (previous.sa_handler != SIG_DFL && previous.sa_handler != SIG_IGN) {
    return previous.sa_handler(signal);
  }
  // The instruction faults once more, or the sender's signal is raised again, without us.
  sigaction(signal, &previous, nullptr);
  if (info->si_code <= 0) raise(signal);
}

// Only calls what is safe in a signal handler.
void endWithMessage(int signal, siginfo_t* info, void* context) {
  const GuardedMap* const map = info->si_code > 0 ? mapAround(info->si_addr) : nullptr;
  if (map == nullptr) return passOn(signal, info, context);
  [[maybe_unused]] const ssize_t written =
      write(STDERR_FILENO, map->message.data(), std::strlen(map->message.data()));
  _exit(kExitCode);
}

void handleSignal() {
  static const bool done = [] {
    struct sigaction action {};
    action.sa_sigaction = endWithMessage;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK;
    sigemptyset(&action.sa_mask);
    return sigaction(SIGBUS, &action, &previous) == 0;
  }();
  static_cast<void>(done);
}

struct Range {
  std::uintptr_t begin = 0;
  std::uintptr_t end = 0;
};

// LMDB does not say where its maps are. The kernel does, in lines such as
// "7f0000000000-7f0004800000 r--s 00000000 08:01 1234   /path".
Range rangeOf(const std::string& path) {
  std::ifstream maps("/proc/self/maps");
  Range range;
  for (std::string line; std::getline(maps, line);) {
    if (!line.ends_with(" " + path)) continue;
    Range part;
    const char* const end = line.data() + line.size();
    const auto begin = std::from_chars(line.data(), end, part.begin, 16);
    std::from_chars(begin.ptr + 1, end, part.end, 16);
    range.begin = range.begin == 0 ? part.begin : std::min(range.begin, part.begin);
    range.end = std::max(range.end, part.end);
  }
  return range;
}

}  // namespace

MapGuard::MapGuard(int file, const std::filesystem::path& path) {
  std::error_code error;
  const auto mapped = std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(file), error);
  const Range range = error ? Range() : rangeOf(mapped.string());
  if (range.begin == 0) return;
  const std::lock_guard lock(changes);
  auto* const free =
      std::ranges::find_if(guardedMaps, [](const auto& map) { return map.begin == 0; });
  if (free == guardedMaps.end()) return;
  const std::string text = "ventaro: " + path.string().substr(0, 4096) +
                           " was cut short while it was in use, or is damaged; the program ends\n";
  free->message.fill('\0');
  std::ranges::copy(text, free->message.begin());
  free->end = range.end;
  free->begin = range.begin;
  place_ = static_cast<int>(free - guardedMaps.begin());
  handleSignal();
}

MapGuard::~MapGuard() {
  if (place_ < 0) return;
  const std::lock_guard lock(changes);
  guardedMaps[static_cast<std::size_t>(place_)].begin = 0;
}

}  // namespace platform
