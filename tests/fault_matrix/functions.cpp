#include "functions.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "contract/own_provider.h"
#include "course.h"
#include "fake_platform.h"
#include "world.h"

using contract::Answer;
using contract::Calls;

namespace {

contract::Conditions anyFault(bool memoryMayRunOut) {
  return {.lockMayFail = true,
          .documentMayBeMisshapen = true,
          .languageMayBeMissing = true,
          .memoryMayRunOut = memoryMayRunOut};
}

bool isOneOf(const Answer& answer, std::initializer_list<std::string_view> names) {
  return std::ranges::find(names, std::string_view(answer.function->name)) != names.end();
}

// An empty text shows as two quotes.
std::string shownText(const Answer& answer) {
  if (answer.untouched) return kUntouched;
  if (!answer.text) return "null";
  return !answer.text->empty() ? *answer.text : "\"\"";
}

std::string shownEntries(Calls& calls, const Answer& list) {
  std::string entries;
  for (const contract::Entry& entry : calls.entries(list)) {
    if (!entries.empty()) entries += ", ";
    entries += (entry.text.empty() ? "\"\"" : entry.text) + " " + std::to_string(entry.value) +
               " " + std::to_string(entry.action);
  }
  return entries;
}

std::string shownResult(const Answer& answer) {
  if (std::string_view(answer.function->name).starts_with("check_")) {
    return answer.result != 0 ? "true" : "false";
  }
  const bool isNoList = isOneOf(answer, {"get_list_items"}) && answer.items == nullptr;
  return isNoList ? "null" : std::to_string(answer.result);
}

std::string shownOutputs(Calls& calls, const Answer& answer) {
  if (isOneOf(answer, {"get_int", "get_list_item_int_value"})) {
    return answer.untouched ? kUntouched : std::to_string(answer.value);
  }
  if (isOneOf(answer, {"get_list_item_following_action_type"})) return std::to_string(answer.value);
  if (isOneOf(answer, {"get_list_items"})) return shownEntries(calls, answer);
  if (isOneOf(answer, {"create_provider"})) return answer.table != nullptr ? "a table" : "no table";
  if (isOneOf(answer, {"get_messagebox_info"})) {
    return "type " + std::to_string(answer.value) + ": +" + answer.text.value_or("") + " +" +
           answer.first + " +" + answer.second;
  }
  const bool givesText =
      isOneOf(answer, {"get_string", "get_display_name", "get_help_text", "get_title_icon_path",
                       "get_second_icon_path", "get_module_info", "get_list_item_display_value",
                       "get_current_value_sid"});
  return givesText ? shownText(answer) : "";
}

// A list or a table that is taken back by the call itself, unless that raises.
Answer takenBack(Answer answer, Answer& taken) {
  if (!answer.hasRaised()) taken.held.release();
  answer.held = std::move(taken.held);
  return answer;
}

Answer taken(std::vector<Answer>& prepared) {
  Answer last = std::move(prepared.back());
  prepared.pop_back();
  return last;
}

}  // namespace

std::string shown(Calls& calls, const Answer& answer) {
  if (answer.function == nullptr) return "";
  if (!answer.hasRaised()) return answerOf(shownResult(answer), shownOutputs(calls, answer));
  return answerOf("raises " + answer.raised, answer.untouched ? kUntouched : "outputs touched");
}

void Functions::Observer::givesBack(void** items, int count) {
  contract::freeUncovered(items, count);
}

Functions::Functions(const contract::Exports& exports, const data_provider_cbs* table,
                     bool memoryMayRunOut)
    : calls_(exports, table, observer_, anyFault(memoryMayRunOut), &contract::ownPromises()),
      all_({
          setInt(1),
          {"set_string", [this](auto& key) { return calls_.setString(key, "TV Three"); }},
          {"get_int", [this](auto& key) { return calls_.getInt(key); }},
          {"get_current_value_sid", [this](auto& key) { return calls_.currentValue(key); }},
          {"get_string", [this](auto& key) { return calls_.getString(key); }},
          {"get_display_name", [this](auto& key) { return calls_.displayName(key); }},
          {"get_help_text", [this](auto& key) { return calls_.helpText(key); }},
          {"get_title_icon_path", [this](auto& key) { return calls_.titleIcon(key); }},
          {"get_second_icon_path", [this](auto& key) { return calls_.secondIcon(key); }},
          {"get_module_info", [this](auto& key) { return calls_.moduleInfo(key); }},
          {"get_messagebox_info", [this](auto& key) { return calls_.messageBox(key); }},
          {"get_list_items", [this](auto& key) { return calls_.listItems(key); }},
          ofItem("get_list_item_display_value", &Calls::itemDisplayValue),
          ofItem("get_list_item_int_value", &Calls::itemIntValue),
          ofItem("get_list_item_following_action_type", &Calls::itemAction),
          freeList(),
          {"release_string", [this](auto&) { return calls_.releaseString(strdup("text")); }},
          {"create_provider", [this](auto&) { return calls_.createProvider(); }},
          deleteProvider(),
          {"check_visibility_int", [this](auto& key) { return calls_.isVisibleInt(key); }},
          {"check_visibility_string", [this](auto& key) { return calls_.isVisibleString(key); }},
          {"check_visibility_double", [this](auto& key) { return calls_.isVisibleDouble(key); }},
          {"check_visibility_bool", [this](auto& key) { return calls_.isVisibleBool(key); }},
          {"check_enable_int", [this](auto& key) { return calls_.isEnabledInt(key); }},
          {"check_enable_string", [this](auto& key) { return calls_.isEnabledString(key); }},
          {"check_enable_double", [this](auto& key) { return calls_.isEnabledDouble(key); }},
          {"check_enable_bool", [this](auto& key) { return calls_.isEnabledBool(key); }},
      }) {}

const Function& Functions::named(const std::string& name) const {
  const auto found = std::ranges::find(all_, name, &Function::name);
  if (found == all_.end()) throw std::logic_error("no function \"" + name + "\"");
  return *found;
}

Function Functions::setInt(int value) {
  return {"set_int with " + std::to_string(value),
          [this, value](auto& key) { return calls_.setInt(key, value); }};
}

// Of the second entry of the key's list.
Function Functions::ofItem(const char* name, OfItem call) {
  return {name,
          [this, call](auto&) {
            Answer list = taken(prepared_);
            Answer answer = (calls_.*call)(list.item(1));
            answer.held = std::move(list.held);
            return answer;
          },
          [this](auto& key) { prepared_.push_back(calls_.listItems(key)); }};
}

Function Functions::freeList() {
  return {"free_list_items",
          [this](auto&) {
            Answer list = taken(prepared_);
            return takenBack(calls_.freeListItems(list.items, list.value), list);
          },
          [this](auto& key) { prepared_.push_back(calls_.listItems(key)); }};
}

Function Functions::deleteProvider() {
  return {"delete_provider",
          [this](auto&) {
            Answer created = taken(prepared_);
            return takenBack(calls_.deleteProvider(&created.table), created);
          },
          [this](auto&) { prepared_.push_back(calls_.createProvider()); }};
}

// ---- What the provider does of its own ----

Function Functions::switchAndEightSeconds() {
  return {"a Wi-Fi switch and eight seconds", [this](auto&) {
            Answer answer = calls_.setInt(VENTARO_KEY_WIFI, 1);
            fake_platform::advanceTimers(4);
            return answer;
          }};
}

Function Functions::notification() {
  return {"a change of the saved networks", [](auto&) {
            fake_platform::store().notify(kNetworksKey);
            return Answer{};
          }};
}
