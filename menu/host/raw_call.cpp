#include "raw_call.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>
#include <utility>

#include "menu_model.h"
#include "typed_name.h"

namespace menu {

namespace {

// What is in an output before the call. No function has a reason to write these.
constexpr int kUntouchedInt = std::numeric_limits<int>::min() + 0x5A5A;
constexpr auto kUntouchedAction = static_cast<ITEM_FOLLOWING_ACTION_TYPE>(3);
constexpr char kUntouchedText[] = "\x1Auntouched\x1A";

constexpr char kNull[] = "null";

struct Call {
  const Provider& provider;
  const char* function;
  const std::string& key;
  const std::optional<std::string>& value;

  const data_provider_cbs& table() const { return provider.table(); }
};

// The function in that slot of the table.
template <auto Slot>
auto slot(const Call& call) {
  const auto function = call.table().*Slot;
  if (function == nullptr) {
    throw RefusedError(std::string("the provider does not offer what ") + call.function + " needs");
  }
  return [function, name = call.function](auto... arguments) {
    return menu::call(name, function, arguments...);
  };
}

template <typename Number>
Number number(const Call& call, Number otherwise) {
  if (!call.value) return otherwise;
  Number parsed{};
  const char* end = call.value->data() + call.value->size();
  const auto [rest, error] = std::from_chars(call.value->data(), end, parsed);
  if (error == std::errc() && rest == end) return parsed;
  throw UnknownError("\"" + *call.value + "\" is no number that " + call.function + " takes");
}

bool isNull(const Call& call) {
  return call.value == kNull;
}

RawValue intOutput(int value) {
  return value == kUntouchedInt ? RawValue(Untouched()) : RawValue(value);
}

// A text that the provider handed out, which goes back to it.
RawValue takeText(const Call& call, char* text, const char* before) {
  if (text == before) return Untouched();
  if (text == nullptr) return Null();
  std::string copy = text;
  if (call.table().release_string != nullptr) {
    slot<&data_provider_cbs::release_string>(call)(text);
  }
  return copy;
}

class List {
 public:
  explicit List(const Call& call)
      : free_(call.table().free_list_items),
        items_(const_cast<void**>(
            slot<&data_provider_cbs::get_list_items>(call)(call.key.c_str(), &count_))) {}
  ~List() {
    if (items_ != nullptr && free_ != nullptr) free_(items_, count_);
  }
  List(const List&) = delete;
  List& operator=(const List&) = delete;

  void** items() const { return items_; }
  int count() const { return count_; }

  // The entry that the call's value names.
  void* entry(const Call& call) const {
    if (isNull(call)) return nullptr;
    const int index = number(call, 0);
    const int count = items_ != nullptr ? count_ : 0;
    if (index >= 0 && index < count) return items_[index];
    throw UnknownError("the list of \"" + call.key + "\" has no entry " + std::to_string(index) +
                       "; it has " + std::to_string(count) + ", counted from 0");
  }

  // The list, which is no longer to be given back from here.
  void** release() { return std::exchange(items_, nullptr); }

 private:
  decltype(data_provider_cbs::free_list_items) free_;
  int count_ = kUntouchedInt;
  void** items_;
};

RawResult setInt(const Call& call) {
  return {slot<&data_provider_cbs::set_int>(call)(call.key.c_str(), number(call, 0)), {}};
}

RawResult setString(const Call& call) {
  return {slot<&data_provider_cbs::set_string>(call)(call.key.c_str(), call.value->c_str()), {}};
}

RawResult getInt(const Call& call) {
  int value = kUntouchedInt;
  const int result = slot<&data_provider_cbs::get_int>(call)(call.key.c_str(), &value);
  return {result, {{"value", intOutput(value)}}};
}

template <auto Slot>
RawResult getText(const Call& call) {
  char before[] = "";
  char* value = before;
  const int result = slot<Slot>(call)(call.key.c_str(), &value);
  return {result, {{"value", takeText(call, value, before)}}};
}

RawResult releaseString(const Call& call) {
  const auto release = slot<&data_provider_cbs::release_string>(call);
  char* text = nullptr;
  if (call.value && !isNull(call)) {
    throw UnknownError("release_string takes back the name of KEY, or \"null\"");
  }
  if (!isNull(call)) {
    slot<&data_provider_cbs::get_display_name>(call)(call.key.c_str(), &text);
  }
  return {release(text), {}};
}

RawResult getListItems(const Call& call) {
  const List list(call);
  RawValue items = list.items() != nullptr ? RawValue(Pointer()) : RawValue(Null());
  return {items, {{"count", intOutput(list.count())}}};
}

RawResult getEntryText(const Call& call) {
  const List list(call);
  char before[] = "";
  char* text = before;
  const int result =
      slot<&data_provider_cbs::get_list_item_display_value>(call)(list.entry(call), &text);
  RawValue value = Untouched();
  if (text == nullptr) value = Null();
  // It has no NUL when it fills its block.
  else if (text != before)
    value = std::string(text, strnlen(text, VENTARO_LIST_TEXT_SIZE));
  return {result, {{"value", value}}};
}

RawResult getEntryInt(const Call& call) {
  const List list(call);
  int value = kUntouchedInt;
  const int result =
      slot<&data_provider_cbs::get_list_item_int_value>(call)(list.entry(call), &value);
  return {result, {{"value", intOutput(value)}}};
}

RawResult getEntryAction(const Call& call) {
  const List list(call);
  ITEM_FOLLOWING_ACTION_TYPE type = kUntouchedAction;
  const int result =
      slot<&data_provider_cbs::get_list_item_following_action_type>(call)(list.entry(call), &type);
  return {result,
          {{"type", type == kUntouchedAction ? RawValue(Untouched()) : RawValue(int{type})}}};
}

RawResult freeListItems(const Call& call) {
  const auto free = slot<&data_provider_cbs::free_list_items>(call);
  List list(call);
  return {free(list.release(), list.count()), {}};
}

RawResult getCurrentValueSid(const Call& call) {
  char buffer[VENTARO_CURRENT_VALUE_SIZE] = {};
  std::ranges::copy(kUntouchedText, buffer);
  char* value = buffer;
  const int result =
      slot<&data_provider_cbs::get_current_value_sid>(call)(call.key.c_str(), &value);
  const std::string text(buffer, strnlen(buffer, sizeof buffer));
  return {result, {{"value", text == kUntouchedText ? RawValue(Untouched()) : RawValue(text)}}};
}

// A buffer that texts are appended to is empty before the call.
RawValue appended(const char* buffer) {
  return *buffer == '\0' ? RawValue(Untouched()) : RawValue(std::string(buffer));
}

RawResult getMessageBox(const Call& call) {
  char text[VENTARO_MESSAGE_TEXT_SIZE] = {};
  char first[VENTARO_MESSAGE_BUTTON_SIZE] = {};
  char second[VENTARO_MESSAGE_BUTTON_SIZE] = {};
  int type = kUntouchedInt;
  const int result = slot<&data_provider_cbs::get_messagebox_info>(call)(call.key.c_str(), text,
                                                                         first, second, &type);
  return {result,
          {{"text", appended(text)},
           {"first", appended(first)},
           {"second", appended(second)},
           {"type", intOutput(type)}}};
}

template <typename Value>
RawResult checked(const Call& call, Value value) {
  auto* const check =
      reinterpret_cast<bool (*)(const char*, Value)>(call.provider.find(call.function));
  if (check == nullptr) {
    throw RefusedError(std::string("the provider does not export ") + call.function);
  }
  return {menu::call(call.function, check, call.key.c_str(), value), {}};
}

template <typename Number>
RawResult checkNumber(const Call& call) {
  return checked(call, number(call, Number{}));
}

RawResult checkText(const Call& call) {
  return checked(call, call.value ? call.value->c_str() : "");
}

RawResult checkBool(const Call& call) {
  if (call.value && call.value != "true" && call.value != "false") {
    throw UnknownError("\"" + *call.value + "\" is neither true nor false, which " + call.function +
                       " takes");
  }
  return checked(call, call.value == "true");
}

enum class Takes { kNoValue, kAValue, kPerhapsAValue };

struct Row {
  const char* function;
  Takes takes;
  RawResult (*call)(const Call&);
};

constexpr Row kRows[] = {
    {"set_int", Takes::kAValue, setInt},
    {"set_string", Takes::kAValue, setString},
    {"get_int", Takes::kNoValue, getInt},
    {"get_string", Takes::kNoValue, getText<&data_provider_cbs::get_string>},
    {"release_string", Takes::kPerhapsAValue, releaseString},
    {"get_display_name", Takes::kNoValue, getText<&data_provider_cbs::get_display_name>},
    {"get_help_text", Takes::kNoValue, getText<&data_provider_cbs::get_help_text>},
    {"get_list_items", Takes::kNoValue, getListItems},
    {"get_list_item_display_value", Takes::kAValue, getEntryText},
    {"get_list_item_int_value", Takes::kAValue, getEntryInt},
    {"get_list_item_following_action_type", Takes::kAValue, getEntryAction},
    {"free_list_items", Takes::kNoValue, freeListItems},
    {"get_current_value_sid", Takes::kNoValue, getCurrentValueSid},
    {"get_messagebox_info", Takes::kNoValue, getMessageBox},
    {"get_module_info", Takes::kNoValue, getText<&data_provider_cbs::get_module_info>},
    {"get_title_icon_path", Takes::kNoValue, getText<&data_provider_cbs::get_title_icon_path>},
    {"get_second_icon_path", Takes::kNoValue, getText<&data_provider_cbs::get_second_icon_path>},
    {"check_visibility_int", Takes::kPerhapsAValue, checkNumber<int>},
    {"check_visibility_string", Takes::kPerhapsAValue, checkText},
    {"check_visibility_double", Takes::kPerhapsAValue, checkNumber<double>},
    {"check_visibility_bool", Takes::kPerhapsAValue, checkBool},
    {"check_enable_int", Takes::kPerhapsAValue, checkNumber<int>},
    {"check_enable_string", Takes::kPerhapsAValue, checkText},
    {"check_enable_double", Takes::kPerhapsAValue, checkNumber<double>},
    {"check_enable_bool", Takes::kPerhapsAValue, checkBool},
};

const Row& rowOf(const std::string& function) {
  const auto* const found = std::ranges::find(kRows, function, &Row::function);
  if (found != std::end(kRows)) return *found;
  const std::string problem = "there is no callback \"" + function + "\"";
  const std::string suggestion = didYouMean(function, rawFunctions());
  if (suggestion.empty()) throw UnknownError(problem + "; there are:", rawFunctions());
  throw UnknownError(problem + suggestion);
}

}  // namespace

std::vector<std::string> rawFunctions() {
  std::vector<std::string> names;
  for (const Row& row : kRows) names.emplace_back(row.function);
  return names;
}

RawResult callRaw(const Provider& provider, const std::string& function, const std::string& key,
                  const std::optional<std::string>& value) {
  const Row& row = rowOf(function);
  if (value && row.takes == Takes::kNoValue) throw UnknownError(function + " takes no VALUE");
  if (!value && row.takes == Takes::kAValue) throw UnknownError(function + " needs a VALUE");
  const Call call{provider, row.function, key, value};
  return row.call(call);
}

}  // namespace menu
