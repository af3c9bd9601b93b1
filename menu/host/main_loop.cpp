#include "main_loop.h"

#include <fcntl.h>
#include <glib-unix.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <memory>
#include <system_error>
#include <utility>

#include "platform/host/descriptors.h"

namespace menu {

namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};
constexpr itimerspec kPatience = {{}, {2, 0}};
constexpr itimerspec kForEver = {};

Interruption* innermost = nullptr;

// What the signal handlers use.
int pipeEnds[2] = {-1, -1};              // while there is an Interruption
timer_t timer{};                         // from the first one on
volatile std::sig_atomic_t awaited = 0;  // the signal for which the timer runs

extern "C" void onSignal(int signal) {
  const int error = errno;
  if (awaited == 0) {
    awaited = signal;
    timer_settime(timer, 0, &kPatience, nullptr);
  }
  const char byte = static_cast<char>(signal);
  [[maybe_unused]] const ssize_t size = write(pipeEnds[1], &byte, 1);
  errno = error;
}

extern "C" void onTimer(int /*signal*/) {
  if (awaited != 0) _exit(Interruption::exitCodeOf(awaited));
}

// Returns the signal's handling before.
struct sigaction handle(int signal, void (*handler)(int)) {
  struct sigaction action {};
  struct sigaction before {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART;
  sigaction(signal, &action, &before);
  return before;
}

bool makeTimer() {
  sigevent event{};
  event.sigev_notify = SIGEV_SIGNAL;
  event.sigev_signo = SIGRTMIN;
  handle(SIGRTMIN, onTimer);
  return timer_create(CLOCK_MONOTONIC, &event, &timer) == 0;
}

void stopTimer() {
  static const bool isMade = makeTimer();
  if (isMade) timer_settime(timer, 0, &kForEver, nullptr);
  awaited = isMade ? 0 : -1;
}

}  // namespace

// While it lives, signals come to the main loop, which tells the Interruptions. The timer that a
// signal starts goes on afterwards: the program is to end.
class SignalCatcher {
 public:
  SignalCatcher() {
    platform::host::requireDescriptors(2);
    if (pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0) {
      throw std::system_error(errno, std::generic_category(), "cannot make a pipe");
    }
    stopTimer();
    std::ranges::transform(kSignals, before_, [](int each) { return handle(each, onSignal); });
    source_ = g_unix_fd_add(pipeEnds[0], G_IO_IN, &SignalCatcher::deliver, nullptr);
  }
  ~SignalCatcher() {
    g_source_remove(source_);
    for (std::size_t i = 0; i < std::size(kSignals); ++i)
      sigaction(kSignals[i], &before_[i], nullptr);
    for (const int end : pipeEnds) close(end);
  }
  SignalCatcher(const SignalCatcher&) = delete;
  SignalCatcher& operator=(const SignalCatcher&) = delete;

 private:
  static gboolean deliver(int file, GIOCondition /*condition*/, void* /*data*/) {
    char signal = 0;
    while (read(file, &signal, 1) == 1) Interruption::note(signal);
    return G_SOURCE_CONTINUE;
  }

  struct sigaction before_[std::size(kSignals)] = {};
  unsigned source_ = 0;
};

namespace {

std::unique_ptr<SignalCatcher> catcher;  // while there is an Interruption

// GLib ends the process when it finds no descriptor for its main loop.
void requireMainLoop() {
  [[maybe_unused]] static const bool isThere = [] {
    platform::host::requireDescriptors(1);
    g_main_context_default();
    return true;
  }();
}

}  // namespace

void runPending() {
  requireMainLoop();
  while (g_main_context_iteration(nullptr, FALSE)) {
  }
}

Interruption::Interruption() : outer_(innermost) {
  if (outer_ == nullptr) {
    requireMainLoop();
    catcher = std::make_unique<SignalCatcher>();
  }
  innermost = this;
}

Interruption::~Interruption() {
  innermost = outer_;
  if (outer_ == nullptr) catcher.reset();
}

// All are told at once, so that none is told when another has forgotten.
void Interruption::note(int signal) {
  for (Interruption* each = innermost; each != nullptr; each = each->outer_) {
    (signal == SIGINT ? each->ctrlC_ : each->end_) = signal;
  }
}

void Interruption::forgetCtrlC() {
  ctrlC_ = 0;
  if (!isAsked()) stopTimer();
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
  requireMainLoop();
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
