// A definition of each platform function that finds the real one and forwards its arguments, with
// gcc's built-ins for calls of unknown signature.
#include "platform_calls.h"

#include <dlfcn.h>
#include <libintl.h>

#include <chrono>
#include <cstddef>
#include <string_view>

#include "platform/app_util.h"
#include "platform/config_store.h"
#include "platform/connection.h"
#include "platform/log.h"
#include "platform/markup.h"
#include "platform/path.h"
#include "platform/structured_log.h"
#include "platform/system_info.h"
#include "platform/wifi.h"

// The parameters are forwarded blindly.
#pragma GCC diagnostic ignored "-Wunused-parameter"

static void reallyNothing() {}

std::array<CountedFunction, platform::kPlatformFunctions.size() + 2> countedFunctions = {{
#define PLATFORM_FUNCTION(header, result, name, parameters, failure) {#name},
#include "platform_functions.def"
#undef PLATFORM_FUNCTION
    {"dgettext"},
    {"nothing", reinterpret_cast<void*>(&reallyNothing)},
}};

namespace {

constexpr std::size_t kStackOfArguments = 128;  // bytes; more than any call has

int depth = 0;  // calls inside the platform belong to the outer call

consteval std::size_t positionOf(std::string_view name) {
  std::size_t position = 0;
  while (name != platform::kPlatformFunctions.at(position).name) ++position;
  return position;
}

// The next definition of the symbol after this program's own.
void* find(CountedFunction& function, const void* own) {
  if (function.real != nullptr) return function.real;
  Dl_info info{};
  dladdr(own, &info);
  function.real = dlsym(RTLD_NEXT, info.dli_sname);
  return function.real;
}

long now() {
  return std::chrono::steady_clock::now().time_since_epoch() / std::chrono::nanoseconds(1);
}

long start() {
  return depth++ == 0 ? now() : 0;
}

void stop(CountedFunction& function, long started) {
  if (--depth > 0) return;
  function.nanoseconds += now() - started;
  ++function.calls;
}

}  // namespace

#define PASS_ON(own, position)                                                              \
  void* arguments = __builtin_apply_args();                                                 \
  CountedFunction& function = countedFunctions[position];                                   \
  void* real = find(function, reinterpret_cast<const void*>(&own));                         \
  const long started = start();                                                             \
  void* answer =                                                                            \
      __builtin_apply(reinterpret_cast<void (*)(...)>(real), arguments, kStackOfArguments); \
  stop(function, started);                                                                  \
  __builtin_return(answer);

#define PLATFORM_FUNCTION(header, result, name, parameters, failure) \
  result name parameters {                                           \
    PASS_ON(name, positionOf(#name))                                 \
  }
#include "platform_functions.def"

char* dgettext(const char* domain, const char* sid) noexcept {
  PASS_ON(dgettext, countedFunctions.size() - 2)
}

void nothing() {
  PASS_ON(nothing, countedFunctions.size() - 1)
}
