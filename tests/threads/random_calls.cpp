#include "random_calls.h"

#include <json/value.h>

#include <cstring>
#include <iterator>
#include <string_view>

namespace provider_calls {

namespace {

constexpr char kWifi[] = "menu/network/WiFiOnOff";
constexpr char kWifiDirect[] = "menu/network/expertsettings/wifidirect";
constexpr char kWiredEap[] = "menu/network/WiredEAP";
constexpr char kPowerOnWithMobile[] = "menu/network/MobileDeviceTV_US";

constexpr const char* kSettings[] = {kWifi, kWifiDirect, kWiredEap, kPowerOnWithMobile};
constexpr const char* kSavedNetworks[] = {"menu/network/SavedAP1", "menu/network/SavedAP2"};
constexpr const char* kSavedNetworkStates[] = {"SAVEDAP1_NAME_KEY", "SAVEDAP2_NAME_KEY"};

// All keys of the menu, and some that there are not.
constexpr const char* kKeys[] = {
    "menu/general/network",
    "menu/network/networkstatus",
    "menu/network/networksettings",
    "menu/network/ResetNetwork",
    kWifi,
    kSavedNetworks[0],
    kSavedNetworks[1],
    kSavedNetworkStates[0],
    kSavedNetworkStates[1],
    "menu/network/expertsettings",
    kWifiDirect,
    "menu/network/expertsettings/easyconnect",
    kWiredEap,
    kPowerOnWithMobile,
    "menu/network/MobileDeviceTV_NOT_US",
    "menu/network/devicename",
    "menu/network/devicename/selectdevicename",
    "menu/network/InstallCertificate",
    "menu/network/CertificateList",
    "menu/network/CertificateManager",
    "no/such/key",
    "menu/network/",
    "",
};

constexpr const char* kModuleInfos[] = {"provider/owner", "provider/main-component",
                                        "provider/sub-component"};

// The functions whose contract is to raise when the saved-network document has a wrong shape.
constexpr const char* kReadDocument[] = {"set_int", "get_display_name", "get_title_icon_path",
                                         "get_second_icon_path", "check_enable_int"};

constexpr std::size_t kListTextSize = 256;

template <std::size_t size>
bool isOneOf(const char* key, const char* const (&keys)[size]) {
  for (const char* each : keys) {
    if (std::strcmp(key, each) == 0) return true;
  }
  return false;
}

// A leading part of a saved network's key is answered with that network's name.
bool namesASavedNetwork(const char* key) {
  return std::strncmp(key, kSavedNetworks[0], std::strlen(key)) == 0 ||
         isOneOf(key, kSavedNetworks);
}

std::string released(const Provider& provider, char* text) {
  std::string copy = text;
  provider.table().release_string(text);
  return copy;
}

}  // namespace

const char* const kFunctions[27] = {
    "create_provider",
    "delete_provider",
    "check_visibility_int",
    "check_visibility_string",
    "check_visibility_double",
    "check_visibility_bool",
    "check_enable_int",
    "check_enable_string",
    "check_enable_double",
    "check_enable_bool",
    "set_int",
    "set_string",
    "get_int",
    "get_string",
    "release_string",
    "get_display_name",
    "get_help_text",
    "get_list_items",
    "get_list_item_display_value",
    "get_list_item_int_value",
    "get_list_item_following_action_type",
    "free_list_items",
    "get_current_value_sid",
    "get_messagebox_info",
    "get_module_info",
    "get_title_icon_path",
    "get_second_icon_path",
};

FixedTexts::FixedTexts(const Provider& provider) {
  for (const char* key : kKeys) {
    char* text = nullptr;
    if (!namesASavedNetwork(key)) {
      provider.table().get_display_name(key, &text);
      names[key] = released(provider, text);
    }
    provider.table().get_help_text(key, &text);
    helps[key] = released(provider, text);
  }
}

RandomCalls::RandomCalls(const Provider& provider, const FixedTexts& texts, Documents documents,
                         std::uint64_t seed)
    : provider_(provider), texts_(texts), documents_(documents), random_(seed) {}

void RandomCalls::callOne() {
  using Step = void (RandomCalls::*)();
  constexpr Step kSteps[] = {
      &RandomCalls::setInt,
      &RandomCalls::setString,
      &RandomCalls::getInt,
      &RandomCalls::getInt,
      &RandomCalls::getString,
      &RandomCalls::getString,
      &RandomCalls::getDisplayName,
      &RandomCalls::getDisplayName,
      &RandomCalls::getHelpText,
      &RandomCalls::getHelpText,
      &RandomCalls::getIcons,
      &RandomCalls::getModuleInfo,
      &RandomCalls::getCurrentValue,
      &RandomCalls::getMessageBox,
      &RandomCalls::useList,
      &RandomCalls::useList,
      &RandomCalls::makeTable,
      &RandomCalls::check,
      &RandomCalls::checkOfAnotherType,
      &RandomCalls::releaseNothing,
  };
  try {
    (this->*kSteps[pick(std::size(kSteps))])();
  } catch (const Json::LogicError& error) {
    require(mayRaise(), lastCalled_, std::string("raised ") + error.what());
  }
}

int RandomCalls::pick(int choices) {
  return static_cast<int>(random_() % static_cast<std::uint64_t>(choices));
}

// Every second time an item that has a value.
const char* RandomCalls::key() {
  switch (pick(4)) {
    case 0:
      return kSettings[pick(std::size(kSettings))];
    case 1:
      return kSavedNetworks[pick(std::size(kSavedNetworks))];
    default:
      return kKeys[pick(std::size(kKeys))];
  }
}

void RandomCalls::called(const char* function) {
  lastCalled_ = function;
  ++calls_[function];
  ++count_;
}

bool RandomCalls::mayRaise() const {
  return documents_ == Documents::kAnyShape && isOneOf(lastCalled_, kReadDocument);
}

void RandomCalls::require(bool holds, const char* function, const std::string& what) {
  if (!holds) throw WrongAnswer(std::string(function) + ": " + what);
}

std::string RandomCalls::text(const char* function, TextCallback callback, const char* key,
                              int result) {
  char* text = nullptr;
  called(function);
  const int answered = callback(key, &text);
  require(answered == result, function, "answered " + std::to_string(answered) + " to " + key);
  require(text != nullptr, function, std::string("gave no text for ") + key);
  std::string copy = text;
  called("release_string");
  require(provider_.table().release_string(text) == 0, "release_string", "did not take a text");
  return copy;
}

void RandomCalls::setInt() {
  const char* asked = key();
  called("set_int");
  const int result = provider_.table().set_int(asked, pick(4) - 1);
  require(result >= -1 && result <= 1, "set_int", std::to_string(result) + " from " + asked);
}

// Some names are longer than the buffers that they are read into.
void RandomCalls::setString() {
  const std::string name(static_cast<std::size_t>(pick(8) == 0 ? 3000 : 1 + pick(40)), '&');
  called("set_string");
  const int result = provider_.table().set_string(key(), name.c_str());
  require(result == 0, "set_string", "answered " + std::to_string(result));
}

void RandomCalls::getInt() {
  const char* asked = key();
  int value = 0;
  called("get_int");
  const int result = provider_.table().get_int(asked, &value);
  const bool isBoolean = isOneOf(asked, kSettings);
  require(result >= 0 && result <= 1, "get_int", std::to_string(result) + " from " + asked);
  require(value >= 0 && (value <= 1 || !isBoolean), "get_int",
          "the value " + std::to_string(value) + " for " + asked);
}

void RandomCalls::getString() {
  const char* asked = key();
  const std::string value = text("get_string", provider_.table().get_string, asked, 1);
  if (isOneOf(asked, kSettings)) {
    require(value == "On" || value == "Off", "get_string", value + " for " + asked);
  } else {
    require(!value.empty(), "get_string", "no device name");
  }
}

void RandomCalls::getDisplayName() {
  const char* asked = key();
  const std::string name = text("get_display_name", provider_.table().get_display_name, asked, 0);
  if (namesASavedNetwork(asked)) return;
  require(name == texts_.names.at(asked), "get_display_name", name + " for " + asked);
}

void RandomCalls::getHelpText() {
  const char* asked = key();
  const std::string help = text("get_help_text", provider_.table().get_help_text, asked, 0);
  require(help == texts_.helps.at(asked), "get_help_text", help + " for " + asked);
}

void RandomCalls::getIcons() {
  const std::string title =
      text("get_title_icon_path", provider_.table().get_title_icon_path, key(), 0);
  require(title.starts_with("/usr/apps/"), "get_title_icon_path", title);
  const std::string second =
      text("get_second_icon_path", provider_.table().get_second_icon_path, key(), 0);
  require(second.empty() || second == "loading" || second.starts_with("/usr/apps/"),
          "get_second_icon_path", second);
}

void RandomCalls::getModuleInfo() {
  const std::string info = text("get_module_info", provider_.table().get_module_info,
                                kModuleInfos[pick(std::size(kModuleInfos))], 0);
  require(info == "ventarodevs" || info.starts_with("TP_"), "get_module_info", info);
}

void RandomCalls::getCurrentValue() {
  char buffer[VENTARO_CURRENT_VALUE_SIZE] = "";
  char* value = buffer;
  called("get_current_value_sid");
  const int result = provider_.table().get_current_value_sid(key(), &value);
  require(result == 0 && buffer[0] != '\0', "get_current_value_sid", "no device name");
}

void RandomCalls::getMessageBox() {
  char message[VENTARO_MESSAGE_TEXT_SIZE] = "";
  char first[VENTARO_MESSAGE_BUTTON_SIZE] = "";
  char second[VENTARO_MESSAGE_BUTTON_SIZE] = "";
  int type = 0;
  called("get_messagebox_info");
  const int result = provider_.table().get_messagebox_info(key(), message, first, second, &type);
  require(result == 0 && type == 2, "get_messagebox_info", "another box");
  require(
      std::string_view(first) == "Yes" && std::string_view(second) == "No" && message[0] != '\0',
      "get_messagebox_info", std::string(message) + first + second);
}

void RandomCalls::useList() {
  const char* asked = pick(4) == 0 ? kSavedNetworkStates[pick(2)] : key();
  int count = -1;
  called("get_list_items");
  auto** items = const_cast<void**>(provider_.table().get_list_items(asked, &count));
  const int expected = isOneOf(asked, kSavedNetworkStates) ? 3 : 2;
  require(items != nullptr && count == expected, "get_list_items",
          std::to_string(count) + " entries for " + asked);
  for (int i = 0; i < count; ++i) useListItem(items[i], i);
  called("free_list_items");
  require(provider_.table().free_list_items(items, count) == 0, "free_list_items", "did not");
}

void RandomCalls::useListItem(void* item, int index) {
  char* text = nullptr;
  int value = -1;
  auto action = static_cast<ITEM_FOLLOWING_ACTION_TYPE>(3);
  called("get_list_item_display_value");
  provider_.table().get_list_item_display_value(item, &text);
  require(text != nullptr && strnlen(text, kListTextSize) > 0, "get_list_item_display_value",
          "no text");
  called("get_list_item_int_value");
  provider_.table().get_list_item_int_value(item, &value);
  require(value == index, "get_list_item_int_value", std::to_string(value));
  called("get_list_item_following_action_type");
  provider_.table().get_list_item_following_action_type(item, &action);
  require(action <= ITEM_FOLLOWING_ACTION_MESSAGE_BOX, "get_list_item_following_action_type",
          std::to_string(action));
}

void RandomCalls::makeTable() {
  data_provider_cbs* table = nullptr;
  called("create_provider");
  require(provider_.create(&table) == 0 && table != nullptr, "create_provider", "no table");
  require(table->get_int == provider_.table().get_int, "create_provider", "another table");
  called("delete_provider");
  require(provider_.destroy(&table) == 0, "delete_provider", "did not take the table");
}

void RandomCalls::check() {
  called("check_visibility_int");
  provider_.isVisibleInt(key(), 0);
  called("check_enable_int");
  provider_.isEnabledInt(key(), 0);
}

void RandomCalls::checkOfAnotherType() {
  const char* asked = key();
  called("check_visibility_string");
  called("check_visibility_double");
  called("check_visibility_bool");
  called("check_enable_string");
  called("check_enable_double");
  called("check_enable_bool");
  require(provider_.isVisibleString(asked, "1") && provider_.isVisibleDouble(asked, 1.0) &&
              provider_.isVisibleBool(asked, true) && provider_.isEnabledString(asked, "1") &&
              provider_.isEnabledDouble(asked, 1.0) && provider_.isEnabledBool(asked, true),
          "a check", "false");
}

void RandomCalls::releaseNothing() {
  called("release_string");
  require(provider_.table().release_string(nullptr) == 1, "release_string", "took nothing");
}

}  // namespace provider_calls
