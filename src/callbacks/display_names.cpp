// The callback that gives an item's name.
#include <string>

#include "c_heap.h"
#include "callbacks/callbacks.h"
#include "log.h"
#include "menu_keys.h"
#include "settings/SavedAPConnection.h"
#include "translation.h"

namespace {

using menu_keys::Match;

struct DisplayName {
  menu_keys::Key key;
  Match match;
  const char* sid;
  // Writes the name into the block that is handed out.
  void (*write)(const DisplayName& entry, const char* askedKey, char* block);
};

void translated(const DisplayName& entry, const char* /*askedKey*/, char* block) {
  copyText(block, VENTARO_TEXT_SIZE, translate(entry.sid));
}

// Asked before the reset item is named, and without influence: its name is the same on every
// product.
bool IsProductTypeLFD() {
  LOG_MAIN("START");
  return false;
}

void resetName(const DisplayName& entry, const char* askedKey, char* block) {
  IsProductTypeLFD();
  translated(entry, askedKey, block);
}

void expertSettingsName(const DisplayName& entry, const char* askedKey, char* block) {
  LOG_MAIN("-expertsettings ->%s\n", askedKey);
  translated(entry, askedKey, block);
}

// The networks' own names, as they are, up to a NUL.
template <std::string (SavedAPConnection::*name)()>
void networkName(const DisplayName& /*entry*/, const char* /*askedKey*/, char* block) {
  copyText(block, VENTARO_TEXT_SIZE, (SavedAPConnection::GetInstance()->*name)().c_str());
}

// The order decides: a leading part of several keys gets the name of the first of them.
constexpr DisplayName kDisplayNames[] = {
    {menu_keys::kSavedAp1, Match::kLeadingPart, nullptr,
     networkName<&SavedAPConnection::GetFirstItemName>},
    {menu_keys::kSavedAp2, Match::kLeadingPart, nullptr,
     networkName<&SavedAPConnection::GetSecondItemName>},
    {menu_keys::kNetwork, Match::kLeadingPart, "COM_SID_NETWORK", translated},
    {menu_keys::kNetworkStatus, Match::kLeadingPart, "TV_SID_NETWORK_STATUS", translated},
    {menu_keys::kNetworkSettings, Match::kLeadingPart, "TV_SID_NETWORK_SETTINGS", translated},
    {menu_keys::kMobileDeviceTvUs, Match::kLeadingPart, "TV_SID_SYSTEM_POWER_ON_WITH_MOBILE",
     translated},
    {menu_keys::kMobileDeviceTvNotUs, Match::kLeadingPart, "TV_SID_SYSTEM_POWER_ON_WITH_MOBILE",
     translated},
    {menu_keys::kResetNetwork, Match::kLeadingPart, "TV_SID_SYSTEM_RESET_NETWORK", resetName},
    {menu_keys::kInstallCertificate, Match::kLeadingPart, "COM_SID_NETWORK_INSTALL_CERTIFICATE",
     translated},
    {menu_keys::kCertificateList, Match::kLeadingPart, "COM_SID_SIGNAGE_CDFEB_NETWORK_CERTIFICATE",
     translated},
    {menu_keys::kCertificateManager, Match::kLeadingPart, "COM_SID_NETWORK_CETIFICATE_MANAGER",
     translated},
    {menu_keys::kSelectDeviceName, Match::kLeadingPart, "COM_TV_DEVICE_NAME", translated},
    {menu_keys::kExpertSettings, Match::kLeadingPart, "TV_SID_EXPERT_SETTINGS", expertSettingsName},
    {menu_keys::kEasyConnect, Match::kLeadingPart, "TV_SID_MENU_EASY_CONNECTION", translated},
    {menu_keys::kWiFiOnOff, Match::kLeadingPart, "COM_WI_FI", translated},
    {menu_keys::kWifiDirect, Match::kLeadingPart, "COM_WI_FI_DIRECT", translated},
    {menu_keys::kWiredEap, Match::kExact, "COM_SID_CM_CADEC_WIRED_802_1X_CONNECTION", translated},
};

int get_display_name(const char* key, char** value) {
  LOG_MAIN("START");
  const ProviderLock lock(ProviderMutex);
  LOG_MAIN("Key ---->%s\n", key);
  CText name = zeroedBlock(VENTARO_TEXT_SIZE);
  if (const DisplayName* entry = menu_keys::find<kDisplayNames>(key)) {
    entry->write(*entry, key, name.get());
  } else {
    LOG_MAIN("Key does not Match");
  }
  *value = name.release();
  return 0;  // no "END", deliberately
}

}  // namespace

void installDisplayNameCallbacks(data_provider_cbs& table) {
  table.get_display_name = get_display_name;
}
