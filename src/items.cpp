#include "items.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>

#include "composed_texts.h"
#include "conditions.h"
#include "globals.h"
#include "log.h"

namespace {

void putMobileDeviceTV(char** text) {
  CMobileDeviceTVObj.setOnOffStatus(text);
  LOG_MAIN("CMobileDeviceTVObj.setOnOffStatus==%s", *text);
}

void putWiFiOnOff(char** text) {
  CWiFiOnOffObj.setOnOffStatus(text);
  LOG_MAIN("CWiFiOnOffObj.setOnOffStatus==%s", *text);
}

void putWiFiDirect(char** text) {
  CWiFiDirectObj.setOnOffStatus(text);
  LOG_MAIN("CWiFiDirectObj.setOnOffStatus==%s", *text);
}

void putWiredEAP(char** text) {
  CWiredEAPObj.setOnOffStatus(text);
  LOG_MAIN("CWiredEAPObj.setOnOffStatus==%s", *text);
}

template <ITEM_FOLLOWING_ACTION_TYPE action>
ITEM_FOLLOWING_ACTION_TYPE always() {
  return action;
}

// Switching Wi-Fi off always asks first. Switching it on costs power, so it asks only on products
// under the energy regulation.
ITEM_FOLLOWING_ACTION_TYPE askUnderRegulation() {
  return IsWiFiON() ? ITEM_FOLLOWING_ACTION_MESSAGE_BOX : ITEM_FOLLOWING_ACTION_NONE;
}

// A setting whose integer value and option list come from an object.
template <auto& object>
constexpr Setting keptBy(void (*putText)(char** text), ITEM_FOLLOWING_ACTION_TYPE firstAction,
                         ITEM_FOLLOWING_ACTION_TYPE (*secondAction)(), bool logsListTexts = false) {
  return {.getInt = [](const char* key, int* value) { return object.getInt(key, value); },
          .setInt = [](const char* key, int value) { return object.setInt(key, value); },
          .putText = putText,
          .listTexts = [](const char* key, int* count) { return object.getListItems(key, count); },
          .firstAction = firstAction,
          .secondAction = secondAction,
          .logsListTexts = logsListTexts};
}

constexpr auto kNothing = ITEM_FOLLOWING_ACTION_NONE;
constexpr auto kRefresh = ITEM_FOLLOWING_ACTION_REFRESH;
constexpr auto kMessageBox = ITEM_FOLLOWING_ACTION_MESSAGE_BOX;

constexpr Setting kPowerOnWithMobile =
    keptBy<CMobileDeviceTVObj>(putMobileDeviceTV, kNothing, always<kMessageBox>);
constexpr Setting kWifi = keptBy<CWiFiOnOffObj>(putWiFiOnOff, kMessageBox, askUnderRegulation);
constexpr Setting kWifiDirect = keptBy<CWiFiDirectObj>(putWiFiDirect, kRefresh, always<kRefresh>);
constexpr Setting kWiredEap = keptBy<CWiredEAPObj>(putWiredEAP, kRefresh, always<kRefresh>, true);

}  // namespace

constexpr Setting kDeviceNameSetting =
    keptBy<devicenameInterface>(nullptr, kNothing, always<kRefresh>);

namespace {

constexpr Setting kSavedNetworkStates = {.getInt = kDeviceNameSetting.getInt,
                                         .setInt = kDeviceNameSetting.setInt};

// Called before the reset item is named. The result has no effect: the name is the same on every
// product.
bool IsProductTypeLFD() {
  LOG_MAIN("START");
  return false;
}

void askProductType(const char* /*askedKey*/) {
  IsProductTypeLFD();
}

void logExpertSettings(const char* askedKey) {
  LOG_MAIN("-expertsettings ->%s\n", askedKey);
}

// The order matters: a key that is a prefix of several keys gets the texts of the first of them.
constexpr Item kItems[] = {
    {.key = VENTARO_KEY_SAVED_NETWORK_1, .savedNetwork = 1},
    {.key = VENTARO_KEY_SAVED_NETWORK_2, .savedNetwork = 2},
    {.key = VENTARO_KEY_NETWORK, .name = "COM_SID_NETWORK", .help = writeNetworkHelp},
    {.key = VENTARO_KEY_NETWORK_STATUS,
     .name = "TV_SID_NETWORK_STATUS",
     .help = "COM_SID_VIEW_CURRENT_NETWORK_INTERNET_STATUS"},
    {.key = VENTARO_KEY_NETWORK_SETTINGS,
     .name = "TV_SID_NETWORK_SETTINGS",
     .help = "TV_SID_CONFIGURE_NETWORK_SETTINGS_CONNECT_AVAIL"},
    {.key = VENTARO_KEY_POWER_ON_WITH_MOBILE_US,
     .name = "TV_SID_SYSTEM_POWER_ON_WITH_MOBILE",
     .help = writePowerOnWithMobileHelp,
     .setting = kPowerOnWithMobile},
    // Shown, but no switch.
    {.key = VENTARO_KEY_POWER_ON_WITH_MOBILE_NOT_US,
     .name = "TV_SID_SYSTEM_POWER_ON_WITH_MOBILE",
     .help = writePowerOnWithMobileHelp},
    {.key = VENTARO_KEY_RESET_NETWORK,
     .name = "TV_SID_SYSTEM_RESET_NETWORK",
     .beforeName = askProductType,
     .help = "TV_SID_SYSTEM_RESTORE_NETWORK_SETTINGS_DEFAULT"},
    {.key = VENTARO_KEY_INSTALL_CERTIFICATE,
     .name = "COM_SID_NETWORK_INSTALL_CERTIFICATE",
     .help = "COM_SID_NETWORK_CONNECT_USB_CERTI_DEVICE"},
    {.key = VENTARO_KEY_CERTIFICATE_LIST,
     .name = "COM_SID_SIGNAGE_CDFEB_NETWORK_CERTIFICATE",
     .help = writeCertificateListHelp},
    {.key = VENTARO_KEY_CERTIFICATE_MANAGER,
     .name = "COM_SID_NETWORK_CETIFICATE_MANAGER",
     .help = "COM_SID_NETWORK_MANGE_CERTI_INSTALLED_DEVICE"},
    {.key = VENTARO_KEY_SELECT_DEVICE_NAME,
     .name = "COM_TV_DEVICE_NAME",
     .help = writeDeviceNameHelp},
    // It has no texts of its own: being a prefix of the key above, it gets that key's texts.
    {.key = VENTARO_KEY_DEVICE_NAME, .isEnabled = mayChangeDeviceName},
    {.key = VENTARO_KEY_EXPERT_SETTINGS,
     .name = "TV_SID_EXPERT_SETTINGS",
     .beforeName = logExpertSettings,
     .help = "TV_SID_CONFIGURE_ADVANCED_NETWORK_SETTINGS"},
    {.key = VENTARO_KEY_EASY_CONNECTION,
     .name = "TV_SID_MENU_EASY_CONNECTION",
     .help = writeEasyConnectionHelp},
    {.key = VENTARO_KEY_WIFI,
     .name = "COM_WI_FI",
     .help = "TV_SID_SETTINGS_CANOV_ENABLE_DISABLE_WIFI_OPTION",
     .setting = kWifi},
    {.key = VENTARO_KEY_WIFI_DIRECT,
     .name = "COM_WI_FI_DIRECT",
     .help = writeWifiDirectHelp,
     .setting = kWifiDirect},
    {.key = VENTARO_KEY_WIRED_EAP,
     .name = "COM_SID_CM_CADEC_WIRED_802_1X_CONNECTION",
     .help = "COM_SID_CM_CADEC_ENALBE_OPTION_WIRED802",
     .setting = kWiredEap,
     .needsWholeKey = true},
    {.key = VENTARO_KEY_SAVED_NETWORK_1_STATES, .setting = kSavedNetworkStates},
    {.key = VENTARO_KEY_SAVED_NETWORK_2_STATES, .setting = kSavedNetworkStates},
    // For every other key.
    {.key = ""},
};

constexpr std::size_t kAnyOtherKey = std::size(kItems) - 1;

// Finds rows by a key's length and two of its characters, weighted so that no two keys share a
// slot. The keys of the networks' states differ in the middle one.
class RowTable {
 public:
  consteval RowTable() {
    while (!givesEachRowItsSlot()) ++weights_;
  }

  std::size_t rowOf(std::string_view key) const {
    if (key.empty()) return kAnyOtherKey;
    const std::size_t row = rows_[slotOf(key)];
    const std::string_view found = kItems[row].key;
    const bool isKey =
        found.size() == key.size() && std::memcmp(found.data(), key.data(), key.size()) == 0;
    return isKey ? row : kAnyOtherKey;
  }

 private:
  static constexpr unsigned kSlots = 64;

  constexpr unsigned slotOf(std::string_view key) const {
    const auto last = static_cast<unsigned char>(key.back());
    const auto middle = static_cast<unsigned char>(key[key.size() * 7 / 16]);
    return (static_cast<unsigned>(key.size()) + last * (weights_ % kSlots) +
            middle * (weights_ / kSlots)) %
           kSlots;
  }

  constexpr bool givesEachRowItsSlot() {
    rows_.fill(kAnyOtherKey);
    for (std::uint8_t row = 0; row < kAnyOtherKey; ++row) {
      std::uint8_t& slot = rows_[slotOf(kItems[row].key)];
      if (slot != kAnyOtherKey) return false;
      slot = row;
    }
    return true;
  }

  unsigned weights_ = 0;
  std::array<std::uint8_t, kSlots> rows_{};
};

constexpr RowTable kRowTable;

using HasText = bool (Item::*)() const;

// The row whose text a key gets: the first row whose key equals it or begins with it, otherwise the
// last row.
template <HasText hasText>
constexpr std::size_t rowWithTextOf(std::string_view key) {
  const auto gives = [&](const Item& item) {
    return (item.*hasText)() && item.key.starts_with(key) &&
           (!item.needsWholeKey || item.key == key);
  };
  const Item* item = std::ranges::find_if(kItems, gives);
  return std::min(static_cast<std::size_t>(item - kItems), kAnyOtherKey);
}

// The results for the keys of all rows.
template <HasText hasText>
constexpr auto kRowsWithText = [] {
  std::array<std::uint8_t, std::size(kItems)> rows{};
  std::ranges::transform(kItems, rows.begin(), [](const Item& item) {
    return static_cast<std::uint8_t>(rowWithTextOf<hasText>(item.key));
  });
  return rows;
}();

template <HasText hasText>
const Item& itemWithTextOf(std::string_view key) {
  const std::size_t row = kRowTable.rowOf(key);
  return kItems[row != kAnyOtherKey ? kRowsWithText<hasText>[row] : rowWithTextOf<hasText>(key)];
}

}  // namespace

const Item& itemOf(std::string_view key) {
  return kItems[kRowTable.rowOf(key)];
}

const Item& itemWithNameOf(std::string_view key) {
  return itemWithTextOf<&Item::hasName>(key);
}

const Item& itemWithHelpOf(std::string_view key) {
  return itemWithTextOf<&Item::hasHelp>(key);
}
