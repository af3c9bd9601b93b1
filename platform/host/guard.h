// What the C functions have in common: an injected fault can replace their work, and no exception
// leaves them.
#ifndef PLATFORM_HOST_GUARD_H
#define PLATFORM_HOST_GUARD_H

#include <exception>
#include <type_traits>

#include "switches.h"

namespace platform {

struct Service {
  const char* logTag;
  int (*codeOf)(const std::exception& error);  // the result of a function that raised it
};

// A StoreError's own code; StoreCode::kUnavailable for any other error.
int storeCodeOf(const std::exception& error);

// Logs why the function failed, and returns its result.
int failed(const Service& service, const char* function, const std::exception& error);

// Carries out `action` and returns its code, or 0 if it has none. An injected fault is returned
// instead; an exception is logged and its code returned. A code that the action returns is not
// logged.
template <typename Action>
int guarded(const Service& service, const char* function, const Action& action) {
  if (const int fault = injectedFault(function)) return fault;
  try {
    if constexpr (std::is_void_v<decltype(action())>) {
      action();
      return 0;
    } else {
      return static_cast<int>(action());
    }
  } catch (const std::exception& error) {
    return failed(service, function, error);
  }
}

}  // namespace platform

#endif  // PLATFORM_HOST_GUARD_H
