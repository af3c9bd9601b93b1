// get_list_items, the callbacks of its items, free_list_items; the icons.
#include "tables.h"

namespace {

constexpr char kOff[] = "SID_OFF";
constexpr char kOn[] = "SID_ON";
constexpr char kNameEntry[] = "&#x202d;TV One";
constexpr char kUserEntry[] = "SID_USER_INPUT";
const std::vector<std::string> kStateKeys = {VENTARO_KEY_SAVED_NETWORK_1_STATES,
                                             VENTARO_KEY_SAVED_NETWORK_2_STATES};
const std::vector<std::string> kOnOffKeys = {kMobileKey, kWifiItemKey, kDirectItemKey,
                                             kWiredItemKey};

// For each entry its text, its value, and what follows when it is chosen.
std::string entries(const std::string& first, int firstAction, const std::string& second,
                    int secondAction) {
  return first + " 0 " + std::to_string(firstAction) + ", " + second + " 1 " +
         std::to_string(secondAction);
}

Row list(std::vector<std::string> keys, Steps items) {
  return {
      std::move(keys),
      {takesLock(), mainLog("START"), mainLog("Key ---->{key}::\n"), std::move(items), unlocks()}};
}

Row aboutItem(std::vector<std::string> keys, Steps answer) {
  return {std::move(keys), {takesLock(), mainLog("START"), std::move(answer), unlocks()}};
}

Row display(std::vector<std::string> keys, const std::string& text) {
  return aboutItem(std::move(keys), {mainLog("pDisplayValue = " + text + "::1"), gives("0", text)});
}

// The icons' folder.
std::string systemSetup(const std::string& file) {
  return "/usr/apps/com.norvane.tv.theme-resource/shared/res/ug-SystemSetupNetworkUG-efl/res/"
         "systemsetup/" +
         file;
}

Row titleIcon(std::vector<std::string> keys, Steps icon) {
  return {std::move(keys),
          {takesLock(), mainLog("START"), mainLog("key = {key}"), std::move(icon), unlocks()}};
}

// The signal of a network, the lowest without the document.
Steps signal(const World& world, int network) {
  const std::string line = std::string(" AP Name = ") + (network == 1 ? "Net One" : "Net Two") +
                           " status = " + statusOf(world, network) +
                           " SignalStrength =  " + (network == 1 ? "4294967226" : "4294967216");
  const std::string level = network == 1 ? "3" : "2";
  return networksAreRead(
      world,
      {mainLog(line), gives("0", systemSetup("icon_wifi/oobe_icon_n_wifi_" + level + ".svg"))},
      {gives("0", systemSetup("icon_wifi/oobe_icon_n_wifi_0.svg"))});
}

// The state of a network: the busy animation, or a check mark that depends on the contrast.
Steps state(const World& world, int network) {
  const Steps connected = {
      ask("vconf_get_int", kHighContrastKey)
          .works({mainLog("Is high contrast mode"),
                  gives("0",
                        "/usr/apps/com.norvane.tv.theme-resource/shared/res//QX_ICONS/"
                        "COMMON_HIGHCONTRAST/i_icon_info_check.svg")})
          .fails({mainLog("vconf_get_int db/menu/system/accessibility/highcontrast error"),
                  gives("0", systemSetup("r_icon_xs_check.png"))})};
  const bool isConnected = std::string(statusOf(world, network)) == "Connected";
  return {watchesNetworks(), mainLog("START"),
          networksAreRead(
              world,
              {networkLine(world, network), isConnected ? connected : Steps{gives("0", "loading")}},
              {gives("0", "\"\"")})};
}

Row secondIcon(std::vector<std::string> keys, Steps icon) {
  return {std::move(keys), {takesLock(), mainLog("key = {key}"), std::move(icon), unlocks()}};
}

}  // namespace

Table listItemsTable(const World& world) {
  const Step size = mainLog("listSize==2\n");
  return {
      list(kStateKeys, {gives("3", "disconnected 0 0, loading 1 0, connected 2 0")}),
      list({kMobileKey}, {size, gives("2", entries(kOff, 0, kOn, 2))}),
      list({kWifiItemKey}, {size, regulationIsRead(world, {gives("2", entries(kOff, 2, kOn, 2))},
                                                   {gives("2", entries(kOff, 2, kOn, 0))})}),
      list({kDirectItemKey}, {size, gives("2", entries(kOff, 1, kOn, 1))}),
      list({kWiredItemKey},
           {size, mainLog("pDisplayValue[0]=SID_OFF::SID_OFF"),
            mainLog("pDisplayValue[1]=SID_ON::SID_ON"), gives("2", entries(kOff, 1, kOn, 1))}),
      list({}, {ask("evas_textblock_text_utf8_to_markup", "null", kTvName)
                    .works({gives("2", entries(kNameEntry, 0, kUserEntry, 1))})
                    .fails({mainLog("evas_textblock_text_utf8_to_markup returned NULL"),
                            gives("2", entries("\"\"", 0, kUserEntry, 1))})}),
  };
}

// Of the second entry of the key's list.
Table itemDisplayValueTable(const World& /*world*/) {
  return {display(kStateKeys, "loading"), display(kOnOffKeys, kOn), display({}, kUserEntry)};
}

Table itemIntValueTable(const World& /*world*/) {
  return {aboutItem({}, {gives("0", "1"), mainLog("END")})};
}

Table itemActionTable(const World& world) {
  return {
      aboutItem(kStateKeys, {gives("0", "0")}),
      aboutItem({kMobileKey}, {gives("0", "2")}),
      aboutItem({kWifiItemKey}, {gives("0", world.energyRegulation ? "2" : "0")}),
      aboutItem({}, {gives("0", "1")}),
  };
}

Table freeListTable(const World& /*world*/) {
  return {aboutItem({}, {gives("0")})};
}

Table titleIconTable(const World& world) {
  return {
      titleIcon({kFirstNetworkKey}, signal(world, 1)),
      titleIcon({kSecondNetworkKey}, signal(world, 2)),
      titleIcon({}, {gives("0", systemSetup("icon_wifi/oobe_icon_n_wifi_4.png"))}),
  };
}

// Every key but the first network's is answered as the second's.
Table secondIconTable(const World& world) {
  return {secondIcon({kFirstNetworkKey}, state(world, 1)), secondIcon({}, state(world, 2))};
}
