#include "cases.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "contract/provider.h"

namespace {

constexpr char kDeviceName[] = "Living Room TV";
constexpr char kDeviceNameKey[] = "menu/network/devicename";
constexpr char kSavedNetworks[] =
    R"({"count":2,"values":[{"SSID":"Attic 6E","STATUS":"Connected","SIGNAL_STRENGTH":-52},)"
    R"({"SSID":"Garden Shed","STATUS":"Disconnected","SIGNAL_STRENGTH":-78}]})";
constexpr char kMultiView[] = R"({"end":{"style":"FULL"},"status":"PostCondition"})";

constexpr char kGivesText[] = "int @(const char*, char** text)";

// What drawing a page asks about a key, as in bench/page/drawing.cpp.
enum class OnPage {
  kNo,
  kRow,      // checks, texts and icons
  kNetwork,  // these, for a saved network
  kChoice,   // these, the value and the list
  kStates,   // only the list of a saved network's states
};

struct Item {
  const char* key;
  OnPage page = OnPage::kRow;

  bool isRow() const { return page != OnPage::kNo && page != OnPage::kStates; }
  bool isChoice() const { return page == OnPage::kChoice; }
  bool hasStates() const { return page == OnPage::kStates; }
  bool isNetwork() const { return page == OnPage::kNetwork; }
  bool isDeviceName() const { return std::string_view(key) == kDeviceNameKey; }
};

constexpr Item kItems[] = {{"menu/general/network"},
                           {"menu/network/networkstatus"},
                           {"menu/network/networksettings"},
                           {"menu/network/ResetNetwork"},
                           {"menu/network/WiFiOnOff", OnPage::kChoice},
                           {"menu/network/SavedAP1", OnPage::kNetwork},
                           {"menu/network/SavedAP2", OnPage::kNetwork},
                           {"menu/network/expertsettings"},
                           {"menu/network/expertsettings/wifidirect", OnPage::kChoice},
                           {"menu/network/expertsettings/easyconnect"},
                           {"menu/network/WiredEAP", OnPage::kChoice},
                           {"menu/network/MobileDeviceTV_US", OnPage::kChoice},
                           {"menu/network/MobileDeviceTV_NOT_US", OnPage::kNo},
                           {kDeviceNameKey, OnPage::kChoice},
                           {"menu/network/devicename/selectdevicename", OnPage::kNo},
                           {"menu/network/InstallCertificate"},
                           {"menu/network/CertificateList"},
                           {"menu/network/CertificateManager"},
                           {"SAVEDAP1_NAME_KEY", OnPage::kStates},
                           {"SAVEDAP2_NAME_KEY", OnPage::kStates},
                           {"menu/picture/brightness", OnPage::kNo}};

const contract::Provider* provider = nullptr;

int countOf(bool (Item::*is)() const) {
  return static_cast<int>(std::ranges::count_if(kItems, is));
}

template <typename Symbol>
Symbol* find(void* library, const char* name) {
  void* found = dlsym(library, name);
  if (found == nullptr) throw std::runtime_error(dlerror());
  return static_cast<Symbol*>(found);
}

class CaseList {
 public:
  explicit CaseList(const contract::Provider& provider)
      : exports_(provider.exports()), table_(provider.table()) {}

  std::vector<Case> all() {
    for (const Item& item : kItems) addItem(item);
    addValuesOfOtherTypes();
    addListEntries();
    addGivingBack();
    addRest();
    addOtherStates();
    return std::move(cases_);
  }

 private:
  // `call` calls the given function, which has the provider function's type.
  template <typename Callback, typename Action>
  Case& add(const char* function, const std::string& key, const char* prototype, Callback* provider,
            Action call) {
    const auto callAny = [=](Function any, Outputs& outputs) {
      call(reinterpret_cast<Callback*>(any), outputs);
    };
    return cases_.emplace_back(
        Case{function, key, prototype, callAny, reinterpret_cast<Function>(provider)});
  }

  // The same case for a state that no page shows.
  stand_in::Answers& addAgain(std::string_view function, std::string_view key, const char* state) {
    Case other = *std::ranges::find_if(
        cases_, [&](const Case& each) { return each.function == function && each.key == key; });
    other.key.append(" (").append(state).append(")");
    other.callsPerPage = 0;
    return cases_.emplace_back(std::move(other)).answers;
  }

  void addText(const char* function, const char* key, const char* answer, bool isOnPage,
               int (*provider)(const char*, char**)) {
    Case& added = add(function, key, kGivesText, provider, [=](auto* call, Outputs& outputs) {
      outputs.result = call(key, &outputs.text);
    });
    added.answers.text = answer;
    added.callsPerPage = isOnPage ? 1 : 0;
  }

  template <typename Value>
  Case& addCheck(const char* function, const char* key, const char* prototype,
                 bool (*provider)(const char*, Value), Value value) {
    return add(function, key, prototype, provider,
               [=](auto* call, Outputs& outputs) { outputs.result = call(key, value) ? 1 : 0; });
  }

  void addItem(const Item& item) {
    const char* key = item.key;
    const char* networks = item.isNetwork() ? kSavedNetworks : nullptr;
    addText("get_display_name", key, networks, item.isRow(), table_.get_display_name);
    addText("get_help_text", key, "en_US", item.isRow(), table_.get_help_text);
    addText("get_string", key, kDeviceName, item.isChoice(), table_.get_string);
    addValues(item);
    addText("get_title_icon_path", key, kSavedNetworks, item.isRow(), table_.get_title_icon_path);
    addText("get_second_icon_path", key, kSavedNetworks, item.isRow(), table_.get_second_icon_path);
    Case& list = add(
        "get_list_items", key, "const void** @(const char*, int* number)", table_.get_list_items,
        [=](auto* call, Outputs& outputs) { outputs.items = call(key, &outputs.number); });
    list.callsPerPage = item.hasStates() || item.isChoice() ? 1 : 0;
    for (const auto& [function, provider] :
         {std::pair{"check_visibility_int", exports_.check_visibility_int},
          {"check_enable_int", exports_.check_enable_int}}) {
      Case& check = addCheck(function, key, "bool @(const char*, int)", provider, 0);
      check.callsPerPage = item.isRow() ? 1 : 0;
      check.answers.text = item.isDeviceName() ? kMultiView : networks;
    }
  }

  void addValues(const Item& item) {
    const char* key = item.key;
    Case& get = add("get_int", key, "int @(const char*, int* number)", table_.get_int,
                    [=](auto* call, Outputs& outputs) {
                      outputs.number = -2;
                      outputs.result = call(key, &outputs.number);
                    });
    get.callsPerPage = item.isChoice() ? 1 : 0;
    get.answers.text = kDeviceName;
    const int wanted = item.isChoice() && !item.isDeviceName() ? 1 : 0;
    Case& set = add("set_int", key, "int @(const char*, int)", table_.set_int,
                    [=](auto* call, Outputs& outputs) { outputs.result = call(key, wanted); });
    set.answers.text = item.isNetwork() ? kSavedNetworks : nullptr;
    add("set_string", key, "int @(const char*, const char*)", table_.set_string,
        [=](auto* call, Outputs& outputs) { outputs.result = call(key, kDeviceName); });
    Case& current = add("get_current_value_sid", key, "int @(const char*, char** value)",
                        table_.get_current_value_sid, [=](auto* call, Outputs& outputs) {
                          char* buffer = outputs.value.data();
                          outputs.result = call(key, &buffer);
                        });
    current.callsPerPage = get.callsPerPage;
    current.answers.text = kDeviceName;
  }

  void addValuesOfOtherTypes() {
    const char* key = kItems[0].key;
    const char* ofString = "bool @(const char*, const char*)";
    const char* ofDouble = "bool @(const char*, double)";
    const char* ofBool = "bool @(const char*, bool)";
    addCheck("check_visibility_string", key, ofString, exports_.check_visibility_string, "");
    addCheck("check_visibility_double", key, ofDouble, exports_.check_visibility_double, 0.5);
    addCheck("check_visibility_bool", key, ofBool, exports_.check_visibility_bool, false);
    addCheck("check_enable_string", key, ofString, exports_.check_enable_string, "");
    addCheck("check_enable_double", key, ofDouble, exports_.check_enable_double, 0.5);
    addCheck("check_enable_bool", key, ofBool, exports_.check_enable_bool, false);
  }

  // An entry of a list from the provider itself.
  void addListEntries() {
    int count = 0;
    void* item = const_cast<void*>(table_.get_list_items("menu/network/WiFiOnOff", &count)[1]);
    const std::size_t first = cases_.size();
    add("get_list_item_display_value", "", "int @(void*, const char** word)",
        table_.get_list_item_display_value, [=](auto* call, Outputs& outputs) {
          char* text = nullptr;
          outputs.result = call(item, &text);
          outputs.word = text;
        });
    add("get_list_item_int_value", "", "int @(void*, int* number)", table_.get_list_item_int_value,
        [=](auto* call, Outputs& outputs) { outputs.result = call(item, &outputs.number); });
    add("get_list_item_following_action_type", "", "int @(void*, int* number)",
        table_.get_list_item_following_action_type, [=](auto* call, Outputs& outputs) {
          auto action = ITEM_FOLLOWING_ACTION_NONE;
          outputs.result = call(item, &action);
          outputs.number = action;
        });
    for (std::size_t i = first; i < cases_.size(); ++i) {
      cases_[i].callsPerPage = 2 * countOf(&Item::isChoice) + 3 * countOf(&Item::hasStates);
    }
  }

  // The object to be returned is made beforehand, so it does not count towards the call.
  void addGivingBack() {
    addRelease("a text block", 4 * countOf(&Item::isRow), [](Outputs& outputs) {
      outputs.text = static_cast<char*>(std::calloc(1, VENTARO_TEXT_SIZE));
      std::memcpy(outputs.text, kDeviceName, sizeof(kDeviceName));
    });
    addRelease("a copy", countOf(&Item::isChoice),
               [](Outputs& outputs) { outputs.text = strdup(kDeviceName); });
    addFree("of a choice", countOf(&Item::isChoice), 2, VENTARO_LIST_TEXT_SIZE);
    addFree("of states", countOf(&Item::hasStates), 3, VENTARO_TEXT_SIZE);
    Case& last = add("delete_provider", "", "int @(data_provider_cbs** table)",
                     exports_.delete_provider, [](auto* call, Outputs& outputs) {
                       auto* table = std::exchange(outputs.table, nullptr);
                       outputs.result = call(&table);
                     });
    last.prepare = [](Outputs& outputs) {
      outputs.table = static_cast<data_provider_cbs*>(std::malloc(sizeof(data_provider_cbs)));
    };
  }

  template <typename Make>
  void addRelease(const char* name, int callsPerPage, Make makeText) {
    Case& release = add("release_string", name, "int @(char* text)", table_.release_string,
                        [](auto* call, Outputs& outputs) {
                          outputs.result = call(std::exchange(outputs.text, nullptr));
                        });
    release.callsPerPage = callsPerPage;
    release.prepare = makeText;
  }

  void addFree(const char* name, int callsPerPage, int count, std::size_t textSize) {
    Case& release = add("free_list_items", name, "int @(void** items, int)", table_.free_list_items,
                        [](auto* call, Outputs& outputs) {
                          auto** list = const_cast<void**>(std::exchange(outputs.items, nullptr));
                          outputs.result = call(list, outputs.number);
                        });
    release.callsPerPage = callsPerPage;
    release.prepare = [=](Outputs& outputs) {
      outputs.items = static_cast<const void**>(std::malloc(count * sizeof(void*)));
      outputs.number = count;
      for (int i = 0; i < count; ++i) {
        auto* entry = static_cast<ListEntry*>(std::malloc(sizeof(ListEntry)));
        *entry = {static_cast<char*>(std::calloc(1, textSize)), i, ITEM_FOLLOWING_ACTION_NONE};
        outputs.items[i] = entry;
      }
    };
  }

  void addRest() {
    for (const char* key : {"provider/owner", "provider/main-component", "provider/sub-component",
                            "provider/other"}) {
      addText("get_module_info", key, nullptr, false, table_.get_module_info);
    }
    const char* key = "menu/network/WiFiOnOff";
    add("get_messagebox_info", key,
        "int @(const char*, char* message, char* first, char* second, int* number)",
        table_.get_messagebox_info, [=](auto* call, Outputs& outputs) {
          outputs.message[0] = outputs.first[0] = outputs.second[0] = '\0';
          outputs.result = call(key, outputs.message.data(), outputs.first.data(),
                                outputs.second.data(), &outputs.number);
        });
    add("create_provider", "", "int @(data_provider_cbs** table)", exports_.create_provider,
        [](auto* call, Outputs& outputs) { outputs.result = call(&outputs.table); });
  }

  void addOtherStates() {
    const char* business = "a business product";
    addAgain("check_visibility_int", "menu/general/network", business).isBusiness = true;
    addAgain("check_enable_int", kDeviceNameKey, business).isBusiness = true;
    for (const char* function : {"get_int", "get_string"}) {
      addAgain(function, "menu/network/expertsettings/wifidirect", "5 GHz").frequencyMhz = 5180;
    }
  }

  const contract::Exports& exports_;
  const data_provider_cbs& table_;
  std::vector<Case> cases_;
};

}  // namespace

ListEntry* Outputs::entry(int index) const {
  return static_cast<ListEntry*>(const_cast<void*>(items[index]));
}

void Outputs::giveBack() {
  std::free(std::exchange(text, nullptr));
  std::free(std::exchange(table, nullptr));
  for (int i = 0; items != nullptr && i < number; ++i) {
    std::free(entry(i)->text);
    std::free(entry(i));
  }
  std::free(const_cast<void*>(static_cast<const void*>(std::exchange(items, nullptr))));
}

void Case::callOnce(Function side, Outputs& outputs) const {
  if (prepare) prepare(outputs);
  call(side, outputs);
  outputs.giveBack();
}

std::vector<Case> loadCases(const char* file) {
  stand_in::answers.text = kDeviceName;
  provider = new contract::Provider(file);
  // Wired 802.1X can only be set after its list was requested.
  Outputs list;
  list.items = provider->table().get_list_items(VENTARO_KEY_WIRED_EAP, &list.number);
  list.giveBack();
  return CaseList(*provider).all();
}

void loadFloors(const char* file, std::vector<Case>& cases) {
  void* library = dlopen(file, RTLD_NOW);
  if (library == nullptr) throw std::runtime_error(dlerror());
  *find<const data_provider_cbs*>(library, "providersTable") = &provider->table();
  auto* floors = find<Function>(library, "floors");
  for (Case& each : cases) each.floor = *floors++;
}
