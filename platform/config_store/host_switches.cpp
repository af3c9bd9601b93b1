#include "host_switches.h"

#include <exception>
#include <functional>
#include <map>
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

Switches read(const ConfigStore& store, std::uint64_t version) {
  Switches switches;
  switches.version = version;
  for (const auto& [key, value] : store.list(kFaults)) {
    const int* code = std::get_if<int>(&value);
    if (code != nullptr) switches.faults.emplace(key.substr(sizeof(kFaults) - 1), *code);
  }
  switches.structuredLog = store.get(kStructuredLog) == StoreValue(true);
  return switches;
}

// Nearly every function of the platform asks, so each thread keeps them, and reads them anew only
// when something was set since.
const Switches& current() {
  thread_local Switches last;
  const ConfigStore& store = ConfigStore::instance();
  // Before the values: those may be newer than the version says, never older.
  const std::uint64_t version = store.version(kFaults);
  if (last.version != version) last = read(store, version);
  return last;
}

}  // namespace

int injectedFault(const char* function) {
  try {
    const auto& faults = current().faults;
    const auto fault = faults.find(std::string_view(function));
    return fault != faults.end() ? fault->second : 0;
  } catch (const std::exception&) {
    return 0;  // no store, no fault of ours
  }
}

bool keepsStructuredLog() {
  try {
    return current().structuredLog;
  } catch (const std::exception&) {
    return false;
  }
}

}  // namespace platform
