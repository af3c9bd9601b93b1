// get_string, get_display_name, get_messagebox_info.
#include "tables.h"

namespace {

Row getString(std::vector<std::string> keys, Steps owner) {
  return {std::move(keys),
          {takesLock(), mainLog("START"), std::move(owner), mainLog("END"), unlocks()}};
}

Steps onOff(const std::string& object, const char* text) {
  return {mainLog(object + ".setOnOffStatus==" + text), gives("1", text)};
}

// The result is the same, and the line shows what the output held before.
Steps invalid(const std::string& object) {
  return {mainLog("Invalid"), mainLog(object + ".setOnOffStatus==sentinel"),
          gives("1", kUntouched)};
}

Row displayName(std::vector<std::string> keys, Steps name) {
  return {std::move(keys),
          {mainLog("START"), takesLock(), mainLog("Key ---->{key}\n"), std::move(name), unlocks()}};
}

Steps networkName(const World& world, int network) {
  const char* name = network == 1 ? "Net One" : "Net Two";
  return networksAreRead(world, {networkLine(world, network), gives("0", name)},
                         {gives("0", "\"\"")});
}

}  // namespace

Table getStringTable(const World& world) {
  const char* mobile = "CMobileDeviceTVObj";
  const char* wifi = "CWiFiOnOffObj";
  const char* direct = "CWiFiDirectObj";
  const char* wired = "CWiredEAPObj";
  return {
      getString(
          {kMobileKey},
          mobileModeIsRead(
              true, {mainLog("connection_get_wakeOnMobile_mode set to 1"), onOff(mobile, "SID_ON")},
              {mainLog("connection_get_wakeOnMobile_mode set to -1"), invalid(mobile)})),
      getString(
          {kWifiItemKey},
          {ask("wifi_get_enable_qx")
               .works({mainLog("connection_get_wakeOnMobile_mode set to 0"), onOff(wifi, "SID_ON")})
               .fails({mainLog("connection_get_wakeOnMobile_mode set to -9"), invalid(wifi)})}),
      getString({kDirectItemKey},
                directStateIsRead(world, {mainLog("setOnOffStatus 1"), onOff(direct, "SID_ON")},
                                  {mainLog("setOnOffStatus 0"), onOff(direct, "SID_OFF")})),
      getString({kWiredItemKey}, {ask("vconf_get_int", kWiredKey)
                                      .works(onOff(wired, "SID_ON"))
                                      .fails(onOff(wired, "SID_OFF"))
                                      .failsWithOutput(onOff(wired, "SID_ON"))}),
      getString({}, {ask("vconf_get_str", kNameKey)
                         .works({mainLog("wifi_direct_get_device_name::status [0x0000]"),
                                 gives("1", "TV One")})
                         .fails({mainLog("wifi_direct_get_device_name::status [0xffffffff]"),
                                 gives("-1", kUntouched), unlocks(), ends()})}),
  };
}

Table displayNameTable(const World& world) {
  const auto named = [](const char* key, const char* sid) {
    return displayName({key}, {gives("0", sid)});
  };
  return {
      displayName({kFirstNetworkKey, ""}, networkName(world, 1)),
      displayName({kSecondNetworkKey}, networkName(world, 2)),
      named(VENTARO_KEY_NETWORK, "COM_SID_NETWORK"),
      named(VENTARO_KEY_NETWORK_STATUS, "TV_SID_NETWORK_STATUS"),
      named(VENTARO_KEY_NETWORK_SETTINGS, "TV_SID_NETWORK_SETTINGS"),
      named(kMobileKey, "TV_SID_SYSTEM_POWER_ON_WITH_MOBILE"),
      named(VENTARO_KEY_POWER_ON_WITH_MOBILE_NOT_US, "TV_SID_SYSTEM_POWER_ON_WITH_MOBILE"),
      displayName({VENTARO_KEY_RESET_NETWORK},
                  {mainLog("START"), gives("0", "TV_SID_SYSTEM_RESET_NETWORK")}),
      named(VENTARO_KEY_INSTALL_CERTIFICATE, "COM_SID_NETWORK_INSTALL_CERTIFICATE"),
      named(VENTARO_KEY_CERTIFICATE_LIST, "COM_SID_SIGNAGE_CDFEB_NETWORK_CERTIFICATE"),
      named(VENTARO_KEY_CERTIFICATE_MANAGER, "COM_SID_NETWORK_CETIFICATE_MANAGER"),
      named(VENTARO_KEY_DEVICE_NAME, "COM_TV_DEVICE_NAME"),
      named(VENTARO_KEY_SELECT_DEVICE_NAME, "COM_TV_DEVICE_NAME"),
      displayName({VENTARO_KEY_EXPERT_SETTINGS},
                  {mainLog("-expertsettings ->{key}\n"), gives("0", "TV_SID_EXPERT_SETTINGS")}),
      named(VENTARO_KEY_EASY_CONNECTION, "TV_SID_MENU_EASY_CONNECTION"),
      named(kWifiItemKey, "COM_WI_FI"),
      named(kDirectItemKey, "COM_WI_FI_DIRECT"),
      named(kWiredItemKey, "COM_SID_CM_CADEC_WIRED_802_1X_CONNECTION"),
      displayName({}, {mainLog("Key does not Match"), gives("0", "\"\"")}),
  };
}

// The buffers hold "+" before the call; a radio that cannot be read counts as off.
Table messageBoxTable(const World& world) {
  const auto box = [](const std::string& message) {
    return gives("0", "type 2: +" + message + " +SID_YES +SID_NO");
  };
  const auto afterMessage = [&](const std::string& message) -> Steps {
    const Step costsPower = box("TV_SID_CHANGING_FEATURE_INCREASE_POWER");
    const std::string radio = std::to_string(world.radio);
    const Step byRadio = world.radio == 0 ? costsPower : box(message);
    const Steps radioIsRead = {
        ask("wifi_get_enable_qx")
            .works({mainLog("wifi_get_power_state  ret = [0], value = [" + radio + "]"), byRadio})
            .fails({mainLog("wifi_get_power_state  ret = [-9], value = [0]"), costsPower})
            .failsWithOutput(
                {mainLog("wifi_get_power_state  ret = [-9], value = [" + radio + "]"), byRadio})};
    return regulationIsRead(world, radioIsRead, {box(message)});
  };
  return {
      {{},
       {takesLock(), mainLog("START"),
        // Without the filled text the box has none: no result says so.
        ask("CStringUtil::CombinateStrings", 1024, "without <<A>>", "COM_WI_FI", "null", "", "")
            .works(afterMessage("without COM_WI_FI"))
            .fails(afterMessage(""))
            .failsWithOutput(afterMessage("without COM_WI_FI")),
        mainLog("END"), unlocks()}},
  };
}
