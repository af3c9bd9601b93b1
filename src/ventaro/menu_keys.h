// The menu keys that the provider knows, and how a key is compared with them. Letter case matters.
#ifndef VENTARO_MENU_KEYS_H
#define VENTARO_MENU_KEYS_H

#include <cstring>

namespace menu_keys {

inline constexpr char kNetwork[] = "menu/general/network";
inline constexpr char kNetworkStatus[] = "menu/network/networkstatus";
inline constexpr char kNetworkSettings[] = "menu/network/networksettings";
inline constexpr char kResetNetwork[] = "menu/network/ResetNetwork";
inline constexpr char kWiFiOnOff[] = "menu/network/WiFiOnOff";
inline constexpr char kSavedAp1[] = "menu/network/SavedAP1";
inline constexpr char kSavedAp2[] = "menu/network/SavedAP2";
inline constexpr char kSavedAp1States[] = "SAVEDAP1_NAME_KEY";
inline constexpr char kSavedAp2States[] = "SAVEDAP2_NAME_KEY";
inline constexpr char kExpertSettings[] = "menu/network/expertsettings";
inline constexpr char kWifiDirect[] = "menu/network/expertsettings/wifidirect";
inline constexpr char kEasyConnect[] = "menu/network/expertsettings/easyconnect";
inline constexpr char kWiredEap[] = "menu/network/WiredEAP";
inline constexpr char kMobileDeviceTvUs[] = "menu/network/MobileDeviceTV_US";
inline constexpr char kMobileDeviceTvNotUs[] = "menu/network/MobileDeviceTV_NOT_US";
inline constexpr char kDeviceName[] = "menu/network/devicename";
inline constexpr char kSelectDeviceName[] = "menu/network/devicename/selectdevicename";
inline constexpr char kInstallCertificate[] = "menu/network/InstallCertificate";
inline constexpr char kCertificateList[] = "menu/network/CertificateList";
inline constexpr char kCertificateManager[] = "menu/network/CertificateManager";

// How a table entry's key is compared with the key that was asked for.
enum class Match {
  kExact,        // as whole strings
  kLeadingPart,  // the asked key is the entry's key or any leading part of it, the empty key
                 // included
};

inline bool matches(const char* asked, const char* entryKey, Match match) {
  if (match == Match::kExact) return std::strcmp(asked, entryKey) == 0;
  return std::strncmp(asked, entryKey, std::strlen(asked)) == 0;
}

// The first entry of a table whose `key` equals the asked key, or null.
template <typename Entry, std::size_t size>
const Entry* find(const Entry (&table)[size], const char* asked) {
  for (const Entry& entry : table) {
    if (matches(asked, entry.key, Match::kExact)) return &entry;
  }
  return nullptr;
}

// The first entry of a table that matches by its own `match` rule, or null. The order counts: a
// leading part may belong to several entries.
template <typename Entry, std::size_t size>
const Entry* findByRule(const Entry (&table)[size], const char* asked) {
  for (const Entry& entry : table) {
    if (matches(asked, entry.key, entry.match)) return &entry;
  }
  return nullptr;
}

}  // namespace menu_keys

#endif  // VENTARO_MENU_KEYS_H
