// The callback that gives an item's help text.
#include <algorithm>
#include <stdexcept>
#include <string>
#include <string_view>

#include "CProductSIDUtil.h"
#include "c_heap.h"
#include "callbacks/callbacks.h"
#include "log.h"
#include "menu_keys.h"
#include "platform/app_util.h"
#include "platform/config_store.h"
#include "translation.h"

namespace {

using menu_keys::Match;

struct HelpText {
  menu_keys::Key key;
  Match match;
  // Writes the text into the block that is handed out.
  void (*write)(char* block);
};

template <const char* sid>
void translated(char* block) {
  copyText(block, VENTARO_TEXT_SIZE, translate(sid));
}

// With the product's name in its "<<A>>".
void writeForProduct(char* block, const char* text) {
  std::string room;
  copyText(block, VENTARO_TEXT_SIZE, CProductUtil::WithProductName(text, room));
}

// A translated template with the device's translated name in its "<<A>>".
void writeForDevice(char* block, const char* templateSid) {
  char work[CProductUtil::kTextSize] = {};
  const std::string deviceSid = CProductUtil::GetDeviceNameString();
  const char* deviceName = translate(deviceSid.c_str());
  CProductUtil::ReplaceText(work, translate(templateSid), "<<A>>", deviceName, sizeof(work));
  writeForProduct(block, work);
}

int productType() {
  std::string ignoredName;
  return CProductUtil::GetProductType(ignoredName);
}

void networkHelp(char* block) {
  if (productType() == CProductUtil::PRODUCT_TYPE_TV) {
    writeForProduct(block, translate("TV_SID_SYSTEM_42683_CONFIGURE_TV_NETWORK"));
  } else {
    writeForDevice(block, "PJT_SID_SYSTEM_42683_CONFIGURE_TV_NETWORK");
  }
}

void powerOnWithMobileHelp(char* block) {
  if (productType() == CProductUtil::PRODUCT_TYPE_SCREEN) {
    writeForProduct(block,
                    translate("REP.DEVICE.SCREEN_SID_SYSTEM_CCDEC_ALLOW_MOBILE_SMARTPHONE_TABLET"));
  } else {
    writeForDevice(block, "PJT_SID_SYSTEM_ALLOW_MOBILE_SMARTPHONE_TABLET_TV");
  }
}

void deviceNameHelp(char* block) {
  switch (productType()) {
    case CProductUtil::PRODUCT_TYPE_TV:
      writeForProduct(block, translate("COM_SID_CHANGE_TV_DEVICE_NAME_MOBILE_NETWORK"));
      break;
    case CProductUtil::PRODUCT_TYPE_SCREEN:
      writeForProduct(block,
                      translate("REP.DEVICE.SCREEN_SID_CCDEC_CHANGE_DEVICE_NAME_MOBILE_NETWORK"));
      break;
    default:
      writeForDevice(block, "PJT_SID_CHANGE_TV_DEVICE_NAME_MOBILE_NETWORK");
  }
}

void easyConnectHelp(char* block) {
  writeForDevice(block, "PJT_SID_MENU_TEMP_SET_TV_WIFI_MOBILE_CONNECT");
}

void certificateListHelp(char* block) {
  const std::string_view first =
      translate("COM_SID_SIGNAGE_CDFEB_VIEW_AND_MANAGE_NW_CERTIFICATE_DEVICE");
  const std::string_view second = translate("COM_SID_NETWORK_CONNECT_USB_CERTI_DEVICE");
  copyText(block, VENTARO_TEXT_SIZE, first);
  const auto size = std::min<std::size_t>(first.size(), VENTARO_TEXT_SIZE - 1);
  if (size + 1 >= VENTARO_TEXT_SIZE) return;
  block[size] = '\n';
  copyText(block + size + 1, VENTARO_TEXT_SIZE - size - 1, second);
}

void wifiDirectHelp(char* block) {
  std::string features = translate("COM_SCREEN_SHARING");
  features.append(", ").append(translate("TV_SID_CONNECT_KELVO"));
  CStringUtil::CombinateStrings(
      block, VENTARO_TEXT_SIZE,
      translate("TV_SID_SETTINGS_MIX_CBOCT_USE_SOME_SERVICE_WIFI_DIRECT_TURN_ON"), features.c_str(),
      nullptr, "", "");
}

constexpr char kNetworkStatus[] = "COM_SID_VIEW_CURRENT_NETWORK_INTERNET_STATUS";
constexpr char kNetworkSettings[] = "TV_SID_CONFIGURE_NETWORK_SETTINGS_CONNECT_AVAIL";
constexpr char kResetNetwork[] = "TV_SID_SYSTEM_RESTORE_NETWORK_SETTINGS_DEFAULT";
constexpr char kExpertSettings[] = "TV_SID_CONFIGURE_ADVANCED_NETWORK_SETTINGS";
constexpr char kInstallCertificate[] = "COM_SID_NETWORK_CONNECT_USB_CERTI_DEVICE";
constexpr char kCertificateManager[] = "COM_SID_NETWORK_MANGE_CERTI_INSTALLED_DEVICE";
constexpr char kWifi[] = "TV_SID_SETTINGS_CANOV_ENABLE_DISABLE_WIFI_OPTION";
constexpr char kWiredEap[] = "COM_SID_CM_CADEC_ENALBE_OPTION_WIRED802";

// The order decides: a leading part of several keys gets the text of the first of them.
constexpr HelpText kHelpTexts[] = {
    {menu_keys::kNetwork, Match::kLeadingPart, networkHelp},
    {menu_keys::kNetworkStatus, Match::kLeadingPart, translated<kNetworkStatus>},
    {menu_keys::kNetworkSettings, Match::kLeadingPart, translated<kNetworkSettings>},
    {menu_keys::kMobileDeviceTvUs, Match::kLeadingPart, powerOnWithMobileHelp},
    {menu_keys::kMobileDeviceTvNotUs, Match::kLeadingPart, powerOnWithMobileHelp},
    {menu_keys::kSelectDeviceName, Match::kLeadingPart, deviceNameHelp},
    {menu_keys::kResetNetwork, Match::kLeadingPart, translated<kResetNetwork>},
    {menu_keys::kExpertSettings, Match::kLeadingPart, translated<kExpertSettings>},
    {menu_keys::kInstallCertificate, Match::kLeadingPart, translated<kInstallCertificate>},
    {menu_keys::kCertificateList, Match::kLeadingPart, certificateListHelp},
    {menu_keys::kCertificateManager, Match::kLeadingPart, translated<kCertificateManager>},
    {menu_keys::kEasyConnect, Match::kLeadingPart, easyConnectHelp},
    {menu_keys::kWiFiOnOff, Match::kLeadingPart, translated<kWifi>},
    {menu_keys::kWifiDirect, Match::kLeadingPart, wifiDirectHelp},
    {menu_keys::kWiredEap, Match::kExact, translated<kWiredEap>},
};

// A TV always has a menu language: without one no text is given at all, although none depends on
// it.
void requireMenuLanguage() {
  const CText language(vconf_get_str("db/menu_widget/language"));
  if (language == nullptr) throw std::logic_error("db/menu_widget/language has no value");
}

int get_help_text(const char* key, char** value) {
  LOG_MAIN("START");
  const ProviderLock lock(ProviderMutex);
  CText block = zeroedBlock(VENTARO_TEXT_SIZE);
  if (block == nullptr) {
    LOG_MAIN("Memory not allocated");
    return -1;
  }
  requireMenuLanguage();
  if (const HelpText* entry = menu_keys::find<kHelpTexts>(key)) {
    entry->write(block.get());
  } else {
    LOG_MAIN("Key does not Match");
  }
  *value = block.release();
  LOG_MAIN("END");
  return 0;
}

}  // namespace

void installHelpTextCallbacks(data_provider_cbs& table) {
  table.get_help_text = get_help_text;
}
