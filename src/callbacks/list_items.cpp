// The callbacks of option lists. The setting objects provide the entries' texts; this file makes
// records of them.
#include "callbacks/list_item.h"

#include <cstdlib>
#include <cstring>

#include "c_heap.h"
#include "callbacks/callbacks.h"
#include "items.h"
#include "log.h"
#include "settings/on_off_list.h"

namespace {

constexpr const char* kStateTexts[] = {"disconnected", "loading", "connected"};
constexpr int kStateCount = 3;
constexpr int kRecordCount = 2;

// The array for the framework, which sees a record only as an address.
void** newArray(int count) {
  return static_cast<void**>(std::calloc(static_cast<std::size_t>(count), sizeof(void*)));
}

ListItem* newRecord(char* text, int value, ITEM_FOLLOWING_ACTION_TYPE action) {
  auto* record = static_cast<ListItem*>(std::calloc(1, sizeof(ListItem)));
  *record = {text, value, action};
  return record;
}

using PrintableText = char[VENTARO_LIST_TEXT_SIZE + 1];

// A list text as the log may print it: one that fills its block has no NUL, so it is copied into
// `copy` and terminated there.
const char* printable(const char* text, PrintableText& copy) {
  if (text == nullptr || std::memchr(text, '\0', VENTARO_LIST_TEXT_SIZE) != nullptr) return text;
  copyText(copy, sizeof(copy), {text, VENTARO_LIST_TEXT_SIZE});
  return copy;
}

// The states of a saved network; both networks have the same.
void** stateRecords(int* count) {
  *count = kStateCount;
  void** records = newArray(kStateCount);
  if (records == nullptr) return nullptr;
  for (int i = 0; i < kStateCount; ++i) {
    CText text = zeroedBlock(VENTARO_TEXT_SIZE);
    copyText(text.get(), VENTARO_TEXT_SIZE, kStateTexts[i]);
    records[i] = newRecord(text.release(), i, ITEM_FOLLOWING_ACTION_NONE);
  }
  return records;
}

void logTexts(char** texts) {
  PrintableText firstCopy;
  PrintableText secondCopy;
  const char* first = printable(texts[0], firstCopy);
  const char* second = printable(texts[1], secondCopy);
  // Each text is logged twice: readers of the log expect it.
  LOG_MAIN("pDisplayValue[0]=%s::%s", first, first);
  LOG_MAIN("pDisplayValue[1]=%s::%s", second, second);
}

// Always two records: if the device-name list has one entry, the second has no text.
void** settingRecords(const Setting& setting, const char* key, int* count) {
  auto** texts = const_cast<char**>(setting.listTexts(key, count));
  void** records = newArray(kRecordCount);
  records[0] = newRecord(*count > 0 ? texts[0] : nullptr, 0, setting.firstAction);
  records[1] = newRecord(*count > 1 ? texts[1] : nullptr, 1, setting.secondAction());
  if (setting.logsListTexts) logTexts(texts);
  std::free(texts);
  return records;
}

const void** get_list_items(const char* key, int* count) {
  const ProviderLock lock(ProviderMutex);
  LOG_MAIN("START");
  LOG_MAIN("Key ---->%s::\n", key);
  const Setting& setting = itemOf(key).setting;
  void** records =
      setting.listTexts == nullptr ? stateRecords(count) : settingRecords(setting, key, count);
  return const_cast<const void**>(records);
}

int get_list_item_display_value(void* item, char** value) {
  const ProviderLock lock(ProviderMutex);
  LOG_MAIN("START");
  if (item == nullptr) return 0;
  const auto& record = *static_cast<const ListItem*>(item);
  *value = record.displayValue;
  PrintableText copy;
  // A missing text is logged as null.
  LOG_MAIN("pDisplayValue = %s::%d", printable(record.displayValue, copy), record.intValue);
  return 0;
}

int get_list_item_int_value(void* item, int* value) {
  const ProviderLock lock(ProviderMutex);
  LOG_MAIN("START");
  if (item == nullptr) {
    LOG_MAIN("Item Is NULL");
  } else {
    *value = static_cast<const ListItem*>(item)->intValue;
  }
  LOG_MAIN("END");
  return 0;
}

int get_list_item_following_action_type(void* item, ITEM_FOLLOWING_ACTION_TYPE* type) {
  const ProviderLock lock(ProviderMutex);
  LOG_MAIN("START");
  if (item != nullptr) *type = static_cast<const ListItem*>(item)->followingActionType;
  return 0;
}

int free_list_items(void** items, int count) {
  const ProviderLock lock(ProviderMutex);
  LOG_MAIN("START");
  if (items == nullptr) return 0;
  for (int i = 0; i < count; ++i) {
    auto* record = static_cast<ListItem*>(items[i]);
    if (record == nullptr) continue;
    std::free(record->displayValue);
    record->displayValue = nullptr;
    std::free(record);
    items[i] = nullptr;
  }
  std::free(items);
  return 0;
}

}  // namespace

void installListCallbacks(data_provider_cbs& table) {
  table.get_list_items = get_list_items;
  table.get_list_item_display_value = get_list_item_display_value;
  table.get_list_item_int_value = get_list_item_int_value;
  table.get_list_item_following_action_type = get_list_item_following_action_type;
  table.free_list_items = free_list_items;
}
