#include <algorithm>
#include <stdexcept>

#include "contract/functions.h"
#include "tables.h"

const Steps& stepsFor(const Table& table, const std::string& key) {
  for (const Row& row : table) {
    if (row.keys.empty() || std::ranges::find(row.keys, key) != row.keys.end()) return row.steps;
  }
  throw std::logic_error("no row for the key \"" + key + "\"");
}

const std::vector<std::string>& allKeys() {
  static const std::vector<std::string> keys = [] {
    std::vector<std::string> all(contract::kKeys.begin(), contract::kKeys.end());
    all.insert(all.end(), {"", "menu/network/Wired"});
    return all;
  }();
  return keys;
}

const char* statusOf(const World& world, int network) {
  const int connected = world.networks == Networks::kSecondConnected ? 2 : 1;
  return network == connected ? "Connected" : "Connecting";
}

Step networkLine(const World& world, int network) {
  return mainLog(std::string(" AP Name = ") + (network == 1 ? "Net One" : "Net Two") +
                 " status = " + statusOf(world, network) + " ");
}

Steps networksAreRead(const World& world, Steps read, Steps none) {
  if (world.networks == Networks::kMisshapen) {
    return {watchesNetworks(), ask("vconf_get_str", kNetworksKey)
                                   .works({raises("Json::LogicError"), unlocks(), ends()})
                                   .fails(std::move(none))};
  }
  return {watchesNetworks(),
          ask("vconf_get_str", kNetworksKey)
              .works({networkLine(world, 1), networkLine(world, 2), std::move(read)})
              .fails(std::move(none))};
}

Steps mobileModeIsRead(bool isOn, Steps known, Steps unknown) {
  const Steps on = {mainLog("wakeOnMobile Enabled\n"), mainLog("_IsPowerOnWithMobileEnable =>1")};
  const Steps off = {mainLog("wakeOnMobile Disabled\n")};
  return {ask("util_get_wakeOnMobile_mode")
              .works({mainLog("Request to get wakeOnMobile mode succeeded : "), isOn ? on : off,
                      std::move(known)})
              .fails({mainLog("Fail to get wakeOnMobile mode[0xfffffff7]\n"), std::move(unknown)})};
}

Steps directStateIsRead(const World& world, const Steps& on, const Steps& off) {
  const bool is6Ghz = world.frequencyMhz > 5915;
  // The preference On counts only at 6 GHz; an unreadable one does not count as On. It is always
  // read.
  const Steps preference6Ghz = {
      ask("vconf_get_int", kDirectKey).works(on).fails(off).failsWithOutput(on)};
  const Steps preference = {ask("vconf_get_int", kDirectKey).works(off).fails(off)};
  const Steps ofAccessPoint = {
      ask("wifi_ap_get_frequency", "ap {ap}")
          .works({mainLog("Frequency : " + std::to_string(world.frequencyMhz) + "\n"),
                  ask("wifi_ap_destroy", "ap {ap}"), is6Ghz ? preference6Ghz : preference})
          .fails({ask("wifi_ap_destroy", "ap {ap}"), preference})};
  const Steps ofNoAccessPoint = {refused("wifi_ap_get_frequency", "null"),
                                 refused("wifi_ap_destroy", "null"), preference};
  const Step failure = mainLog("Fail to get connected AP ");
  return {ask("wifi_initialize").works({mainLog("Wifi init succeeded\n")}),
          ask("wifi_get_connected_ap")
              .works(ofAccessPoint)
              .fails({failure, ofNoAccessPoint})
              .failsWithOutput({failure, ofAccessPoint})};
}

Steps regulationIsRead(const World& world, Steps applies, Steps appliesNot) {
  const Steps set = {mainLog("[WifiOFFON => 1]"), std::move(applies)};
  const Steps notSet = {mainLog("[WifiOFFON => 0]"), std::move(appliesNot)};
  return {mainLog("START"),
          ask("system_info_get_custom_bool", "com.norvane/featureconf/setting.eu_energy_regulation")
              .works(world.energyRegulation ? set : notSet)
              .fails({mainLog(" Error: Fail to get "
                              "com.norvane/featureconf/setting.eu_energy_regulation value"),
                      set})};
}
