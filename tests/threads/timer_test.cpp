// The Wi-Fi timer by itself: its last firing and a switch at the same time, as close as two threads
// get to each other. The timer takes no lock.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "CWiFiOnOff.h"
#include "fake_platform.h"

namespace threads_tests {
namespace {

constexpr int kFirings = 4;  // until the timer asks for the refresh

// Two threads come out of it together.
class Meeting {
 public:
  void wait() {
    const int goal = (arrived_++ / 2 + 1) * 2;
    // On a machine with more work than cores the other may have to be let in.
    for (int turns = 0; arrived_ < goal; ++turns) {
      if (turns > 1000) std::this_thread::yield();
    }
  }

 private:
  std::atomic<int> arrived_ = 0;
};

// For less than a microsecond.
void linger(int turns) {
  for (std::atomic<int> left = turns; left > 0;) --left;
}

TEST(TheLastFiringAndASwitchAtOnce, LeaveTheSwitchsTimerAndNoOther) {
  fake_platform::reset();
  CWiFiOnOff power;
  Meeting meeting;
  std::atomic<int> missing = 0;
  std::thread mainLoop([&] {
    for (int i = 0; i < MEETINGS; ++i) {
      meeting.wait();
      linger(i % 32);
      CWiFiOnOff::OnTimerTimeOut(&power);
      meeting.wait();
    }
  });
  for (int i = 0; i < MEETINGS; ++i) {
    fake_platform::clearJournal();
    power.UpdateWifiDirect();
    for (int firing = 1; firing < kFirings; ++firing) CWiFiOnOff::OnTimerTimeOut(&power);
    meeting.wait();
    linger(i / 32 % 32);
    power.UpdateWifiDirect();
    meeting.wait();
    if (fake_platform::runningTimers() != 1) ++missing;
  }
  mainLoop.join();
  EXPECT_EQ(missing, 0);
  EXPECT_EQ(fake_platform::wrongRemovals(), std::vector<unsigned>());
}

}  // namespace
}  // namespace threads_tests
