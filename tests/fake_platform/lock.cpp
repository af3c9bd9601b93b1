// The provider's lock.
#include <atomic>
#include <cerrno>

#include "call.h"
#include "caller.h"

namespace fake_platform {
namespace {

// How many locks this thread holds.
thread_local int held = 0;

std::atomic<const void*>& watched() {
  static constinit std::atomic<const void*> lock{nullptr};
  return lock;
}

}  // namespace

void resetLock() {
  watched() = nullptr;
}

void watchLock(const void* mutex) {
  watched() = mutex;
}

bool holdsLock() {
  return held > 0;
}

// A library's lock is recognised by its caller.
bool isProvidersLock(const pthread_mutex_t* mutex, const void* caller) {
  const void* const only = watched();
  return only != nullptr ? mutex == only : isProviderCode(caller);
}

// Recorded while it is held, here and below, so that the journal has the order of the holders.
int takeLock(pthread_mutex_t* mutex, MutexFunction real) {
  const Call call("pthread_mutex_lock", Kind::kLock, Call::Line());
  demand(held == 0, "a thread takes the lock once");
  int result = held == 0 ? call.answer([] { return 0; }) : EDEADLK;
  if (result == 0) result = real(mutex);
  if (result == 0) ++held;
  if (isRecording()) {
    for (const std::string& line : (result == 0 ? locks() : lockFails(result)).lines) {
      enter(Kind::kLock, line);
    }
  }
  return result;
}

int giveLockBack(pthread_mutex_t* mutex, MutexFunction real) {
  demand(held == 1, "a lock is given back by the thread that took it");
  --held;
  if (isRecording()) enter(Kind::kLock, unlocks().lines.front());
  return real(mutex);
}

}  // namespace fake_platform
