#include "main_loop.h"

#include <glib-unix.h>

#include <csignal>

namespace menu {

void runPending() {
  while (g_main_context_iteration(nullptr, FALSE)) {
  }
}

bool runUntil(const std::function<bool()>& done, std::chrono::milliseconds limit) {
  bool over = false;
  GSource* timer = g_timeout_source_new(static_cast<guint>(limit.count()));
  g_source_set_callback(
      timer,
      [](void* flag) {
        *static_cast<bool*>(flag) = true;
        return gboolean{G_SOURCE_REMOVE};
      },
      &over, nullptr);
  g_source_attach(timer, nullptr);
  bool finished = done();
  while (!finished && !over) {
    g_main_context_iteration(nullptr, TRUE);
    finished = done();
  }
  g_source_destroy(timer);
  g_source_unref(timer);
  return finished;
}

void runUntil(const std::function<bool()>& done) {
  while (!done()) g_main_context_iteration(nullptr, TRUE);
}

Interruption::Interruption() {
  const auto note = [](void* asked) {
    *static_cast<bool*>(asked) = true;
    return gboolean{G_SOURCE_CONTINUE};
  };
  sources_[0] = g_unix_signal_add(SIGINT, note, &asked_);
  sources_[1] = g_unix_signal_add(SIGTERM, note, &asked_);
}

Interruption::~Interruption() {
  for (const unsigned source : sources_) g_source_remove(source);
}

bool Interruption::runUntil(const std::function<bool()>& done) const {
  bool finished = done();
  while (!finished && !asked_) {
    g_main_context_iteration(nullptr, TRUE);
    finished = done();
  }
  return finished && !asked_;
}

}  // namespace menu
