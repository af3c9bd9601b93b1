#include "guard.h"

#include <exception>

#include "../config_store/host_switches.h"
#include "platform/log.h"

namespace platform {

int guarded(const char* function, const std::function<NetworkCode()>& action) {
  if (const int fault = injectedFault(function)) return fault;
  try {
    return static_cast<int>(action());
  } catch (const std::exception& error) {
    __dlog_print(PLATFORM_LOG_SYSTEM, PLATFORM_LOG_INFO, "NETWORK", "%s: %s", function,
                 error.what());
    return static_cast<int>(NetworkCode::kUnavailable);
  }
}

}  // namespace platform
