// The lock that a process holds while it changes a store.
#include "store/write_lock.h"

#include <chrono>
#include <string>
#include <thread>

#include "platform_test.h"
#include "process.h"

namespace platform_tests {
namespace {

using platform::WriteLock;
using std::chrono::milliseconds;

constexpr milliseconds kNoPatience{0};
constexpr milliseconds kPatience = std::chrono::minutes(1);

class AWriteLock : public PlatformTest {
 protected:
  std::filesystem::path file() const { return folder() / "writer"; }

  // What a process does that takes the lock, says so, and keeps it until it gets a line.
  void hold(Channel& test) const {
    WriteLock lock(file(), kPatience);
    const WriteLock::Hold held(lock);
    test.sendLine("held");
    test.receiveLine();
  }
};

TEST_F(AWriteLock, ThatIsHeldForTooLongIsAnErrorThatNamesTheProcess) {
  Process holder([this](Channel& test) { hold(test); });
  ASSERT_EQ(holder.channel().receiveLine(), "held");
  WriteLock lock(file(), kNoPatience);
  const std::string error = errorRaisedBy([&] { const WriteLock::Hold held(lock); });
  EXPECT_TRUE(error.starts_with("cannot begin: process " + std::to_string(holder.id()) +
                                " has been changing the store for "))
      << error;
  EXPECT_TRUE(error.ends_with(" s; let it go on, or end it")) << error;
}

TEST_F(AWriteLock, IsWaitedFor) {
  Process holder([this](Channel& test) { hold(test); });
  ASSERT_EQ(holder.channel().receiveLine(), "held");
  Process waiter([this](Channel& test) {
    WriteLock lock(file(), kPatience);
    test.sendLine("waits");
    const WriteLock::Hold held(lock);
    test.sendLine("held");
  });
  ASSERT_EQ(waiter.channel().receiveLine(), "waits");
  holder.channel().sendLine("let go");
  EXPECT_EQ(waiter.channel().receiveLine(), "held");
  waiter.join();
}

TEST_F(AWriteLock, OfAKilledProcessIsFree) {
  Process holder([this](Channel& test) { hold(test); });
  ASSERT_EQ(holder.channel().receiveLine(), "held");
  holder.kill();
  WriteLock lock(file(), kNoPatience);
  EXPECT_EQ(errorRaisedBy([&] { const WriteLock::Hold held(lock); }), "");
}

TEST_F(AWriteLock, WhoseFileWasRemovedIsThatOfTheNewFile) {
  Process holder([this](Channel& test) {
    test.receiveLine();
    hold(test);
  });
  WriteLock lock(file(), kNoPatience);
  std::filesystem::remove(file());
  holder.channel().sendLine("take it");
  ASSERT_EQ(holder.channel().receiveLine(), "held");
  const std::string error = errorRaisedBy([&] { const WriteLock::Hold held(lock); });
  EXPECT_TRUE(error.starts_with("cannot begin: process " + std::to_string(holder.id()))) << error;
}

TEST_F(AWriteLock, OfAnotherThreadIsNotTaken) {
  WriteLock lock(file(), kNoPatience);
  const WriteLock::Hold held(lock);
  std::string error;
  std::thread([&] { error = errorRaisedBy([&] { const WriteLock::Hold second(lock); }); }).join();
  EXPECT_EQ(error,
            "cannot begin: another thread of this process has been changing the store for longer "
            "than 0 s");
}

}  // namespace
}  // namespace platform_tests
