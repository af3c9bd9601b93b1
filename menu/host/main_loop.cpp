#include "main_loop.h"

#include <glib-unix.h>

#include <algorithm>
#include <csignal>
#include <utility>

namespace menu {

void runPending() {
  while (g_main_context_iteration(nullptr, FALSE)) {
  }
}

Interruption::Interruption() {
  const auto note = [](void* asked) {
    *static_cast<bool*>(asked) = true;
    return gboolean{G_SOURCE_CONTINUE};
  };
  const int signals[] = {SIGINT, SIGTERM, SIGHUP};
  std::ranges::transform(signals, sources_,
                         [&](int signal) { return g_unix_signal_add(signal, note, &asked_); });
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

bool Interruption::runUntil(const std::function<bool()>& done,
                            std::chrono::milliseconds limit) const {
  const Ticker ticker(limit, nullptr);
  bool finished = false;
  runUntil([&] {
    finished = done();
    return finished || ticker.hasTicked();
  });
  return finished && !asked_;
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
