// The Wi-Fi timer by itself: a firing and a switch at the same time, as close together as two
// threads can get. The timer takes no lock.
#include <gtest/gtest.h>

#include <atomic>
#include <map>
#include <thread>
#include <vector>

#include "fake_platform.h"
#include "settings/CWiFiOnOff.h"

namespace threads_tests {
namespace {

constexpr int kFirings = 4;  // until the timer asks for the refresh

// A barrier: two threads leave it together.
class Meeting {
 public:
  void wait() {
    const int goal = (arrived_++ / 2 + 1) * 2;
    // On a machine with more work than cores, the other thread may need the processor. Yields only
    // rarely, because a thread that yields comes back late.
    for (int turns = 1; arrived_ < goal; ++turns) {
      if (turns % 1000 == 0) std::this_thread::yield();
    }
  }

 private:
  std::atomic<int> arrived_ = 0;
};

// For less than a microsecond.
void linger(int turns) {
  for (std::atomic<int> left = turns; left > 0;) --left;
}

// Until no timer runs; a timer that never ends is given up after one firing too many.
int firingsToCome() {
  int firings = 0;
  for (; fake_platform::runningTimers() > 0 && firings <= kFirings; ++firings) {
    fake_platform::advanceTimers();
  }
  return firings;
}

// The firing may count for the switch's timer, but only once: then the refresh comes after six
// seconds instead of eight.
TEST(AFiringAndASwitchAtOnce, LeaveTheSwitchsTimerAndNoOtherWithThreeOrFourFiringsToCome) {
  fake_platform::reset();
  CWiFiOnOff power;
  Meeting meeting;
  int missing = 0;
  std::map<int, int> meetingsByFirings;
  std::thread mainLoop([&] {
    for (int i = 0; i < MEETINGS; ++i) {
      meeting.wait();
      linger(i / kFirings % 32);
      CWiFiOnOff::OnTimerTimeOut(&power);
      meeting.wait();
    }
  });
  for (int i = 0; i < MEETINGS; ++i) {
    fake_platform::clearJournal();
    power.UpdateWifiDirect();
    // Each of its firings in turn coincides with the switch.
    for (int before = i % kFirings; before > 0; --before) CWiFiOnOff::OnTimerTimeOut(&power);
    meeting.wait();
    linger(i / kFirings / 32 % 32);
    power.UpdateWifiDirect();
    meeting.wait();
    if (fake_platform::runningTimers() != 1) ++missing;
    ++meetingsByFirings[firingsToCome()];
  }
  mainLoop.join();
  EXPECT_EQ(missing, 0);
  EXPECT_EQ(meetingsByFirings[kFirings - 1] + meetingsByFirings[kFirings], MEETINGS)
      << testing::PrintToString(meetingsByFirings);
  EXPECT_EQ(fake_platform::wrongRemovals(), std::vector<unsigned>());
}

}  // namespace
}  // namespace threads_tests
