// The main loop: timers and notifications of the provider and the platform run in it.
#ifndef MENU_HOST_MAIN_LOOP_H
#define MENU_HOST_MAIN_LOOP_H

#include <chrono>
#include <functional>

namespace menu {

// Runs what is due now.
void runPending();

// Runs until `done` says so, which is asked after every event, or the time is over. Returns whether
// it was done.
bool runUntil(const std::function<bool()>& done, std::chrono::milliseconds limit);

// Runs until `done` says so.
void runUntil(const std::function<bool()>& done);

// While it lives, Ctrl-C and SIGTERM do not kill the program but end its waiting.
class Interruption {
 public:
  Interruption();
  ~Interruption();
  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;

  // Runs until `done` says so or the program is asked to end. Returns whether it was done.
  bool runUntil(const std::function<bool()>& done) const;

 private:
  bool asked_ = false;
  unsigned sources_[2] = {};
};

}  // namespace menu

#endif  // MENU_HOST_MAIN_LOOP_H
