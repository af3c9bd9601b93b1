#include "cases.h"

#include <dlfcn.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "allocations.h"
#include "floor.h"

namespace {

constexpr std::size_t kTextBlock = 2048;
constexpr std::size_t kListText = 256;

constexpr char kDeviceName[] = "Living Room TV";
constexpr char kSavedNetworks[] =
    R"({"count":2,"values":[{"SSID":"Attic 6E","STATUS":"Connected","SIGNAL_STRENGTH":-52},)"
    R"({"SSID":"Garden Shed","STATUS":"Disconnected","SIGNAL_STRENGTH":-78}]})";
constexpr char kMultiView[] = R"({"end":{"style":"FULL"},"status":"PostCondition"})";

// What a drawing of the page asks about a key; it is composed as that of bench/page/drawing.cpp.
enum class OnPage {
  kNo,
  kRow,     // checks, texts and icons
  kChoice,  // these, its value and its list
  kStates,  // the list of a saved network's states only
};

// What the floor has to know of an item.
struct Item {
  const char* key;
  OnPage page;
  floor_item value;
  floor_name name;
  const char* nameSid;
  std::function<int(const char* key, char** value)> help;
  int network = -1;  // its position, for a saved network

  bool isRow() const { return page == OnPage::kRow || page == OnPage::kChoice; }
  bool isChoice() const { return page == OnPage::kChoice; }
  bool hasStates() const { return page == OnPage::kStates; }
};

// A list's entry, as the provider makes it and the floor.
struct Record {
  char* text;
  int value;
  ITEM_FOLLOWING_ACTION_TYPE action;
};

auto help(floor_help kind, const char* sid = nullptr, const char* second = nullptr) {
  return [=](const char* key, char** value) {
    return floor_get_help_text(key, value, kind, sid, second);
  };
}

auto productHelp(bool asksType, bool namesDevice, const char* sid) {
  return [=](const char* key, char** value) {
    return floor_get_product_help(key, value, asksType, namesDevice, sid);
  };
}

const std::vector<Item>& items() {
  static const std::vector<Item> kItems = {
      {"menu/general/network", OnPage::kRow, FLOOR_NAME, FLOOR_PLAIN, "COM_SID_NETWORK",
       productHelp(true, false, "TV_SID_SYSTEM_42683_CONFIGURE_TV_NETWORK")},
      {"menu/network/networkstatus", OnPage::kRow, FLOOR_NAME, FLOOR_PLAIN, "TV_SID_NETWORK_STATUS",
       help(FLOOR_HELP_PLAIN, "COM_SID_VIEW_CURRENT_NETWORK_INTERNET_STATUS")},
      {"menu/network/networksettings", OnPage::kRow, FLOOR_NAME, FLOOR_PLAIN,
       "TV_SID_NETWORK_SETTINGS",
       help(FLOOR_HELP_PLAIN, "TV_SID_CONFIGURE_NETWORK_SETTINGS_CONNECT_AVAIL")},
      {"menu/network/ResetNetwork", OnPage::kRow, FLOOR_NAME, FLOOR_RESET,
       "TV_SID_SYSTEM_RESET_NETWORK",
       help(FLOOR_HELP_PLAIN, "TV_SID_SYSTEM_RESTORE_NETWORK_SETTINGS_DEFAULT")},
      {"menu/network/WiFiOnOff", OnPage::kChoice, FLOOR_WIFI, FLOOR_PLAIN, "COM_WI_FI",
       help(FLOOR_HELP_PLAIN, "TV_SID_SETTINGS_CANOV_ENABLE_DISABLE_WIFI_OPTION")},
      {"menu/network/SavedAP1", OnPage::kRow, FLOOR_NAME, FLOOR_PLAIN, nullptr,
       help(FLOOR_HELP_UNKNOWN), 0},
      {"menu/network/SavedAP2", OnPage::kRow, FLOOR_NAME, FLOOR_PLAIN, nullptr,
       help(FLOOR_HELP_UNKNOWN), 1},
      {"menu/network/expertsettings", OnPage::kRow, FLOOR_NAME, FLOOR_EXPERT,
       "TV_SID_EXPERT_SETTINGS",
       help(FLOOR_HELP_PLAIN, "TV_SID_CONFIGURE_ADVANCED_NETWORK_SETTINGS")},
      {"menu/network/expertsettings/wifidirect", OnPage::kChoice, FLOOR_DIRECT, FLOOR_PLAIN,
       "COM_WI_FI_DIRECT",
       help(FLOOR_HELP_FEATURES, "TV_SID_SETTINGS_MIX_CBOCT_USE_SOME_SERVICE_WIFI_DIRECT_TURN_ON")},
      {"menu/network/expertsettings/easyconnect", OnPage::kRow, FLOOR_NAME, FLOOR_PLAIN,
       "TV_SID_MENU_EASY_CONNECTION",
       productHelp(false, true, "PJT_SID_MENU_TEMP_SET_TV_WIFI_MOBILE_CONNECT")},
      {"menu/network/WiredEAP", OnPage::kChoice, FLOOR_WIRED, FLOOR_PLAIN,
       "COM_SID_CM_CADEC_WIRED_802_1X_CONNECTION",
       help(FLOOR_HELP_PLAIN, "COM_SID_CM_CADEC_ENALBE_OPTION_WIRED802")},
      {"menu/network/MobileDeviceTV_US", OnPage::kChoice, FLOOR_MOBILE, FLOOR_PLAIN,
       "TV_SID_SYSTEM_POWER_ON_WITH_MOBILE",
       productHelp(true, true, "PJT_SID_SYSTEM_ALLOW_MOBILE_SMARTPHONE_TABLET_TV")},
      {"menu/network/MobileDeviceTV_NOT_US", OnPage::kNo, FLOOR_NAME, FLOOR_PLAIN,
       "TV_SID_SYSTEM_POWER_ON_WITH_MOBILE",
       productHelp(true, true, "PJT_SID_SYSTEM_ALLOW_MOBILE_SMARTPHONE_TABLET_TV")},
      {"menu/network/devicename", OnPage::kChoice, FLOOR_NAME, FLOOR_PLAIN, "COM_TV_DEVICE_NAME",
       productHelp(true, false, "COM_SID_CHANGE_TV_DEVICE_NAME_MOBILE_NETWORK")},
      {"menu/network/devicename/selectdevicename", OnPage::kNo, FLOOR_NAME, FLOOR_PLAIN,
       "COM_TV_DEVICE_NAME",
       productHelp(true, false, "COM_SID_CHANGE_TV_DEVICE_NAME_MOBILE_NETWORK")},
      {"menu/network/InstallCertificate", OnPage::kRow, FLOOR_NAME, FLOOR_PLAIN,
       "COM_SID_NETWORK_INSTALL_CERTIFICATE",
       help(FLOOR_HELP_PLAIN, "COM_SID_NETWORK_CONNECT_USB_CERTI_DEVICE")},
      {"menu/network/CertificateList", OnPage::kRow, FLOOR_NAME, FLOOR_PLAIN,
       "COM_SID_SIGNAGE_CDFEB_NETWORK_CERTIFICATE",
       help(FLOOR_HELP_TWO_LINES, "COM_SID_SIGNAGE_CDFEB_VIEW_AND_MANAGE_NW_CERTIFICATE_DEVICE",
            "COM_SID_NETWORK_CONNECT_USB_CERTI_DEVICE")},
      {"menu/network/CertificateManager", OnPage::kRow, FLOOR_NAME, FLOOR_PLAIN,
       "COM_SID_NETWORK_CETIFICATE_MANAGER",
       help(FLOOR_HELP_PLAIN, "COM_SID_NETWORK_MANGE_CERTI_INSTALLED_DEVICE")},
      {"SAVEDAP1_NAME_KEY", OnPage::kStates, FLOOR_NAME, FLOOR_UNKNOWN, nullptr,
       help(FLOOR_HELP_UNKNOWN)},
      {"SAVEDAP2_NAME_KEY", OnPage::kStates, FLOOR_NAME, FLOOR_UNKNOWN, nullptr,
       help(FLOOR_HELP_UNKNOWN)},
      {"menu/picture/brightness", OnPage::kNo, FLOOR_NAME, FLOOR_UNKNOWN, nullptr,
       help(FLOOR_HELP_UNKNOWN)},
  };
  return kItems;
}

stand_in::Answers withText(const char* text) {
  stand_in::Answers answers;
  answers.text = text;
  return answers;
}

class CaseList {
 public:
  explicit CaseList(const Provider& provider) : provider_(provider), table_(provider.table()) {}

  std::vector<Case> all() {
    for (const Item& item : items()) addItem(item);
    addValuesOfOtherTypes();
    addListEntries();
    addRest();
    addOtherStates();
    return std::move(cases_);
  }

 private:
  void add(const char* function, const std::string& key, const char* answer, int perPage,
           Call provider, Call floor, Call prepare = nullptr) {
    cases_.push_back({function, key, withText(answer), std::move(provider), std::move(floor),
                      perPage, std::move(prepare)});
  }

  // A case once more, for a state that no page has. The caller sets its answers.
  Case& addAgain(std::string_view function, std::string_view key, const std::string& state) {
    Case other = *std::ranges::find_if(
        cases_, [&](const Case& each) { return each.function == function && each.key == key; });
    other.key += " (" + state + ")";
    other.callsPerPage = 0;
    return cases_.emplace_back(std::move(other));
  }

  // A callback that hands a text out.
  template <typename Floor>
  void addText(const char* function, const char* key, const char* answer, int perPage,
               int (*provider)(const char*, char**), Floor floor) {
    add(
        function, key, answer, perPage,
        [=](Outputs& outputs) { outputs.result = provider(key, &outputs.text); },
        [=](Outputs& outputs) { outputs.result = floor(key, &outputs.text); });
  }

  template <typename Floor>
  void addCheck(const char* function, const Item& item, const char* answer, Floor floor) {
    auto* provider = provider_.function<bool(const char*, int)>(function);
    const char* key = item.key;
    add(
        function, key, answer, item.isRow() ? 1 : 0,
        [=](Outputs& outputs) { outputs.result = provider(key, 0) ? 1 : 0; },
        [=](Outputs& outputs) { outputs.result = floor(key, 0) ? 1 : 0; });
  }

  void addItem(const Item& item) {
    addTexts(item);
    addValues(item);
    addIcons(item);
    addList(item);
    addChecks(item);
  }

  void addTexts(const Item& item) {
    const char* key = item.key;
    const int perPage = item.isRow() ? 1 : 0;
    if (item.network >= 0) {
      addText("get_display_name", key, kSavedNetworks, perPage, table_.get_display_name,
              [position = item.network](const char* asked, char** value) {
                return floor_get_network_name(asked, value, position);
              });
    } else {
      addText("get_display_name", key, nullptr, perPage, table_.get_display_name,
              [name = item.name, sid = item.nameSid](const char* asked, char** value) {
                return floor_get_display_name(asked, value, name, sid);
              });
    }
    addText("get_help_text", key, "en_US", perPage, table_.get_help_text, item.help);
    addText("get_string", key, kDeviceName, item.isChoice() ? 1 : 0, table_.get_string,
            [value = item.value](const char* asked, char** text) {
              return floor_get_string(asked, text, value);
            });
  }

  void addValues(const Item& item) {
    const char* key = item.key;
    const int perPage = item.isChoice() ? 1 : 0;
    const floor_item value = item.value;
    const int position = item.network;
    const int wanted = value == FLOOR_NAME ? 0 : 1;
    add(
        "get_int", key, kDeviceName, perPage,
        [=, call = table_.get_int](Outputs& outputs) {
          outputs.number = -2;
          outputs.result = call(key, &outputs.number);
        },
        [=](Outputs& outputs) {
          outputs.number = -2;
          outputs.result = floor_get_int(key, &outputs.number, value);
        });
    add(
        "set_int", key, position >= 0 ? kSavedNetworks : nullptr, 0,
        [=, call = table_.set_int](Outputs& outputs) { outputs.result = call(key, wanted); },
        [=](Outputs& outputs) {
          outputs.result = position >= 0 ? floor_connect(key, wanted, position)
                                         : floor_set_int(key, wanted, value);
        });
    add(
        "set_string", key, nullptr, 0,
        [=, call = table_.set_string](Outputs& outputs) {
          outputs.result = call(key, kDeviceName);
        },
        [=](Outputs& outputs) { outputs.result = floor_set_string(key, kDeviceName); });
    add(
        "get_current_value_sid", key, kDeviceName, perPage,
        [=, call = table_.get_current_value_sid](Outputs& outputs) {
          char* buffer = outputs.value.data();
          outputs.result = call(key, &buffer);
        },
        [=](Outputs& outputs) {
          char* buffer = outputs.value.data();
          outputs.result = floor_get_current_value_sid(key, &buffer);
        });
  }

  void addIcons(const Item& item) {
    const int perPage = item.isRow() ? 1 : 0;
    addText("get_title_icon_path", item.key, kSavedNetworks, perPage, table_.get_title_icon_path,
            [position = item.network](const char* key, char** path) {
              return floor_get_title_icon_path(key, path, position);
            });
    addText("get_second_icon_path", item.key, kSavedNetworks, perPage, table_.get_second_icon_path,
            [position = item.network == 0 ? 0 : 1](const char* key, char** path) {
              return floor_get_second_icon_path(key, path, position);
            });
  }

  void addList(const Item& item) {
    const char* key = item.key;
    const bool hasStates = item.hasStates();
    const floor_item value = item.value;
    add(
        "get_list_items", key, nullptr, hasStates || item.isChoice() ? 1 : 0,
        [=, call = table_.get_list_items](Outputs& outputs) {
          outputs.items = call(key, &outputs.number);
        },
        [=](Outputs& outputs) {
          outputs.items = hasStates ? floor_get_state_items(key, &outputs.number)
                                    : floor_get_list_items(key, &outputs.number, value);
        });
  }

  void addChecks(const Item& item) {
    addCheck("check_visibility_int", item, nullptr, floor_check_visibility_int);
    if (item.network >= 0) {
      addCheck("check_enable_int", item, kSavedNetworks,
               [position = item.network](const char* key, int value) {
                 return floor_check_enable_network(key, value, position);
               });
    } else if (std::string_view(item.key) == "menu/network/devicename") {
      addCheck("check_enable_int", item, kMultiView, floor_check_enable_name);
    } else {
      addCheck("check_enable_int", item, nullptr, floor_check_enable_int);
    }
  }

  template <typename Value>
  void addOther(const char* function, Value value, bool (*floor)(const char*, Value)) {
    const char* key = items().front().key;
    auto* provider = provider_.function<bool(const char*, Value)>(function);
    add(
        function, key, nullptr, 0,
        [=](Outputs& outputs) { outputs.result = provider(key, value) ? 1 : 0; },
        [=](Outputs& outputs) { outputs.result = floor(key, value) ? 1 : 0; });
  }

  void addValuesOfOtherTypes() {
    addOther<const char*>("check_visibility_string", "", floor_check_visibility_string);
    addOther<double>("check_visibility_double", 0.5, floor_check_visibility_double);
    addOther<bool>("check_visibility_bool", false, floor_check_visibility_bool);
    addOther<const char*>("check_enable_string", "", floor_check_enable_string);
    addOther<double>("check_enable_double", 0.5, floor_check_enable_double);
    addOther<bool>("check_enable_bool", false, floor_check_enable_bool);
  }

  // An entry of a list of the provider's own; its records look like the floor's.
  void addListEntries() {
    int count = 0;
    void* item = const_cast<void*>(table_.get_list_items("menu/network/WiFiOnOff", &count)[1]);
    const int perPage = 2 * countOf(&Item::isChoice) + 3 * countOf(&Item::hasStates);
    add(
        "get_list_item_display_value", "", nullptr, perPage,
        [=, call = table_.get_list_item_display_value](Outputs& outputs) {
          char* text = nullptr;
          outputs.result = call(item, &text);
          outputs.number = text[0];
        },
        [=](Outputs& outputs) {
          char* text = nullptr;
          outputs.result = floor_get_list_item_display_value(item, &text);
          outputs.number = text[0];
        });
    add(
        "get_list_item_int_value", "", nullptr, perPage,
        [=, call = table_.get_list_item_int_value](Outputs& outputs) {
          outputs.result = call(item, &outputs.number);
        },
        [=](Outputs& outputs) {
          outputs.result = floor_get_list_item_int_value(item, &outputs.number);
        });
    add(
        "get_list_item_following_action_type", "", nullptr, perPage,
        [=, call = table_.get_list_item_following_action_type](Outputs& outputs) {
          auto action = ITEM_FOLLOWING_ACTION_NONE;
          outputs.result = call(item, &action);
          outputs.number = action;
        },
        [=](Outputs& outputs) {
          auto action = ITEM_FOLLOWING_ACTION_NONE;
          outputs.result = floor_get_list_item_following_action_type(item, &action);
          outputs.number = action;
        });
  }

  void addRest() {
    addGivingBack();
    for (const auto& [key, text] : {std::pair{"provider/owner", "ventarodevs"},
                                    {"provider/main-component", "TP_ConnectivityApp"},
                                    {"provider/sub-component", "TP_NetworkSettings"},
                                    {"provider/other", nullptr}}) {
      addText("get_module_info", key, nullptr, 0, table_.get_module_info,
              [text = text](const char* asked, char** value) {
                return floor_get_module_info(asked, value, text);
              });
    }
    addBox();
    auto* create = provider_.function<int(data_provider_cbs**)>("create_provider");
    add(
        "create_provider", "", nullptr, 0,
        [=](Outputs& outputs) { outputs.result = create(&outputs.table); },
        [table = &table_](Outputs& outputs) {
          outputs.result = floor_create_provider(&outputs.table, table);
        });
  }

  // What is given back is made before, and is no cost of the call.
  void addGivingBack() {
    addRelease("a text block", 4 * countOf(&Item::isRow), [](Outputs& outputs) {
      outputs.text = static_cast<char*>(std::calloc(1, kTextBlock));
      std::strcpy(outputs.text, kDeviceName);
    });
    addRelease("a copy", countOf(&Item::isChoice),
               [](Outputs& outputs) { outputs.text = strdup(kDeviceName); });
    addFree("of a choice", countOf(&Item::isChoice), 2, kListText);
    addFree("of states", countOf(&Item::hasStates), 3, kTextBlock);
    auto* destroy = provider_.function<int(data_provider_cbs**)>("delete_provider");
    add(
        "delete_provider", "", nullptr, 0,
        [=](Outputs& outputs) {
          auto* table = std::exchange(outputs.table, nullptr);
          outputs.result = destroy(&table);
        },
        [](Outputs& outputs) {
          auto* table = std::exchange(outputs.table, nullptr);
          outputs.result = floor_delete_provider(&table);
        },
        [](Outputs& outputs) {
          outputs.table = static_cast<data_provider_cbs*>(std::malloc(sizeof(data_provider_cbs)));
        });
  }

  void addRelease(const char* name, int perPage, Call makeText) {
    add(
        "release_string", name, nullptr, perPage,
        [call = table_.release_string](Outputs& outputs) {
          outputs.result = call(std::exchange(outputs.text, nullptr));
        },
        [](Outputs& outputs) {
          outputs.result = floor_release_string(std::exchange(outputs.text, nullptr));
        },
        std::move(makeText));
  }

  void addFree(const char* name, int perPage, int count, std::size_t textSize) {
    add(
        "free_list_items", name, nullptr, perPage,
        [call = table_.free_list_items](Outputs& outputs) {
          outputs.result = call(takenList(outputs), outputs.number);
        },
        [](Outputs& outputs) {
          outputs.result = floor_free_list_items(takenList(outputs), outputs.number);
        },
        [=](Outputs& outputs) {
          outputs.items = newList(count, textSize);
          outputs.number = count;
        });
  }

  static void** takenList(Outputs& outputs) {
    return const_cast<void**>(std::exchange(outputs.items, nullptr));
  }

  static const void** newList(int count, std::size_t textSize) {
    auto** list = static_cast<const void**>(std::malloc(count * sizeof(void*)));
    for (int i = 0; i < count; ++i) {
      auto* record = static_cast<Record*>(std::malloc(sizeof(Record)));
      *record = {static_cast<char*>(std::calloc(1, textSize)), i, ITEM_FOLLOWING_ACTION_NONE};
      list[i] = record;
    }
    return list;
  }

  void addBox() {
    const char* key = "menu/network/WiFiOnOff";
    const auto call = [key](auto function, Outputs& outputs) {
      outputs.message[0] = outputs.first[0] = outputs.second[0] = '\0';
      outputs.result = function(key, outputs.message.data(), outputs.first.data(),
                                outputs.second.data(), &outputs.number);
    };
    add(
        "get_messagebox_info", key, nullptr, 0,
        [=, function = table_.get_messagebox_info](Outputs& outputs) { call(function, outputs); },
        [=](Outputs& outputs) { call(floor_get_messagebox_info, outputs); });
  }

  void addOtherStates() {
    const char* business = "a business product";
    addAgain("check_visibility_int", "menu/general/network", business).answers.isBusiness = true;
    addAgain("check_enable_int", "menu/network/devicename", business).answers.isBusiness = true;
    for (const char* function : {"get_int", "get_string"}) {
      addAgain(function, "menu/network/expertsettings/wifidirect", "5 GHz").answers.frequencyMhz =
          5180;
    }
  }

  static int countOf(bool (Item::*is)() const) {
    return static_cast<int>(std::ranges::count_if(items(), is));
  }

  const Provider& provider_;
  const data_provider_cbs& table_;
  std::vector<Case> cases_;
};

std::string byteOf(char byte) {
  const auto value = static_cast<unsigned char>(byte);
  if (std::isprint(value) != 0) return std::string(1, byte);
  return std::string("\\").append(std::to_string(value));
}

// A long run of one byte stands once, with how often.
std::string bytesOf(const void* start, std::size_t size) {
  constexpr std::size_t kLongRun = 5;
  const std::string_view bytes(static_cast<const char*>(start), size);
  std::string all = std::to_string(size) + ":";
  for (std::size_t i = 0; i < size;) {
    const std::size_t run = std::min(bytes.find_first_not_of(bytes[i], i), size) - i;
    const bool isLong = run >= kLongRun;
    all += byteOf(bytes[i]);
    if (isLong) all.append("{").append(std::to_string(run)).append("}");
    i += isLong ? run : 1;
  }
  return all;
}

std::string blockOf(const void* block) {
  return block != nullptr ? bytesOf(block, blockSize(block)) : "none";
}

std::string recordOf(const void* item) {
  const auto& record = *static_cast<const Record*>(item);
  return std::to_string(blockSize(item)) + " of " + std::to_string(record.value) + " " +
         std::to_string(record.action) + " " + blockOf(record.text);
}

template <std::size_t size>
std::string bufferOf(const std::array<char, size>& buffer) {
  return bytesOf(buffer.data(), size);
}

}  // namespace

void Outputs::fillBuffers() {
  value.fill('~');
  message.fill('~');
  first.fill('~');
  second.fill('~');
}

std::string Outputs::shown() const {
  std::string all = std::to_string(result) + " " + std::to_string(number);
  for (const std::string& part : {blockOf(text), blockOf(table), bufferOf(value), bufferOf(message),
                                  bufferOf(first), bufferOf(second)}) {
    all += "\n  " + part;
  }
  if (items != nullptr) all += "\n  list of " + std::to_string(blockSize(items));
  for (int i = 0; items != nullptr && i < number; ++i) all += "\n  " + recordOf(items[i]);
  return all;
}

void Outputs::giveBack() {
  std::free(std::exchange(text, nullptr));
  std::free(std::exchange(table, nullptr));
  for (int i = 0; items != nullptr && i < number; ++i) {
    auto* record = static_cast<Record*>(const_cast<void*>(items[i]));
    std::free(record->text);
    std::free(record);
  }
  std::free(const_cast<void*>(static_cast<const void*>(std::exchange(items, nullptr))));
}

Provider::Provider(const char* file) {
  stand_in::answers = withText(kDeviceName);
  library_ = dlopen(file, RTLD_NOW);
  if (library_ == nullptr) throw std::runtime_error(dlerror());
  function<int(data_provider_cbs**)>("create_provider")(&table_);
  floor_start();
  // Wired 802.1X can only be set once its list was asked for.
  Outputs list;
  list.items = table_->get_list_items("menu/network/WiredEAP", &list.number);
  list.giveBack();
}

void* Provider::find(const char* name) const {
  void* function = dlsym(library_, name);
  if (function == nullptr) throw std::runtime_error(dlerror());
  return function;
}

std::vector<Case> allCases(const Provider& provider) {
  return CaseList(provider).all();
}
