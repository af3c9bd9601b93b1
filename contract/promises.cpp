#include "promises.h"

namespace contract {

namespace {

constexpr bool isBoolean(int value) {
  return value == 0 || value == 1;
}

bool isImage(std::string_view path) {
  return path.starts_with('/') && (path.ends_with(".png") || path.ends_with(".svg"));
}

// For the item that is set by name: the position in the device-name list.
bool isDeviceNameRead(const Answer& a) {
  if (isSetting(a.key)) return true;
  return a.result == 0 ? a.value >= 0 : a.result == -1 && (a.untouched || a.value == 0);
}

bool mayAlwaysBeUsed(std::string_view key) {
  return !covers(Keys::kSavedNetworks, key) && key != VENTARO_KEY_DEVICE_NAME;
}

Promises makeHeadersPromises() {
  return {
      {&function("set_int"),
       {VENTARO_KEY_WIFI},
       [](const Answer& a) { return a.result == 1 || a.result == -1; },
       "a Wi-Fi switch gives 1, or -1 when the radio did not switch"},
      {&function("set_int"),
       {VENTARO_KEY_POWER_ON_WITH_MOBILE_US},
       [](const Answer& a) { return a.result == -1 || isBoolean(a.result); },
       "power on with mobile gives the mode, 1 or 0, or -1"},
      {&function("set_int"),
       {VENTARO_KEY_SAVED_NETWORK_1, VENTARO_KEY_SAVED_NETWORK_2},
       [](const Answer& a) { return a.result == -1; },
       "a saved network gives -1"},
      {&function("get_int"),
       {VENTARO_KEY_WIFI, VENTARO_KEY_WIFI_DIRECT},
       [](const Answer& a) { return a.result == 1 || a.result == -1; },
       "Wi-Fi and Wi-Fi Direct give 1, or -1 when they cannot be read"},
      {&function("get_int"),
       {VENTARO_KEY_WIFI_DIRECT},
       [](const Answer& a) { return a.result == -1 || isBoolean(a.value); },
       "Wi-Fi Direct is 0 or 1"},
      {&function("get_int"),
       {VENTARO_KEY_WIRED_EAP, VENTARO_KEY_POWER_ON_WITH_MOBILE_US},
       [](const Answer& a) {
         return a.result == -1 || (a.result == a.value && isBoolean(a.value));
       },
       "wired 802.1X and power on with mobile give the value itself, 0 or 1"},
      {&function("get_int"),
       {VENTARO_KEY_WIFI_DIRECT, VENTARO_KEY_WIRED_EAP, VENTARO_KEY_POWER_ON_WITH_MOBILE_US},
       [](const Answer& a) { return a.result != -1 || a.untouched; },
       "a value that cannot be read leaves the output untouched"},
      {&function("get_int"),
       {},
       isDeviceNameRead,
       "the device name gives 0 and its position, or -1 with the output untouched or 0"},
      {&function("get_string"),
       {VENTARO_KEY_WIFI, VENTARO_KEY_WIFI_DIRECT, VENTARO_KEY_WIRED_EAP,
        VENTARO_KEY_POWER_ON_WITH_MOBILE_US},
       [](const Answer& a) { return a.result == 1; },
       "a setting as text gives 1"},
      {&function("get_string"),
       {},
       [](const Answer& a) { return a.result == 1 || (a.result == -1 && a.untouched); },
       "a value as text gives 1, or -1 with the output untouched"},
      {&function("get_module_info"),
       {VENTARO_KEY_OWNER, VENTARO_KEY_MAIN_COMPONENT, VENTARO_KEY_SUB_COMPONENT},
       [](const Answer& a) { return a.text && !a.text->empty(); },
       "who the provider is is not empty"},
      {&function("get_title_icon_path"),
       {},
       [](const Answer& a) { return a.text && isImage(*a.text); },
       "a title icon is an image path"},
      {&function("get_second_icon_path"),
       {},
       [](const Answer& a) {
         return a.text && (a.text->empty() || *a.text == VENTARO_ICON_BUSY || isImage(*a.text));
       },
       "a side icon is an image path, the busy animation or empty"},
      {&function("check_enable_int"),
       {},
       [](const Answer& a) { return a.result == 1 || !mayAlwaysBeUsed(a.key); },
       "everything but a saved network and the device name may be used"},
  };
}

}  // namespace

const Promises& headersPromises() {
  static const Promises promises = makeHeadersPromises();
  return promises;
}

bool isSetting(std::string_view key) {
  return key == VENTARO_KEY_WIFI || key == VENTARO_KEY_WIFI_DIRECT ||
         key == VENTARO_KEY_WIRED_EAP || key == VENTARO_KEY_POWER_ON_WITH_MOBILE_US;
}

bool isStates(std::string_view key) {
  return key == VENTARO_KEY_SAVED_NETWORK_1_STATES || key == VENTARO_KEY_SAVED_NETWORK_2_STATES;
}

}  // namespace contract
