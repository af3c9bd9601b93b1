#include "calls.h"

#include <cxxabi.h>
#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <system_error>
#include <typeinfo>

#include "buffer.h"

namespace contract {

namespace {

// The outputs' values before a call.
char textBefore[] = "sentinel";
data_provider_cbs tableBefore;
constexpr auto kActionBefore = static_cast<ITEM_FOLLOWING_ACTION_TYPE>(3);  // none of the three

constexpr int kTypeOfABox = 2;

std::string nameOf(const std::exception& exception) {
  int status = 0;
  const std::unique_ptr<char, decltype(&std::free)> name(
      abi::__cxa_demangle(typeid(exception).name(), nullptr, nullptr, &status), &std::free);
  const auto* error = dynamic_cast<const std::system_error*>(&exception);
  if (error == nullptr) return name.get();
  return name.get() + (" " + std::to_string(error->code().value()));
}

std::string described(const Answer& answer) {
  if (answer.hasRaised()) return "raised " + answer.raised;
  std::string text = "result " + std::to_string(answer.result);
  if (answer.untouched) return text + ", outputs untouched";
  if (answer.text) return text + ", text \"" + *answer.text + "\"";
  return text + ", value " + std::to_string(answer.value);
}

}  // namespace

std::string toString(const Breach& breach) {
  return breach.function + " of \"" + breach.key + "\": " + breach.sentence + " (" + breach.answer +
         ")";
}

Calls::Calls(const Exports& exports, const data_provider_cbs* table, Observer& observer,
             const Conditions& conditions, const Promises* more)
    : exports_(exports), table_(table), observer_(observer), conditions_(conditions), more_(more) {}

Calls::Calls(const Provider& provider, Observer& observer, const Conditions& conditions,
             const Promises* more)
    : Calls(provider.exports(), &provider.table(), observer, conditions, more) {}

// ---- Every call ----

template <typename Call>
Answer Calls::make(const Function& function, const std::string& key, const Call& call) {
  Answer answer;
  answer.function = &function;
  answer.key = key;
  ++made_[indexOf(function)];
  observer_.before(function);
  try {
    answer.result = call();
  } catch (const std::exception& exception) {
    answer.raised = nameOf(exception);
  } catch (...) {
    answer.raised = "something that is no std::exception";
  }
  observer_.after(answer);
  return answer;
}

// What must hold for every answer.
Answer Calls::required(Answer answer) {
  if (answer.hasRaised()) {
    require(mayRaise(answer), answer, "no other exception leaves it");
    require(answer.untouched, answer, "an exception leaves the outputs untouched");
    return answer;
  }
  requirePromises(headersPromises(), answer);
  if (more_ != nullptr) requirePromises(*more_, answer);
  return answer;
}

void Calls::require(bool holds, const Answer& answer, const char* sentence) {
  if (holds) return;
  ++breaches_;
  observer_.broken({answer.function->name, answer.key, sentence, described(answer)});
}

void Calls::requirePromises(const Promises& promises, const Answer& answer) {
  for (const Promise& promise : promises) {
    if (promise.function != answer.function) continue;
    bool applies = promise.keys.empty();
    for (const std::string_view key : promise.keys) applies = applies || key == answer.key;
    if (applies) require(promise.holds(answer), answer, promise.sentence);
  }
}

bool Calls::mayRaise(const Answer& answer) const {
  const std::string& type = answer.raised;
  if (!contract::mayRaise(*answer.function, answer.key, type)) return false;
  if (type == kMemoryError) return conditions_.memoryMayRunOut;
  if (type == kDocumentError) return conditions_.documentMayBeMisshapen;
  if (type == kLanguageError) return conditions_.languageMayBeMissing;
  return conditions_.lockMayFail;
}

// ---- Blocks ----

// How many bytes of a block are known to exist.
std::size_t Calls::sizeOf(Answer& answer, const void* block) {
  answer.blockSize = observer_.sizeOf(block);
  return answer.blockSize.value_or(malloc_usable_size(const_cast<void*>(block)));
}

void Calls::requireBlock(Answer& answer, const void* block, std::size_t size) {
  const std::size_t found = sizeOf(answer, block);
  require(answer.blockSize ? found == size : found >= size, answer,
          "a block has the size that is promised");
}

// A text that was handed out, in a block of that size; 0 for any size.
void Calls::takeText(Answer& answer, char* block, std::size_t size) {
  answer.held = Held([this, block] { releaseString(block); });
  if (size == 0)
    size = sizeOf(answer, block);
  else
    requireBlock(answer, block, size);
  answer.text = std::string(block, strnlen(block, size));
  require(answer.text->size() < size, answer, "a text ends within its block");
}

// The text of a list's entry, which the list still owns.
void Calls::takeListText(Answer& answer, const char* block) {
  require(block != nullptr, answer, "an entry within the count has a text");
  if (block == nullptr) return;
  const std::size_t size = sizeOf(answer, block);
  constexpr std::size_t kMost = VENTARO_LIST_TEXT_SIZE;
  require(size >= kMost, answer, "an entry's block has the size that is promised");
  answer.text = std::string(block, strnlen(block, std::min(size, kMost)));
}

// ---- Texts ----

Answer Calls::text(const Function& function, TextCallback callback, const std::string& key,
                   std::size_t blockSize, char* before) {
  char* value = before;
  Answer answer = make(function, key, [&] { return callback(key.c_str(), &value); });
  answer.untouched = value == before;
  if (!answer.hasRaised() && !answer.untouched && value != nullptr) {
    takeText(answer, value, blockSize);
  }
  return answer;
}

Answer Calls::getString(const std::string& key, bool holdsText) {
  return required(
      text(function("get_string"), table_->get_string, key, 0, holdsText ? textBefore : nullptr));
}

// Without memory, a help text gives -1, and the list of a saved network's states is null though
// three are counted.
bool Calls::isWithoutMemory(const Answer& answer) const {
  if (!conditions_.memoryMayRunOut || answer.hasRaised()) return false;
  if (answer.function == &function("get_help_text")) return answer.result == -1 && answer.untouched;
  return answer.function == &function("get_list_items") && isStates(answer.key) &&
         answer.items == nullptr && answer.value == 3;
}

// Always gives a text.
Answer Calls::textAlways(const Function& function, TextCallback callback, const std::string& key) {
  Answer answer = text(function, callback, key, VENTARO_TEXT_SIZE, textBefore);
  if (isWithoutMemory(answer)) return answer;
  require(answer.hasRaised() || answer.result == 0, answer, "the result is 0");
  require(answer.hasRaised() || answer.text, answer, "a text is handed out");
  return required(std::move(answer));
}

Answer Calls::displayName(const std::string& key) {
  return textAlways(function("get_display_name"), table_->get_display_name, key);
}

Answer Calls::helpText(const std::string& key) {
  return textAlways(function("get_help_text"), table_->get_help_text, key);
}

Answer Calls::titleIcon(const std::string& key) {
  return textAlways(function("get_title_icon_path"), table_->get_title_icon_path, key);
}

Answer Calls::secondIcon(const std::string& key) {
  return textAlways(function("get_second_icon_path"), table_->get_second_icon_path, key);
}

Answer Calls::moduleInfo(const std::string& key) {
  Answer answer = text(function("get_module_info"), table_->get_module_info, key,
                       VENTARO_MODULE_INFO_SIZE, textBefore);
  const bool isKnown = key == VENTARO_KEY_OWNER || key == VENTARO_KEY_MAIN_COMPONENT ||
                       key == VENTARO_KEY_SUB_COMPONENT;
  require(answer.hasRaised() || answer.result == 0, answer, "the result is 0");
  require(answer.hasRaised() || (isKnown ? answer.text.has_value() : answer.untouched), answer,
          "its three keys are answered, any other leaves the output untouched");
  return required(std::move(answer));
}

Answer Calls::releaseString(char* text) {
  Answer answer =
      make(function("release_string"), "", [&] { return table_->release_string(text); });
  require(answer.hasRaised() || answer.result == (text == nullptr ? 1 : 0), answer,
          "a string that is taken back gives 0, null gives 1");
  return required(std::move(answer));
}

// ---- Values ----

Answer Calls::setInt(const std::string& key, int value) {
  return required(
      make(function("set_int"), key, [&] { return table_->set_int(key.c_str(), value); }));
}

Answer Calls::setString(const std::string& key, const std::string& value) {
  return required(make(function("set_string"), key,
                       [&] { return table_->set_string(key.c_str(), value.c_str()); }));
}

Answer Calls::getInt(const std::string& key, int before) {
  int value = before;
  Answer answer =
      make(function("get_int"), key, [&] { return table_->get_int(key.c_str(), &value); });
  answer.value = value;
  answer.untouched = value == before;
  return required(std::move(answer));
}

Answer Calls::currentValue(const std::string& key) {
  Buffer buffer(textBefore, VENTARO_CURRENT_VALUE_SIZE);
  char* value = buffer.data();
  Answer answer = make(function("get_current_value_sid"), key,
                       [&] { return table_->get_current_value_sid(key.c_str(), &value); });
  answer.untouched = value == buffer.data() && buffer.isUntouched();
  if (!answer.hasRaised() && answer.result == 0) answer.text = buffer.text();
  require(value == buffer.data(), answer, "the caller's buffer stays the caller's");
  require(buffer.isKept(), answer, "the text ends within the buffer");
  require(answer.result == 0 || (answer.result == -1 && answer.untouched), answer,
          "the device name gives 0, or -1 with the buffer untouched when there is none");
  return required(std::move(answer));
}

Answer Calls::messageBox(const std::string& key, const Box& before) {
  Buffer text(before.text, before.text.size() + VENTARO_MESSAGE_TEXT_SIZE);
  Buffer first(before.first, before.first.size() + VENTARO_MESSAGE_BUTTON_SIZE);
  Buffer second(before.second, before.second.size() + VENTARO_MESSAGE_BUTTON_SIZE);
  int type = kBefore;
  Answer answer = make(function("get_messagebox_info"), key, [&] {
    return table_->get_messagebox_info(key.c_str(), text.data(), first.data(), second.data(),
                                       &type);
  });
  answer.value = type;
  answer.untouched =
      type == kBefore && text.isUntouched() && first.isUntouched() && second.isUntouched();
  if (answer.hasRaised()) return required(std::move(answer));
  require(answer.result == 0 && type == kTypeOfABox, answer, "a box gives 0 and is of type 2");
  answer.text = appended(answer, text, before.text);
  answer.first = appended(answer, first, before.first);
  answer.second = appended(answer, second, before.second);
  return required(std::move(answer));
}

std::string Calls::appended(const Answer& answer, const Buffer& buffer, const std::string& before) {
  require(buffer.isKept(), answer, "what is appended is not too long");
  const std::string text = buffer.text();
  const bool isBehind = text.starts_with(before);
  require(isBehind, answer, "a box is appended to what the buffers hold");
  return isBehind ? text.substr(before.size()) : text;
}

// ---- Lists ----

Answer Calls::listItems(const std::string& key) {
  int count = kBefore;
  const void** given = nullptr;
  Answer answer = make(function("get_list_items"), key, [&] {
    given = table_->get_list_items(key.c_str(), &count);
    return count;
  });
  answer.value = count;
  answer.untouched = count == kBefore;
  if (answer.hasRaised()) return required(std::move(answer));
  if (given == nullptr && isWithoutMemory(answer)) return answer;
  require(given != nullptr && count >= 1 && !answer.untouched, answer, "a list has entries");
  if (given == nullptr) return answer;
  auto** items = const_cast<void**>(given);
  answer.items = items;
  answer.held = Held([this, items, count] {
    observer_.givesBack(items, count);
    freeListItems(items, count);
  });
  require(sizeOf(answer, items) >= static_cast<std::size_t>(count) * sizeof(void*), answer,
          "an array has room for its entries");
  return required(std::move(answer));
}

template <typename Call>
Answer Calls::makeOfItem(const Function& function, const Item& item, const Call& call) {
  Answer answer = make(function, item.key, call);
  answer.position = item.position;
  require(answer.hasRaised() || answer.result == 0, answer, "the result is 0");
  return answer;
}

// A null item leaves the output untouched; any other item sets it.
Answer Calls::requiredOfItem(Answer answer, const Item& item) {
  require(answer.hasRaised() || answer.untouched == (item.handle == nullptr), answer,
          "an item is answered, a null item leaves the output untouched");
  if (item.handle == nullptr && !answer.hasRaised()) return answer;
  return required(std::move(answer));
}

Answer Calls::itemDisplayValue(const Item& item) {
  char* value = textBefore;
  Answer answer = makeOfItem(function("get_list_item_display_value"), item, [&] {
    return table_->get_list_item_display_value(item.handle, &value);
  });
  answer.untouched = value == textBefore;
  if (!answer.hasRaised() && !answer.untouched) takeListText(answer, value);
  return requiredOfItem(std::move(answer), item);
}

Answer Calls::itemIntValue(const Item& item) {
  int value = kBefore;
  Answer answer = makeOfItem(function("get_list_item_int_value"), item,
                             [&] { return table_->get_list_item_int_value(item.handle, &value); });
  answer.value = value;
  answer.untouched = value == kBefore;
  return requiredOfItem(std::move(answer), item);
}

Answer Calls::itemAction(const Item& item) {
  auto action = kActionBefore;
  Answer answer = makeOfItem(function("get_list_item_following_action_type"), item, [&] {
    return table_->get_list_item_following_action_type(item.handle, &action);
  });
  answer.value = action;
  answer.untouched = action == kActionBefore;
  require(answer.untouched ||
              (action >= ITEM_FOLLOWING_ACTION_NONE && action <= ITEM_FOLLOWING_ACTION_MESSAGE_BOX),
          answer, "what follows an entry is one of the three");
  return requiredOfItem(std::move(answer), item);
}

Answer Calls::freeListItems(void** items, int count) {
  Answer answer =
      make(function("free_list_items"), "", [&] { return table_->free_list_items(items, count); });
  require(answer.hasRaised() || answer.result == 0, answer, "a list is taken back");
  return required(std::move(answer));
}

std::vector<Entry> Calls::entries(const Answer& list) {
  std::vector<Entry> entries;
  for (int i = 0; list.items != nullptr && i < list.value; ++i) {
    const Item item = list.item(i);
    entries.push_back({itemDisplayValue(item).text.value_or("(null)"), itemIntValue(item).value,
                       itemAction(item).value});
  }
  return entries;
}

// ---- Checks ----

template <typename Check, typename Value>
Answer Calls::check(const Function& function, Check ask, const std::string& key, Value value) {
  Answer answer = make(function, key, [&] { return ask(key.c_str(), value) ? 1 : 0; });
  require(function.isLocked || answer.result == 1, answer,
          "a check of another kind of value is true");
  return required(std::move(answer));
}

Answer Calls::isVisibleInt(const std::string& key) {
  return check(function("check_visibility_int"), exports_.check_visibility_int, key, 1);
}

Answer Calls::isVisibleString(const std::string& key) {
  return check(function("check_visibility_string"), exports_.check_visibility_string, key, "1");
}

Answer Calls::isVisibleDouble(const std::string& key) {
  return check(function("check_visibility_double"), exports_.check_visibility_double, key, 1.0);
}

Answer Calls::isVisibleBool(const std::string& key) {
  return check(function("check_visibility_bool"), exports_.check_visibility_bool, key, true);
}

Answer Calls::isEnabledInt(const std::string& key) {
  return check(function("check_enable_int"), exports_.check_enable_int, key, 1);
}

Answer Calls::isEnabledString(const std::string& key) {
  return check(function("check_enable_string"), exports_.check_enable_string, key, "1");
}

Answer Calls::isEnabledDouble(const std::string& key) {
  return check(function("check_enable_double"), exports_.check_enable_double, key, 1.0);
}

Answer Calls::isEnabledBool(const std::string& key) {
  return check(function("check_enable_bool"), exports_.check_enable_bool, key, true);
}

void Calls::otherChecks(const std::string& key) {
  isVisibleString(key);
  isVisibleDouble(key);
  isVisibleBool(key);
  isEnabledString(key);
  isEnabledDouble(key);
  isEnabledBool(key);
}

// ---- The provider itself ----

Answer Calls::createProvider() {
  data_provider_cbs* table = &tableBefore;
  Answer answer =
      make(function("create_provider"), "", [&] { return exports_.create_provider(&table); });
  answer.untouched = table == &tableBefore;
  if (answer.hasRaised()) return required(std::move(answer));
  require(answer.result == 0 && !answer.untouched && table != nullptr, answer, "gives a table");
  if (answer.untouched || table == nullptr) return answer;
  answer.table = table;
  answer.held = Held([this, table] {
    data_provider_cbs* given = table;
    deleteProvider(&given);
  });
  requireBlock(answer, table, sizeof(data_provider_cbs));
  require(table_ == nullptr || std::memcmp(table, table_, sizeof(data_provider_cbs)) == 0, answer,
          "every table has the same functions");
  return required(std::move(answer));
}

Answer Calls::deleteProvider(data_provider_cbs** table) {
  data_provider_cbs* const before = table != nullptr ? *table : nullptr;
  Answer answer =
      make(function("delete_provider"), "", [&] { return exports_.delete_provider(table); });
  answer.untouched = table == nullptr || *table == before;
  require(answer.untouched, answer, "the pointer to a table that is taken back keeps its value");
  require(answer.hasRaised() || answer.result == (table == nullptr ? 1 : 0), answer,
          "a table that is taken back gives 0, null gives 1");
  return required(std::move(answer));
}

void Calls::nulls() {
  freeListItems(nullptr, 3);
  itemDisplayValue({});
  itemIntValue({});
  itemAction({});
  deleteProvider(nullptr);
  releaseString(nullptr);
}

}  // namespace contract
