// The main loop: timers and notifications of the provider and the platform run in it. All functions
// raise StoreError when the process can open no more files for it.
#ifndef MENU_HOST_MAIN_LOOP_H
#define MENU_HOST_MAIN_LOOP_H

#include <chrono>
#include <functional>

namespace menu {

// Runs the timers and notifications that are due, and returns.
void runPending();

// While it lives, calls `tick` (which may be empty) after every period.
class Ticker {
 public:
  Ticker(std::chrono::milliseconds period, std::function<void()> tick);
  ~Ticker();
  Ticker(const Ticker&) = delete;
  Ticker& operator=(const Ticker&) = delete;

  // Whether a period is over.
  bool hasTicked() const { return ticked_; }

 private:
  std::function<void()> tick_;
  bool ticked_ = false;
  unsigned source_ = 0;
};

// While it lives, Ctrl-C, SIGTERM and SIGHUP end the program's waiting instead of the program, so
// that it can clean up. A program that does not get to that within two seconds, because what it
// called does not return, ends at once, with 128 and the signal's number as its exit code. One that
// lives inside another is told of the same requests. They belong to the thread of the main loop.
class Interruption {
 public:
  Interruption();
  ~Interruption();
  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;

  // Runs until `done`, which is asked after every event, returns true, or the program is asked to
  // end. Returns whether it was done.
  bool runUntil(const std::function<bool()>& done) const;

  // As above, for at most that long.
  bool runUntil(const std::function<bool()>& done, std::chrono::milliseconds limit) const;

  // Whether the program was asked to end.
  bool isAsked() const { return signal() != 0; }

  // By which signal, SIGINT only where there was no other; 0 when it was not asked.
  int signal() const { return end_ != 0 ? end_ : ctrlC_; }

  // The exit code of a program that ends because it was asked, as a shell tells it.
  int exitCode() const { return exitCodeOf(signal()); }
  static constexpr int exitCodeOf(int signal) { return 128 + signal; }

  // Goes on after a Ctrl-C. Other requests to end stay.
  void forgetCtrlC();

 private:
  friend class SignalCatcher;
  static void note(int signal);

  Interruption* outer_;
  int ctrlC_ = 0;
  int end_ = 0;
};

}  // namespace menu

#endif  // MENU_HOST_MAIN_LOOP_H
