#include "drawing.h"

#include <clocale>
#include <cstdlib>
#include <cstring>

using contract::Provider;

namespace {

struct MenuItem {
  const char* key;
  bool hasValue = false;
  const char* listKey = nullptr;
};

constexpr MenuItem choice(const char* key) {
  return {key, true, key};
}

// The branch of menu/menu.json, in the region that has the longer one.
constexpr MenuItem kItems[] = {
    {"menu/general/network"},
    {"menu/network/networkstatus"},
    {"menu/network/networksettings"},
    {"menu/network/SavedAP1", false, "SAVEDAP1_NAME_KEY"},
    {"menu/network/SavedAP2", false, "SAVEDAP2_NAME_KEY"},
    choice("menu/network/WiFiOnOff"),
    choice("menu/network/MobileDeviceTV_US"),
    choice("menu/network/devicename"),
    {"menu/network/expertsettings"},
    choice("menu/network/expertsettings/wifidirect"),
    {"menu/network/expertsettings/easyconnect"},
    choice("menu/network/WiredEAP"),
    {"menu/network/InstallCertificate"},
    {"menu/network/CertificateList"},
    {"menu/network/CertificateManager"},
    {"menu/network/ResetNetwork"},
};

class Drawing {
 public:
  Drawing(const Provider& provider, const Receiver& receiver)
      : provider_(provider), table_(provider.table()), receiver_(receiver) {}

  int draw() {
    for (const MenuItem& item : kItems) drawItem(item);
    return calls_;
  }

 private:
  using TextCallback = int (*)(const char* key, char** value);

  void drawItem(const MenuItem& item) {
    key_ = item.key;
    got("visible", called(provider_.exports().check_visibility_int(key_, 0)));
    got("enabled", called(provider_.exports().check_enable_int(key_, 0)));
    text("name", table_.get_display_name);
    text("help", table_.get_help_text);
    if (item.hasValue) drawValue();
    text("titleIcon", table_.get_title_icon_path);
    text("statusIcon", table_.get_second_icon_path);
    if (item.listKey != nullptr) drawList(item.listKey);
  }

  void drawValue() {
    int value = 0;
    called(table_.get_int(key_, &value));
    got("position", value);
    text("value", table_.get_string);
    char current[VENTARO_CURRENT_VALUE_SIZE] = "";
    char* buffer = current;
    called(table_.get_current_value_sid(key_, &buffer));
    got("current", current);
  }

  void drawList(const char* listKey) {
    int count = 0;
    auto** items = const_cast<void**>(called(table_.get_list_items(listKey, &count)));
    for (int i = 0; i < count; ++i) drawEntry(items[i]);
    called(table_.free_list_items(items, count));
  }

  void drawEntry(void* entry) {
    char* text = nullptr;
    int value = 0;
    ITEM_FOLLOWING_ACTION_TYPE action = ITEM_FOLLOWING_ACTION_NONE;
    called(table_.get_list_item_display_value(entry, &text));
    called(table_.get_list_item_int_value(entry, &value));
    called(table_.get_list_item_following_action_type(entry, &action));
    got("entry", text != nullptr ? text : "");
    got("entry value", value);
    got("entry action", action);
  }

  void text(const char* name, TextCallback callback) {
    char* value = nullptr;
    called(callback(key_, &value));
    got(name, value != nullptr ? value : "");
    called(table_.release_string(value));
  }

  template <typename Result>
  Result called(Result result) {
    ++calls_;
    return result;
  }

  void got(const char* name, int value) {
    if (receiver_) receiver_(key_, name, std::to_string(value));
  }
  void got(const char* name, const char* value) {
    if (receiver_) receiver_(key_, name, value);
  }

  const Provider& provider_;
  const data_provider_cbs& table_;
  const Receiver& receiver_;
  const char* key_ = nullptr;
  int calls_ = 0;
};

}  // namespace

int draw(const Provider& provider, const Receiver& receiver) {
  return Drawing(provider, receiver).draw();
}

std::unique_ptr<Provider> loadProvider(const char* file) {
  std::setlocale(LC_ALL, "C.UTF-8");
  setenv("LANGUAGE", "en", 1);
  platform::host::openNetwork();
  return std::make_unique<Provider>(file);
}
