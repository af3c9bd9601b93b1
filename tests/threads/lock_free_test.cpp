// The functions that do not take the provider's lock, while another thread is stopped inside one
// that holds it.
#include <atomic>
#include <cstring>
#include <functional>
#include <future>
#include <optional>
#include <thread>
#include <vector>

#include "../broken_promises.h"
#include "../platform/platform_test.h"
#include "gate.h"

namespace threads_tests {
namespace {

using contract::Calls;

constexpr char kWifi[] = VENTARO_KEY_WIFI;

struct Function {
  const char* name;
  std::function<void(Calls& calls)> run;
  // The first log statement that the function makes with the lock held, 1 being the first of all.
  int statementUnderTheLock = 0;
};

class ALockFreeFunction : public platform_tests::PlatformTest {
 protected:
  ~ALockFreeFunction() noexcept override = default;  // that of the library may throw

  void SetUp() override {
    provider_.emplace(VENTARO_PROVIDER);
    calls_.emplace(*provider_, observer_);
    list_ = calls_->listItems(kWifi);
  }

  void TearDown() override {
    list_ = {};
    calls_.reset();
    provider_.reset();
  }

  // All functions that take the lock, except get_module_info, which logs nothing and does not call
  // the platform.
  std::vector<Function> lockedFunctions() const {
    const contract::Item item = list_.item(0);
    return {
        {"get_list_items", [](Calls& calls) { calls.listItems(kWifi); }, 1},
        {"get_list_item_display_value", [item](Calls& calls) { calls.itemDisplayValue(item); }, 1},
        {"get_list_item_int_value", [item](Calls& calls) { calls.itemIntValue(item); }, 1},
        {"get_list_item_following_action_type", [item](Calls& calls) { calls.itemAction(item); },
         1},
        {"free_list_items", [](Calls& calls) { calls.freeListItems(nullptr, 0); }, 1},
        {"create_provider", [](Calls& calls) { calls.createProvider(); }, 1},
        {"delete_provider", [](Calls& calls) { calls.deleteProvider(nullptr); }, 1},
        {"check_visibility_int", [](Calls& calls) { calls.isVisibleInt(kWifi); }, 1},
        {"check_enable_int", [](Calls& calls) { calls.isEnabledInt(kWifi); }, 1},
        {"set_int", [](Calls& calls) { calls.setInt(kWifi, 1); }, 2},
        {"set_string", [](Calls& calls) { calls.setString(kWifi, "Kitchen TV"); }, 1},
        {"get_int", [](Calls& calls) { calls.getInt(kWifi); }, 2},
        {"get_string", [](Calls& calls) { calls.getString(kWifi); }, 1},
        {"get_display_name", [](Calls& calls) { calls.displayName(kWifi); }, 2},
        {"get_help_text", [](Calls& calls) { calls.helpText(kWifi); }, 2},
        {"get_title_icon_path", [](Calls& calls) { calls.titleIcon(kWifi); }, 1},
        {"get_second_icon_path", [](Calls& calls) { calls.secondIcon(kWifi); }, 1},
        {"get_messagebox_info", [](Calls& calls) { calls.messageBox(kWifi); }, 1},
    };
  }

  static std::vector<Function> lockFreeFunctions() {
    return {
        {"release_string", [](Calls& calls) { calls.releaseString(strdup("text")); }},
        {"get_current_value_sid",
         [](Calls& calls) { EXPECT_EQ(calls.currentValue(kWifi).result, 0); }},
        {"check_visibility_string", [](Calls& calls) { calls.isVisibleString(""); }},
        {"check_visibility_double", [](Calls& calls) { calls.isVisibleDouble(""); }},
        {"check_visibility_bool", [](Calls& calls) { calls.isVisibleBool(""); }},
        {"check_enable_string", [](Calls& calls) { calls.isEnabledString(""); }},
        {"check_enable_double", [](Calls& calls) { calls.isEnabledDouble(""); }},
        {"check_enable_bool", [](Calls& calls) { calls.isEnabledBool(""); }},
    };
  }

  // Calls it on this thread.
  void run(const Function& function) {
    Calls calls(*provider_, observer_);
    function.run(calls);
  }

  // On a separate thread, because a function that waits for the lock would never return.
  void expectToEnd(const Function& function, Gate& gate) {
    const std::future<void> end = std::async(std::launch::async, [&] { run(function); });
    if (end.wait_for(kPatience) == std::future_status::ready) return;
    ADD_FAILURE() << function.name << " waits for the lock";
    gate.open();
  }

 private:
  FailsTheTest observer_;
  std::optional<contract::Provider> provider_;
  std::optional<Calls> calls_;
  contract::Answer list_;
};

TEST_F(ALockFreeFunction, AnswersWhileAnyLockedOneIsStoppedWithTheLockInItsHands) {
  for (const Function& locked : lockedFunctions()) {
    SCOPED_TRACE(locked.name);
    Gate gate;
    std::thread holder([&] {
      gate.stopThisThreadAt(locked.statementUnderTheLock);
      run(locked);
    });
    gate.waitForSomebody();
    // Gets the lock only when the holder does not have it. Its first statement is the last one
    // before it locks.
    Gate beforeTheLock;
    beforeTheLock.open();
    std::atomic<bool> lockWasFree = false;
    std::thread another([&] {
      beforeTheLock.stopThisThreadAt(1);
      run({"get_int", [](Calls& calls) { calls.getInt(kWifi); }});
      lockWasFree = true;
    });
    beforeTheLock.waitForSomebody();
    for (const Function& lockFree : lockFreeFunctions()) expectToEnd(lockFree, gate);
    EXPECT_FALSE(lockWasFree) << "another locked function has run";
    gate.open();
    holder.join();
    another.join();
    if (HasFailure()) return;  // the others would fail in the same way, slowly
  }
}

}  // namespace
}  // namespace threads_tests
