// The functions that do without the provider's lock, while another thread is stopped inside one
// that holds it.
#include <atomic>
#include <cstring>
#include <functional>
#include <future>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "../platform/platform_test.h"
#include "gate.h"
#include "provider.h"

namespace threads_tests {
namespace {

using provider_calls::Provider;

constexpr char kWifi[] = "menu/network/WiFiOnOff";

struct Function {
  const char* name;
  std::function<void()> run;
  // The first log statement that the function makes with the lock held, 1 being the first of all.
  int statementUnderTheLock = 0;
};

class ALockFreeFunction : public platform_tests::PlatformTest {
 protected:
  void SetUp() override {
    provider_ = std::make_unique<Provider>(VENTARO_PROVIDER);
    items_ = const_cast<void**>(table().get_list_items(kWifi, &count_));
  }

  void TearDown() override {
    table().free_list_items(items_, count_);
    provider_.reset();
  }

  const Provider& provider() const { return *provider_; }
  const data_provider_cbs& table() const { return provider_->table(); }

  // Calls a callback that hands out a text, and gives that back.
  std::function<void()> texts(int (*callback)(const char* key, char** value)) const {
    return [this, callback] {
      char* text = nullptr;
      callback(kWifi, &text);
      table().release_string(text);
    };
  }

  // All that take the lock, but the one that logs nothing and calls nothing of the platform:
  // get_module_info.
  std::vector<Function> lockedFunctions() const {
    std::vector<Function> functions = lockedListCallbacks();
    const std::vector<Function> others = {
        {"create_provider", [this] { makeTable(); }, 1},
        {"delete_provider", [this] { provider().destroy(nullptr); }, 1},
        {"check_visibility_int", [this] { provider().isVisibleInt(kWifi, 0); }, 1},
        {"check_enable_int", [this] { provider().isEnabledInt(kWifi, 0); }, 1},
        {"set_int", [this] { table().set_int(kWifi, 1); }, 2},
        {"set_string", [this] { table().set_string(kWifi, "Kitchen TV"); }, 1},
        {"get_int", [this] { getInt(); }, 2},
        {"get_string", texts(table().get_string), 1},
        {"get_display_name", texts(table().get_display_name), 2},
        {"get_help_text", texts(table().get_help_text), 2},
        {"get_title_icon_path", texts(table().get_title_icon_path), 1},
        {"get_second_icon_path", texts(table().get_second_icon_path), 1},
        {"get_messagebox_info", [this] { getMessageBox(); }, 1},
    };
    functions.insert(functions.end(), others.begin(), others.end());
    return functions;
  }

  std::vector<Function> lockFreeFunctions() const {
    return {
        {"release_string", [this] { EXPECT_EQ(table().release_string(strdup("text")), 0); }},
        {"get_current_value_sid", [this] { getCurrentValue(); }},
        {"check_visibility_string", [this] { EXPECT_TRUE(provider().isVisibleString("", "")); }},
        {"check_visibility_double", [this] { EXPECT_TRUE(provider().isVisibleDouble("", 0)); }},
        {"check_visibility_bool", [this] { EXPECT_TRUE(provider().isVisibleBool("", true)); }},
        {"check_enable_string", [this] { EXPECT_TRUE(provider().isEnabledString("", "")); }},
        {"check_enable_double", [this] { EXPECT_TRUE(provider().isEnabledDouble("", 0)); }},
        {"check_enable_bool", [this] { EXPECT_TRUE(provider().isEnabledBool("", true)); }},
    };
  }

  // On a thread of its own, or a function that waits for the lock would never end.
  static void expectToEnd(const Function& function, Gate& gate) {
    const std::future<void> end = std::async(std::launch::async, function.run);
    if (end.wait_for(kPatience) == std::future_status::ready) return;
    ADD_FAILURE() << function.name << " waits for the lock";
    gate.open();
  }

  int getInt() const {
    int value = 0;
    return table().get_int(kWifi, &value);
  }

 private:
  std::vector<Function> lockedListCallbacks() const {
    return {
        {"get_list_items", [this] { makeList(); }, 1},
        {"get_list_item_display_value",
         [this] {
           char* text = nullptr;
           table().get_list_item_display_value(items_[0], &text);
         },
         1},
        {"get_list_item_int_value",
         [this] {
           int value = 0;
           table().get_list_item_int_value(items_[0], &value);
         },
         1},
        {"get_list_item_following_action_type",
         [this] {
           auto action = ITEM_FOLLOWING_ACTION_NONE;
           table().get_list_item_following_action_type(items_[0], &action);
         },
         1},
        {"free_list_items", [this] { table().free_list_items(nullptr, 0); }, 1},
    };
  }

  void makeTable() const {
    data_provider_cbs* another = nullptr;
    provider().create(&another);
    provider().destroy(&another);
  }

  void makeList() const {
    int count = 0;
    auto** items = const_cast<void**>(table().get_list_items(kWifi, &count));
    table().free_list_items(items, count);
  }

  void getMessageBox() const {
    char text[VENTARO_MESSAGE_TEXT_SIZE] = "";
    char first[VENTARO_MESSAGE_BUTTON_SIZE] = "";
    char second[VENTARO_MESSAGE_BUTTON_SIZE] = "";
    int type = 0;
    table().get_messagebox_info(kWifi, text, first, second, &type);
  }

  void getCurrentValue() const {
    char buffer[VENTARO_CURRENT_VALUE_SIZE] = "";
    char* value = buffer;
    EXPECT_EQ(table().get_current_value_sid(kWifi, &value), 0);
  }

  std::unique_ptr<Provider> provider_;
  void** items_ = nullptr;
  int count_ = 0;
};

TEST_F(ALockFreeFunction, AnswersWhileAnyLockedOneIsStoppedWithTheLockInItsHands) {
  for (const Function& locked : lockedFunctions()) {
    SCOPED_TRACE(locked.name);
    Gate gate;
    std::thread holder([&] {
      gate.stopThisThreadAt(locked.statementUnderTheLock);
      locked.run();
    });
    gate.waitForSomebody();
    // Has the lock only when the holder does not, or does not any more. Its first statement is the
    // last thing before the lock.
    Gate beforeTheLock;
    beforeTheLock.open();
    std::atomic<bool> lockWasFree = false;
    std::thread another([&] {
      beforeTheLock.stopThisThreadAt(1);
      getInt();
      lockWasFree = true;
    });
    beforeTheLock.waitForSomebody();
    for (const Function& lockFree : lockFreeFunctions()) expectToEnd(lockFree, gate);
    EXPECT_FALSE(lockWasFree) << "another locked function has run";
    gate.open();
    holder.join();
    another.join();
    if (HasFailure()) return;  // the others would be the same, and take their time
  }
}

}  // namespace
}  // namespace threads_tests
