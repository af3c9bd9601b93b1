// The callbacks that give an item's icons.
#include <string>

#include "c_heap.h"
#include "callbacks/callbacks.h"
#include "items.h"
#include "log.h"
#include "platform/config_store.h"
#include "settings/SavedAPConnection.h"

namespace {

constexpr char kFullSignalIcon[] =
    "/usr/apps/com.norvane.tv.theme-resource/shared/res/ug-SystemSetupNetworkUG-efl/res/"
    "systemsetup/icon_wifi/oobe_icon_n_wifi_4.png";
// The doubled slash is how the resource package spells it.
constexpr char kHighContrastCheckIcon[] =
    "/usr/apps/com.norvane.tv.theme-resource/shared/res//QX_ICONS/COMMON_HIGHCONTRAST/"
    "i_icon_info_check.svg";
constexpr char kCheckIcon[] =
    "/usr/apps/com.norvane.tv.theme-resource/shared/res/ug-SystemSetupNetworkUG-efl/res/"
    "systemsetup/r_icon_xs_check.png";

constexpr char kHighContrastKey[] = "db/menu/system/accessibility/highcontrast";

bool IsHighContrastMode() {
  int highContrast = 0;
  if (vconf_get_int(kHighContrastKey, &highContrast) != 0) {
    LOG_MAIN("vconf_get_int db/menu/system/accessibility/highcontrast error");
    return false;
  }
  if (highContrast == 1) {
    LOG_MAIN("Is high contrast mode");
    return true;
  }
  LOG_MAIN("Not high contrast mode");
  return false;
}

void writeTitleIcon(const char* key, char* block) {
  const int network = itemOf(key).savedNetwork;
  if (network == 0) {
    copyText(block, VENTARO_TEXT_SIZE, kFullSignalIcon);
    return;
  }
  SavedAPConnection* saved = SavedAPConnection::GetInstance();
  copyText(block, VENTARO_TEXT_SIZE,
           network == 1 ? saved->GetFirstItemIcon() : saved->GetSecondItemIcon());
}

// Every key other than the first network's is treated as the second's: the ABI promises it.
std::string networkStatus(const char* key) {
  SavedAPConnection* saved = SavedAPConnection::GetInstance();
  return itemOf(key).savedNetwork == 1 ? saved->GetFirstItemStatus() : saved->GetSecondItemStatus();
}

const char* statusIcon(const std::string& status) {
  if (status == "Connecting") return VENTARO_ICON_BUSY;
  if (status == "Connected") return IsHighContrastMode() ? kHighContrastCheckIcon : kCheckIcon;
  return "";
}

int get_title_icon_path(const char* key, char** path) {
  const ProviderLock lock(ProviderMutex);
  LOG_MAIN("START");
  LOG_MAIN("key = %s", key);
  CText block(newZeroed<char>(VENTARO_TEXT_SIZE));
  writeTitleIcon(key, block.get());
  *path = block.release();
  return 0;
}

int get_second_icon_path(const char* key, char** path) {
  const ProviderLock lock(ProviderMutex);
  LOG_MAIN("key = %s", key);  // without "START": tools that read the log expect none here
  CText block(newZeroed<char>(VENTARO_TEXT_SIZE));
  copyText(block.get(), VENTARO_TEXT_SIZE, statusIcon(networkStatus(key)));
  *path = block.release();
  return 0;
}

}  // namespace

void installIconPathCallbacks(data_provider_cbs& table) {
  table.get_title_icon_path = get_title_icon_path;
  table.get_second_icon_path = get_second_icon_path;
}
