// Every callback that takes a key, asked with every key that the provider knows, with every leading
// part of these, with longer keys, and with keys in other letter case. The tables below say who
// answers; what each answer is made of has tests of its own.
#include <cctype>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "provider_test.h"
#include "wifi_direct_status.h"

namespace {

// What answers for a value: a setting object, a saved network, or the device name's object.
enum class Owner { kMobile, kWifi, kDirect, kWired, kName, kNetwork1, kNetwork2 };
using enum Owner;

// When an item is enabled.
enum class Rule { kAlways, kOneNetwork, kTwoNetworks, kWholeScreen };
using enum Rule;

// An option list: the states of a saved network, or an owner's.
enum class List { kStates, kMobileList, kWifiList, kDirectList, kWiredList, kNameList };
using enum List;

// An icon: fixed, or the first or the second saved network's.
enum class Icon { kFullSignal, kFirstSignal, kSecondSignal, kFirstStatus, kSecondStatus };
using enum Icon;

// No name or help text: the key matches nothing.
constexpr const char* kNone = nullptr;

struct Row {
  const char* key;
  Rule checkEnableInt;
  Owner getInt;
  Owner setInt;
  Owner getString;
  const char* displayName;
  const char* helpText;
  List listItems;
  Icon titleIcon;
  Icon secondIcon;
};

constexpr char kName1[] = "Net One";
constexpr char kName2[] = "Net Two";
constexpr char kNetworkName[] = "COM_SID_NETWORK";
constexpr char kNetworkHelp[] = "TV_SID_SYSTEM_42683_CONFIGURE_TV_NETWORK";
constexpr char kStatusName[] = "TV_SID_NETWORK_STATUS";
constexpr char kStatusHelp[] = "COM_SID_VIEW_CURRENT_NETWORK_INTERNET_STATUS";
constexpr char kSettingsName[] = "TV_SID_NETWORK_SETTINGS";
constexpr char kSettingsHelp[] = "TV_SID_CONFIGURE_NETWORK_SETTINGS_CONNECT_AVAIL";
constexpr char kResetName[] = "TV_SID_SYSTEM_RESET_NETWORK";
constexpr char kResetHelp[] = "TV_SID_SYSTEM_RESTORE_NETWORK_SETTINGS_DEFAULT";
constexpr char kWifiName[] = "COM_WI_FI";
constexpr char kWifiHelp[] = "TV_SID_SETTINGS_CANOV_ENABLE_DISABLE_WIFI_OPTION";
constexpr char kExpertName[] = "TV_SID_EXPERT_SETTINGS";
constexpr char kExpertHelp[] = "TV_SID_CONFIGURE_ADVANCED_NETWORK_SETTINGS";
constexpr char kDirectName[] = "COM_WI_FI_DIRECT";
constexpr char kDirectHelp[] = "TV_SID_SETTINGS_MIX_CBOCT_USE_SOME_SERVICE_WIFI_DIRECT_TURN_ON";
constexpr char kEasyName[] = "TV_SID_MENU_EASY_CONNECTION";
constexpr char kEasyHelp[] = "PJT_SID_MENU_TEMP_SET_TV_WIFI_MOBILE_CONNECT";
constexpr char kWiredName[] = "COM_SID_CM_CADEC_WIRED_802_1X_CONNECTION";
constexpr char kWiredHelp[] = "COM_SID_CM_CADEC_ENALBE_OPTION_WIRED802";
constexpr char kMobileName[] = "TV_SID_SYSTEM_POWER_ON_WITH_MOBILE";
constexpr char kMobileHelp[] = "PJT_SID_SYSTEM_ALLOW_MOBILE_SMARTPHONE_TABLET_TV";
constexpr char kDeviceName[] = "COM_TV_DEVICE_NAME";
constexpr char kDeviceHelp[] = "COM_SID_CHANGE_TV_DEVICE_NAME_MOBILE_NETWORK";
constexpr char kInstallName[] = "COM_SID_NETWORK_INSTALL_CERTIFICATE";
constexpr char kInstallHelp[] = "COM_SID_NETWORK_CONNECT_USB_CERTI_DEVICE";
constexpr char kListName[] = "COM_SID_SIGNAGE_CDFEB_NETWORK_CERTIFICATE";
constexpr char kListHelp[] =
    "COM_SID_SIGNAGE_CDFEB_VIEW_AND_MANAGE_NW_CERTIFICATE_DEVICE\n"
    "COM_SID_NETWORK_CONNECT_USB_CERTI_DEVICE";
constexpr char kManagerName[] = "COM_SID_NETWORK_CETIFICATE_MANAGER";
constexpr char kManagerHelp[] = "COM_SID_NETWORK_MANGE_CERTI_INSTALLED_DEVICE";

// clang-format off
constexpr Row kRows[] = {
    // key                                       enabled       get_int  set_int    get_string  name           help           list         title          second
    {"menu/general/network",                     kAlways,      kName,   kName,     kName,      kNetworkName,  kNetworkHelp,  kNameList,   kFullSignal,   kSecondStatus},
    {"menu/network/networkstatus",               kAlways,      kName,   kName,     kName,      kStatusName,   kStatusHelp,   kNameList,   kFullSignal,   kSecondStatus},
    {"menu/network/networksettings",             kAlways,      kName,   kName,     kName,      kSettingsName, kSettingsHelp, kNameList,   kFullSignal,   kSecondStatus},
    {"menu/network/ResetNetwork",                kAlways,      kName,   kName,     kName,      kResetName,    kResetHelp,    kNameList,   kFullSignal,   kSecondStatus},
    {"menu/network/WiFiOnOff",                   kAlways,      kWifi,   kWifi,     kWifi,      kWifiName,     kWifiHelp,     kWifiList,   kFullSignal,   kSecondStatus},
    {"menu/network/SavedAP1",                    kOneNetwork,  kName,   kNetwork1, kName,      kName1,        kNone,         kNameList,   kFirstSignal,  kFirstStatus},
    {"menu/network/SavedAP2",                    kTwoNetworks, kName,   kNetwork2, kName,      kName2,        kNone,         kNameList,   kSecondSignal, kSecondStatus},
    {"SAVEDAP1_NAME_KEY",                        kAlways,      kName,   kName,     kName,      kNone,         kNone,         kStates,     kFullSignal,   kSecondStatus},
    {"SAVEDAP2_NAME_KEY",                        kAlways,      kName,   kName,     kName,      kNone,         kNone,         kStates,     kFullSignal,   kSecondStatus},
    {"menu/network/expertsettings",              kAlways,      kName,   kName,     kName,      kExpertName,   kExpertHelp,   kNameList,   kFullSignal,   kSecondStatus},
    {"menu/network/expertsettings/wifidirect",   kAlways,      kDirect, kDirect,   kDirect,    kDirectName,   kDirectHelp,   kDirectList, kFullSignal,   kSecondStatus},
    {"menu/network/expertsettings/easyconnect",  kAlways,      kName,   kName,     kName,      kEasyName,     kEasyHelp,     kNameList,   kFullSignal,   kSecondStatus},
    {"menu/network/WiredEAP",                    kAlways,      kWired,  kWired,    kWired,     kWiredName,    kWiredHelp,    kWiredList,  kFullSignal,   kSecondStatus},
    {"menu/network/MobileDeviceTV_US",           kAlways,      kMobile, kMobile,   kMobile,    kMobileName,   kMobileHelp,   kMobileList, kFullSignal,   kSecondStatus},
    {"menu/network/MobileDeviceTV_NOT_US",       kAlways,      kName,   kName,     kName,      kMobileName,   kMobileHelp,   kNameList,   kFullSignal,   kSecondStatus},
    {"menu/network/devicename",                  kWholeScreen, kName,   kName,     kName,      kDeviceName,   kDeviceHelp,   kNameList,   kFullSignal,   kSecondStatus},
    {"menu/network/devicename/selectdevicename", kAlways,      kName,   kName,     kName,      kDeviceName,   kDeviceHelp,   kNameList,   kFullSignal,   kSecondStatus},
    {"menu/network/InstallCertificate",          kAlways,      kName,   kName,     kName,      kInstallName,  kInstallHelp,  kNameList,   kFullSignal,   kSecondStatus},
    {"menu/network/CertificateList",             kAlways,      kName,   kName,     kName,      kListName,     kListHelp,     kNameList,   kFullSignal,   kSecondStatus},
    {"menu/network/CertificateManager",          kAlways,      kName,   kName,     kName,      kManagerName,  kManagerHelp,  kNameList,   kFullSignal,   kSecondStatus},
};

// Every other key. Names and help texts also have rows for leading parts.
constexpr Row kAnyOther =
    {"",                                         kAlways,      kName,   kName,     kName,      kNone,         kNone,         kNameList,   kFullSignal,   kSecondStatus};
// clang-format on

// The leading parts of `longest`, from `shortest` to `longest` itself.
struct LeadingParts {
  const char* shortest;
  const char* longest;
  const char* text;
};

constexpr LeadingParts kNames[] = {
    {"", "menu/network/SavedAP1", kName1},
    {"menu/network/SavedAP2", "menu/network/SavedAP2", kName2},
    {"menu/g", "menu/general/network", kNetworkName},
    {"menu/network/n", "menu/network/networkstatus", kStatusName},
    {"menu/network/networkse", "menu/network/networksettings", kSettingsName},
    {"menu/network/M", "menu/network/MobileDeviceTV_US", kMobileName},
    {"menu/network/MobileDeviceTV_N", "menu/network/MobileDeviceTV_NOT_US", kMobileName},
    {"menu/network/R", "menu/network/ResetNetwork", kResetName},
    {"menu/network/I", "menu/network/InstallCertificate", kInstallName},
    {"menu/network/C", "menu/network/CertificateList", kListName},
    {"menu/network/CertificateM", "menu/network/CertificateManager", kManagerName},
    {"menu/network/d", "menu/network/devicename/selectdevicename", kDeviceName},
    {"menu/network/e", "menu/network/expertsettings", kExpertName},
    {"menu/network/expertsettings/", "menu/network/expertsettings/easyconnect", kEasyName},
    {"menu/network/W", "menu/network/WiFiOnOff", kWifiName},
    {"menu/network/expertsettings/w", "menu/network/expertsettings/wifidirect", kDirectName},
    {"menu/network/WiredEAP", "menu/network/WiredEAP", kWiredName},
};

constexpr LeadingParts kHelps[] = {
    {"", "menu/general/network", kNetworkHelp},
    {"menu/n", "menu/network/networkstatus", kStatusHelp},
    {"menu/network/networkse", "menu/network/networksettings", kSettingsHelp},
    {"menu/network/M", "menu/network/MobileDeviceTV_US", kMobileHelp},
    {"menu/network/MobileDeviceTV_N", "menu/network/MobileDeviceTV_NOT_US", kMobileHelp},
    {"menu/network/d", "menu/network/devicename/selectdevicename", kDeviceHelp},
    {"menu/network/R", "menu/network/ResetNetwork", kResetHelp},
    {"menu/network/e", "menu/network/expertsettings", kExpertHelp},
    {"menu/network/I", "menu/network/InstallCertificate", kInstallHelp},
    {"menu/network/C", "menu/network/CertificateList", kListHelp},
    {"menu/network/CertificateM", "menu/network/CertificateManager", kManagerHelp},
    {"menu/network/expertsettings/", "menu/network/expertsettings/easyconnect", kEasyHelp},
    {"menu/network/W", "menu/network/WiFiOnOff", kWifiHelp},
    {"menu/network/expertsettings/w", "menu/network/expertsettings/wifidirect", kDirectHelp},
    {"menu/network/WiredEAP", "menu/network/WiredEAP", kWiredHelp},
};

// The text of the rows that the key belongs to: at most one.
template <std::size_t size>
const char* textOf(const LeadingParts (&table)[size], const std::string& key) {
  const char* text = kNone;
  for (const LeadingParts& parts : table) {
    if (!key.starts_with(parts.shortest) || !std::string(parts.longest).starts_with(key)) continue;
    EXPECT_EQ(text, kNone) << key << " stands twice in the table of this test";
    text = parts.text;
  }
  return text;
}

// What the tables say of a key.
Row expectedOf(const std::string& key) {
  for (const Row& row : kRows) {
    if (key == row.key) return row;
  }
  Row row = kAnyOther;
  row.displayName = textOf(kNames, key);
  row.helpText = textOf(kHelps, key);
  return row;
}

std::string withOtherCase(std::string text, std::size_t from, std::size_t to) {
  for (std::size_t i = from; i < to; ++i) {
    const auto c = static_cast<unsigned char>(text[i]);
    text[i] = static_cast<char>(std::isupper(c) != 0 ? std::tolower(c) : std::toupper(c));
  }
  return text;
}

std::string inLowerCase(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

std::string inUpperCase(std::string text) {
  for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

// The known keys and their neighbours.
std::set<std::string> allKeys() {
  std::set<std::string> keys;
  for (const Row& row : kRows) {
    const std::string key = row.key;
    for (std::size_t size = 0; size <= key.size(); ++size) keys.insert(key.substr(0, size));
    for (const char* more : {"x", "/", "1", "2", " ", "\x01", "\xff", "_US"})
      keys.insert(key + more);
    for (std::size_t i = 0; i < key.size(); ++i) keys.insert(withOtherCase(key, i, i + 1));
    keys.insert(withOtherCase(key, 0, key.size()));
    keys.insert(inLowerCase(key));
    keys.insert(inUpperCase(key));
  }
  return keys;
}

// ---- Answers ----

// What came back, as a line of text, and the whole journal.
struct Answer {
  std::string result;
  Journal journal;
  bool operator==(const Answer&) const = default;
};
void PrintTo(const Answer& answer, std::ostream* out) {
  *out << answer.result << "\n" << testing::PrintToString(answer.journal);
}

constexpr char kDocument[] = "db/menu/network/TopSavedAP";
constexpr char kTvName[] = "db/menu/network/devicename/tv_name";
constexpr char kIcons[] =
    "/usr/apps/com.norvane.tv.theme-resource/shared/res/ug-SystemSetupNetworkUG-efl/res/"
    "systemsetup/";

std::string whole(const char* text) {
  return text != nullptr ? text : "(null)";
}

class EveryKey : public ProviderTest {
 protected:
  // No two answers are alike.
  void SetUp() override {
    ProviderTest::SetUp();
    useLanguage("none");
    store().set("db/menu/network/devicename/default_tv_name", "TV One");
    store().set("db/menu_widget/language", "en");
    store().set("db/menu/network/wiredeap", 1);
    store().set("memory/multiscreen/state", "{}");
    flags().setBool("setting.eu_energy_regulation", false);
    setWakeOnMobile(true);
    publish(2);
    create();
    listItems("menu/network/WiredEAP");    // or the wired switch refuses every value
    displayName("menu/network/SavedAP1");  // from here on the saved networks are watched
    startAnew();
  }

  // What setting a value may have changed.
  static void startAnew() {
    store().set(kTvName, "TV Two");
    setRadio(1);
    setWakeOnMobile(true);
    store().set("db/menu/network/wiredeap", 1);
    clearJournal();
  }

  static void publish(int networks) {
    store().set(kDocument,
                R"({"count": )" + std::to_string(networks) +
                    R"(, "values": [{"SSID": "Net One", "SIGNAL_STRENGTH": -88, "STATUS": "a"},)"
                    R"( {"SSID": "Net Two", "SIGNAL_STRENGTH": -80, "STATUS": "Connecting"}]})");
  }

  // ---- Pieces of expected journals ----

  static Journal networks(int count = 2) {
    Journal lines = {call("vconf_get_str", kDocument), mainLog(" AP Name = Net One status = a ")};
    if (count == 2) lines = {lines, mainLog(" AP Name = Net Two status = Connecting ")};
    return lines;
  }

  static Journal wakes(bool enabled) {
    if (!enabled) {
      return {call("util_get_wakeOnMobile_mode"),
              mainLog("Request to get wakeOnMobile mode succeeded : "),
              mainLog("wakeOnMobile Disabled\n")};
    }
    return {call("util_get_wakeOnMobile_mode"),
            mainLog("Request to get wakeOnMobile mode succeeded : "),
            mainLog("wakeOnMobile Enabled\n"), mainLog("_IsPowerOnWithMobileEnable =>1")};
  }

  static Journal command(const char* ssid) {
    return {call("vconf_set_str", "memory/NW-Daemon/Command",
                 "{\n\t\"COMMAND\" : \"1\",\n\t\"SSID\" : \"" + std::string(ssid) + "\"\n}")};
  }

  static Journal featureFlag(const char* name) {
    return {call("system_info_get_custom_bool", std::string("com.norvane/featureconf/") + name)};
  }

  static Journal b2bOption() {
    return {featureFlag("product.b2b_option_support"),
            mainLog("system info get fail: com.norvane/featureconf/product.b2b_option_support"),
            mainLog("supported = false")};
  }

  // ---- check_enable_int ----

  // With the screen as a whole or split, and with so many saved networks.
  static Answer enabled(const std::string& key, Rule rule, bool split, int count) {
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

  Answer checkEnableInt(const std::string& key) const {
    clearJournal();
    const bool yes = entries().check_enable_int(key.c_str(), 1);
    return {yes ? "true" : "false", journal()};
  }

  // ---- get_int, set_int, get_string ----

  static Answer intOf(const std::string& key, Owner owner) {
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

  Answer getIntOf(const std::string& key) const {
    clearJournal();
    const IntAnswer answer = getInt(key.c_str());
    return {std::to_string(answer.result) + ", " + std::to_string(answer.value), journal()};
  }

  // Of setting 0.
  static Answer setOf(const std::string& key, Owner owner) {
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
        return answer(-1, {networks(), mainLog(" AP Name = Net Two status = Connecting "),
                           command("Net Two")});
      default:
        return answer(
            0, {call("vconf_set_str", kTvName, "TV One"), mainLog("Device Name set to TV One")});
    }
  }

  Answer setIntOf(const std::string& key) const {
    startAnew();
    const int result = setInt(key.c_str(), 0);
    Answer answer{std::to_string(result), journal()};
    startAnew();
    return answer;
  }

  static Answer textOf(Owner owner) {
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

  Answer getStringOf(const std::string& key) const {
    clearJournal();
    OwnedText text;
    const int result = table().get_string(key.c_str(), text.out());
    return {std::to_string(result) + ", " + text.str(), journal()};
  }

  // ---- get_display_name, get_help_text ----

  static Answer nameOf(const std::string& key, const char* name) {
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

  Answer displayNameOf(const std::string& key) const {
    clearJournal();
    OwnedText text;
    const int result = table().get_display_name(key.c_str(), text.out());
    return {std::to_string(result) + ", " + text.str(), journal()};
  }

  // The lines of the texts that depend on the product are left out: they are many, and no other
  // item has them.
  static Answer helpOf(const char* help) {
    const bool unknown = help == kNone;
    Journal lines = {mainLog("START")};
    if (unknown) lines = {lines, mainLog("Key does not Match")};
    return {"0, " + std::string(unknown ? "" : help), {lines, mainLog("END")}};
  }

  Answer helpTextOf(const std::string& key) const {
    clearJournal();
    OwnedText text;
    const int result = table().get_help_text(key.c_str(), text.out());
    Journal lines;
    for (const Journal::Piece& each :
         {mainLog("START"), mainLog("Key does not Match"), mainLog("END")}) {
      if (logLines().contains(each)) lines = {lines, each};
    }
    return {std::to_string(result) + ", " + text.str(), lines};
  }

  // ---- get_list_items ----

  static Answer listOf(const std::string& key, List list) {
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

  Answer listItemsOf(const std::string& key) const {
    clearJournal();
    const OptionList list = listItems(key.c_str());
    Answer answer{"", journal()};
    for (int i = 0; i < list.count(); ++i) {
      answer.result += list.text(i) + " " + std::to_string(list.value(i)) + " " +
                       std::to_string(list.action(i)) + ", ";
    }
    return answer;
  }

  // ---- get_title_icon_path, get_second_icon_path ----

  static Answer titleOf(const std::string& key, Icon icon) {
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

  static Answer statusOf(const std::string& key, Icon icon) {
    const bool first = icon == kFirstStatus;
    return {first ? "0, " : "0, loading",
            {locks(), mainLog("key = " + key), mainLog("START"), networks(),
             mainLog(first ? " AP Name = Net One status = a "
                           : " AP Name = Net Two status = Connecting "),
             unlocks()}};
  }

  Answer iconOf(int (*callback)(const char*, char**), const std::string& key) const {
    clearJournal();
    OwnedText path;
    const int result = callback(key.c_str(), path.out());
    return {std::to_string(result) + ", " + path.str(), journal()};
  }

  // ---- Those that never look at the key ----

  void expectTheSameForAllKeys(const std::string& key) const {
    clearJournal();
    EXPECT_EQ(table().set_string(key.c_str(), "TV Two"), 0);
    EXPECT_EQ(journal(),
              (Journal{locks(), mainLog("START"), call("vconf_set_str", kTvName, "TV Two"),
                       mainLog("Device Name set to TV Two"), unlocks()}));

    clearJournal();
    std::string buffer(VENTARO_CURRENT_VALUE_SIZE, '\0');
    char* value = buffer.data();
    EXPECT_EQ(table().get_current_value_sid(key.c_str(), &value), 0);
    EXPECT_STREQ(buffer.c_str(), "TV Two");
    EXPECT_EQ(journal(), (Journal{mainLog("START"), call("vconf_get_str", kTvName),
                                  mainLog("********* Value: TV Two **********"), mainLog("END")}));

    clearJournal();
    char text[VENTARO_MESSAGE_TEXT_SIZE] = "";
    char first[VENTARO_MESSAGE_BUTTON_SIZE] = "";
    char second[VENTARO_MESSAGE_BUTTON_SIZE] = "";
    int type = 77;
    EXPECT_EQ(table().get_messagebox_info(key.c_str(), text, first, second, &type), 0);
    EXPECT_STREQ(text, "TV_SID_SETTINGS_MIX_CASEP_SOME_FEATURES_NOT_AVAIL_GO_AHEAD");
    EXPECT_STREQ(first, "SID_YES");
    EXPECT_STREQ(second, "SID_NO");
    EXPECT_EQ(type, 2);

    clearJournal();
    EXPECT_TRUE(entries().check_visibility_int(key.c_str(), 0));
    EXPECT_EQ(journal(), (Journal{locks(), b2bOption(), unlocks()}));
    clearJournal();
    EXPECT_TRUE(entries().check_visibility_string(key.c_str(), ""));
    EXPECT_TRUE(entries().check_visibility_double(key.c_str(), 0));
    EXPECT_TRUE(entries().check_visibility_bool(key.c_str(), false));
    EXPECT_EQ(journal(), Journal());
    EXPECT_TRUE(entries().check_enable_string(key.c_str(), ""));
    EXPECT_TRUE(entries().check_enable_double(key.c_str(), 0));
    EXPECT_TRUE(entries().check_enable_bool(key.c_str(), false));
    EXPECT_EQ(journal(), (Journal{mainLog("check_enable_string"), mainLog("check_enable_double"),
                                  mainLog("check_enable_bool")}));
    EXPECT_TRUE(moduleInfo(key.c_str()).isNull());
  }
};

TEST_F(EveryKey, IsAnsweredByEveryCallbackAsTheTableSays) {
  const std::set<std::string> keys = allKeys();
  EXPECT_GT(keys.size(), 900U);
  for (const std::string& key : keys) {
    SCOPED_TRACE("key \"" + key + "\"");
    const Row row = expectedOf(key);
    EXPECT_EQ(checkEnableInt(key), enabled(key, row.checkEnableInt, false, 2));
    EXPECT_EQ(getIntOf(key), intOf(key, row.getInt));
    EXPECT_EQ(getStringOf(key), textOf(row.getString));
    EXPECT_EQ(displayNameOf(key), nameOf(key, row.displayName));
    EXPECT_EQ(helpTextOf(key), helpOf(row.helpText));
    EXPECT_EQ(listItemsOf(key), listOf(key, row.listItems));
    EXPECT_EQ(iconOf(table().get_title_icon_path, key), titleOf(key, row.titleIcon));
    EXPECT_EQ(iconOf(table().get_second_icon_path, key), statusOf(key, row.secondIcon));
    EXPECT_EQ(setIntOf(key), setOf(key, row.setInt));
    expectTheSameForAllKeys(key);
    if (HasFailure()) break;  // the other keys' would be the same
  }

  // What disables an item disables no other.
  publish(1);
  store().set("memory/multiscreen/state",
              R"({"end": {"style": "PAP_FN"}, "status": "PostCondition"})");
  for (const std::string& key : keys) {
    EXPECT_EQ(checkEnableInt(key), enabled(key, expectedOf(key).checkEnableInt, true, 1)) << key;
    if (HasFailure()) break;
  }
}

// The two tables of leading parts and the table of keys must not disagree.
TEST(EveryKeyTables, SayTheSameOfAWholeKey) {
  for (const Row& row : kRows) {
    EXPECT_EQ(whole(textOf(kNames, row.key)), whole(row.displayName)) << row.key;
    EXPECT_EQ(whole(textOf(kHelps, row.key)), whole(row.helpText)) << row.key;
  }
}

}  // namespace
