// GLib's timers, on a clock that moves only when a test lets it.
#include <glib.h>

#include <map>

#include "call.h"
#include "platform/export.h"

namespace fake_platform {
namespace {

constexpr unsigned kStepSeconds = 2;

struct Timer {
  unsigned period;
  unsigned due;
  GSourceFunc callback;
  void* data;
};

struct State {
  unsigned now = 0;
  unsigned lastId = 0;  // an id is never reused
  std::map<unsigned, Timer> timers;
  std::vector<unsigned> wrongRemovals;
};

State& state() {
  static State& instance = *new State;
  return instance;
}

struct Firing {
  unsigned id;
  GSourceFunc callback;
  void* data;
};

// Returns the next firing up to now, and sets its timer to the following one.
std::optional<Firing> nextFiring() {
  const StateLock lock(stateMutex());
  for (auto& [id, timer] : state().timers) {
    if (timer.due > state().now) continue;
    timer.due += timer.period;
    return Firing{id, timer.callback, timer.data};
  }
  return std::nullopt;
}

}  // namespace

void resetTimers() {
  state() = State();
}

void advanceTimers(int times) {
  for (int i = 0; i < times; ++i) {
    {
      const StateLock lock(stateMutex());
      state().now += kStepSeconds;
    }
    while (const std::optional<Firing> firing = nextFiring()) {
      if (firing->callback(firing->data) != G_SOURCE_REMOVE) continue;
      const StateLock lock(stateMutex());
      state().timers.erase(firing->id);
    }
  }
}

int runningTimers() {
  const StateLock lock(stateMutex());
  return static_cast<int>(state().timers.size());
}

std::vector<unsigned> wrongRemovals() {
  const StateLock lock(stateMutex());
  return state().wrongRemovals;
}

}  // namespace fake_platform

using namespace fake_platform;

// Returns an id even when the call is scripted to fail: GLib's cannot fail.
PLATFORM_API guint g_timeout_add_seconds(guint interval, GSourceFunc function, gpointer data) {
  demand(interval > 0 && function != nullptr, "a timer has a period and a function");
  const Call call("g_timeout_add_seconds", interval);
  const StateLock lock(stateMutex());
  const guint id = ++state().lastId;
  state().timers[id] = {interval, state().now + interval, function, data};
  return id;
}

PLATFORM_API gboolean g_source_remove(guint tag) {
  const Call call("g_source_remove", tag);
  const StateLock lock(stateMutex());
  if (state().timers.erase(tag) == 1) return TRUE;
  state().wrongRemovals.push_back(tag);
  return FALSE;
}
