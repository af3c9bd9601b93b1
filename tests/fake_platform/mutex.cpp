// The mutex functions of the whole process. They do what libc's do; those calls that come from the
// provider are recorded, and can be made to fail.
#include <dlfcn.h>
#include <pthread.h>

#include <atomic>

#include "call.h"
#include "caller.h"
#include "platform/export.h"

namespace fake_platform {
namespace {

using MutexFunction = int (*)(pthread_mutex_t*);

// libc's function of this name. Without a guard: looking it up twice does no harm.
MutexFunction libcFunction(std::atomic<MutexFunction>& found, const char* name) {
  MutexFunction function = found;
  if (function == nullptr) {
    function = reinterpret_cast<MutexFunction>(dlsym(RTLD_NEXT, name));
    found = function;
  }
  return function;
}

int realLock(pthread_mutex_t* mutex) {
  static constinit std::atomic<MutexFunction> found{nullptr};
  return libcFunction(found, "pthread_mutex_lock")(mutex);
}

int realUnlock(pthread_mutex_t* mutex) {
  static constinit std::atomic<MutexFunction> found{nullptr};
  return libcFunction(found, "pthread_mutex_unlock")(mutex);
}

}  // namespace
}  // namespace fake_platform

using namespace fake_platform;

// Recorded while it is held, here and below, so that the journal has the order of the holders.
PLATFORM_API int pthread_mutex_lock(pthread_mutex_t* mutex) noexcept {
  if (!isProviderCode(__builtin_return_address(0))) return realLock(mutex);
  const int scripted = takeLockError();
  const int result = scripted != 0 ? scripted : realLock(mutex);
  enter(Kind::kLock, result == 0 ? locks() : lockFails(result));
  return result;
}

PLATFORM_API int pthread_mutex_unlock(pthread_mutex_t* mutex) noexcept {
  if (isProviderCode(__builtin_return_address(0))) enter(Kind::kLock, unlocks());
  return realUnlock(mutex);
}
