// What the provider has of libc and GLib and the TV stands in for: the lock, the timers and the
// translations. The linker leads its calls here (--wrap), and its calls alone.
#include <glib.h>
#include <libintl.h>
#include <pthread.h>

#include <algorithm>
#include <cstring>

#include "../require.h"
#include "callbacks/callbacks.h"
#include "tv.h"

namespace fuzz {

namespace {

bool held = false;

struct Timer {
  unsigned id;
  GSourceFunc fire;
  void* data;
};

struct Timers {
  std::vector<Timer> running;
  unsigned lastId = 0;
};

Timers& timers() {
  static Timers& instance = *new Timers;
  return instance;
}

bool isRunning(unsigned id) {
  return std::ranges::find(timers().running, id, &Timer::id) != timers().running.end();
}

void stop(unsigned id) {
  std::erase_if(timers().running, [id](const Timer& timer) { return timer.id == id; });
}

}  // namespace

bool isLockHeld() {
  return held;
}

void fireTimers() {
  const LockRule rule(false);
  for (const Timer& timer : std::vector<Timer>(timers().running)) {
    if (isRunning(timer.id) && timer.fire(timer.data) == G_SOURCE_REMOVE) stop(timer.id);
  }
}

std::size_t runningTimers() {
  return timers().running.size();
}

}  // namespace fuzz

using namespace fuzz;

extern "C" {

int __real_pthread_mutex_lock(pthread_mutex_t* mutex);
int __real_pthread_mutex_unlock(pthread_mutex_t* mutex);
int __wrap_pthread_mutex_lock(pthread_mutex_t* mutex);
int __wrap_pthread_mutex_unlock(pthread_mutex_t* mutex);
char* __wrap_dgettext(const char* domain, const char* sid);
unsigned __wrap_g_timeout_add_seconds(unsigned seconds, GSourceFunc function, void* data);
gboolean __wrap_g_source_remove(unsigned id);

int __wrap_pthread_mutex_lock(pthread_mutex_t* mutex) {
  if (mutex != ProviderMutex.native_handle()) return __real_pthread_mutex_lock(mutex);
  require(!held, "the lock is not taken twice");
  takeLock();
  if (answers().lockError != 0) return answers().lockError;
  held = true;
  return __real_pthread_mutex_lock(mutex);
}

int __wrap_pthread_mutex_unlock(pthread_mutex_t* mutex) {
  if (mutex == ProviderMutex.native_handle()) {
    require(held, "the lock is given back once");
    held = false;
  }
  return __real_pthread_mutex_unlock(mutex);
}

char* __wrap_dgettext(const char* domain, const char* sid) {
  enter();
  require(std::strcmp(domain, "ventaro") == 0, "texts are of the provider's domain");
  const auto found = answers().translations.find(sid);
  if (found != answers().translations.end()) return keep(found->second);
  return keep(answers().otherTranslation.value_or(sid));
}

unsigned __wrap_g_timeout_add_seconds(unsigned seconds, GSourceFunc function, void* data) {
  enter();
  require(seconds > 0 && function != nullptr, "a timer has a period and a function");
  timers().running.push_back({++timers().lastId, function, data});
  return timers().lastId;
}

gboolean __wrap_g_source_remove(unsigned id) {
  enter();
  require(isRunning(id), "a timer is removed while it runs");
  stop(id);
  return TRUE;
}

}  // extern "C"
