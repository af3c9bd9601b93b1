#include "provider_test.h"

#include <dlfcn.h>

#include <cstring>
#include <ostream>
#include <stdexcept>

namespace {

constexpr std::size_t kListTextSize = 256;

template <typename Function>
void find(void* library, const char* name, Function& function) {
  function = reinterpret_cast<Function>(dlsym(library, name));
  if (function == nullptr) throw std::runtime_error(std::string("not exported: ") + name);
}

Exports exportsOf(void* library) {
  Exports exports{};
  find(library, "create_provider", exports.create_provider);
  find(library, "delete_provider", exports.delete_provider);
  find(library, "check_visibility_int", exports.check_visibility_int);
  find(library, "check_visibility_string", exports.check_visibility_string);
  find(library, "check_visibility_double", exports.check_visibility_double);
  find(library, "check_visibility_bool", exports.check_visibility_bool);
  find(library, "check_enable_int", exports.check_enable_int);
  find(library, "check_enable_string", exports.check_enable_string);
  find(library, "check_enable_double", exports.check_enable_double);
  find(library, "check_enable_bool", exports.check_enable_bool);
  return exports;
}

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
  return {text, strnlen(text, kListTextSize)};
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
  clearHooks();  // they may refer to what the test has left
  unload();
  EXPECT_EQ(logMistakes(), std::vector<std::string>());
  reset();
}

void ProviderTest::load() {
  library_ = dlopen(VENTARO_PROVIDER, RTLD_NOW | RTLD_LOCAL);
  if (library_ == nullptr) throw std::runtime_error(dlerror());
  exports_ = exportsOf(library_);
}

void ProviderTest::create() {
  if (library_ == nullptr) load();
  ASSERT_EQ(entries().create_provider(&table_), 0);
  clearJournal();
}

void ProviderTest::unload() {
  if (library_ == nullptr) return;
  if (table_ != nullptr) entries().delete_provider(&table_);
  table_ = nullptr;
  EXPECT_EQ(dlclose(std::exchange(library_, nullptr)), 0);
  EXPECT_EQ(dlopen(VENTARO_PROVIDER, RTLD_NOW | RTLD_NOLOAD), nullptr) << "still loaded";
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
