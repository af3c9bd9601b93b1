// Holds a thread inside the provider: this program's own __dlog_print overrides the host
// platform's, and does its work.
#ifndef TESTS_THREADS_GATE_H
#define TESTS_THREADS_GATE_H

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace threads_tests {

// How long the tests wait for an expected event before they fail.
inline constexpr std::chrono::seconds kPatience{10};

// One thread at a time.
class Gate {
 public:
  // From now on the calling thread waits here inside its n-th log statement, 1 being the next,
  // until the gate opens.
  void stopThisThreadAt(int statement);

  // Waits until a thread has reached the gate, open or not. The test fails if none does in time.
  void waitForSomebody();
  void open();

  // Called by __dlog_print.
  static void pass();

 private:
  void waitForOpening();

  std::mutex mutex_;
  std::condition_variable changed_;
  bool reached_ = false;
  bool open_ = false;
};

}  // namespace threads_tests

#endif  // TESTS_THREADS_GATE_H
