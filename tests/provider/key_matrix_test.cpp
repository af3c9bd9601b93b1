// Which callback answers which key: every key that the provider knows, its leading parts, longer
// keys, and the same in other letter case. What is right stands here, row by row.
#include <cctype>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "provider_test.h"

namespace {

// Who answers for an item.
enum class Owner {
  kPowerOnWithMobile,
  kWifi,
  kWifiDirect,
  kWiredEap,
  kDeviceName,
  kFirstNetwork,
  kSecondNetwork,
};
using enum Owner;

constexpr char kFirst[] = "Net One";
constexpr char kSecond[] = "Net Two";
constexpr char kNoName[] = "";
constexpr char kNetwork[] = "COM_SID_NETWORK";
constexpr char kStatus[] = "TV_SID_NETWORK_STATUS";
constexpr char kSettings[] = "TV_SID_NETWORK_SETTINGS";
constexpr char kMobile[] = "TV_SID_SYSTEM_POWER_ON_WITH_MOBILE";
constexpr char kReset[] = "TV_SID_SYSTEM_RESET_NETWORK";
constexpr char kInstall[] = "COM_SID_NETWORK_INSTALL_CERTIFICATE";
constexpr char kList[] = "COM_SID_SIGNAGE_CDFEB_NETWORK_CERTIFICATE";
constexpr char kManager[] = "COM_SID_NETWORK_CETIFICATE_MANAGER";
constexpr char kSelect[] = "COM_TV_DEVICE_NAME";
constexpr char kExpert[] = "TV_SID_EXPERT_SETTINGS";
constexpr char kEasyConnect[] = "TV_SID_MENU_EASY_CONNECTION";
constexpr char kWifiName[] = "COM_WI_FI";
constexpr char kDirect[] = "COM_WI_FI_DIRECT";
constexpr char kWired[] = "COM_SID_CM_CADEC_WIRED_802_1X_CONNECTION";

struct Row {
  const char* key;
  Owner getInt;
  Owner setInt;
  Owner getString;
  const char* displayName;
};

constexpr Row kMatrix[] = {
    // clang-format off
    {"menu/general/network",                     kDeviceName,        kDeviceName,        kDeviceName,        kNetwork},
    {"menu/network/networkstatus",               kDeviceName,        kDeviceName,        kDeviceName,        kStatus},
    {"menu/network/networksettings",             kDeviceName,        kDeviceName,        kDeviceName,        kSettings},
    {"menu/network/ResetNetwork",                kDeviceName,        kDeviceName,        kDeviceName,        kReset},
    {"menu/network/WiFiOnOff",                   kWifi,              kWifi,              kWifi,              kWifiName},
    {"menu/network/SavedAP1",                    kDeviceName,        kFirstNetwork,      kDeviceName,        kFirst},
    {"menu/network/SavedAP2",                    kDeviceName,        kSecondNetwork,     kDeviceName,        kSecond},
    {"SAVEDAP1_NAME_KEY",                        kDeviceName,        kDeviceName,        kDeviceName,        kNoName},
    {"SAVEDAP2_NAME_KEY",                        kDeviceName,        kDeviceName,        kDeviceName,        kNoName},
    {"menu/network/expertsettings",              kDeviceName,        kDeviceName,        kDeviceName,        kExpert},
    {"menu/network/expertsettings/wifidirect",   kWifiDirect,        kWifiDirect,        kWifiDirect,        kDirect},
    {"menu/network/expertsettings/easyconnect",  kDeviceName,        kDeviceName,        kDeviceName,        kEasyConnect},
    {"menu/network/WiredEAP",                    kWiredEap,          kWiredEap,          kWiredEap,          kWired},
    {"menu/network/MobileDeviceTV_US",           kPowerOnWithMobile, kPowerOnWithMobile, kPowerOnWithMobile, kMobile},
    {"menu/network/MobileDeviceTV_NOT_US",       kDeviceName,        kDeviceName,        kDeviceName,        kMobile},
    {"menu/network/devicename",                  kDeviceName,        kDeviceName,        kDeviceName,        kSelect},
    {"menu/network/devicename/selectdevicename", kDeviceName,        kDeviceName,        kDeviceName,        kSelect},
    {"menu/network/InstallCertificate",          kDeviceName,        kDeviceName,        kDeviceName,        kInstall},
    {"menu/network/CertificateList",             kDeviceName,        kDeviceName,        kDeviceName,        kList},
    {"menu/network/CertificateManager",          kDeviceName,        kDeviceName,        kDeviceName,        kManager},
    // clang-format on
};

// The leading parts of `longest`, from `shortest` on to `longest` itself, and their display name.
struct LeadingParts {
  const char* shortest;
  const char* longest;
  const char* displayName;
};

// Every leading part of every key once, the empty one included.
constexpr LeadingParts kLeadingParts[] = {
    {"", "menu/", kFirst},
    {"menu/g", "menu/general/network", kNetwork},
    {"menu/n", "menu/network/", kFirst},
    {"menu/network/S", "menu/network/SavedAP1", kFirst},
    {"menu/network/SavedAP2", "menu/network/SavedAP2", kSecond},
    {"menu/network/n", "menu/network/networkstatus", kStatus},
    {"menu/network/networkse", "menu/network/networksettings", kSettings},
    {"menu/network/M", "menu/network/MobileDeviceTV_US", kMobile},
    {"menu/network/MobileDeviceTV_N", "menu/network/MobileDeviceTV_NOT_US", kMobile},
    {"menu/network/R", "menu/network/ResetNetwork", kReset},
    {"menu/network/I", "menu/network/InstallCertificate", kInstall},
    {"menu/network/C", "menu/network/CertificateList", kList},
    {"menu/network/CertificateM", "menu/network/CertificateManager", kManager},
    {"menu/network/d", "menu/network/devicename/selectdevicename", kSelect},
    {"menu/network/e", "menu/network/expertsettings", kExpert},
    {"menu/network/expertsettings/", "menu/network/expertsettings/easyconnect", kEasyConnect},
    {"menu/network/W", "menu/network/WiFiOnOff", kWifiName},
    {"menu/network/expertsettings/w", "menu/network/expertsettings/wifidirect", kDirect},
    {"menu/network/Wir", "menu/network/WiredEA", kNoName},
    {"menu/network/WiredEAP", "menu/network/WiredEAP", kWired},
    {"S", "SAVEDAP1_NAME_KEY", kNoName},
    {"SAVEDAP2", "SAVEDAP2_NAME_KEY", kNoName},
};

using Keys = std::vector<std::string>;

Keys properLeadingParts(const std::string& key) {
  Keys parts;
  for (std::size_t size = 0; size < key.size(); ++size) parts.push_back(key.substr(0, size));
  return parts;
}

Keys appended(const std::string& key) {
  return {key + "x", key + "1", key + " ", key + "_US", key + key};
}

char inOtherCase(char c) {
  const auto letter = static_cast<unsigned char>(c);
  return static_cast<char>(std::isupper(letter) != 0 ? std::tolower(letter) : std::toupper(letter));
}

// The key in lower case, in upper case, with all letters and with a single one in the other case.
Keys inOtherCases(const std::string& key) {
  std::set<std::string> keys;
  std::string lower;
  std::string upper;
  std::string swapped;
  for (std::size_t i = 0; i < key.size(); ++i) {
    const auto letter = static_cast<unsigned char>(key[i]);
    lower += static_cast<char>(std::tolower(letter));
    upper += static_cast<char>(std::toupper(letter));
    swapped += inOtherCase(key[i]);
    std::string one = key;
    one[i] = inOtherCase(key[i]);
    keys.insert(one);
  }
  keys.insert({lower, upper, swapped});
  keys.erase(key);  // where the letter was none
  return {keys.begin(), keys.end()};
}

// All keys that are near a known one and that only leading parts could make known.
Keys nearMisses(const std::string& key) {
  Keys keys = properLeadingParts(key);
  for (const std::string& each : appended(key)) keys.push_back(each);
  for (const std::string& each : inOtherCases(key)) keys.push_back(each);
  return keys;
}

bool isMatrixKey(const std::string& key) {
  for (const Row& row : kMatrix) {
    if (key == row.key) return true;
  }
  return false;
}

// An answer, and by which platform calls it came about.
struct IntResult {
  IntAnswer answer;
  Journal calls;
};
struct SetResult {
  int result;
  Journal calls;
};
struct StringResult {
  std::string text;
  Journal calls;
};

Journal accessPointIsRead(const char* ap) {
  return {call("wifi_initialize"), call("wifi_get_connected_ap"), call("wifi_ap_get_frequency", ap),
          call("wifi_ap_destroy", ap), call("vconf_get_int", "db/menu/network/wifidirect")};
}

Journal nameIsRead() {
  return {call("vconf_get_str", "db/menu/network/devicename/tv_name")};
}

Journal networksAreRead() {
  return {call("vconf_get_str", "db/menu/network/TopSavedAP")};
}

Journal commandIsWritten(const std::string& ssid) {
  return {call("vconf_set_str", "memory/NW-Daemon/Command",
               "{\n\t\"COMMAND\" : \"1\",\n\t\"SSID\" : \"" + ssid + "\"\n}")};
}

// Every owner has a value that no other has, or at least calls of its own.
class KeyMatrix : public ProviderTest {
 protected:
  void SetUp() override {
    ProviderTest::SetUp();
    useLanguage("none");
    store().set("db/menu/network/devicename/default_tv_name", "TV One");
    store().set("db/menu/network/devicename/tv_name", "TV Two");
    store().set("db/menu/network/wifidirect", 1);
    store().set("db/menu/network/wiredeap", 7);
    store().set("db/menu/network/TopSavedAP",
                R"({"count": 2, "values": [{"SSID": "Net One", "SIGNAL_STRENGTH": -60},)"
                R"( {"SSID": "Net Two", "SIGNAL_STRENGTH": -80}]})");
    setRadio(3);
    create();
    setConnectedAp(5955);
    setWakeOnMobile(true);
    listItems("menu/network/WiredEAP");    // or the wired switch refuses all values
    displayName("menu/network/SavedAP1");  // from here on the saved networks are watched
  }

  void expectGetInt(const std::string& key, Owner owner) const {
    const std::map<Owner, IntResult> expected = {
        {kPowerOnWithMobile, {{1, 1}, {call("util_get_wakeOnMobile_mode")}}},
        {kWifi, {{1, 3}, {call("wifi_get_enable_qx")}}},
        {kWifiDirect, {{1, 1}, accessPointIsRead("ap 1")}},
        {kWiredEap, {{1, 1}, {call("vconf_get_int", "db/menu/network/wiredeap")}}},
        {kDeviceName, {{0, 1}, nameIsRead()}},
    };
    clearJournal();
    EXPECT_EQ(getInt(key.c_str()), expected.at(owner).answer) << key;
    EXPECT_EQ(calls(), expected.at(owner).calls) << key;
  }

  // Sets 0.
  void expectSetInt(const std::string& key, Owner owner) const {
    const std::map<Owner, SetResult> expected = {
        {kPowerOnWithMobile,
         {0, {call("util_set_wakeOnMobile_mode", false), call("util_get_wakeOnMobile_mode")}}},
        {kWifi,
         {1,
          {call("wifi_set_enable_qx", 0),
           call("vconf_set_int", "memory/menu/network/wifionui_enabled", 0),
           call("g_timeout_add_seconds", 2)}}},
        {kWifiDirect, {0, {call("vconf_set_int", "db/menu/network/wifidirect", 2)}}},
        {kWiredEap, {0, {call("vconf_set_int", "db/menu/network/wiredeap", 0)}}},
        {kDeviceName, {0, {call("vconf_set_str", "db/menu/network/devicename/tv_name", "TV One")}}},
        {kFirstNetwork, {-1, {networksAreRead(), commandIsWritten("Net One")}}},
        {kSecondNetwork, {-1, {networksAreRead(), commandIsWritten("Net Two")}}},
    };
    clearJournal();
    EXPECT_EQ(setInt(key.c_str(), 0), expected.at(owner).result) << key;
    EXPECT_EQ(calls(), expected.at(owner).calls) << key;
  }

  void expectGetString(const std::string& key, Owner owner) const {
    const std::map<Owner, StringResult> expected = {
        {kPowerOnWithMobile, {"SID_ON", {call("util_get_wakeOnMobile_mode")}}},
        {kWifi, {"SID_ON", {call("wifi_get_enable_qx")}}},
        {kWifiDirect, {"SID_ON", accessPointIsRead("ap 1")}},
        {kWiredEap, {"SID_ON", {call("vconf_get_int", "db/menu/network/wiredeap")}}},
        {kDeviceName, {"TV Two", nameIsRead()}},
    };
    clearJournal();
    OwnedText text;
    EXPECT_EQ(table().get_string(key.c_str(), text.out()), 1) << key;
    EXPECT_EQ(text, expected.at(owner).text) << key;
    EXPECT_EQ(calls(), expected.at(owner).calls) << key;
  }

  void expectDisplayName(const std::string& key, const std::string& name) const {
    clearJournal();
    OwnedText text;
    EXPECT_EQ(table().get_display_name(key.c_str(), text.out()), 0) << key;
    EXPECT_EQ(text, name) << key;
    const Journal expected = {mainLog("START"), locks(), mainLog("Key ---->" + key + "\n"),
                              linesOf(key, name), unlocks()};
    EXPECT_EQ(journal(), expected) << key;
  }

 private:
  // What the item with this name adds to the journal.
  static Journal linesOf(const std::string& key, const std::string& name) {
    if (name == kFirst || name == kSecond) {
      return {networksAreRead(), mainLog(" AP Name = Net One status =  "),
              mainLog(" AP Name = Net Two status =  "),
              mainLog(" AP Name = " + name + " status =  ")};
    }
    if (name == kReset) return {mainLog("START")};
    if (name == kExpert) return {mainLog("-expertsettings ->" + key + "\n")};
    if (name == kNoName) return {mainLog("Key does not Match")};
    return {};
  }
};

TEST_F(KeyMatrix, EveryKeysIntegerIsReadFromItsOwner) {
  for (const Row& row : kMatrix) expectGetInt(row.key, row.getInt);
}

TEST_F(KeyMatrix, EveryKeysIntegerIsSetByItsOwner) {
  for (const Row& row : kMatrix) expectSetInt(row.key, row.setInt);
}

TEST_F(KeyMatrix, EveryKeysTextIsReadFromItsOwner) {
  for (const Row& row : kMatrix) expectGetString(row.key, row.getString);
}

TEST_F(KeyMatrix, EveryKeyHasItsDisplayName) {
  for (const Row& row : kMatrix) expectDisplayName(row.key, row.displayName);
}

TEST_F(KeyMatrix, AnIntegerIsTheDeviceNamesForEveryKeyThatIsNotExactlyAnItems) {
  for (const Row& row : kMatrix) {
    for (const std::string& key : nearMisses(row.key)) {
      expectGetInt(key, kDeviceName);
      expectSetInt(key, kDeviceName);
      store().set("db/menu/network/devicename/tv_name", "TV Two");
    }
  }
}

TEST_F(KeyMatrix, ATextIsTheDeviceNameForEveryKeyThatIsNotExactlyASwitchs) {
  for (const Row& row : kMatrix) {
    for (const std::string& key : nearMisses(row.key)) expectGetString(key, kDeviceName);
  }
}

TEST_F(KeyMatrix, ADisplayNameIsOfTheFirstItemThatTheKeyIsALeadingPartOf) {
  for (const LeadingParts& parts : kLeadingParts) {
    const std::string longest = parts.longest;
    for (std::size_t size = std::string(parts.shortest).size(); size <= longest.size(); ++size) {
      expectDisplayName(longest.substr(0, size), parts.displayName);
    }
  }
}

TEST_F(KeyMatrix, ALongerKeyHasNoDisplayName) {
  for (const Row& row : kMatrix) {
    for (const std::string& key : appended(row.key)) expectDisplayName(key, kNoName);
  }
}

TEST_F(KeyMatrix, AKeyInOtherLetterCaseHasNoDisplayName) {
  for (const Row& row : kMatrix) {
    for (const std::string& key : inOtherCases(row.key)) expectDisplayName(key, kNoName);
  }
}

// ---- The tables of this test ----

TEST(KeyMatrixTables, NameEveryLeadingPartOfEveryKeyExactlyOnce) {
  std::multiset<std::string> named;
  for (const LeadingParts& parts : kLeadingParts) {
    const std::string longest = parts.longest;
    ASSERT_TRUE(longest.starts_with(parts.shortest));
    for (std::size_t size = std::string(parts.shortest).size(); size <= longest.size(); ++size) {
      named.insert(longest.substr(0, size));
    }
  }
  std::set<std::string> leadingParts;
  for (const Row& row : kMatrix) {
    for (const std::string& each : properLeadingParts(row.key)) leadingParts.insert(each);
    leadingParts.insert(row.key);
  }
  EXPECT_EQ(Keys(named.begin(), named.end()), Keys(leadingParts.begin(), leadingParts.end()));
}

TEST(KeyMatrixTables, ANearMissIsNoKeyThatAnIntegerOrTextBelongsTo) {
  for (const Row& row : kMatrix) {
    for (const std::string& key : nearMisses(row.key)) {
      if (!isMatrixKey(key)) continue;
      EXPECT_TRUE(key == "menu/network/expertsettings" || key == "menu/network/devicename") << key;
    }
  }
}

}  // namespace
