#include "framework.h"

#include <json/value.h>
#include <sanitizer/allocator_interface.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <typeinfo>

#include "require.h"
#include "stand_in/tv.h"

namespace fuzz {

namespace {

constexpr std::size_t kTextBlock = 2048;
constexpr std::size_t kListTextBlock = 256;
constexpr std::size_t kModuleInfoBlock = 255;
constexpr char kBefore[] = "before";

// What a function may raise besides the failed lock.
constexpr unsigned kJsonToo = 1;
constexpr unsigned kNoLanguageToo = 2;

constexpr std::string_view kFirstNetwork = "menu/network/SavedAP1";
constexpr std::string_view kSecondNetwork = "menu/network/SavedAP2";

unsigned jsonIf(bool asksSavedNetworks) {
  return asksSavedNetworks ? kJsonToo : 0;
}

bool isSavedNetwork(const std::string& key) {
  return key == kFirstNetwork || key == kSecondNetwork;
}

// Calls a function that holds the lock while it works.
template <typename Call>
Raised locked(unsigned mayRaise, const Call& call) {
  const int lockError = answers().lockError;
  Raised raised = Raised::kNothing;
  {
    const LockRule rule(true);
    try {
      call();
    } catch (const Json::LogicError&) {
      require((mayRaise & kJsonToo) != 0, "only what reads the saved networks raises for them");
      raised = Raised::kJson;
    } catch (const std::system_error& error) {
      require(error.code().value() == lockError, "a failed lock is raised with its code");
      raised = Raised::kLock;
    } catch (const std::logic_error& error) {
      require(typeid(error) == typeid(std::logic_error),
              "a missing language is a plain logic_error");
      require((mayRaise & kNoLanguageToo) != 0, "only the help text raises for the language");
      raised = Raised::kNoLanguage;
    }
  }
  require(!isLockHeld(), "the lock is free after a call");
  require((raised == Raised::kLock) == (lockError != 0), "a failed lock is raised");
  return raised;
}

// Calls a function that never takes the lock.
template <typename Call>
void lockFree(const Call& call) {
  const LockRule rule(false);
  call();
}

std::size_t sizeOf(const void* block) {
  require(__sanitizer_get_ownership(block) == 1, "what is handed out is a block of the heap");
  return __sanitizer_get_allocated_size(block);
}

std::string textOf(const char* block, std::size_t size) {
  require(sizeOf(block) == size, "a block has the size that is promised");
  const auto* end = static_cast<const char*>(std::memchr(block, '\0', size));
  require(end != nullptr, "a text ends within its block");
  return {block, end};
}

// A buffer of exactly that size with a text in it.
std::unique_ptr<char[]> buffer(const std::string& text, std::size_t size) {
  auto block = std::make_unique<char[]>(size);
  text.copy(block.get(), size - 1);
  return block;
}

std::string appended(const std::string& before, const char* after, std::size_t most) {
  const std::string text = after;
  require(text.starts_with(before), "a box is appended to what its buffers hold");
  require(text.size() - before.size() < most, "a box's text is no longer than promised");
  return text;
}

}  // namespace

bool isSignalIcon(const std::string& path) {
  constexpr std::string_view kIcon =
      "/usr/apps/com.norvane.tv.theme-resource/shared/res/ug-SystemSetupNetworkUG-efl/res/"
      "systemsetup/icon_wifi/oobe_icon_n_wifi_";
  if (!path.starts_with(kIcon)) return false;
  const std::string rest = path.substr(kIcon.size());
  if (rest == "4.png") return true;
  return rest.size() == 5 && rest[0] >= '0' && rest[0] <= '4' && rest.ends_with(".svg");
}

bool isStatusIcon(const std::string& path) {
  return path.empty() || path == "loading" || path.ends_with("/i_icon_info_check.svg") ||
         path.ends_with("/r_icon_xs_check.png");
}

std::string cut(const std::string& text, std::size_t blockSize) {
  return text.substr(0, blockSize - 1);
}

Framework::Framework() {
  require(create_provider(&table_) == 0 && table_ != nullptr, "create_provider gives a table");
  require(sizeOf(table_) == 60 * sizeof(void*), "the table has 60 slots");
}

Framework::~Framework() {
  require(delete_provider(&table_) == 0, "delete_provider takes a table back");
}

Raised Framework::block(int (*function)(const char*, char**), const std::string& key,
                        unsigned mayRaise, std::string& text) {
  char before[] = "before";
  char* value = before;
  int result = -1;
  const Raised raised = locked(mayRaise, [&] { result = function(key.c_str(), &value); });
  if (raised != Raised::kNothing) {
    require(value == before, "an exception leaves the output untouched");
    return raised;
  }
  require(result == 0, "the result is 0");
  text = textOf(value, kTextBlock);
  lockFree([&] { require(table_->release_string(value) == 0, "a string is taken back"); });
  return raised;
}

Raised Framework::displayName(const std::string& key, std::string& name) {
  const bool ofNetwork = kFirstNetwork.starts_with(key) || kSecondNetwork.starts_with(key);
  return block(table_->get_display_name, key, jsonIf(ofNetwork), name);
}

Raised Framework::helpText(const std::string& key, std::string& text) {
  const bool hasLanguage = readableText(kLanguageKey).has_value();
  const Raised raised = block(table_->get_help_text, key, kNoLanguageToo, text);
  if (raised == Raised::kLock) return raised;
  require((raised == Raised::kNoLanguage) == !hasLanguage, "no language is raised, and only that");
  return raised;
}

Raised Framework::titleIcon(const std::string& key, std::string& path) {
  const Raised raised = block(table_->get_title_icon_path, key, jsonIf(isSavedNetwork(key)), path);
  require(raised != Raised::kNothing || isSignalIcon(path), "a title icon shows a signal");
  return raised;
}

Raised Framework::statusIcon(const std::string& key, std::string& path) {
  const Raised raised = block(table_->get_second_icon_path, key, kJsonToo, path);
  require(raised != Raised::kNothing || isStatusIcon(path), "a side icon is one of the four");
  return raised;
}

Raised Framework::stringValue(const std::string& key, bool isPreset,
                              std::optional<std::string>& value) {
  char before[] = "before";
  char* const preset = isPreset ? before : nullptr;
  char* text = preset;
  int result = 0;
  const Raised raised = locked(0, [&] { result = table_->get_string(key.c_str(), &text); });
  require(raised == Raised::kNothing || text == preset, "an exception leaves the output untouched");
  if (raised != Raised::kNothing) return raised;
  require(result == 1 || result == -1, "a value as text gives 1 or -1");
  require(result == 1 || text == preset, "without a device name the output is untouched");
  value = std::nullopt;
  if (text == preset) return raised;
  value = textOf(text, std::strlen(text) + 1);
  lockFree([&] { require(table_->release_string(text) == 0, "a string is taken back"); });
  return raised;
}

Raised Framework::intValue(const std::string& key, int& value, int& result) {
  return locked(0, [&] { result = table_->get_int(key.c_str(), &value); });
}

Raised Framework::setInt(const std::string& key, int value, int& result) {
  const Raised raised =
      locked(jsonIf(isSavedNetwork(key)), [&] { result = table_->set_int(key.c_str(), value); });
  if (raised == Raised::kNothing && isSavedNetwork(key)) {
    require(result == -1, "a saved network answers -1");
  }
  return raised;
}

Raised Framework::setString(const std::string& key, const std::string& value, int& result) {
  return locked(0, [&] { result = table_->set_string(key.c_str(), value.c_str()); });
}

Raised Framework::isEnabled(const std::string& key, bool& enabled) {
  return locked(jsonIf(isSavedNetwork(key)), [&] { enabled = check_enable_int(key.c_str(), 0); });
}

Raised Framework::isVisible(const std::string& key, bool& visible) {
  return locked(0, [&] { visible = check_visibility_int(key.c_str(), 0); });
}

Raised Framework::moduleInfo(const std::string& key) {
  char before[] = "before";
  char* value = before;
  int result = -1;
  const Raised raised = locked(0, [&] { result = table_->get_module_info(key.c_str(), &value); });
  if (raised != Raised::kNothing) {
    require(value == before, "an exception leaves the output untouched");
    return raised;
  }
  require(result == 0, "module information gives 0");
  const bool known = key == "provider/owner" || key == "provider/main-component" ||
                     key == "provider/sub-component";
  require(known == (value != before), "only the three keys are answered");
  if (!known) return raised;
  require(!textOf(value, kModuleInfoBlock).empty(), "who the provider is is not empty");
  lockFree([&] { require(table_->release_string(value) == 0, "a string is taken back"); });
  return raised;
}

std::optional<std::string> Framework::currentValue(const std::string& key) {
  const auto stored = readableText(kDeviceNameStoreKey);
  const auto text = buffer(kBefore, VENTARO_CURRENT_VALUE_SIZE);
  char* value = text.get();
  int result = 0;
  lockFree([&] { result = table_->get_current_value_sid(key.c_str(), &value); });
  require(value == text.get(), "the caller's buffer stays the caller's");
  require(result == (stored ? 0 : -1), "the device name gives 0, or -1 without one");
  require(std::memchr(value, '\0', VENTARO_CURRENT_VALUE_SIZE) != nullptr, "a text ends");
  const std::string expected =
      stored ? cut(stored->c_str(), VENTARO_CURRENT_VALUE_SIZE) : std::string(kBefore);
  require(value == expected, "the buffer holds the stored name, or what it held");
  return stored;
}

Raised Framework::messageBox(const std::string& key, const Box& before, Box& after) {
  const auto text = buffer(before.text, before.text.size() + VENTARO_MESSAGE_TEXT_SIZE);
  const auto first = buffer(before.first, before.first.size() + VENTARO_MESSAGE_BUTTON_SIZE);
  const auto second = buffer(before.second, before.second.size() + VENTARO_MESSAGE_BUTTON_SIZE);
  int type = 0;
  int result = -1;
  const Raised raised = locked(0, [&] {
    result = table_->get_messagebox_info(key.c_str(), text.get(), first.get(), second.get(), &type);
  });
  if (raised != Raised::kNothing) {
    require(text.get() == before.text && first.get() == before.first &&
                second.get() == before.second && type == 0,
            "an exception leaves the buffers untouched");
    return raised;
  }
  require(result == 0 && type == 2, "a box gives 0 and is of type 2");
  after = {appended(before.text, text.get(), VENTARO_MESSAGE_TEXT_SIZE),
           appended(before.first, first.get(), VENTARO_MESSAGE_BUTTON_SIZE),
           appended(before.second, second.get(), VENTARO_MESSAGE_BUTTON_SIZE)};
  return raised;
}

Framework::Entry Framework::entry(const std::string& key, void* item, int position) {
  char* text = nullptr;
  Entry entry{};
  locked(0, [&] {
    require(table_->get_list_item_display_value(item, &text) == 0, "an entry's text gives 0");
  });
  locked(0, [&] {
    require(table_->get_list_item_int_value(item, &entry.value) == 0, "an entry's value gives 0");
  });
  locked(0, [&] {
    require(table_->get_list_item_following_action_type(item, &entry.action) == 0,
            "what follows an entry gives 0");
  });
  require(entry.value == position, "an entry's value is its position");
  require(entry.action >= ITEM_FOLLOWING_ACTION_NONE &&
              entry.action <= ITEM_FOLLOWING_ACTION_MESSAGE_BOX,
          "what follows an entry is one of the three");
  require(text != nullptr, "an entry within the count has a text");
  const bool isState = key == "SAVEDAP1_NAME_KEY" || key == "SAVEDAP2_NAME_KEY";
  require(sizeOf(text) == (isState ? kTextBlock : kListTextBlock), "an entry's block has its size");
  entry.text = std::string(text, strnlen(text, kListTextBlock));
  return entry;
}

void Framework::giveBack(void** items, int count, bool arrayAlone) {
  struct Record {
    char* text;
    int value;
    ITEM_FOLLOWING_ACTION_TYPE action;
  };
  // A list of one entry has a second record without a text, which no count covers. The framework
  // of a TV loses it; here it goes back, so that the leaks that are found are others.
  void* const uncovered = count == 1 ? items[1] : nullptr;
  const std::vector<void*> records(items, items + count);
  const int given = arrayAlone ? 0 : count;
  locked(0, [&] { require(table_->free_list_items(items, given) == 0, "a list is taken back"); });
  std::free(uncovered);
  if (!arrayAlone) return;
  for (void* record : records) {
    std::free(static_cast<Record*>(record)->text);
    std::free(record);
  }
}

Raised Framework::list(const std::string& key, bool givesBackArrayAlone,
                       std::vector<Entry>& entries) {
  int count = -1;
  const void** given = nullptr;
  const Raised raised = locked(0, [&] { given = table_->get_list_items(key.c_str(), &count); });
  if (raised != Raised::kNothing) {
    require(count == -1, "an exception leaves the output untouched");
    return raised;
  }
  auto** items = const_cast<void**>(given);
  const bool isState = key == "SAVEDAP1_NAME_KEY" || key == "SAVEDAP2_NAME_KEY";
  require(isState ? count == 3 : count == 1 || count == 2, "a list has one to three entries");
  require(sizeOf(items) == (isState ? 3 : 2) * sizeof(void*), "an array has room for its entries");
  for (int i = 0; i < count; ++i) entries.push_back(entry(key, items[i], i));
  giveBack(items, count, givesBackArrayAlone);
  return raised;
}

void Framework::checksWithoutRule(const std::string& key) {
  const char* text = key.c_str();
  lockFree([&] {
    require(check_visibility_string(text, text) && check_visibility_double(text, 0.5) &&
                check_visibility_bool(text, false),
            "an item of another kind is shown");
    require(check_enable_string(text, text) && check_enable_double(text, 0.5) &&
                check_enable_bool(text, false),
            "an item of another kind may be used");
    require(table_->release_string(nullptr) == 1, "a null string gives 1");
  });
}

Raised Framework::nulls() {
  const Raised raised =
      locked(0, [&] { require(table_->free_list_items(nullptr, 3) == 0, "a null list gives 0"); });
  if (raised != Raised::kNothing) return raised;
  char before[] = "before";
  char* text = before;
  int value = 5;
  auto action = ITEM_FOLLOWING_ACTION_REFRESH;
  locked(0, [&] { table_->get_list_item_display_value(nullptr, &text); });
  locked(0, [&] { table_->get_list_item_int_value(nullptr, &value); });
  locked(0, [&] { table_->get_list_item_following_action_type(nullptr, &action); });
  require(text == before && value == 5 && action == ITEM_FOLLOWING_ACTION_REFRESH,
          "a null item leaves the outputs untouched");
  locked(0, [&] { require(delete_provider(nullptr) == 1, "a null table gives 1"); });
  return raised;
}

}  // namespace fuzz
