#include "switches.h"

#include <atomic>
#include <exception>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <string_view>

#include "../platform_functions.h"
#include "never_destroyed.h"
#include "platform/host/config_store.h"
#include "platform/host/faults.h"

namespace platform {

namespace {

using host::ConfigStore;
using host::StoreValue;

constexpr std::string_view kSwitches = "memory/host/";
constexpr std::string_view kFaults = host::kFaults;
constexpr std::string_view kStructuredLog = "memory/host/structured_log";

struct Switches {
  std::uint64_t version = 0;
  std::map<std::string, int, std::less<>> faults;
  bool structuredLog = false;

  bool areAllOff() const { return faults.empty() && !structuredLog; }
};

Switches read(const ConfigStore& store) {
  const ConfigStore::Snapshot snapshot = store.snapshot(std::string(kSwitches));
  Switches switches;
  switches.version = snapshot.version;
  for (const auto& [key, value] : snapshot.values) {
    const int* code = std::get_if<int>(&value);
    if (code != nullptr && *code != 0 && key.starts_with(kFaults)) {
      switches.faults.emplace(key.substr(kFaults.size()), *code);
    }
    if (key == kStructuredLog) switches.structuredLog = value == StoreValue(true);
  }
  return switches;
}

// Nearly every platform function checks the switches, so they are read again only after something
// was set. In the common case, all of them off, no lock is taken.
struct Cache {
  std::atomic<std::uint64_t> allOffAt = 0;  // a version
  std::mutex mutex;
  Switches last;
};

// What `find` returns for the current switches; `off` when all are off or there is no store.
template <typename T, typename Find>
T lookUp(T off, Find find) {
  static auto& cache = neverDestroyed(new Cache);
  try {
    const ConfigStore& store = ConfigStore::instance();
    const std::uint64_t version = store.version(kSwitches);
    if (version == cache.allOffAt) return off;
    const std::lock_guard lock(cache.mutex);
    if (cache.last.version != version) cache.last = read(store);
    if (cache.last.areAllOff()) cache.allOffAt = cache.last.version;
    return find(cache.last);
  } catch (const std::exception&) {
    return off;
  }
}

}  // namespace

std::vector<std::string> host::functionsThatCanFail() {
  std::vector<std::string> names;
  for (const PlatformFunction& function : kPlatformFunctions) {
    const bool can = function.failure != Failure::kNever && function.failure != Failure::kUntouched;
    if (can) names.emplace_back(function.name);
  }
  return names;
}

int injectedFault(const char* function) {
  return lookUp(0, [&](const Switches& switches) {
    const auto fault = switches.faults.find(std::string_view(function));
    return fault != switches.faults.end() ? fault->second : 0;
  });
}

bool keepsStructuredLog() {
  return lookUp(false, [](const Switches& switches) { return switches.structuredLog; });
}

}  // namespace platform
