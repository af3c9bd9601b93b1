#include "functions.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "world.h"

namespace {

// Where untouched outputs point to.
char sentinelText[] = "sentinel";
data_provider_cbs sentinelTable;
void* sentinelItems[1];

constexpr auto kSentinelAction = static_cast<ITEM_FOLLOWING_ACTION_TYPE>(3);  // none of the three

const std::string& sentinelBuffer() {
  static const std::string buffer = [] {
    std::string filled(VENTARO_CURRENT_VALUE_SIZE, 'Z');
    filled.replace(0, sizeof(sentinelText), sentinelText, sizeof(sentinelText));
    return filled;
  }();
  return buffer;
}

// "+" and a NUL.
std::string boxBuffer(std::size_t size) {
  std::string buffer(size, '\0');
  buffer.front() = '+';
  return buffer;
}

// An empty text shows as two quotes.
std::string shownText(const char* text) {
  if (text == sentinelText) return "untouched";
  if (text == nullptr) return "null";
  return *text != '\0' ? text : "\"\"";
}

std::string shownValue(const Outputs& out) {
  return out.value == Outputs::kPresetValue ? "untouched" : std::to_string(out.value);
}

std::string word(bool value) {
  return value ? "true" : "false";
}

}  // namespace

Outputs::Outputs()
    : text(sentinelText),
      buffer(sentinelBuffer()),
      table(&sentinelTable),
      items(sentinelItems),
      action(kSentinelAction),
      message(boxBuffer(VENTARO_MESSAGE_TEXT_SIZE)),
      first(boxBuffer(VENTARO_MESSAGE_BUTTON_SIZE)),
      second(boxBuffer(VENTARO_MESSAGE_BUTTON_SIZE)) {}

bool Outputs::areUntouched() const {
  return value == kPresetValue && text == sentinelText && buffer == sentinelBuffer() &&
         table == &sentinelTable && items == sentinelItems && action == kSentinelAction &&
         message == boxBuffer(VENTARO_MESSAGE_TEXT_SIZE) &&
         first == boxBuffer(VENTARO_MESSAGE_BUTTON_SIZE) &&
         second == boxBuffer(VENTARO_MESSAGE_BUTTON_SIZE);
}

// ---- Values ----

Function Functions::getInt() const {
  return {"get_int",
          [this](Outputs& out, const char* key) {
            return std::to_string(table_.get_int(key, &out.value));
          },
          shownValue, nullptr, nullptr};
}

Function Functions::setInt(int value) const {
  return {"set_int with " + std::to_string(value),
          [this, value](Outputs&, const char* key) {
            return std::to_string(table_.set_int(key, value));
          },
          nullptr, nullptr, nullptr};
}

Function Functions::setString() const {
  return {"set_string",
          [this](Outputs&, const char* key) {
            return std::to_string(table_.set_string(key, "TV Three"));
          },
          nullptr, nullptr, nullptr};
}

Function Functions::currentValue() const {
  return {"get_current_value_sid",
          [this](Outputs& out, const char* key) {
            char* buffer = out.buffer.data();
            return std::to_string(table_.get_current_value_sid(key, &buffer));
          },
          [](const Outputs& out) -> std::string {
            return out.buffer == sentinelBuffer() ? "untouched" : out.buffer.c_str();
          },
          nullptr, nullptr};
}

// ---- Texts ----

Function Functions::textFunction(const char* name, int (*callback)(const char*, char**)) const {
  return {name,
          [callback](Outputs& out, const char* key) {
            return std::to_string(callback(key, &out.text));
          },
          [](const Outputs& out) { return shownText(out.text); },
          [this](Outputs& out) {
            if (out.text != sentinelText) table_.release_string(out.text);
          },
          nullptr};
}

Function Functions::getString() const {
  return textFunction("get_string", table_.get_string);
}
Function Functions::displayName() const {
  return textFunction("get_display_name", table_.get_display_name);
}
Function Functions::helpText() const {
  return textFunction("get_help_text", table_.get_help_text);
}
Function Functions::titleIcon() const {
  return textFunction("get_title_icon_path", table_.get_title_icon_path);
}
Function Functions::secondIcon() const {
  return textFunction("get_second_icon_path", table_.get_second_icon_path);
}
Function Functions::moduleInfo() const {
  return textFunction("get_module_info", table_.get_module_info);
}

Function Functions::messageBox() const {
  return {"get_messagebox_info",
          [this](Outputs& out, const char* key) {
            return std::to_string(table_.get_messagebox_info(
                key, out.message.data(), out.first.data(), out.second.data(), &out.value));
          },
          [](const Outputs& out) {
            return "type " + std::to_string(out.value) + ": " + out.message.c_str() + " " +
                   out.first.c_str() + " " + out.second.c_str();
          },
          nullptr, nullptr};
}

// ---- Lists ----

Function Functions::listItems() const {
  return {"get_list_items",
          [this](Outputs& out, const char* key) {
            out.items = const_cast<void**>(table_.get_list_items(key, &out.value));
            return out.items != nullptr ? std::to_string(out.value) : "null";
          },
          [this](const Outputs& out) {
            std::string entries;
            for (int i = 0; out.items != nullptr && i < out.value; ++i) {
              Outputs entry;
              table_.get_list_item_display_value(out.items[i], &entry.text);
              table_.get_list_item_int_value(out.items[i], &entry.value);
              table_.get_list_item_following_action_type(out.items[i], &entry.action);
              if (i > 0) entries += ", ";
              entries += shownText(entry.text) + " " + std::to_string(entry.value) + " " +
                         std::to_string(entry.action);
            }
            return entries;
          },
          [this](Outputs& out) {
            if (out.items == sentinelItems) return;
            // A list of one entry holds a second record, which a count of 1 does not return.
            table_.free_list_items(out.items, std::max(out.value, 2));
          },
          nullptr};
}

void Functions::prepareList(const char* key) {
  List list{};
  list.items = const_cast<void**>(table_.get_list_items(key, &list.count));
  lists_.push_back(list);
}

void* Functions::item() {
  return lists_.back().items[1];
}

void Functions::freeLast() {
  const List list = lists_.back();
  lists_.pop_back();
  if (list.items != nullptr) table_.free_list_items(list.items, list.count);
}

Function Functions::itemDisplayValue() {
  return {"get_list_item_display_value",
          [this](Outputs& out, const char*) {
            return std::to_string(table_.get_list_item_display_value(item(), &out.text));
          },
          [](const Outputs& out) { return shownText(out.text); }, [this](Outputs&) { freeLast(); },
          [this](const char* key) { prepareList(key); }};
}

Function Functions::itemIntValue() {
  return {"get_list_item_int_value",
          [this](Outputs& out, const char*) {
            return std::to_string(table_.get_list_item_int_value(item(), &out.value));
          },
          shownValue, [this](Outputs&) { freeLast(); },
          [this](const char* key) { prepareList(key); }};
}

Function Functions::itemAction() {
  return {"get_list_item_following_action_type",
          [this](Outputs& out, const char*) {
            return std::to_string(table_.get_list_item_following_action_type(item(), &out.action));
          },
          [](const Outputs& out) { return std::to_string(out.action); },
          [this](Outputs&) { freeLast(); }, [this](const char* key) { prepareList(key); }};
}

Function Functions::freeList() {
  return {"free_list_items",
          [this](Outputs&, const char*) {
            List& list = lists_.back();
            const int result = table_.free_list_items(list.items, list.count);
            list.items = nullptr;
            return std::to_string(result);
          },
          nullptr, [this](Outputs&) { freeLast(); }, [this](const char* key) { prepareList(key); }};
}

// ---- The provider itself ----

Function Functions::createProvider() const {
  return {"create_provider",
          [this](Outputs& out, const char*) {
            return std::to_string(exports_.create_provider(&out.table));
          },
          [](const Outputs& out) -> std::string {
            const bool isTable = out.table != nullptr && out.table->set_int != nullptr;
            return isTable ? "a table" : "no table";
          },
          [this](Outputs& out) {
            if (out.table != &sentinelTable) exports_.delete_provider(&out.table);
          },
          nullptr};
}

Function Functions::deleteProvider() {
  return {"delete_provider",
          [this](Outputs&, const char*) {
            const int result = exports_.delete_provider(&tables_.back());
            tables_.back() = nullptr;
            return std::to_string(result);
          },
          nullptr,
          [this](Outputs&) {
            exports_.delete_provider(&tables_.back());
            tables_.pop_back();
          },
          [this](const char*) {
            tables_.push_back(nullptr);
            exports_.create_provider(&tables_.back());
          }};
}

Function Functions::releaseString() {
  return {"release_string",
          [this](Outputs&, const char*) {
            return std::to_string(table_.release_string(std::exchange(texts_.back(), nullptr)));
          },
          nullptr, [this](Outputs&) { texts_.pop_back(); },
          [this](const char*) {
            char* text = nullptr;
            table_.get_module_info("provider/owner", &text);
            std::strcpy(text, "text");
            texts_.push_back(text);
          }};
}

// ---- Checks ----

Function Functions::visibilityInt() const {
  return {"check_visibility_int",
          [this](Outputs&, const char* key) { return word(exports_.check_visibility_int(key, 1)); },
          nullptr, nullptr, nullptr};
}
Function Functions::visibilityString() const {
  return {"check_visibility_string",
          [this](Outputs&, const char* key) {
            return word(exports_.check_visibility_string(key, "1"));
          },
          nullptr, nullptr, nullptr};
}
Function Functions::visibilityDouble() const {
  return {"check_visibility_double",
          [this](Outputs&, const char* key) {
            return word(exports_.check_visibility_double(key, 1.0));
          },
          nullptr, nullptr, nullptr};
}
Function Functions::visibilityBool() const {
  return {
      "check_visibility_bool",
      [this](Outputs&, const char* key) { return word(exports_.check_visibility_bool(key, true)); },
      nullptr, nullptr, nullptr};
}
Function Functions::enableInt() const {
  return {"check_enable_int",
          [this](Outputs&, const char* key) { return word(exports_.check_enable_int(key, 1)); },
          nullptr, nullptr, nullptr};
}
Function Functions::enableString() const {
  return {
      "check_enable_string",
      [this](Outputs&, const char* key) { return word(exports_.check_enable_string(key, "1")); },
      nullptr, nullptr, nullptr};
}
Function Functions::enableDouble() const {
  return {
      "check_enable_double",
      [this](Outputs&, const char* key) { return word(exports_.check_enable_double(key, 1.0)); },
      nullptr, nullptr, nullptr};
}
Function Functions::enableBool() const {
  return {"check_enable_bool",
          [this](Outputs&, const char* key) { return word(exports_.check_enable_bool(key, true)); },
          nullptr, nullptr, nullptr};
}

// ---- What the provider does of its own ----

Function Functions::switchAndEightSeconds() const {
  return {"a Wi-Fi switch and eight seconds",
          [this](Outputs&, const char*) {
            const int result = table_.set_int("menu/network/WiFiOnOff", 1);
            advanceTimers(4);
            return std::to_string(result);
          },
          nullptr, nullptr, nullptr};
}

Function Functions::notification() const {
  return {"a change of the saved networks",
          [](Outputs&, const char*) {
            store().notify(kNetworksKey);
            return std::string();
          },
          nullptr, nullptr, nullptr};
}
