// The callback that gives an item's name. Which leading part of a key gets which name stands in
// key_matrix_test.cpp.
#include <json/value.h>

#include <string>

#include "provider_test.h"

namespace {

constexpr char kDocumentKey[] = "db/menu/network/TopSavedAP";

constexpr char kFirstNetworkItem[] = "menu/network/SavedAP1";
constexpr char kSecondNetworkItem[] = "menu/network/SavedAP2";

constexpr char kTwoNetworks[] =
    R"({"count": 2, "values": [{"SSID": "Net One", "SIGNAL_STRENGTH": -60, "STATUS": "Connected"},)"
    R"( {"SSID": "Net Two", "SIGNAL_STRENGTH": -80, "STATUS": "Saved"}]})";

constexpr std::size_t kBlockSize = 2048;

struct TranslatedName {
  const char* key;
  const char* sid;
};

// The names that come from the catalogue, in the order in which the keys are compared: 3 to 17,
// behind the two saved networks.
constexpr TranslatedName kTranslatedNames[] = {
    {"menu/general/network", "COM_SID_NETWORK"},
    {"menu/network/networkstatus", "TV_SID_NETWORK_STATUS"},
    {"menu/network/networksettings", "TV_SID_NETWORK_SETTINGS"},
    {"menu/network/MobileDeviceTV_US", "TV_SID_SYSTEM_POWER_ON_WITH_MOBILE"},
    {"menu/network/MobileDeviceTV_NOT_US", "TV_SID_SYSTEM_POWER_ON_WITH_MOBILE"},
    {"menu/network/ResetNetwork", "TV_SID_SYSTEM_RESET_NETWORK"},
    {"menu/network/InstallCertificate", "COM_SID_NETWORK_INSTALL_CERTIFICATE"},
    {"menu/network/CertificateList", "COM_SID_SIGNAGE_CDFEB_NETWORK_CERTIFICATE"},
    {"menu/network/CertificateManager", "COM_SID_NETWORK_CETIFICATE_MANAGER"},
    {"menu/network/devicename/selectdevicename", "COM_TV_DEVICE_NAME"},
    {"menu/network/expertsettings", "TV_SID_EXPERT_SETTINGS"},
    {"menu/network/expertsettings/easyconnect", "TV_SID_MENU_EASY_CONNECTION"},
    {"menu/network/WiFiOnOff", "COM_WI_FI"},
    {"menu/network/expertsettings/wifidirect", "COM_WI_FI_DIRECT"},
    {"menu/network/WiredEAP", "COM_SID_CM_CADEC_WIRED_802_1X_CONNECTION"},
};

class DisplayNames : public ProviderTest {
 protected:
  // The journal of the callback around what the item adds.
  static Journal aroundName(const std::string& key, const Journal& item = {}) {
    return {mainLog("START"), locks(), mainLog("Key ---->" + key + "\n"), item, unlocks()};
  }

  static Journal noMatch(const std::string& key) {
    return aroundName(key, {mainLog("Key does not Match")});
  }

  static Journal twoNetworksAreRead() {
    return {call("vconf_get_str", kDocumentKey), mainLog(" AP Name = Net One status = Connected "),
            mainLog(" AP Name = Net Two status = Saved ")};
  }

  static Journal networksAreWatched() { return {call("vconf_notify_key_changed", kDocumentKey)}; }

  // The name, which the callback must have given with the result 0 in a block of its own.
  std::string name(const std::string& key) const {
    OwnedText text;
    clearJournal();
    EXPECT_EQ(table().get_display_name(key.c_str(), text.out()), 0) << key;
    EXPECT_EQ(text.blockSize(), kBlockSize) << key;
    return text.str();
  }
};

bool isZeroFilledBehindTheText(const OwnedText& text) {
  return std::string(text.get() + text.length(), kBlockSize - text.length()) ==
         std::string(kBlockSize - text.length(), '\0');
}

// ---- Names from the catalogue ----

TEST_F(DisplayNames, WithoutACatalogueEveryNameIsItsStringId) {
  useLanguage("none");
  create();
  for (const TranslatedName& each : kTranslatedNames) EXPECT_EQ(name(each.key), each.sid);
}

TEST_F(DisplayNames, EveryNameIsTranslatedIntoTheUsersLanguage) {
  create();
  for (const char* language : {"en", "ko", "ar"}) {
    useLanguage(language);
    for (const TranslatedName& each : kTranslatedNames) {
      EXPECT_EQ(name(each.key), tr(each.sid)) << language;
      EXPECT_NE(name(each.key), each.sid) << language;
    }
  }
}

TEST_F(DisplayNames, ANameFollowsTheLanguageOfTheMoment) {
  create();
  EXPECT_EQ(name("menu/general/network"), "Network");
  useLanguage("ko");
  EXPECT_EQ(name("menu/general/network"), "네트워크");
  EXPECT_EQ(name("menu/network/devicename"), "기기 이름");
}

TEST_F(DisplayNames, ANameFromTheCatalogueNeedsNoPlatformCall) {
  create();
  for (const TranslatedName& each : kTranslatedNames) {
    name(each.key);
    EXPECT_EQ(calls(), Journal()) << each.key;
  }
}

TEST_F(DisplayNames, StartIsLoggedBeforeTheLockTheKeyUnderItAndNoEnd) {
  create();
  for (const TranslatedName& each : kTranslatedNames) {
    const std::string key = each.key;
    if (key == "menu/network/ResetNetwork" || key == "menu/network/expertsettings") continue;
    name(key);
    EXPECT_EQ(journal(), aroundName(key));
  }
}

TEST_F(DisplayNames, TheExpertSettingsLogTheAskedKeyOnceMore) {
  create();
  name("menu/network/expertsettings");
  EXPECT_EQ(journal(), aroundName("menu/network/expertsettings",
                                  {mainLog("-expertsettings ->menu/network/expertsettings\n")}));
  name("menu/network/exp");
  EXPECT_EQ(journal(),
            aroundName("menu/network/exp", {mainLog("-expertsettings ->menu/network/exp\n")}));
}

TEST_F(DisplayNames, TheNetworkResetLogsASecondStart) {
  create();
  for (const char* key : {"menu/network/ResetNetwork", "menu/network/R"}) {
    name(key);
    EXPECT_EQ(journal(), aroundName(key, {mainLog("START")}));
  }
}

TEST_F(DisplayNames, TheNetworkResetHasTheSameNameOnEveryProduct) {
  create();
  flags().set("orlex_version", 2);
  flags().setBool("product.b2b_option_support", true);
  flags().setBool("broadcast.removable_rf_tuner_support", true);
  EXPECT_EQ(name("menu/network/ResetNetwork"), tr("TV_SID_SYSTEM_RESET_NETWORK"));
  EXPECT_EQ(calls(), Journal());
}

// ---- Which key gets which name ----

TEST_F(DisplayNames, AKeyIsAnsweredByTheFirstItemThatItIsALeadingPartOf) {
  useLanguage("none");
  create();
  EXPECT_EQ(name("menu/g"), "COM_SID_NETWORK");
  EXPECT_EQ(name("menu/network/networks"), "TV_SID_NETWORK_STATUS");
  EXPECT_EQ(name("menu/network/networkse"), "TV_SID_NETWORK_SETTINGS");
  EXPECT_EQ(name("menu/network/Mobile"), "TV_SID_SYSTEM_POWER_ON_WITH_MOBILE");
  EXPECT_EQ(name("menu/network/Certificate"), "COM_SID_SIGNAGE_CDFEB_NETWORK_CERTIFICATE");
  EXPECT_EQ(name("menu/network/CertificateM"), "COM_SID_NETWORK_CETIFICATE_MANAGER");
  EXPECT_EQ(name("menu/network/expertsettings"), "TV_SID_EXPERT_SETTINGS");
  EXPECT_EQ(name("menu/network/expertsettings/"), "TV_SID_MENU_EASY_CONNECTION");
  EXPECT_EQ(name("menu/network/expertsettings/w"), "COM_WI_FI_DIRECT");
  EXPECT_EQ(name("menu/network/Wi"), "COM_WI_FI");
}

TEST_F(DisplayNames, TheDeviceNameItemIsALeadingPartOfItsSelectionEntry) {
  useLanguage("none");
  create();
  for (const char* key : {"menu/network/devicename", "menu/network/devicename/",
                          "menu/network/devicename/selectdevicename"}) {
    EXPECT_EQ(name(key), "COM_TV_DEVICE_NAME") << key;
    EXPECT_EQ(journal(), aroundName(key));
  }
}

TEST_F(DisplayNames, TheEmptyKeyIsTheFirstSavedNetwork) {
  create();
  store().set(kDocumentKey, kTwoNetworks);
  for (const char* key : {"", "menu", "menu/network/", "menu/network/Saved"}) {
    EXPECT_EQ(name(key), "Net One") << key;
  }
}

TEST_F(DisplayNames, TheWiredSwitchHasANameUnderItsWholeKeyOnly) {
  useLanguage("none");
  create();
  EXPECT_EQ(name("menu/network/WiredEAP"), "COM_SID_CM_CADEC_WIRED_802_1X_CONNECTION");
  for (const char* key : {"menu/network/WiredEA", "menu/network/Wired", "menu/network/Wir",
                          "menu/network/WiredEAP1", "menu/network/WiredEAP/"}) {
    EXPECT_EQ(name(key), "") << key;
    EXPECT_EQ(journal(), noMatch(key));
  }
}

TEST_F(DisplayNames, AKeyLongerThanAnItemsIsNotThatItem) {
  create();
  store().set(kDocumentKey, kTwoNetworks);
  for (const char* key :
       {"menu/network/SavedAP1x", "menu/network/SavedAP21", "menu/general/network/",
        "menu/network/expertsettings/easyconnectx", "menu/network/expertsettings/wifidirect/more",
        "menu/network/devicename/selectdevicename ", "menu/network/WiFiOnOff\n"}) {
    EXPECT_EQ(name(key), "") << key;
    EXPECT_EQ(journal(), noMatch(key));
  }
}

TEST_F(DisplayNames, LetterCaseMatters) {
  create();
  for (const char* key : {"menu/network/wifionoff", "MENU/NETWORK/WIFIONOFF", "Menu",
                          "menu/Network", "menu/network/savedap1", "menu/network/wiredeap"}) {
    EXPECT_EQ(name(key), "") << key;
    EXPECT_EQ(journal(), noMatch(key));
  }
}

TEST_F(DisplayNames, AnUnknownKeyIsTheEmptyTextAndNoFailure) {
  create();
  for (const std::string& key :
       {std::string("no/such/key"), std::string("SAVEDAP1_NAME_KEY"), std::string("provider/owner"),
        std::string("COM_SID_NETWORK"), std::string(" menu/general/network"), std::string("%s%n"),
        std::string(5000, 'm')}) {
    EXPECT_EQ(name(key), "");
    EXPECT_EQ(journal(), noMatch(key));
  }
}

// ---- Names of saved networks ----

TEST_F(DisplayNames, ASavedNetworkIsReadFromTheStoreAndWatchedFromTheFirstTimeOn) {
  create();
  store().set(kDocumentKey, kTwoNetworks);
  EXPECT_EQ(name(kFirstNetworkItem), "Net One");
  EXPECT_EQ(journal(),
            aroundName(kFirstNetworkItem, {networksAreWatched(), twoNetworksAreRead(),
                                           mainLog(" AP Name = Net One status = Connected ")}));
  EXPECT_EQ(name(kFirstNetworkItem), "Net One");
  EXPECT_EQ(journal(),
            aroundName(kFirstNetworkItem,
                       {twoNetworksAreRead(), mainLog(" AP Name = Net One status = Connected ")}));
  EXPECT_EQ(name(kSecondNetworkItem), "Net Two");
  EXPECT_EQ(journal(),
            aroundName(kSecondNetworkItem,
                       {twoNetworksAreRead(), mainLog(" AP Name = Net Two status = Saved ")}));
}

TEST_F(DisplayNames, ASavedNetworksNameIsNotTranslated) {
  create();
  store().set(kDocumentKey, R"({"count": 2, "values": [
      {"SSID": "COM_WI_FI", "SIGNAL_STRENGTH": -60}, {"SSID": "SID_ON", "SIGNAL_STRENGTH": -60}]})");
  EXPECT_NE(tr("COM_WI_FI"), "COM_WI_FI");
  EXPECT_EQ(name(kFirstNetworkItem), "COM_WI_FI");
  EXPECT_EQ(name(kSecondNetworkItem), "SID_ON");
}

TEST_F(DisplayNames, ASavedNetworksNameIsNoMarkupAndNoFormat) {
  create();
  store().set(kDocumentKey, R"({"count": 2, "values": [
      {"SSID": "Tom & <Jerry> <<A>>", "SIGNAL_STRENGTH": -60},
      {"SSID": "100%s %n \"카페\"", "SIGNAL_STRENGTH": -60}]})");
  EXPECT_EQ(name(kFirstNetworkItem), "Tom & <Jerry> <<A>>");
  EXPECT_EQ(name(kSecondNetworkItem), "100%s %n \"카페\"");
}

TEST_F(DisplayNames, ASavedNetworksNameIsReadAnewEveryTime) {
  create();
  store().set(kDocumentKey, kTwoNetworks);
  name(kFirstNetworkItem);
  store().set(kDocumentKey,
              R"({"count": 1, "values": [{"SSID": "Net Three", "SIGNAL_STRENGTH": -60}]})");
  EXPECT_EQ(name(kFirstNetworkItem), "Net Three");
  EXPECT_EQ(name(kSecondNetworkItem), "");
  store().erase(kDocumentKey);
  EXPECT_EQ(name(kFirstNetworkItem), "");
}

TEST_F(DisplayNames, WithoutSavedNetworksTheirNamesAreEmptyAndNoUnknownKey) {
  create();
  EXPECT_EQ(name(kFirstNetworkItem), "");
  EXPECT_EQ(journal(), aroundName(kFirstNetworkItem,
                                  {networksAreWatched(), call("vconf_get_str", kDocumentKey)}));
  EXPECT_EQ(name(kSecondNetworkItem), "");
  EXPECT_EQ(journal(), aroundName(kSecondNetworkItem, {call("vconf_get_str", kDocumentKey)}));
}

TEST_F(DisplayNames, WithOneSavedNetworkTheSecondHasNoName) {
  create();
  store().set(kDocumentKey,
              R"({"count": 1, "values": [{"SSID": "Net One", "SIGNAL_STRENGTH": -60}]})");
  name(kFirstNetworkItem);
  EXPECT_EQ(name(kSecondNetworkItem), "");
  EXPECT_EQ(journal(), aroundName(kSecondNetworkItem, {call("vconf_get_str", kDocumentKey),
                                                       mainLog(" AP Name = Net One status =  ")}));
}

TEST_F(DisplayNames, ADocumentThatIsNoJsonCountsAsNoSavedNetworks) {
  create();
  for (const char* document : {"", "no json", "{", R"({"count": 1,})"}) {
    store().set(kDocumentKey, document);
    EXPECT_EQ(name(kFirstNetworkItem), "") << document;
  }
}

// ---- The block ----

TEST_F(DisplayNames, ANameStandsInAZeroFilledBlockOf2048Bytes) {
  create();
  store().set(kDocumentKey, kTwoNetworks);
  for (const char* key : {"menu/general/network", "menu/network/WiredEAP", kFirstNetworkItem,
                          kSecondNetworkItem, "no/such/key"}) {
    const OwnedText text = displayName(key);
    ASSERT_EQ(text.blockSize(), kBlockSize) << key;
    EXPECT_TRUE(isZeroFilledBehindTheText(text)) << key;
  }
}

TEST_F(DisplayNames, EveryCallGivesABlockOfItsOwn) {
  create();
  const OwnedText first = displayName("menu/general/network");
  const OwnedText second = displayName("menu/general/network");
  EXPECT_NE(static_cast<const void*>(first.get()), second.get());
}

TEST_F(DisplayNames, ATranslationIsCutTo2047Bytes) {
  useLongTexts(256);
  create();
  const struct {
    const char* key;
    const char* sid;
    std::size_t size;
  } cases[] = {{"menu/network/WiFiOnOff", "COM_WI_FI", 2047},
               {"menu/network/expertsettings/wifidirect", "COM_WI_FI_DIRECT", 2048},
               {"menu/general/network", "COM_SID_NETWORK", 3000},
               {"menu/network/networkstatus", "TV_SID_NETWORK_STATUS", 2400}};
  for (const auto& each : cases) {
    ASSERT_EQ(tr(each.sid).size(), each.size);
    // By bytes, through a character of two if need be.
    EXPECT_EQ(name(each.key), tr(each.sid).substr(0, 2047)) << each.key;
  }
}

TEST_F(DisplayNames, ASavedNetworksNameIsCutTo2047Bytes) {
  create();
  for (const std::size_t size : {2047U, 2048U, 3000U}) {
    const std::string ssid(size, 'x');
    store().set(kDocumentKey,
                R"({"count": 1, "values": [{"SSID": ")" + ssid + R"(", "SIGNAL_STRENGTH": -60}]})");
    EXPECT_EQ(name(kFirstNetworkItem), std::string(2047, 'x')) << size;
  }
}

// ---- Misshapen documents ----

constexpr const char* kMisshapenDocuments[] = {
    R"({})",
    R"([])",
    R"([1, 2])",
    R"({"values": [{"SSID": "Net One", "SIGNAL_STRENGTH": -60}]})",
    R"({"count": "two", "values": []})",
    R"({"count": 10000000000, "values": []})",
    R"({"count": {}, "values": []})",
    R"({"count": 1, "values": "text"})",
    R"({"count": 1, "values": {"SSID": "Net One"}})",
    R"({"count": 1, "values": ["text"]})",
    R"({"count": 1, "values": [{"SSID": ["Net One"], "SIGNAL_STRENGTH": -60}]})",
    R"({"count": 1, "values": [{"SSID": "Net One"}]})",
    R"({"count": 1, "values": [{"SSID": "Net One", "SIGNAL_STRENGTH": "strong"}]})",
    R"({"count": 1, "values": [{"SSID": "Net One", "SIGNAL_STRENGTH": -60, "STATUS": {}}]})",
};

TEST_F(DisplayNames, AMisshapenDocumentRaisesAndLeavesTheOutputUntouched) {
  create();
  char preset[] = "preset";
  for (const char* document : kMisshapenDocuments) {
    store().set(kDocumentKey, document);
    for (const char* key : {kFirstNetworkItem, kSecondNetworkItem, ""}) {
      char* value = preset;
      EXPECT_THROW(table().get_display_name(key, &value), Json::LogicError) << document;
      EXPECT_EQ(static_cast<const void*>(value), preset) << document;
    }
  }
}

TEST_F(DisplayNames, TheLockIsFreeAfterADocumentRaised) {
  create();
  store().set(kDocumentKey, R"({"count": 1, "values": [{"SSID": "Net One"}]})");
  EXPECT_THROW(name(kFirstNetworkItem), Json::LogicError);
  EXPECT_EQ(journal(), aroundName(kFirstNetworkItem,
                                  {networksAreWatched(), call("vconf_get_str", kDocumentKey)}));
  EXPECT_EQ(name("menu/general/network"), "Network");
  EXPECT_EQ(journal(), aroundName("menu/general/network"));
}

TEST_F(DisplayNames, TheNetworkBeforeAMisshapenOneIsLoggedAndStillNotGiven) {
  create();
  store().set(kDocumentKey, R"({"count": 2, "values": [
      {"SSID": "Net One", "SIGNAL_STRENGTH": -60, "STATUS": "Connected"}, {"SSID": "Net Two"}]})");
  EXPECT_THROW(name(kFirstNetworkItem), Json::LogicError);
  EXPECT_EQ(journal(), aroundName(kFirstNetworkItem,
                                  {networksAreWatched(), call("vconf_get_str", kDocumentKey),
                                   mainLog(" AP Name = Net One status = Connected ")}));
}

TEST_F(DisplayNames, ADocumentThatWasMendedIsReadAgain) {
  create();
  store().set(kDocumentKey, "{}");
  EXPECT_THROW(name(kFirstNetworkItem), Json::LogicError);
  store().set(kDocumentKey, kTwoNetworks);
  EXPECT_EQ(name(kSecondNetworkItem), "Net Two");
}

TEST_F(DisplayNames, AMisshapenDocumentConcernsNoOtherName) {
  create();
  store().set(kDocumentKey, "{}");
  for (const TranslatedName& each : kTranslatedNames) EXPECT_EQ(name(each.key), tr(each.sid));
}

}  // namespace
