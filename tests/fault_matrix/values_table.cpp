// get_int, set_int, set_string, get_current_value_sid, and what follows a Wi-Fi switch.
#include "tables.h"

namespace {

Row getInt(std::vector<std::string> keys, Steps owner) {
  return {std::move(keys),
          {mainLog("START"), takesLock(), systemLog("Key ---->{key}::Value------>77\n"),
           std::move(owner), systemLog("status------>{result}\n"), mainLog("END"), unlocks()}};
}

Row setInt(std::vector<std::string> keys, int value, Steps owner) {
  const std::string key = "Key ---->{key}::Value------>" + std::to_string(value) + "\n";
  return {
      std::move(keys),
      {mainLog("START"), takesLock(), systemLog(key), std::move(owner), mainLog("END"), unlocks()}};
}

Steps setMobile(int value) {
  const std::string shownValue = std::to_string(value);
  const std::string mode = value != 0 ? "1" : "0";
  const Steps refusal = {mainLog("Failed to read input data Try Again..\n"), gives("-1")};
  const Steps change = {
      ask("util_set_wakeOnMobile_mode", value != 0)
          .works({mainLog("Request to change wakeOnMobile Mode succeeded"),
                  mobileModeIsRead(value != 0, {gives(mode)}, {gives("-1")})})
          .fails({mainLog("Fail to set wakeOnMobile mode [0xfffffff7]\n"), gives("-1")})};
  return {mainLog("m_MobileDeviceTVList Value for provider is " + shownValue + " "),
          mainLog("Enter the wakeOnMobile Mode Value Enable ->1 ,Disable ->0:\n"),
          value < 0 ? refusal : change, mainLog("status {result} ")};
}

// The choice is recorded and the refresh timer started even if the radio failed.
Steps setWifi(int value) {
  const std::string shownValue = std::to_string(value);
  const auto afterwards = [&](const std::string& radioResult) -> Steps {
    return {
        ask("vconf_set_int", "memory/menu/network/wifionui_enabled", value),
        mainLog("wifi_set_power_state ret = [" + radioResult + "], value = [" + shownValue + "]"),
        startsTimer()};
  };
  return {ask("wifi_set_enable_qx", value != 0 ? 1 : 0)
              .works({afterwards("0"), gives("1")})
              .fails({afterwards("-9"), gives("-1")})};
}

Steps setDirect(int value) {
  const int preference = value == 1 ? 1 : 2;
  const std::string shownPreference = std::to_string(preference);
  return {ask("vconf_set_int", kDirectKey, preference)
              .works({mainLog("Set Int Status=0::" + shownPreference), gives("0")})
              .fails({mainLog("Set Int Status=-9::" + shownPreference), gives("-9")})};
}

// Whether EAP could be switched goes to standard output only; the choice is stored anyway.
Steps setWired(const World& world, int value) {
  const bool isEntry = value == 0 || value == 1;
  if (!isEntry || !world.wiredListWasAsked) {
    return {mainLog("set_device_name::status [0xffffffff]"), gives("-1")};
  }
  const char* complaint = value == 1 ? "Failed to Enable EAP over Ethernet"  //
                                     : "Failed to disable EAP over Ethernet";
  return {ask("connection_profile_enable_ethernet_eap", "profile 2", value == 1)
              .fails({prints(complaint)}),
          ask("vconf_set_int", kWiredKey, value)
              .works({gives("0")})
              .fails({mainLog("vconf KEY [{key}] is fail value [" + std::to_string(value) +
                              "]  and status=-9 !!!!!!!!!!"),
                      gives("-9")})};
}

// Nothing says what is logged after a failed write; this line is our own choice.
Steps setName(int value) {
  const bool isDefaultName = value == 0;
  if (!isDefaultName) return {mainLog("set_device_name::status [0xffffffff]"), gives("-1")};
  return {ask("vconf_set_str", kNameKey, kTvName)
              .works({mainLog("Device Name set to TV One"), gives("0")})
              .fails({mainLog("set_device_name::status [0xfffffff7]"), gives("-9")})};
}

Step command(const std::string& ssid) {
  return ask("vconf_set_str", "memory/NW-Daemon/Command",
             "{\n\t\"COMMAND\" : \"1\",\n\t\"SSID\" : \"" + ssid + "\"\n}");
}

// Without the networks' document the command names no network.
Steps connects(const World& world, int network) {
  const char* ssid = network == 1 ? "Net One" : "Net Two";
  return {networksAreRead(world, {networkLine(world, network), command(ssid)}, {command("")}),
          gives("-1")};
}

}  // namespace

Table getIntTable(const World& world) {
  return {
      getInt({kMobileKey},
             mobileModeIsRead(
                 true, {mainLog("connection_get_wakeOnMobile_mode set to 1"), gives("1", "1")},
                 {mainLog("connection_get_wakeOnMobile_mode set to -1"),
                  mainLog("wifi_direct_get_device_name::status [0xffffffff]"),
                  gives("-1", kUntouched)})),
      getInt({kWifiItemKey},
             {ask("wifi_get_enable_qx")
                  .works({mainLog("wifi_get_power_state  ret = [0], value = [1]"), gives("1", "1")})
                  .fails({mainLog("wifi_get_power_state  ret = [-9], value = [77]"),
                          gives("-1", kUntouched)})
                  .failsWithOutput({mainLog("wifi_get_power_state  ret = [-9], value = [1]"),
                                    gives("-1", "1")})}),
      getInt(
          {kDirectItemKey},
          directStateIsRead(world, {mainLog("getInt , value after changing = 1"), gives("1", "1")},
                            {mainLog("getInt , value after changing = 0"), gives("1", "0")})),
      getInt({kWiredItemKey}, {ask("vconf_get_int", kWiredKey)
                                   .works({gives("1", "1")})
                                   .fails({gives("0", "0")})
                                   .failsWithOutput({gives("1", "1")})}),
      getInt({}, {ask("vconf_get_str", kNameKey)
                      .works({mainLog("dName==TV One\n"), mainLog("value=0\n"), gives("0", "0")})
                      .fails({mainLog("wifi_direct_get_device_name::status [0xffffffff]"),
                              mainLog("value=77\n"), gives("-1", kUntouched)})}),
  };
}

Table setIntTable(const World& world, int value) {
  return {
      setInt({kFirstNetworkKey}, value, connects(world, 1)),
      setInt({kSecondNetworkKey}, value, connects(world, 2)),
      setInt({kMobileKey}, value, setMobile(value)),
      setInt({kWifiItemKey}, value, setWifi(value)),
      setInt({kDirectItemKey}, value, setDirect(value)),
      setInt({kWiredItemKey}, value, setWired(world, value)),
      setInt({}, value, setName(value)),
  };
}

Table setStringTable(const World& /*world*/) {
  return {
      {{},
       {takesLock(), mainLog("START"),
        ask("vconf_set_str", kNameKey, "TV Three")
            .works({mainLog("Device Name set to TV Three"), gives("0")})
            .fails({systemLog("wifi_direct_set_device_name::status [0xfffffff7]"), gives("-9")}),
        unlocks()}},
  };
}

Table currentValueTable(const World& /*world*/) {
  return {
      {{},
       {mainLog("START"),
        ask("vconf_get_str", kNameKey)
            .works({mainLog("********* Value: TV One **********"), gives("0", "TV One")})
            .fails({systemLog("get_device_name::Failed"),
                    mainLog("********* Value: sentinel **********"), gives("-1", kUntouched)}),
        mainLog("END")}},
  };
}

// A switch, and eight seconds.
Table refreshTimerTable(const World& world) {
  return {
      {{},
       {stepsFor(setIntTable(world, 1), kWifiItemKey), endsTimer(),
        ask("vconf_set_int", kRefreshKey, 1)
            .works({mainLog("Success to Set REFRESH_MENU_VCONF")})
            .fails({mainLog("Failed to set REFRESH_MENU_VCONF ")})}},
  };
}

Table notificationTable(const World& /*world*/) {
  return {{{}, {ask("vconf_set_int", kRefreshKey, 100002)}}};
}
