// The callback that gives an item's name. every_key_table.cpp lists which prefix of a key gets
// which name.
#include <string>

#include "provider_test.h"

namespace {

constexpr char kDocumentKey[] = "db/menu/network/TopSavedAP";

constexpr char kFirstNetworkItem[] = VENTARO_KEY_SAVED_NETWORK_1;
constexpr char kSecondNetworkItem[] = VENTARO_KEY_SAVED_NETWORK_2;

constexpr char kTwoNetworks[] =
    R"({"count": 2, "values": [{"SSID": "Net One", "SIGNAL_STRENGTH": -60, "STATUS": "Connected"},)"
    R"( {"SSID": "Net Two", "SIGNAL_STRENGTH": -80, "STATUS": "Saved"}]})";

constexpr std::size_t kBlockSize = 2048;

struct TranslatedName {
  const char* key;
  const char* sid;
};

// The names that come from the catalogue.
constexpr TranslatedName kTranslatedNames[] = {
    {VENTARO_KEY_NETWORK, "COM_SID_NETWORK"},
    {VENTARO_KEY_NETWORK_STATUS, "TV_SID_NETWORK_STATUS"},
    {VENTARO_KEY_NETWORK_SETTINGS, "TV_SID_NETWORK_SETTINGS"},
    {VENTARO_KEY_POWER_ON_WITH_MOBILE_US, "TV_SID_SYSTEM_POWER_ON_WITH_MOBILE"},
    {VENTARO_KEY_POWER_ON_WITH_MOBILE_NOT_US, "TV_SID_SYSTEM_POWER_ON_WITH_MOBILE"},
    {VENTARO_KEY_RESET_NETWORK, "TV_SID_SYSTEM_RESET_NETWORK"},
    {VENTARO_KEY_INSTALL_CERTIFICATE, "COM_SID_NETWORK_INSTALL_CERTIFICATE"},
    {VENTARO_KEY_CERTIFICATE_LIST, "COM_SID_SIGNAGE_CDFEB_NETWORK_CERTIFICATE"},
    {VENTARO_KEY_CERTIFICATE_MANAGER, "COM_SID_NETWORK_CETIFICATE_MANAGER"},
    {VENTARO_KEY_SELECT_DEVICE_NAME, "COM_TV_DEVICE_NAME"},
    {VENTARO_KEY_EXPERT_SETTINGS, "TV_SID_EXPERT_SETTINGS"},
    {VENTARO_KEY_EASY_CONNECTION, "TV_SID_MENU_EASY_CONNECTION"},
    {VENTARO_KEY_WIFI, "COM_WI_FI"},
    {VENTARO_KEY_WIFI_DIRECT, "COM_WI_FI_DIRECT"},
    {VENTARO_KEY_WIRED_EAP, "COM_SID_CM_CADEC_WIRED_802_1X_CONNECTION"},
};

class DisplayNames : public ProviderTest {
 protected:
  // The name, which the callback must return with the result 0 in a new block.
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
  EXPECT_EQ(name(VENTARO_KEY_NETWORK), "Network");
  useLanguage("ko");
  EXPECT_EQ(name(VENTARO_KEY_NETWORK), "네트워크");
  EXPECT_EQ(name(VENTARO_KEY_DEVICE_NAME), "기기 이름");
}

TEST_F(DisplayNames, TheNetworkResetHasTheSameNameOnEveryProduct) {
  create();
  flags().set("orlex_version", 2);
  flags().setBool("product.b2b_option_support", true);
  flags().setBool("broadcast.removable_rf_tuner_support", true);
  EXPECT_EQ(name(VENTARO_KEY_RESET_NETWORK), tr("TV_SID_SYSTEM_RESET_NETWORK"));
  EXPECT_EQ(calls(), Journal());
}

// ---- Which key gets which name ----

TEST_F(DisplayNames, AnUnknownKeyIsTheEmptyTextAndNoFailure) {
  create();
  for (const std::string& key :
       {std::string("no/such/key"), std::string(VENTARO_KEY_SAVED_NETWORK_1_STATES),
        std::string(VENTARO_KEY_OWNER), std::string("COM_SID_NETWORK"),
        std::string(" menu/general/network"), std::string("%s%n"), std::string(5000, 'm')}) {
    EXPECT_EQ(name(key), "");
    EXPECT_EQ(journal(), (Journal{mainLog("START"), locks(), mainLog("Key ---->" + key + "\n"),
                                  mainLog("Key does not Match"), unlocks()}));
  }
}

// ---- Names of saved networks ----

TEST_F(DisplayNames, ASavedNetworksNameIsNotTranslated) {
  create();
  store().set(kDocumentKey, R"({"count": 2, "values": [
      {"SSID": "COM_WI_FI", "SIGNAL_STRENGTH": -60}, {"SSID": "SID_ON", "SIGNAL_STRENGTH": -60}]})");
  EXPECT_NE(tr("COM_WI_FI"), "COM_WI_FI");
  EXPECT_EQ(name(kFirstNetworkItem), "COM_WI_FI");
  EXPECT_EQ(name(kSecondNetworkItem), "SID_ON");
}

// ---- The block ----

TEST_F(DisplayNames, ANameStandsInAZeroFilledBlockOf2048Bytes) {
  create();
  store().set(kDocumentKey, kTwoNetworks);
  for (const char* key : {VENTARO_KEY_NETWORK, VENTARO_KEY_WIRED_EAP, kFirstNetworkItem,
                          kSecondNetworkItem, "no/such/key"}) {
    const OwnedText text = displayName(key);
    ASSERT_EQ(text.blockSize(), kBlockSize) << key;
    EXPECT_TRUE(isZeroFilledBehindTheText(text)) << key;
  }
}

TEST_F(DisplayNames, EveryCallGivesABlockOfItsOwn) {
  create();
  const OwnedText first = displayName(VENTARO_KEY_NETWORK);
  const OwnedText second = displayName(VENTARO_KEY_NETWORK);
  EXPECT_NE(static_cast<const void*>(first.get()), second.get());
}

TEST_F(DisplayNames, ATranslationIsCutTo2047Bytes) {
  useLongTexts(256);
  create();
  const struct {
    const char* key;
    const char* sid;
    std::size_t size;
  } cases[] = {{VENTARO_KEY_WIFI, "COM_WI_FI", 2047},
               {VENTARO_KEY_WIFI_DIRECT, "COM_WI_FI_DIRECT", 2048},
               {VENTARO_KEY_NETWORK, "COM_SID_NETWORK", 3000},
               {VENTARO_KEY_NETWORK_STATUS, "TV_SID_NETWORK_STATUS", 2400}};
  for (const auto& each : cases) {
    ASSERT_EQ(tr(each.sid).size(), each.size);
    // By bytes, even through a two-byte character.
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

}  // namespace
