#include "every_key_answers.h"

#include <gtest/gtest.h>

#include <ostream>

#include "wifi_direct_status.h"

namespace {

constexpr char kIcons[] =
    "/usr/apps/com.norvane.tv.theme-resource/shared/res/ug-SystemSetupNetworkUG-efl/res/"
    "systemsetup/";

Journal networks(int count = 2) {
  Journal lines = {call("vconf_get_str", kDocument), mainLog(" AP Name = Net One status = a ")};
  if (count == 2) lines = {lines, mainLog(" AP Name = Net Two status = Connecting ")};
  return lines;
}

Journal wakes(bool enabled) {
  if (!enabled) {
    return {call("util_get_wakeOnMobile_mode"),
            mainLog("Request to get wakeOnMobile mode succeeded : "),
            mainLog("wakeOnMobile Disabled\n")};
  }
  return {call("util_get_wakeOnMobile_mode"),
          mainLog("Request to get wakeOnMobile mode succeeded : "),
          mainLog("wakeOnMobile Enabled\n"), mainLog("_IsPowerOnWithMobileEnable =>1")};
}

Journal command(const char* ssid) {
  return {call("vconf_set_str", "memory/NW-Daemon/Command",
               "{\n\t\"COMMAND\" : \"1\",\n\t\"SSID\" : \"" + std::string(ssid) + "\"\n}")};
}

Journal featureFlag(const char* name) {
  return {call("system_info_get_custom_bool", std::string("com.norvane/featureconf/") + name)};
}

}  // namespace

void PrintTo(const Answer& answer, std::ostream* out) {
  *out << answer.result << "\n" << testing::PrintToString(answer.journal);
}

Journal b2bOption() {
  return {featureFlag("product.b2b_option_support"),
          mainLog("system info get fail: com.norvane/featureconf/product.b2b_option_support"),
          mainLog("supported = false")};
}

Answer enabled(const std::string& key, Rule rule, bool split, int count) {
  const auto answer = [&](bool yes, const Journal& lines) {
    return Answer{yes ? "true" : "false", {locks(), mainLog("key = " + key), lines, unlocks()}};
  };
  const Journal counted = {networks(count), mainLog("Saved AP Count " + std::to_string(count))};
  const std::string state =
      split ? R"({"end": {"style": "PAP_FN"}, "status": "PostCondition"})" : "{}";
  const Journal parsed = {call("vconf_get_str", "memory/multiscreen/state"),
                          mainLog("Vconf for Multiview: [" + state + "]"),
                          mainLog("parsingSuccessful[true]  root [" + state + "] ")};
  switch (rule) {
    case kOneNetwork:
      return answer(true, counted);
    case kTwoNetworks:
      return answer(count == 2, counted);
    case kWholeScreen:
      if (!split) return answer(true, {parsed, mainLog("EndStyleValue is null"), b2bOption()});
      return answer(false, {parsed, mainLog("EndStyle=PAP_FN"), mainLog("Status=PostCondition"),
                            mainLog("Method Name matched to MobileDetection")});
    default:
      return answer(true, {});
  }
}

Answer intOf(const std::string& key, Owner owner) {
  const auto answer = [&](int result, int value, const Journal& lines) {
    return Answer{
        std::to_string(result) + ", " + std::to_string(value),
        {mainLog("START"), locks(), systemLog("Key ---->" + key + "::Value------>77\n"), lines,
         systemLog("status------>" + std::to_string(result) + "\n"), mainLog("END"), unlocks()}};
  };
  switch (owner) {
    case kMobile:
      return answer(1, 1, {wakes(true), mainLog("connection_get_wakeOnMobile_mode set to 1")});
    case kWifi:
      return answer(
          1, 1,
          {call("wifi_get_enable_qx"), mainLog("wifi_get_power_state  ret = [0], value = [1]")});
    case kDirect:
      return answer(1, 0,
                    {wifiDirectStatusWithoutAp(), mainLog("getInt , value after changing = 0")});
    case kWired:
      return answer(1, 1, {call("vconf_get_int", "db/menu/network/wiredeap")});
    default:
      return answer(0, 1, {call("vconf_get_str", kTvName), mainLog("value=1\n")});
  }
}

Answer setOf(const std::string& key, Owner owner) {
  const auto answer = [&](int result, const Journal& lines) {
    return Answer{std::to_string(result),
                  {mainLog("START"), locks(), systemLog("Key ---->" + key + "::Value------>0\n"),
                   lines, mainLog("END"), unlocks()}};
  };
  switch (owner) {
    case kMobile:
      return answer(0, {mainLog("m_MobileDeviceTVList Value for provider is 0 "),
                        mainLog("Enter the wakeOnMobile Mode Value Enable ->1 ,Disable ->0:\n"),
                        call("util_set_wakeOnMobile_mode", false),
                        mainLog("Request to change wakeOnMobile Mode succeeded"), wakes(false),
                        mainLog("status 0 ")});
    case kWifi:
      return answer(1, {call("wifi_set_enable_qx", 0),
                        call("vconf_set_int", "memory/menu/network/wifionui_enabled", 0),
                        mainLog("wifi_set_power_state ret = [0], value = [0]"),
                        call("g_timeout_add_seconds", 2)});
    case kDirect:
      return answer(0, {call("vconf_set_int", "db/menu/network/wifidirect", 2),
                        mainLog("Set Int Status=0::2")});
    case kWired:
      return answer(0, {call("vconf_set_int", "db/menu/network/wiredeap", 0)});
    case kNetwork1:
      return answer(-1,
                    {networks(), mainLog(" AP Name = Net One status = a "), command("Net One")});
    case kNetwork2:
      return answer(
          -1, {networks(), mainLog(" AP Name = Net Two status = Connecting "), command("Net Two")});
    default:
      return answer(
          0, {call("vconf_set_str", kTvName, "TV One"), mainLog("Device Name set to TV One")});
  }
}

Answer textOf(Owner owner) {
  const auto answer = [&](const char* text, const Journal& lines) {
    return Answer{std::string("1, ") + text,
                  {locks(), mainLog("START"), lines, mainLog("END"), unlocks()}};
  };
  switch (owner) {
    case kMobile:
      return answer("SID_ON", {wakes(true), mainLog("connection_get_wakeOnMobile_mode set to 1"),
                               mainLog("CMobileDeviceTVObj.setOnOffStatus==SID_ON")});
    case kWifi:
      return answer("SID_ON", {call("wifi_get_enable_qx"),
                               mainLog("connection_get_wakeOnMobile_mode set to 0"),
                               mainLog("CWiFiOnOffObj.setOnOffStatus==SID_ON")});
    case kDirect:
      return answer("SID_OFF", {wifiDirectStatusWithoutAp(), mainLog("setOnOffStatus 0"),
                                mainLog("CWiFiDirectObj.setOnOffStatus==SID_OFF")});
    case kWired:
      return answer("SID_ON", {call("vconf_get_int", "db/menu/network/wiredeap"),
                               mainLog("CWiredEAPObj.setOnOffStatus==SID_ON")});
    default:
      return answer("TV Two", {call("vconf_get_str", kTvName),
                               mainLog("wifi_direct_get_device_name::status [0x0000]")});
  }
}

Answer nameOf(const std::string& key, const char* name) {
  const std::string text = name != kNone ? name : "";
  Journal lines;
  if (name == kName1) lines = {networks(), mainLog(" AP Name = Net One status = a ")};
  if (name == kName2) lines = {networks(), mainLog(" AP Name = Net Two status = Connecting ")};
  if (name == kResetName) lines = {mainLog("START")};
  if (name == kExpertName) lines = {mainLog("-expertsettings ->" + key + "\n")};
  if (name == kNone) lines = {mainLog("Key does not Match")};
  return {"0, " + text,
          {mainLog("START"), locks(), mainLog("Key ---->" + key + "\n"), lines, unlocks()}};
}

Answer helpOf(const char* help) {
  const bool unknown = help == kNone;
  Journal lines = {mainLog("START")};
  if (unknown) lines = {lines, mainLog("Key does not Match")};
  return {"0, " + std::string(unknown ? "" : help), {lines, mainLog("END")}};
}

Answer listOf(const std::string& key, List list) {
  const auto answer = [&](const char* entries, const Journal& lines) {
    return Answer{
        entries,
        {locks(), mainLog("START"), mainLog("Key ---->" + key + "::\n"), lines, unlocks()}};
  };
  const Journal size = {mainLog("listSize==2\n")};
  switch (list) {
    case kStates:
      return answer("disconnected 0 0, loading 1 0, connected 2 0, ", {});
    case kMobileList:
      return answer("SID_OFF 0 0, SID_ON 1 2, ", size);
    case kWifiList:
      return answer("SID_OFF 0 2, SID_ON 1 0, ",
                    {size, mainLog("START"), featureFlag("setting.eu_energy_regulation"),
                     mainLog("[WifiOFFON => 0]")});
    case kDirectList:
      return answer("SID_OFF 0 1, SID_ON 1 1, ", size);
    case kWiredList:
      return answer("SID_OFF 0 1, SID_ON 1 1, ",
                    {size, mainLog("pDisplayValue[0]=SID_OFF::SID_OFF"),
                     mainLog("pDisplayValue[1]=SID_ON::SID_ON")});
    default:
      return answer("&#x202d;TV One 0 0, SID_USER_INPUT 1 1, ",
                    {call("evas_textblock_text_utf8_to_markup", "null", "TV One")});
  }
}

Answer titleOf(const std::string& key, Icon icon) {
  const auto answer = [&](const char* file, const Journal& lines) {
    return Answer{std::string("0, ") + kIcons + "icon_wifi/oobe_icon_n_wifi_" + file,
                  {locks(), mainLog("START"), mainLog("key = " + key), lines, unlocks()}};
  };
  switch (icon) {
    case kFirstSignal:
      return answer("1.svg", {networks(), mainLog(" AP Name = Net One status = a "
                                                  "SignalStrength =  4294967208")});
    case kSecondSignal:
      return answer("2.svg", {networks(), mainLog(" AP Name = Net Two status = Connecting "
                                                  "SignalStrength =  4294967216")});
    default:
      return answer("4.png", {});
  }
}

Answer statusOf(const std::string& key, Icon icon) {
  const bool first = icon == kFirstStatus;
  return {first ? "0, " : "0, loading",
          {locks(), mainLog("key = " + key), mainLog("START"), networks(),
           mainLog(first ? " AP Name = Net One status = a "
                         : " AP Name = Net Two status = Connecting "),
           unlocks()}};
}
