#include "faults.h"

#include <exception>
#include <string>

#include "platform/host/config_store.h"

namespace platform {

int injectedFault(const char* function) {
  using host::ConfigStore;
  try {
    const auto value = ConfigStore::instance().get(std::string("memory/host/fault/") + function);
    const int* code = value ? std::get_if<int>(&*value) : nullptr;
    return code != nullptr ? *code : 0;
  } catch (const std::exception&) {
    return 0;  // no store, no fault of ours
  }
}

}  // namespace platform
