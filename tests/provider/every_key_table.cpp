#include "every_key_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <iterator>

namespace {

constexpr char kNetworkName[] = "COM_SID_NETWORK";
constexpr char kNetworkHelp[] = "TV_SID_SYSTEM_42683_CONFIGURE_TV_NETWORK";
constexpr char kStatusName[] = "TV_SID_NETWORK_STATUS";
constexpr char kStatusHelp[] = "COM_SID_VIEW_CURRENT_NETWORK_INTERNET_STATUS";
constexpr char kSettingsName[] = "TV_SID_NETWORK_SETTINGS";
constexpr char kSettingsHelp[] = "TV_SID_CONFIGURE_NETWORK_SETTINGS_CONNECT_AVAIL";
constexpr char kResetHelp[] = "TV_SID_SYSTEM_RESTORE_NETWORK_SETTINGS_DEFAULT";
constexpr char kWifiName[] = "COM_WI_FI";
constexpr char kWifiHelp[] = "TV_SID_SETTINGS_CANOV_ENABLE_DISABLE_WIFI_OPTION";
constexpr char kExpertHelp[] = "TV_SID_CONFIGURE_ADVANCED_NETWORK_SETTINGS";
constexpr char kDirectName[] = "COM_WI_FI_DIRECT";
constexpr char kDirectHelp[] = "TV_SID_SETTINGS_MIX_CBOCT_USE_SOME_SERVICE_WIFI_DIRECT_TURN_ON";
constexpr char kEasyName[] = "TV_SID_MENU_EASY_CONNECTION";
constexpr char kEasyHelp[] = "PJT_SID_MENU_TEMP_SET_TV_WIFI_MOBILE_CONNECT";
constexpr char kWiredName[] = "COM_SID_CM_CADEC_WIRED_802_1X_CONNECTION";
constexpr char kWiredHelp[] = "COM_SID_CM_CADEC_ENALBE_OPTION_WIRED802";
constexpr char kMobileName[] = "TV_SID_SYSTEM_POWER_ON_WITH_MOBILE";
constexpr char kMobileHelp[] = "PJT_SID_SYSTEM_ALLOW_MOBILE_SMARTPHONE_TABLET_TV";
constexpr char kDeviceName[] = "COM_TV_DEVICE_NAME";
constexpr char kDeviceHelp[] = "COM_SID_CHANGE_TV_DEVICE_NAME_MOBILE_NETWORK";
constexpr char kInstallName[] = "COM_SID_NETWORK_INSTALL_CERTIFICATE";
constexpr char kInstallHelp[] = "COM_SID_NETWORK_CONNECT_USB_CERTI_DEVICE";
constexpr char kListName[] = "COM_SID_SIGNAGE_CDFEB_NETWORK_CERTIFICATE";
constexpr char kListHelp[] =
    "COM_SID_SIGNAGE_CDFEB_VIEW_AND_MANAGE_NW_CERTIFICATE_DEVICE\n"
    "COM_SID_NETWORK_CONNECT_USB_CERTI_DEVICE";
constexpr char kManagerName[] = "COM_SID_NETWORK_CETIFICATE_MANAGER";
constexpr char kManagerHelp[] = "COM_SID_NETWORK_MANGE_CERTI_INSTALLED_DEVICE";

// clang-format off
constexpr Row kRows[] = {
    // key                                       enabled       get_int  set_int    get_string  list         title          second
    {"menu/general/network",                     kAlways,      kName,   kName,     kName,      kNameList,   kFullSignal,   kSecondStatus},
    {"menu/network/networkstatus",               kAlways,      kName,   kName,     kName,      kNameList,   kFullSignal,   kSecondStatus},
    {"menu/network/networksettings",             kAlways,      kName,   kName,     kName,      kNameList,   kFullSignal,   kSecondStatus},
    {"menu/network/ResetNetwork",                kAlways,      kName,   kName,     kName,      kNameList,   kFullSignal,   kSecondStatus},
    {"menu/network/WiFiOnOff",                   kAlways,      kWifi,   kWifi,     kWifi,      kWifiList,   kFullSignal,   kSecondStatus},
    {"menu/network/SavedAP1",                    kOneNetwork,  kName,   kNetwork1, kName,      kNameList,   kFirstSignal,  kFirstStatus},
    {"menu/network/SavedAP2",                    kTwoNetworks, kName,   kNetwork2, kName,      kNameList,   kSecondSignal, kSecondStatus},
    {"SAVEDAP1_NAME_KEY",                        kAlways,      kName,   kName,     kName,      kStates,     kFullSignal,   kSecondStatus},
    {"SAVEDAP2_NAME_KEY",                        kAlways,      kName,   kName,     kName,      kStates,     kFullSignal,   kSecondStatus},
    {"menu/network/expertsettings",              kAlways,      kName,   kName,     kName,      kNameList,   kFullSignal,   kSecondStatus},
    {"menu/network/expertsettings/wifidirect",   kAlways,      kDirect, kDirect,   kDirect,    kDirectList, kFullSignal,   kSecondStatus},
    {"menu/network/expertsettings/easyconnect",  kAlways,      kName,   kName,     kName,      kNameList,   kFullSignal,   kSecondStatus},
    {"menu/network/WiredEAP",                    kAlways,      kWired,  kWired,    kWired,     kWiredList,  kFullSignal,   kSecondStatus},
    {"menu/network/MobileDeviceTV_US",           kAlways,      kMobile, kMobile,   kMobile,    kMobileList, kFullSignal,   kSecondStatus},
    {"menu/network/MobileDeviceTV_NOT_US",       kAlways,      kName,   kName,     kName,      kNameList,   kFullSignal,   kSecondStatus},
    {"menu/network/devicename",                  kWholeScreen, kName,   kName,     kName,      kNameList,   kFullSignal,   kSecondStatus},
    {"menu/network/devicename/selectdevicename", kAlways,      kName,   kName,     kName,      kNameList,   kFullSignal,   kSecondStatus},
    {"menu/network/InstallCertificate",          kAlways,      kName,   kName,     kName,      kNameList,   kFullSignal,   kSecondStatus},
    {"menu/network/CertificateList",             kAlways,      kName,   kName,     kName,      kNameList,   kFullSignal,   kSecondStatus},
    {"menu/network/CertificateManager",          kAlways,      kName,   kName,     kName,      kNameList,   kFullSignal,   kSecondStatus},
};

// Every other key.
constexpr Row kAnyOther =
    {"",                                         kAlways,      kName,   kName,     kName,      kNameList,   kFullSignal,   kSecondStatus};
// clang-format on

// The prefixes of `longest`, from `shortest` to `longest` itself.
struct LeadingParts {
  const char* shortest;
  const char* longest;
  const char* text;
};

constexpr LeadingParts kNames[] = {
    {"", "menu/network/SavedAP1", kName1},
    {"menu/network/SavedAP2", "menu/network/SavedAP2", kName2},
    {"menu/g", "menu/general/network", kNetworkName},
    {"menu/network/n", "menu/network/networkstatus", kStatusName},
    {"menu/network/networkse", "menu/network/networksettings", kSettingsName},
    {"menu/network/M", "menu/network/MobileDeviceTV_US", kMobileName},
    {"menu/network/MobileDeviceTV_N", "menu/network/MobileDeviceTV_NOT_US", kMobileName},
    {"menu/network/R", "menu/network/ResetNetwork", kResetName},
    {"menu/network/I", "menu/network/InstallCertificate", kInstallName},
    {"menu/network/C", "menu/network/CertificateList", kListName},
    {"menu/network/CertificateM", "menu/network/CertificateManager", kManagerName},
    {"menu/network/d", "menu/network/devicename/selectdevicename", kDeviceName},
    {"menu/network/e", "menu/network/expertsettings", kExpertName},
    {"menu/network/expertsettings/", "menu/network/expertsettings/easyconnect", kEasyName},
    {"menu/network/W", "menu/network/WiFiOnOff", kWifiName},
    {"menu/network/expertsettings/w", "menu/network/expertsettings/wifidirect", kDirectName},
    {"menu/network/WiredEAP", "menu/network/WiredEAP", kWiredName},
};

constexpr LeadingParts kHelps[] = {
    {"", "menu/general/network", kNetworkHelp},
    {"menu/n", "menu/network/networkstatus", kStatusHelp},
    {"menu/network/networkse", "menu/network/networksettings", kSettingsHelp},
    {"menu/network/M", "menu/network/MobileDeviceTV_US", kMobileHelp},
    {"menu/network/MobileDeviceTV_N", "menu/network/MobileDeviceTV_NOT_US", kMobileHelp},
    {"menu/network/d", "menu/network/devicename/selectdevicename", kDeviceHelp},
    {"menu/network/R", "menu/network/ResetNetwork", kResetHelp},
    {"menu/network/e", "menu/network/expertsettings", kExpertHelp},
    {"menu/network/I", "menu/network/InstallCertificate", kInstallHelp},
    {"menu/network/C", "menu/network/CertificateList", kListHelp},
    {"menu/network/CertificateM", "menu/network/CertificateManager", kManagerHelp},
    {"menu/network/expertsettings/", "menu/network/expertsettings/easyconnect", kEasyHelp},
    {"menu/network/W", "menu/network/WiFiOnOff", kWifiHelp},
    {"menu/network/expertsettings/w", "menu/network/expertsettings/wifidirect", kDirectHelp},
    {"menu/network/WiredEAP", "menu/network/WiredEAP", kWiredHelp},
};

// The text of the row that the key belongs to, if any.
template <std::size_t size>
const char* textOf(const LeadingParts (&table)[size], const std::string& key) {
  const char* text = kNone;
  for (const LeadingParts& parts : table) {
    if (!key.starts_with(parts.shortest) || !std::string(parts.longest).starts_with(key)) continue;
    EXPECT_EQ(text, kNone) << key << " stands twice in the table of this test";
    text = parts.text;
  }
  return text;
}

std::string withOtherCase(std::string text, std::size_t from, std::size_t to) {
  for (std::size_t i = from; i < to; ++i) {
    const auto c = static_cast<unsigned char>(text[i]);
    text[i] = static_cast<char>(std::isupper(c) != 0 ? std::tolower(c) : std::toupper(c));
  }
  return text;
}

std::string inLowerCase(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

std::string inUpperCase(std::string text) {
  for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

}  // namespace

Row expectedOf(const std::string& key) {
  const Row* const known = std::ranges::find(kRows, key, &Row::key);
  Row row = known != std::end(kRows) ? *known : kAnyOther;
  row.displayName = textOf(kNames, key);
  row.helpText = textOf(kHelps, key);
  return row;
}

std::set<std::string> allKeys() {
  std::set<std::string> keys;
  for (const Row& row : kRows) {
    const std::string key = row.key;
    for (std::size_t size = 0; size <= key.size(); ++size) keys.insert(key.substr(0, size));
    for (const char* more : {"x", "/", "1", "2", " ", "\x01", "\xff", "_US"})
      keys.insert(key + more);
    for (std::size_t i = 0; i < key.size(); ++i) keys.insert(withOtherCase(key, i, i + 1));
    keys.insert(withOtherCase(key, 0, key.size()));
    keys.insert(inLowerCase(key));
    keys.insert(inUpperCase(key));
  }
  return keys;
}
