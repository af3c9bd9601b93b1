// The callbacks that give an item's icons.
#include <cstdio>
#include <string>

#include "SavedAPConnection.h"
#include "c_heap.h"
#include "log.h"
#include "platform/config_store.h"
#include "ventaro/callbacks.h"
#include "ventaro/menu_keys.h"

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
// No path: asks the framework for its busy animation.
constexpr char kBusyAnimation[] = "loading";

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

bool isKey(const char* key, const char* menuKey) {
  return menu_keys::matches(key, menuKey, menu_keys::Match::kExact);
}

std::string titleIcon(const char* key) {
  if (isKey(key, menu_keys::kSavedAp1)) return SavedAPConnection::GetInstance()->GetFirstItemIcon();
  if (isKey(key, menu_keys::kSavedAp2))
    return SavedAPConnection::GetInstance()->GetSecondItemIcon();
  return kFullSignalIcon;
}

// Any key but the first network's is answered as the second's, deliberately.
std::string networkStatus(const char* key) {
  SavedAPConnection* saved = SavedAPConnection::GetInstance();
  return isKey(key, menu_keys::kSavedAp1) ? saved->GetFirstItemStatus()
                                          : saved->GetSecondItemStatus();
}

std::string statusIcon(const std::string& status) {
  if (status == "Connecting") return kBusyAnimation;
  if (status == "Connected") return IsHighContrastMode() ? kHighContrastCheckIcon : kCheckIcon;
  return {};
}

int get_title_icon_path(const char* key, char** path) {
  const ProviderLock lock(ProviderMutex);
  LOG_MAIN("START");
  LOG_MAIN("key = %s", key);
  CText block = zeroedBlock(kTextBlockSize);
  std::snprintf(block.get(), kTextBlockSize, "%s", titleIcon(key).c_str());
  *path = block.release();
  return 0;
}

int get_second_icon_path(const char* key, char** path) {
  const ProviderLock lock(ProviderMutex);
  LOG_MAIN("key = %s", key);  // no "START", deliberately
  CText block = zeroedBlock(kTextBlockSize);
  std::snprintf(block.get(), kTextBlockSize, "%s", statusIcon(networkStatus(key)).c_str());
  *path = block.release();
  return 0;
}

}  // namespace

void installIconPathCallbacks(data_provider_cbs& table) {
  table.get_title_icon_path = get_title_icon_path;
  table.get_second_icon_path = get_second_icon_path;
}
