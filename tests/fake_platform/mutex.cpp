// The mutex functions of the whole process. They behave like libc's, and record the provider's
// lock.
#include <dlfcn.h>
#include <pthread.h>

#include <atomic>

#include "call.h"
#include "platform/export.h"

namespace {

using fake_platform::MutexFunction;

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

PLATFORM_API int pthread_mutex_lock(pthread_mutex_t* mutex) noexcept {
  const bool isWatched = fake_platform::isProvidersLock(mutex, __builtin_return_address(0));
  return isWatched ? fake_platform::takeLock(mutex, realLock) : realLock(mutex);
}

PLATFORM_API int pthread_mutex_unlock(pthread_mutex_t* mutex) noexcept {
  const bool isWatched = fake_platform::isProvidersLock(mutex, __builtin_return_address(0));
  return isWatched ? fake_platform::giveLockBack(mutex, realUnlock) : realUnlock(mutex);
}
