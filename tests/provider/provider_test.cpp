#include "provider_test.h"

#include <cstring>
#include <ostream>

namespace {

using TextCallback = int (*)(const char* key, char** value);

OwnedText ask(TextCallback callback, const char* key) {
  OwnedText text;
  callback(key, text.out());
  return text;
}

}  // namespace

void PrintTo(const OwnedText& text, std::ostream* out) {
  *out << '"' << text.str() << '"';
}

void PrintTo(const IntAnswer& answer, std::ostream* out) {
  *out << "result " << answer.result << ", value " << answer.value;
}

OptionList::OptionList(const data_provider_cbs& table, const char* key)
    : table_(table), items_(const_cast<void**>(table.get_list_items(key, &count_))) {}

OptionList::~OptionList() {
  if (items_ != nullptr) table_.free_list_items(items_, count_);
}

const char* OptionList::rawText(int index) const {
  char* text = nullptr;
  table_.get_list_item_display_value(item(index), &text);
  return text;
}

std::string OptionList::text(int index) const {
  const char* text = rawText(index);
  if (text == nullptr) return "(null)";
  return {text, strnlen(text, VENTARO_LIST_TEXT_SIZE)};
}

int OptionList::value(int index) const {
  int value = -1;
  table_.get_list_item_int_value(item(index), &value);
  return value;
}

ITEM_FOLLOWING_ACTION_TYPE OptionList::action(int index) const {
  auto action = static_cast<ITEM_FOLLOWING_ACTION_TYPE>(3);  // none of the three
  table_.get_list_item_following_action_type(item(index), &action);
  return action;
}

void ProviderTest::SetUp() {
  reset();
  useLanguage("en");
}

void ProviderTest::TearDown() {
  clearHooks();  // they may refer to the finished test's variables
  unload();
  EXPECT_EQ(logMistakes(), std::vector<std::string>());
  reset();
}

void ProviderTest::load() {
  library_.emplace(VENTARO_PROVIDER);
}

void ProviderTest::create() {
  if (!library_) load();
  ASSERT_EQ(entries().create_provider(&table_), 0);
  clearJournal();
}

void ProviderTest::unload() {
  if (!library_) return;
  if (table_ != nullptr) entries().delete_provider(&table_);
  table_ = nullptr;
  EXPECT_NO_THROW(library_->unload());
  library_.reset();
  EXPECT_EQ(runningTimers(), 0);
}

OwnedText ProviderTest::displayName(const char* key) const {
  return ask(table().get_display_name, key);
}

OwnedText ProviderTest::helpText(const char* key) const {
  return ask(table().get_help_text, key);
}

OwnedText ProviderTest::stringValue(const char* key) const {
  return ask(table().get_string, key);
}

OwnedText ProviderTest::titleIcon(const char* key) const {
  return ask(table().get_title_icon_path, key);
}

OwnedText ProviderTest::secondIcon(const char* key) const {
  return ask(table().get_second_icon_path, key);
}

OwnedText ProviderTest::moduleInfo(const char* key) const {
  return ask(table().get_module_info, key);
}

IntAnswer ProviderTest::getInt(const char* key, int preset) const {
  int value = preset;
  const int result = table().get_int(key, &value);
  return {result, value};
}
