#include "guard.h"

#include "platform/host/config_store.h"
#include "platform/log.h"

namespace platform {

int storeCodeOf(const std::exception& error) {
  const auto* known = dynamic_cast<const host::StoreError*>(&error);
  return static_cast<int>(known != nullptr ? known->code() : host::StoreCode::kUnavailable);
}

int failed(const Service& service, const char* function, const std::exception& error) {
  __dlog_print(PLATFORM_LOG_SYSTEM, PLATFORM_LOG_INFO, service.logTag, "%s: %s", function,
               error.what());
  return service.codeOf(error);
}

}  // namespace platform
