#include "clock.h"

#include <dlfcn.h>
#include <glib.h>

#include <condition_variable>
#include <mutex>
#include <optional>

#include "platform/export.h"
#include "platform/wifi.h"

namespace threads_tests::clock {

namespace {

constexpr guint kProvidersPeriod = 2;  // seconds

struct Timer {
  GSource source;  // first, as GLib requires
  GSourceFunc function;
  gpointer data;
};

struct State {
  std::mutex mutex;
  std::condition_variable changed;
  Timer* running = nullptr;
  int firings = 0;  // still to come
  int wrongTimersRemoved = 0;
};

State& state() {
  static State& instance = *new State;
  return instance;
}

thread_local const Timer* firing = nullptr;

struct Firing {
  GSourceFunc function;
  gpointer data;
};

// The function that the timer calls when it fires now. Read with the mutex held, which end() takes
// before GLib frees the timer, because the thread sanitizer does not know GLib's own
// synchronisation.
std::optional<Firing> begin(Timer* timer) {
  const std::lock_guard lock(state().mutex);
  if (timer != state().running || state().firings == 0) {
    g_source_set_ready_time(&timer->source, -1);
    return std::nullopt;
  }
  --state().firings;
  state().changed.notify_all();
  return Firing{timer->function, timer->data};
}

gboolean dispatch(GSource* source, GSourceFunc /*callback*/, gpointer /*data*/) {
  auto* timer = reinterpret_cast<Timer*>(source);
  const std::optional<Firing> now = begin(timer);
  if (!now) return G_SOURCE_CONTINUE;
  firing = timer;
  const gboolean goesOn = now->function(now->data);
  firing = nullptr;
  return goesOn;
}

// The main loop calls this, without a firing, when a timer has removed itself or was removed by
// another thread while it fired.
void end(gpointer data) {
  const auto* timer = static_cast<const Timer*>(data);
  const std::lock_guard lock(state().mutex);
  if (firing != nullptr && firing != timer) ++state().wrongTimersRemoved;
  if (timer == state().running) state().running = nullptr;
  state().changed.notify_all();
}

guint addTimer(GSourceFunc function, gpointer data) {
  static GSourceFuncs functions = {nullptr, nullptr, dispatch, nullptr, nullptr, nullptr};
  GSource* source = g_source_new(&functions, sizeof(Timer));
  auto* timer = reinterpret_cast<Timer*>(source);
  timer->function = function;
  timer->data = data;
  g_source_set_callback(source, function, timer, end);
  {
    const std::lock_guard lock(state().mutex);
    state().running = timer;
    state().firings = 0;
  }
  const guint id = g_source_attach(source, nullptr);
  g_source_unref(source);
  return id;
}

}  // namespace

void letFire(int times) {
  const std::lock_guard lock(state().mutex);
  if (state().running == nullptr) return;
  state().firings = times;
  g_source_set_ready_time(&state().running->source, 0);
}

void waitForFirings() {
  std::unique_lock lock(state().mutex);
  state().changed.wait(lock, [] { return state().firings == 0 || state().running == nullptr; });
}

int wrongTimersRemoved() {
  const std::lock_guard lock(state().mutex);
  return state().wrongTimersRemoved;
}

}  // namespace threads_tests::clock

// The tests' deadlines are not affected.
PLATFORM_API guint g_timeout_add_seconds(guint interval, GSourceFunc function, gpointer data) {
  using namespace threads_tests::clock;
  if (interval == kProvidersPeriod) return addTimer(function, data);
  return g_timeout_add(interval * 1000, function, data);
}

// The radio is asked with the provider's lock held, so nobody switches it meanwhile. Then the
// timer's time passes.
int wifi_get_enable_qx(int* state) {
  static const auto hosts =
      reinterpret_cast<decltype(&wifi_get_enable_qx)>(dlsym(RTLD_NEXT, "wifi_get_enable_qx"));
  threads_tests::clock::letFire(3);
  return hosts(state);
}
