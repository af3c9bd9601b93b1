#include "provider.h"

#include <dlfcn.h>
#include <libintl.h>

#include <algorithm>
#include <cstring>
#include <type_traits>
#include <utility>

#include "display_text.h"
#include "platform/host/visible_text.h"

namespace menu {

namespace {

// As call(), for a slot of the table. Nothing when the slot is null.
template <typename Result, typename... Parameters>
std::optional<Result> callSlot(const char* name, Result (*slot)(Parameters...),
                               std::type_identity_t<Parameters>... arguments) {
  if (slot == nullptr) return std::nullopt;
  return call(name, slot, arguments...);
}

}  // namespace

void Provider::CloseLibrary::operator()(void* library) const {
  dlclose(library);
}

Provider::Provider(const std::string& file, std::string textDomain)
    : file_(file), textDomain_(std::move(textDomain)) {
  library_.reset(dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL));
  if (library_ == nullptr) throw LoadError("cannot load the provider: " + std::string(dlerror()));
  exports_ = {symbol<decltype(exports_.create)>("create_provider"),
              symbol<decltype(exports_.destroy)>("delete_provider"),
              symbol<decltype(exports_.isVisible)>("check_visibility_int"),
              symbol<decltype(exports_.isEnabled)>("check_enable_int")};
  call("create_provider", exports_.create, &table_);
  if (table_ == nullptr) throw LoadError(file + ": create_provider gave no table");
}

Provider::~Provider() {
  exports_.destroy(&table_);
}

template <typename Function>
Function Provider::symbol(const char* name) const {
  void* found = find(name);
  if (found == nullptr) throw LoadError(file_ + " is no data provider: it has no " + name);
  return reinterpret_cast<Function>(found);
}

void* Provider::find(const char* name) const {
  return dlsym(library_.get(), name);
}

std::string Provider::takeText(char* text) const {
  if (text == nullptr) return {};
  std::string copy = platform::host::validText(text);
  callSlot("release_string", table_->release_string, text);
  return copy;
}

std::string Provider::text(const char* callback, int (*function)(const char*, char**),
                           const std::string& key) const {
  char* value = nullptr;
  callSlot(callback, function, key.c_str(), &value);
  return takeText(value);
}

std::string Provider::displayName(const std::string& key) const {
  return text("get_display_name", table_->get_display_name, key);
}

std::optional<std::string> Provider::stringValue(const std::string& key) const {
  char* value = nullptr;
  callSlot("get_string", table_->get_string, key.c_str(), &value);
  if (value == nullptr) return std::nullopt;
  return takeText(value);
}

std::optional<int> Provider::intValue(const std::string& key) const {
  int value = 0;
  const auto result = callSlot("get_int", table_->get_int, key.c_str(), &value);
  return result.value_or(-1) == -1 ? std::nullopt : std::optional(value);
}

std::optional<int> Provider::setInt(const std::string& key, int value) const {
  return callSlot("set_int", table_->set_int, key.c_str(), value);
}

std::optional<int> Provider::setString(const std::string& key, const std::string& value) const {
  return callSlot("set_string", table_->set_string, key.c_str(), value.c_str());
}

std::string Provider::statusIcon(const std::string& key) const {
  return text("get_second_icon_path", table_->get_second_icon_path, key);
}

std::string Provider::helpText(const std::string& key) const {
  return text("get_help_text", table_->get_help_text, key);
}

std::string Provider::titleIcon(const std::string& key) const {
  return text("get_title_icon_path", table_->get_title_icon_path, key);
}

std::optional<Provider::MessageBox> Provider::messageBox(const std::string& key) const {
  char text[VENTARO_MESSAGE_TEXT_SIZE] = {};
  char first[VENTARO_MESSAGE_BUTTON_SIZE] = {};
  char second[VENTARO_MESSAGE_BUTTON_SIZE] = {};
  int type = 0;
  const auto result = callSlot("get_messagebox_info", table_->get_messagebox_info, key.c_str(),
                               text, first, second, &type);
  if (!result) return std::nullopt;
  using platform::host::validText;
  return MessageBox{validText(text), validText(first), validText(second), type};
}

// An entry may be a string ID, which the menu has to look up in the provider's text domain.
std::string Provider::translated(std::string_view text) const {
  const std::string sid(text);
  const bool isLookedUp = !textDomain_.empty() && text.starts_with("SID_");
  return isLookedUp ? dgettext(textDomain_.c_str(), sid.c_str()) : sid;
}

Provider::ListEntry Provider::entry(void* item, int position) const {
  char* text = nullptr;
  ListEntry entry{{}, position, ITEM_FOLLOWING_ACTION_NONE};
  callSlot("get_list_item_display_value", table_->get_list_item_display_value, item, &text);
  callSlot("get_list_item_int_value", table_->get_list_item_int_value, item, &entry.value);
  callSlot("get_list_item_following_action_type", table_->get_list_item_following_action_type, item,
           &entry.action);
  // The list owns the text, which has no NUL when it fills its block.
  const std::string_view bytes(text != nullptr ? text : "",
                               text != nullptr ? strnlen(text, VENTARO_LIST_TEXT_SIZE) : 0);
  entry.text = platform::host::validText(markupToText(translated(bytes)));
  return entry;
}

std::vector<Provider::ListEntry> Provider::list(const std::string& key) const {
  int count = 0;
  auto** items = const_cast<void**>(
      callSlot("get_list_items", table_->get_list_items, key.c_str(), &count).value_or(nullptr));
  if (items == nullptr) return {};
  const auto giveBack = [&](void** list) {
    if (table_->free_list_items != nullptr) table_->free_list_items(list, count);
  };
  const std::unique_ptr<void*, decltype(giveBack)> owned(items, giveBack);
  std::vector<ListEntry> entries;
  entries.reserve(static_cast<std::size_t>(std::max(count, 0)));
  for (int i = 0; i < count; ++i) entries.push_back(entry(items[i], i));
  return entries;
}

bool Provider::isVisible(const std::string& key) const {
  return call("check_visibility_int", exports_.isVisible, key.c_str(), 0);
}

bool Provider::isEnabled(const std::string& key) const {
  return call("check_enable_int", exports_.isEnabled, key.c_str(), 0);
}

}  // namespace menu
