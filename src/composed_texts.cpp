#include "composed_texts.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "CProductSIDUtil.h"
#include "c_heap.h"
#include "platform/app_util.h"
#include "translation.h"
#include "ventaro/data_provider.h"

namespace {

// With the product's name in its "<<A>>".
void writeForProduct(char* block, const char* text) {
  std::string filled;
  copyText(block, VENTARO_TEXT_SIZE, CProductUtil::WithProductName(text, filled));
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

}  // namespace

void writeNetworkHelp(char* block) {
  if (productType() == CProductUtil::PRODUCT_TYPE_TV) {
    writeForProduct(block, translate("TV_SID_SYSTEM_42683_CONFIGURE_TV_NETWORK"));
  } else {
    writeForDevice(block, "PJT_SID_SYSTEM_42683_CONFIGURE_TV_NETWORK");
  }
}

void writePowerOnWithMobileHelp(char* block) {
  if (productType() == CProductUtil::PRODUCT_TYPE_SCREEN) {
    writeForProduct(block,
                    translate("REP.DEVICE.SCREEN_SID_SYSTEM_CCDEC_ALLOW_MOBILE_SMARTPHONE_TABLET"));
  } else {
    writeForDevice(block, "PJT_SID_SYSTEM_ALLOW_MOBILE_SMARTPHONE_TABLET_TV");
  }
}

void writeDeviceNameHelp(char* block) {
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

void writeEasyConnectionHelp(char* block) {
  writeForDevice(block, "PJT_SID_MENU_TEMP_SET_TV_WIFI_MOBILE_CONNECT");
}

void writeCertificateListHelp(char* block) {
  const std::string_view first =
      translate("COM_SID_SIGNAGE_CDFEB_VIEW_AND_MANAGE_NW_CERTIFICATE_DEVICE");
  const std::string_view second = translate("COM_SID_NETWORK_CONNECT_USB_CERTI_DEVICE");
  copyText(block, VENTARO_TEXT_SIZE, first);
  const auto size = std::min<std::size_t>(first.size(), VENTARO_TEXT_SIZE - 1);
  if (size + 1 >= VENTARO_TEXT_SIZE) return;
  block[size] = '\n';
  copyText(block + size + 1, VENTARO_TEXT_SIZE - size - 1, second);
}

void writeWifiDirectHelp(char* block) {
  std::string features = translate("COM_SCREEN_SHARING");
  features.append(", ").append(translate("TV_SID_CONNECT_KELVO"));
  CStringUtil::CombinateStrings(
      block, VENTARO_TEXT_SIZE,
      translate("TV_SID_SETTINGS_MIX_CBOCT_USE_SOME_SERVICE_WIFI_DIRECT_TURN_ON"), features.c_str(),
      nullptr, "", "");
}
