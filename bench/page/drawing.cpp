#include "drawing.h"

#include <clocale>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "common.h"
#include "platform/host/network_service.h"

using contract::Provider;

namespace {

struct MenuItem {
  std::string key;
  bool hasValue;
  std::string listKey;  // empty if it has no list
};

// The region with the longer branch is "us".
void collect(const Json::Value& items, std::vector<MenuItem>& all) {
  for (const Json::Value& item : items) {
    if (item["region"] == "other") continue;
    const std::string key = item["key"].asString();
    const bool hasValue = item["kind"] == "choice" || item["kind"] == "device-name";
    all.push_back({key, hasValue, hasValue ? key : item["states"].asString()});
    collect(item["items"], all);
  }
}

std::vector<MenuItem> readMenu() {
  std::ifstream file(MENU);
  Json::Value menu;
  file >> menu;
  std::vector<MenuItem> all;
  collect(menu["items"], all);
  return all;
}

class Drawing {
 public:
  explicit Drawing(const Provider& provider)
      : exports_(provider.exports()), table_(provider.table()) {}

  void drawItem(const MenuItem& item) {
    const char* key = item.key.c_str();
    called(exports_.check_visibility_int(key, 0));
    called(exports_.check_enable_int(key, 0));
    text(key, table_.get_display_name);
    text(key, table_.get_help_text);
    if (item.hasValue) drawValue(key);
    text(key, table_.get_title_icon_path);
    text(key, table_.get_second_icon_path);
    if (!item.listKey.empty()) drawList(item.listKey.c_str());
  }

  int calls() const { return calls_; }

 private:
  void drawValue(const char* key) {
    int value = 0;
    called(table_.get_int(key, &value));
    text(key, table_.get_string);
    char current[VENTARO_CURRENT_VALUE_SIZE] = "";
    char* buffer = current;
    called(table_.get_current_value_sid(key, &buffer));
  }

  void drawList(const char* key) {
    int count = 0;
    auto** items = const_cast<void**>(called(table_.get_list_items(key, &count)));
    for (int i = 0; i < count; ++i) {
      char* text = nullptr;
      int value = 0;
      ITEM_FOLLOWING_ACTION_TYPE action = ITEM_FOLLOWING_ACTION_NONE;
      called(table_.get_list_item_display_value(items[i], &text));
      called(table_.get_list_item_int_value(items[i], &value));
      called(table_.get_list_item_following_action_type(items[i], &action));
    }
    called(table_.free_list_items(items, count));
  }

  void text(const char* key, int (*callback)(const char* key, char** value)) {
    char* value = nullptr;
    called(callback(key, &value));
    called(table_.release_string(value));
  }

  template <typename Result>
  Result called(Result result) {
    ++calls_;
    return result;
  }

  const contract::Exports& exports_;
  const data_provider_cbs& table_;
  int calls_ = 0;
};

}  // namespace

int draw(const Provider& provider) {
  static const std::vector<MenuItem> kMenu = readMenu();
  Drawing drawing(provider);
  for (const MenuItem& item : kMenu) drawing.drawItem(item);
  return drawing.calls();
}

std::unique_ptr<Provider> loadProvider(const char* file) {
  std::setlocale(LC_ALL, "C.UTF-8");
  setenv("LANGUAGE", "en", 1);
  platform::host::openNetwork();
  return std::make_unique<Provider>(file);
}
