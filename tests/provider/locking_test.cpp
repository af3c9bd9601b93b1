// The one lock: which functions take it, when, and what they do when they cannot take it.

#include <cerrno>
#include <functional>
#include <latch>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include "provider_test.h"

namespace {

constexpr char kNameKey[] = "db/menu/network/devicename/tv_name";
constexpr char kDocumentKey[] = "db/menu/network/TopSavedAP";
constexpr char kLanguageKey[] = "db/menu_widget/language";

constexpr char kSavedNetworkItem[] = VENTARO_KEY_SAVED_NETWORK_1;

// Everything that the functions write to, preset.
struct Outputs {
  data_provider_cbs* table = nullptr;
  void** items = nullptr;
  char* text = nullptr;
  int value = 77;
  ITEM_FOLLOWING_ACTION_TYPE action = ITEM_FOLLOWING_ACTION_MESSAGE_BOX;
  std::string message = std::string(VENTARO_MESSAGE_TEXT_SIZE, '\0');
  std::string first = std::string(VENTARO_MESSAGE_BUTTON_SIZE, '\0');
  std::string second = std::string(VENTARO_MESSAGE_BUTTON_SIZE, '\0');
  std::string buffer = std::string(VENTARO_CURRENT_VALUE_SIZE, '\0');

  bool operator==(const Outputs&) const = default;
};

// Outputs in which every pointer is preset too, for functions that must not touch any.
Outputs presetOutputs() {
  static data_provider_cbs table;
  static void* items[1];
  static char text[] = "preset";
  Outputs out;
  out.table = &table;
  out.items = items;
  out.text = text;
  return out;
}

// Where a function logs its "START".
enum class Start { kBeforeTheLock, kUnderTheLock, kNowhere };

struct Function {
  const char* name;
  Start start;
  std::function<void(Outputs& out)> run;
};

// Runs every function across the boundary, with keys and values that need no set-up.
class Locking : public ProviderTest {
 protected:
  void SetUp() override {
    ProviderTest::SetUp();
    store().set(kNameKey, "TV One");
    store().set(kLanguageKey, "en");
    create();
    list_ =
        const_cast<void**>(table().get_list_items(VENTARO_KEY_SAVED_NETWORK_1_STATES, &listSize_));
    clearJournal();
  }

  void TearDown() override {
    table().free_list_items(list_, listSize_);
    ProviderTest::TearDown();
  }

  void* item() const { return list_[1]; }

  std::vector<Function> lockedExports() const {
    const Exports& e = entries();
    return {
        {"create_provider", Start::kUnderTheLock,
         [&e](Outputs& out) { e.create_provider(&out.table); }},
        {"delete_provider", Start::kUnderTheLock,
         [&e](Outputs& out) { e.delete_provider(&out.table); }},
        {"check_visibility_int", Start::kNowhere,
         [&e](Outputs&) { e.check_visibility_int("key", 1); }},
        {"check_enable_int", Start::kNowhere, [&e](Outputs&) { e.check_enable_int("key", 1); }},
    };
  }

  std::vector<Function> lockedValueCallbacks() const {
    const data_provider_cbs& t = table();
    return {
        {"set_int", Start::kBeforeTheLock, [&t](Outputs&) { t.set_int("key", 1); }},
        {"set_string", Start::kUnderTheLock, [&t](Outputs&) { t.set_string("key", "TV Two"); }},
        {"get_int", Start::kBeforeTheLock, [&t](Outputs& out) { t.get_int("key", &out.value); }},
        {"get_string", Start::kUnderTheLock,
         [&t](Outputs& out) { t.get_string("key", &out.text); }},
        {"get_display_name", Start::kBeforeTheLock,
         [&t](Outputs& out) { t.get_display_name("key", &out.text); }},
        {"get_help_text", Start::kBeforeTheLock,
         [&t](Outputs& out) { t.get_help_text("key", &out.text); }},
        {"get_module_info", Start::kNowhere,
         [&t](Outputs& out) { t.get_module_info(VENTARO_KEY_OWNER, &out.text); }},
        {"get_title_icon_path", Start::kUnderTheLock,
         [&t](Outputs& out) { t.get_title_icon_path("key", &out.text); }},
        {"get_second_icon_path", Start::kNowhere,
         [&t](Outputs& out) { t.get_second_icon_path("key", &out.text); }},
        {"get_messagebox_info", Start::kUnderTheLock,
         [&t](Outputs& out) {
           t.get_messagebox_info("key", out.message.data(), out.first.data(), out.second.data(),
                                 &out.value);
         }},
    };
  }

  std::vector<Function> lockedListCallbacks() const {
    const data_provider_cbs& t = table();
    void* const item = this->item();
    return {
        {"get_list_items", Start::kUnderTheLock,
         [&t](Outputs& out) {
           out.items =
               const_cast<void**>(t.get_list_items(VENTARO_KEY_SAVED_NETWORK_2_STATES, &out.value));
         }},
        {"get_list_item_display_value", Start::kUnderTheLock,
         [&t, item](Outputs& out) {
           char* text = out.text;  // still owned by the list
           t.get_list_item_display_value(item, &text);
           if (text != nullptr) out.message = text;
         }},
        {"get_list_item_int_value", Start::kUnderTheLock,
         [&t, item](Outputs& out) { t.get_list_item_int_value(item, &out.value); }},
        {"get_list_item_following_action_type", Start::kUnderTheLock,
         [&t, item](Outputs& out) { t.get_list_item_following_action_type(item, &out.action); }},
        {"free_list_items", Start::kUnderTheLock,
         [&t](Outputs& out) { t.free_list_items(out.items, 0); }},
    };
  }

  std::vector<Function> lockedFunctions() const {
    std::vector<Function> all = lockedExports();
    for (const Function& each : lockedValueCallbacks()) all.push_back(each);
    for (const Function& each : lockedListCallbacks()) all.push_back(each);
    return all;
  }

  std::vector<Function> lockFreeFunctions() const {
    const Exports& e = entries();
    const data_provider_cbs& t = table();
    return {
        {"release_string", Start::kNowhere, [&t](Outputs&) { t.release_string(nullptr); }},
        {"get_current_value_sid", Start::kNowhere,
         [&t](Outputs& out) {
           char* buffer = out.buffer.data();
           t.get_current_value_sid("key", &buffer);
         }},
        {"check_visibility_string", Start::kNowhere,
         [&e](Outputs&) { e.check_visibility_string(kSavedNetworkItem, "1"); }},
        {"check_visibility_double", Start::kNowhere,
         [&e](Outputs&) { e.check_visibility_double(kSavedNetworkItem, 1.0); }},
        {"check_visibility_bool", Start::kNowhere,
         [&e](Outputs&) { e.check_visibility_bool(kSavedNetworkItem, true); }},
        {"check_enable_string", Start::kNowhere,
         [&e](Outputs&) { e.check_enable_string(kSavedNetworkItem, "1"); }},
        {"check_enable_double", Start::kNowhere,
         [&e](Outputs&) { e.check_enable_double(kSavedNetworkItem, 1.0); }},
        {"check_enable_bool", Start::kNowhere,
         [&e](Outputs&) { e.check_enable_bool(kSavedNetworkItem, true); }},
    };
  }

  // Runs the function once; what happened meanwhile.
  Journal journalOf(const Function& function) const {
    Outputs out;
    clearJournal();
    function.run(out);
    const Journal happened = journal();
    giveBack(out);
    return happened;
  }

 private:
  void giveBack(Outputs& out) const {
    std::free(out.text);
    if (out.items != nullptr) table().free_list_items(out.items, out.value);
    if (out.table != nullptr) entries().delete_provider(&out.table);
  }

  void** list_ = nullptr;
  int listSize_ = 0;
};

bool beginsWith(const Journal& journal, const Journal& beginning) {
  const std::vector<std::string>& lines = journal.lines();
  const std::size_t size = beginning.lines().size();
  return lines.size() >= size &&
         std::vector<std::string>(lines.begin(), lines.begin() + static_cast<int>(size)) ==
             beginning.lines();
}

std::string lastLine(const Journal& journal) {
  return journal.empty() ? "nothing" : journal.lines().back();
}

// ---- Who takes it ----

TEST_F(Locking, EveryLockedFunctionTakesTheLockOnceAndGivesItBackOnce) {
  for (const Function& each : lockedFunctions()) {
    const Journal happened = journalOf(each);
    EXPECT_EQ(happened.count(locks()), 1U) << each.name;
    EXPECT_EQ(happened.count(unlocks()), 1U) << each.name;
  }
}

TEST_F(Locking, NothingHappensAfterTheLockIsGivenBack) {
  for (const Function& each : lockedFunctions()) {
    EXPECT_EQ(lastLine(journalOf(each)), "unlock") << each.name;
  }
}

TEST_F(Locking, NothingButTheStartHappensBeforeTheLockIsTaken) {
  for (const Function& each : lockedFunctions()) {
    const Journal happened = journalOf(each);
    switch (each.start) {
      case Start::kBeforeTheLock:
        EXPECT_TRUE(beginsWith(happened, {mainLog("START"), locks()})) << each.name;
        break;
      case Start::kUnderTheLock:
        EXPECT_TRUE(beginsWith(happened, {locks(), mainLog("START")})) << each.name;
        break;
      case Start::kNowhere:
        EXPECT_TRUE(beginsWith(happened, {locks()})) << each.name;
        EXPECT_FALSE(beginsWith(happened, {locks(), mainLog("START")})) << each.name;
        break;
    }
  }
}

TEST_F(Locking, TheStartIsLoggedOnce) {
  for (const Function& each : lockedFunctions()) {
    // The message box asks for the regulation, and the icon for the network's state; those log
    // their own "START".
    const std::string name = each.name;
    if (name == "get_messagebox_info" || name == "get_second_icon_path") continue;
    const std::size_t starts = each.start == Start::kNowhere ? 0 : 1;
    EXPECT_EQ(journalOf(each).count(mainLog("START")), starts) << each.name;
  }
}

TEST_F(Locking, TheLockFreeFunctionsNeverTakeIt) {
  for (const Function& each : lockFreeFunctions()) {
    const Journal happened = journalOf(each);
    EXPECT_FALSE(happened.contains(locks())) << each.name;
    EXPECT_FALSE(happened.contains(unlocks())) << each.name;
  }
}

TEST_F(Locking, TheLockFreeFunctionsDoNotWaitForALockedOne) {
  Outputs out;
  for (const Function& each : lockFreeFunctions()) each.run(out);
  ASSERT_EQ(lockActions(), Journal()) << "or this test would never end";
  std::latch inside(1);
  std::latch answered(1);
  onCall("vconf_set_str", [&] {
    inside.count_down();
    answered.wait();
  });
  std::thread setter([&] { table().set_string("key", "TV Two"); });
  inside.wait();
  for (const Function& each : lockFreeFunctions()) each.run(out);
  EXPECT_EQ(lockActions(), Journal{locks()});
  answered.count_down();
  setter.join();
  EXPECT_EQ(lockActions(), (Journal{locks(), unlocks()}));
}

TEST_F(Locking, WhatTheProviderDoesUnaskedTakesNoLock) {
  displayName(kSavedNetworkItem);  // from here on the saved networks are watched
  setInt(VENTARO_KEY_WIFI, 1);
  clearJournal();
  store().notify(kDocumentKey);
  advanceTimers(4);
  EXPECT_EQ(calls(), (Journal{call("vconf_set_int", "db/menu/refresh_menu", 100002),
                              call("g_source_remove", 1),
                              call("vconf_set_int", "db/menu/refresh_menu", 1)}));
  EXPECT_EQ(lockActions(), Journal());
}

// ---- What it is for ----

TEST_F(Locking, CallbacksOnTwoThreadsNeverRunAtTheSameTime) {
  constexpr int kCalls = 50;
  const auto asking = [this] {
    for (int i = 0; i < kCalls; ++i) stringValue("key");
  };
  std::thread other(asking);
  asking();
  other.join();
  Journal expected;
  for (int i = 0; i < 2 * kCalls; ++i) {
    expected = {expected,
                locks(),
                mainLog("START"),
                call("vconf_get_str", kNameKey),
                mainLog("wifi_direct_get_device_name::status [0x0000]"),
                mainLog("END"),
                unlocks()};
  }
  EXPECT_EQ(journal(), expected);
}

// ---- When it cannot be had ----

TEST_F(Locking, ALockThatCannotBeTakenRaisesItsErrorFromEveryLockedFunction) {
  for (const Function& each : lockedFunctions()) {
    for (const int number : {EDEADLK, EINVAL, EAGAIN}) {
      Outputs out;
      failNextLock(number);
      try {
        each.run(out);
        ADD_FAILURE() << each.name << " raised nothing";
      } catch (const std::system_error& error) {
        EXPECT_EQ(error.code(), std::error_code(number, std::generic_category())) << each.name;
      }
    }
  }
}

TEST_F(Locking, WithoutTheLockNothingIsDoneAndNoOutputTouched) {
  for (const Function& each : lockedFunctions()) {
    Outputs out = presetOutputs();
    clearJournal();
    failNextLock(EDEADLK);
    EXPECT_THROW(each.run(out), std::system_error) << each.name;
    const Journal start =
        each.start == Start::kBeforeTheLock ? Journal{mainLog("START")} : Journal();
    EXPECT_EQ(journal(), (Journal{start, lockFails(EDEADLK)})) << each.name;
    EXPECT_TRUE(out == presetOutputs()) << each.name;
  }
}

TEST_F(Locking, TheLockCanBeTakenAgainAfterItFailed) {
  for (const Function& each : lockedFunctions()) {
    Outputs out;
    failNextLock(EAGAIN);
    EXPECT_THROW(each.run(out), std::system_error) << each.name;
    const Journal happened = journalOf(each);
    EXPECT_EQ(happened.count(locks()), 1U) << each.name;
    EXPECT_EQ(lastLine(happened), "unlock") << each.name;
  }
}

TEST_F(Locking, TheLockFreeFunctionsDoNotNoticeThatItCannotBeTaken) {
  failNextLock(EDEADLK);
  Outputs out;
  for (const Function& each : lockFreeFunctions()) EXPECT_NO_THROW(each.run(out)) << each.name;
  EXPECT_THROW(setInt("key", 1), std::system_error);  // the failure was still pending
}

}  // namespace
