// The callback that gives an item's help text.
#include <cstdio>
#include <stdexcept>
#include <string>

#include "CProductSIDUtil.h"
#include "c_heap.h"
#include "log.h"
#include "platform/app_util.h"
#include "platform/config_store.h"
#include "translation.h"
#include "ventaro/callbacks.h"
#include "ventaro/menu_keys.h"

namespace {

using menu_keys::Match;

using WorkBuffer = char[CProductUtil::kTextSize];

enum class ProductNames { kLeave, kFillIn };

struct HelpText {
  const char* key;
  Match match;
  ProductNames productNames;
  std::string (*text)();
};

template <const char* sid>
std::string translated() {
  return translate(sid);
}

// A translated template with the device's translated name in its "<<A>>".
std::string withDeviceName(const char* templateSid) {
  WorkBuffer work = {};
  const std::string deviceSid = CProductUtil::GetDeviceNameString();
  const char* deviceName = translate(deviceSid.c_str());
  CProductUtil::ReplaceText(work, translate(templateSid), "<<A>>", deviceName, sizeof(work));
  return work;
}

int productType() {
  std::string ignoredName;
  return CProductUtil::GetProductType(ignoredName);
}

std::string networkHelp() {
  if (productType() == CProductUtil::PRODUCT_TYPE_TV) {
    return translate("TV_SID_SYSTEM_42683_CONFIGURE_TV_NETWORK");
  }
  return withDeviceName("PJT_SID_SYSTEM_42683_CONFIGURE_TV_NETWORK");
}

std::string powerOnWithMobileHelp() {
  if (productType() == CProductUtil::PRODUCT_TYPE_SCREEN) {
    return translate("REP.DEVICE.SCREEN_SID_SYSTEM_CCDEC_ALLOW_MOBILE_SMARTPHONE_TABLET");
  }
  return withDeviceName("PJT_SID_SYSTEM_ALLOW_MOBILE_SMARTPHONE_TABLET_TV");
}

std::string deviceNameHelp() {
  switch (productType()) {
    case CProductUtil::PRODUCT_TYPE_TV:
      return translate("COM_SID_CHANGE_TV_DEVICE_NAME_MOBILE_NETWORK");
    case CProductUtil::PRODUCT_TYPE_SCREEN:
      return translate("REP.DEVICE.SCREEN_SID_CCDEC_CHANGE_DEVICE_NAME_MOBILE_NETWORK");
    default:
      return withDeviceName("PJT_SID_CHANGE_TV_DEVICE_NAME_MOBILE_NETWORK");
  }
}

std::string easyConnectHelp() {
  return withDeviceName("PJT_SID_MENU_TEMP_SET_TV_WIFI_MOBILE_CONNECT");
}

std::string certificateListHelp() {
  return std::string(translate("COM_SID_SIGNAGE_CDFEB_VIEW_AND_MANAGE_NW_CERTIFICATE_DEVICE")) +
         "\n" + translate("COM_SID_NETWORK_CONNECT_USB_CERTI_DEVICE");
}

std::string wifiDirectHelp() {
  WorkBuffer work = {};
  const std::string features =
      std::string(translate("COM_SCREEN_SHARING")) + ", " + translate("TV_SID_CONNECT_KELVO");
  CStringUtil::CombinateStrings(
      work, sizeof(work),
      translate("TV_SID_SETTINGS_MIX_CBOCT_USE_SOME_SERVICE_WIFI_DIRECT_TURN_ON"), features.c_str(),
      nullptr, "", "");
  return work;
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
    {menu_keys::kNetwork, Match::kLeadingPart, ProductNames::kFillIn, networkHelp},
    {menu_keys::kNetworkStatus, Match::kLeadingPart, ProductNames::kLeave,
     translated<kNetworkStatus>},
    {menu_keys::kNetworkSettings, Match::kLeadingPart, ProductNames::kLeave,
     translated<kNetworkSettings>},
    {menu_keys::kMobileDeviceTvUs, Match::kLeadingPart, ProductNames::kFillIn,
     powerOnWithMobileHelp},
    {menu_keys::kMobileDeviceTvNotUs, Match::kLeadingPart, ProductNames::kFillIn,
     powerOnWithMobileHelp},
    {menu_keys::kSelectDeviceName, Match::kLeadingPart, ProductNames::kFillIn, deviceNameHelp},
    {menu_keys::kResetNetwork, Match::kLeadingPart, ProductNames::kLeave,
     translated<kResetNetwork>},
    {menu_keys::kExpertSettings, Match::kLeadingPart, ProductNames::kLeave,
     translated<kExpertSettings>},
    {menu_keys::kInstallCertificate, Match::kLeadingPart, ProductNames::kLeave,
     translated<kInstallCertificate>},
    {menu_keys::kCertificateList, Match::kLeadingPart, ProductNames::kLeave, certificateListHelp},
    {menu_keys::kCertificateManager, Match::kLeadingPart, ProductNames::kLeave,
     translated<kCertificateManager>},
    {menu_keys::kEasyConnect, Match::kLeadingPart, ProductNames::kFillIn, easyConnectHelp},
    {menu_keys::kWiFiOnOff, Match::kLeadingPart, ProductNames::kLeave, translated<kWifi>},
    {menu_keys::kWifiDirect, Match::kLeadingPart, ProductNames::kLeave, wifiDirectHelp},
    {menu_keys::kWiredEap, Match::kExact, ProductNames::kLeave, translated<kWiredEap>},
};

// A TV always has a menu language: without one no text is given at all, although none depends on
// it.
std::string menuLanguage() {
  const CText language(vconf_get_str("db/menu_widget/language"));
  if (language == nullptr) throw std::logic_error("db/menu_widget/language has no value");
  return language.get();
}

std::string helpText(const HelpText& entry) {
  std::string text = entry.text();
  if (entry.productNames == ProductNames::kFillIn) CProductUtil::AddProductNameInSID(text);
  return text;
}

int get_help_text(const char* key, char** value) {
  LOG_MAIN("START");
  const ProviderLock lock(ProviderMutex);
  CText block = zeroedBlock(kTextBlockSize);
  if (block == nullptr) {
    LOG_MAIN("Memory not allocated");
    return -1;
  }
  [[maybe_unused]] const std::string language = menuLanguage();
  if (const HelpText* entry = menu_keys::findByRule(kHelpTexts, key)) {
    std::snprintf(block.get(), kTextBlockSize, "%s", helpText(*entry).c_str());
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
