#include "host_switches.h"

#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include "platform/host/config_store.h"

namespace platform {

namespace {

using host::ConfigStore;
using host::StoreValue;

constexpr char kFaults[] = "memory/host/fault/";
constexpr char kStructuredLog[] = "memory/host/structured_log";

struct Switches {
  std::uint64_t version = 0;
  std::map<std::string, int, std::less<>> faults;
  bool structuredLog = false;
};

using SharedSwitches = std::shared_ptr<const Switches>;

SharedSwitches read(const ConfigStore& store, std::uint64_t version) {
  auto switches = std::make_shared<Switches>();
  switches->version = version;
  for (const auto& [key, value] : store.list(kFaults)) {
    const int* code = std::get_if<int>(&value);
    if (code != nullptr) switches->faults.emplace(key.substr(sizeof(kFaults) - 1), *code);
  }
  switches->structuredLog = store.get(kStructuredLog) == StoreValue(true);
  return switches;
}

// Nearly every function of the platform asks, so they are only read anew when something was set
// since. Nothing is locked meanwhile: opening the store may log, and so ask again.
SharedSwitches current() {
  static std::mutex mutex;
  static auto& last = *new SharedSwitches(std::make_shared<Switches>());  // never destroyed
  const ConfigStore& store = ConfigStore::instance();
  // Before the values: those may be newer than the version says, never older.
  const std::uint64_t version = store.version(kFaults);
  {
    const std::lock_guard lock(mutex);
    if (last->version == version) return last;
  }
  SharedSwitches switches = read(store, version);
  const std::lock_guard lock(mutex);
  last = switches;
  return switches;
}

}  // namespace

int injectedFault(const char* function) {
  try {
    const SharedSwitches switches = current();
    const auto fault = switches->faults.find(std::string_view(function));
    return fault != switches->faults.end() ? fault->second : 0;
  } catch (const std::exception&) {
    return 0;  // no store, no fault of ours
  }
}

bool keepsStructuredLog() {
  try {
    return current()->structuredLog;
  } catch (const std::exception&) {
    return false;
  }
}

}  // namespace platform
