// The callbacks of option lists. The setting objects provide the entries' texts; this file makes
// records of them.
#include "callbacks/list_item.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "c_heap.h"
#include "callbacks/callbacks.h"
#include "items.h"
#include "log.h"
#include "settings/on_off_list.h"

namespace {

constexpr const char* kStateTexts[] = {"disconnected", "loading", "connected"};
constexpr std::size_t kStateCount = 3;
constexpr std::size_t kRecordCount = 2;

// The framework sees a record only as an address.
using Records = CArray<ListItem, ListItemDeleter>;

const void** handedOut(Records& records) {
  return const_cast<const void**>(reinterpret_cast<void**>(records.release()));
}

// Records with the values 0, 1, ..., still without texts.
void fill(Records& records) {
  for (std::size_t i = 0; i < records.size(); ++i) {
    records[i] = newZeroed<ListItem>();
    records[i]->intValue = static_cast<int>(i);
  }
}

using PrintableText = char[VENTARO_LIST_TEXT_SIZE + 1];

// A list text as the log may print it: one that fills its block has no NUL, so it is copied into
// `copy` and terminated there.
const char* printable(const char* text, PrintableText& copy) {
  if (text == nullptr || std::memchr(text, '\0', VENTARO_LIST_TEXT_SIZE) != nullptr) return text;
  copyText(copy, sizeof(copy), {text, VENTARO_LIST_TEXT_SIZE});
  return copy;
}

// The states of a saved network; both networks have the same. Without memory for the array, the
// list is null instead of an exception: the ABI promises it.
const void** stateRecords(int* count) {
  Records records(kStateCount, std::nothrow);
  if (!records.isNull()) {
    fill(records);
    for (std::size_t i = 0; i < kStateCount; ++i) {
      records[i]->displayValue = newZeroed<char>(VENTARO_TEXT_SIZE);
      copyText(records[i]->displayValue, VENTARO_TEXT_SIZE, kStateTexts[i]);
    }
  }
  *count = kStateCount;
  return handedOut(records);
}

void logTexts(Records& records) {
  PrintableText firstCopy;
  PrintableText secondCopy;
  const char* first = printable(records[0]->displayValue, firstCopy);
  const char* second = printable(records[1]->displayValue, secondCopy);
  // Each text is logged twice: readers of the log expect it.
  LOG_MAIN("pDisplayValue[0]=%s::%s", first, first);
  LOG_MAIN("pDisplayValue[1]=%s::%s", second, second);
}

// Always two records: if the device-name list has one entry, the second has no text.
const void** settingRecords(const Setting& setting, const char* key, int* count) {
  Records records(kRecordCount);
  fill(records);
  int textCount = 0;
  const std::unique_ptr<const char*[], FreeDeleter> texts(setting.listTexts(key, &textCount));
  const std::size_t filled = std::min(static_cast<std::size_t>(textCount), kRecordCount);
  for (std::size_t i = 0; i < filled; ++i) records[i]->displayValue = const_cast<char*>(texts[i]);
  records[0]->followingActionType = setting.firstAction;
  records[1]->followingActionType = setting.secondAction();
  if (setting.logsListTexts) logTexts(records);
  *count = textCount;
  return handedOut(records);
}

const void** get_list_items(const char* key, int* count) {
  const ProviderLock lock(ProviderMutex);
  LOG_MAIN("START");
  LOG_MAIN("Key ---->%s::\n", key);
  const Setting& setting = itemOf(key).setting;
  if (setting.listTexts == nullptr) return stateRecords(count);
  return settingRecords(setting, key, count);
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
    ListItemDeleter()(static_cast<ListItem*>(items[i]));
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
