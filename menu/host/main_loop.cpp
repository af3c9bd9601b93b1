#include "main_loop.h"

#include <glib-unix.h>

#include <algorithm>
#include <csignal>
#include <utility>

namespace menu {

namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};
unsigned signalSources[std::size(kSignals)] = {};  // while there is an Interruption
Interruption* innermost = nullptr;

}  // namespace

void runPending() {
  while (g_main_context_iteration(nullptr, FALSE)) {
  }
}

Interruption::Interruption() : outer_(std::exchange(innermost, this)) {
  if (outer_ != nullptr) return;
  std::ranges::transform(kSignals, signalSources, [](int signal) {
    return g_unix_signal_add(signal, &Interruption::note, GINT_TO_POINTER(signal));
  });
}

Interruption::~Interruption() {
  innermost = outer_;
  if (outer_ != nullptr) return;
  for (const unsigned source : signalSources) g_source_remove(source);
}

// All are told at once, so that none is told when another has forgotten.
int Interruption::note(void* signal) {
  for (Interruption* each = innermost; each != nullptr; each = each->outer_) {
    (GPOINTER_TO_INT(signal) == SIGINT ? each->isCtrlC_ : each->isEnd_) = true;
  }
  return G_SOURCE_CONTINUE;
}

bool Interruption::runUntil(const std::function<bool()>& done) const {
  bool finished = done();
  while (!finished && !isAsked()) {
    g_main_context_iteration(nullptr, TRUE);
    finished = done();
  }
  return finished && !isAsked();
}

bool Interruption::runUntil(const std::function<bool()>& done,
                            std::chrono::milliseconds limit) const {
  const Ticker ticker(limit, nullptr);
  bool finished = false;
  runUntil([&] {
    finished = done();
    return finished || ticker.hasTicked();
  });
  return finished && !isAsked();
}

Ticker::Ticker(std::chrono::milliseconds period, std::function<void()> tick)
    : tick_(std::move(tick)) {
  source_ = g_timeout_add(
      static_cast<guint>(period.count()),
      [](void* data) {
        auto& self = *static_cast<Ticker*>(data);
        self.ticked_ = true;
        if (self.tick_) self.tick_();
        return gboolean{G_SOURCE_CONTINUE};
      },
      this);
}

Ticker::~Ticker() {
  g_source_remove(source_);
}

}  // namespace menu
