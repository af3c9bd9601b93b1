// The help texts: how each item's is built, on each kind of product.
#include <map>
#include <ostream>
#include <stdexcept>
#include <vector>

#include "provider_test.h"
#include "texts.h"

namespace {

constexpr char kLanguage[] = "db/menu_widget/language";
constexpr char kDeviceSid[] = "com.norvane/featureconf/product.device_sid";

constexpr char kNetwork[] = VENTARO_KEY_NETWORK;
constexpr char kStatus[] = VENTARO_KEY_NETWORK_STATUS;
constexpr char kSettings[] = VENTARO_KEY_NETWORK_SETTINGS;
constexpr char kMobileUs[] = VENTARO_KEY_POWER_ON_WITH_MOBILE_US;
constexpr char kMobileNotUs[] = VENTARO_KEY_POWER_ON_WITH_MOBILE_NOT_US;
constexpr char kDeviceName[] = VENTARO_KEY_SELECT_DEVICE_NAME;
constexpr char kReset[] = VENTARO_KEY_RESET_NETWORK;
constexpr char kExpert[] = VENTARO_KEY_EXPERT_SETTINGS;
constexpr char kInstall[] = VENTARO_KEY_INSTALL_CERTIFICATE;
constexpr char kList[] = VENTARO_KEY_CERTIFICATE_LIST;
constexpr char kManager[] = VENTARO_KEY_CERTIFICATE_MANAGER;
constexpr char kEasyConnect[] = VENTARO_KEY_EASY_CONNECTION;
constexpr char kWifi[] = VENTARO_KEY_WIFI;
constexpr char kWifiDirect[] = VENTARO_KEY_WIFI_DIRECT;
constexpr char kWiredEap[] = VENTARO_KEY_WIRED_EAP;

// The items whose text is one translation on every product, without the product's words.
struct PlainText {
  const char* key;
  const char* sid;
};
constexpr PlainText kPlainTexts[] = {
    {kStatus, "COM_SID_VIEW_CURRENT_NETWORK_INTERNET_STATUS"},
    {kSettings, "TV_SID_CONFIGURE_NETWORK_SETTINGS_CONNECT_AVAIL"},
    {kReset, "TV_SID_SYSTEM_RESTORE_NETWORK_SETTINGS_DEFAULT"},
    {kExpert, "TV_SID_CONFIGURE_ADVANCED_NETWORK_SETTINGS"},
    {kInstall, "COM_SID_NETWORK_CONNECT_USB_CERTI_DEVICE"},
    {kManager, "COM_SID_NETWORK_MANGE_CERTI_INSTALLED_DEVICE"},
    {kWifi, "TV_SID_SETTINGS_CANOV_ENABLE_DISABLE_WIFI_OPTION"},
    {kWiredEap, "COM_SID_CM_CADEC_ENALBE_OPTION_WIRED802"},
};

constexpr char kListFirst[] = "COM_SID_SIGNAGE_CDFEB_VIEW_AND_MANAGE_NW_CERTIFICATE_DEVICE";
constexpr char kListSecond[] = "COM_SID_NETWORK_CONNECT_USB_CERTI_DEVICE";
constexpr char kDirectTemplate[] = "TV_SID_SETTINGS_MIX_CBOCT_USE_SOME_SERVICE_WIFI_DIRECT_TURN_ON";
constexpr char kEasyTemplate[] = "PJT_SID_MENU_TEMP_SET_TV_WIFI_MOBILE_CONNECT";

// The texts of the three items that depend on the kind of product; the device's name is filled into
// the templates.
constexpr char kTvNetwork[] = "TV_SID_SYSTEM_42683_CONFIGURE_TV_NETWORK";
constexpr char kNetworkTemplate[] = "PJT_SID_SYSTEM_42683_CONFIGURE_TV_NETWORK";
constexpr char kScreenMobile[] =
    "REP.DEVICE.SCREEN_SID_SYSTEM_CCDEC_ALLOW_MOBILE_SMARTPHONE_TABLET";
constexpr char kMobileTemplate[] = "PJT_SID_SYSTEM_ALLOW_MOBILE_SMARTPHONE_TABLET_TV";
constexpr char kTvDeviceName[] = "COM_SID_CHANGE_TV_DEVICE_NAME_MOBILE_NETWORK";
constexpr char kScreenDeviceName[] =
    "REP.DEVICE.SCREEN_SID_CCDEC_CHANGE_DEVICE_NAME_MOBILE_NETWORK";
constexpr char kDeviceNameTemplate[] = "PJT_SID_CHANGE_TV_DEVICE_NAME_MOBILE_NETWORK";

// A kind of product: its flags, how it is determined, and its texts. A text is null if it is the
// template with the device's name.
struct ProductKind {
  const char* name;
  int code;
  const char* nameSid;
  bool tunerless;
  int generation;
  bool projector;
  bool smartMonitor;
  const char* network;
  const char* mobile;
  const char* deviceName;
};
void PrintTo(const ProductKind& product, std::ostream* out) {
  *out << product.name;
}

constexpr ProductKind kTv = {"Tv",  1,     "COM_SID_TV", false,   0,
                             false, false, kTvNetwork,   nullptr, kTvDeviceName};
constexpr ProductKind kScreen = {
    "Screen",         0, "REP.DEVICE.SCREEN", true, 0, false, false, nullptr, kScreenMobile,
    kScreenDeviceName};
constexpr ProductKind kProjector = {"Projector", 6,     "PJT_SID_TV", false,   0,
                                    true,        false, nullptr,      nullptr, nullptr};
constexpr ProductKind kProducts[] = {
    kTv,
    kScreen,
    kProjector,
    {"FirstModularDisplay", 3, "COM_SID_ORLEX", false, 1, false, false, nullptr, nullptr, nullptr},
    {"SecondModularDisplay", 7, "COM_TV_SID_MLED_CAOCT_NON_MICRO_LED", false, 2, false, false,
     nullptr, nullptr, nullptr},
    {"SmartMonitor", 8, "COM_SID_SMNT_CAAUG_MNT", false, 0, false, true, nullptr, nullptr, nullptr},
};

std::string filled(std::string text, const std::string& value) {
  for (std::size_t at = text.find("<<A>>"); at != std::string::npos; at = text.find("<<A>>")) {
    text.replace(at, 5, value);
  }
  return text;
}

class HelpTextTest : public ProviderTest {
 protected:
  void SetUp() override {
    ProviderTest::SetUp();
    store().set(kLanguage, "en");
    setProduct(kTv);
    flags().set(kDeviceSid, "REP.DEVICE.PROJECTOR");
    create();
  }

  static void setProduct(const ProductKind& product) {
    flags().setBool("broadcast.removable_rf_tuner_support", product.tunerless);
    flags().set("orlex_version", product.generation);
    flags().setBool("projector_feature_support", product.projector);
    flags().setBool("product.smart_monitor_feature_support", product.smartMonitor);
  }

  std::string help(const std::string& key) const {
    clearJournal();
    return helpText(key.c_str()).str();
  }

  // Takes effect at once.
  static void useTextsNow(const std::map<std::string, std::string>& texts) {
    useTexts(texts);
    bindCatalogues();
  }

  // ---- Pieces of journals ----

  static Journal ofHelp(const Journal& lines) {
    return {mainLog("START"), locks(),  call("vconf_get_str", kLanguage), lines,
            mainLog("END"),   unlocks()};
  }

  static Journal findsType(const ProductKind& product) {
    const Journal::Piece readsProjector =
        call("system_info_get_custom_bool", "com.norvane/featureconf/projector_feature_support");
    const Journal::Piece readsMonitor =
        call("system_info_get_custom_bool",
             "com.norvane/featureconf/product.smart_monitor_feature_support");
    const Journal tuner = {
        call("system_info_get_custom_bool",
             "com.norvane/featureconf/broadcast.removable_rf_tuner_support"),
        mainLog("Tunerless support = " + std::to_string(product.tunerless ? 1 : 0))};
    if (product.tunerless) return tuner;
    const Journal generation = {
        tuner, call("system_info_get_custom_int", "com.norvane/featureconf/orlex_version")};
    if (product.generation != 0) return generation;
    if (product.projector) return {generation, readsProjector};
    return {generation, readsProjector, readsMonitor};
  }

  static Journal findsDeviceSid(const std::string& sid) {
    return {call("system_info_get_custom_string", kDeviceSid),
            mainLog("product device SID [" + sid + "]"),
            mainLog("product device name [" + sid + "]")};
  }

  static Journal replaces(const std::string& text, const std::string& result) {
    return {mainLog("original text:" + text), mainLog("replaced text:" + result),
            mainLog("result text:" + result)};
  }

  static Journal addsProductName(const ProductKind& product) {
    return {findsType(product), mainLog("Product type =>" + std::to_string(product.code))};
  }
};

// ---- Every item on every product, with the catalogue and without ----

class HelpTextOf : public HelpTextTest, public testing::WithParamInterface<ProductKind> {
 protected:
  void SetUp() override {
    HelpTextTest::SetUp();
    setProduct(product());
  }

  static const ProductKind& product() { return GetParam(); }

  // The text as it should be: a translation, or a template with the device's name in it.
  struct Expected {
    std::string text;
    Journal lines;
  };

  static Expected withDeviceName(const char* templateSid) {
    const std::string text = filled(tr(templateSid), tr("REP.DEVICE.PROJECTOR"));
    return {text, {findsDeviceSid("REP.DEVICE.PROJECTOR"), replaces(tr(templateSid), text)}};
  }

  // For an item whose text depends on the kind of product.
  static Expected ofKind(const char* sid, const char* templateSid) {
    const Expected text = sid != nullptr ? Expected{filled(tr(sid), tr(product().nameSid)), {}}
                                         : withDeviceName(templateSid);
    return {text.text, {findsType(product()), text.lines, addsProductName(product())}};
  }

  void expectHelp(const std::string& key, const Expected& expected) const {
    EXPECT_EQ(help(key), expected.text) << key;
    EXPECT_EQ(journal(), ofHelp(expected.lines)) << key;
  }

  void expectAllHelps() const {
    expectHelp(kNetwork, ofKind(product().network, kNetworkTemplate));
    expectHelp(kMobileUs, ofKind(product().mobile, kMobileTemplate));
    expectHelp(kMobileNotUs, ofKind(product().mobile, kMobileTemplate));
    expectHelp(kDeviceName, ofKind(product().deviceName, kDeviceNameTemplate));

    const Expected easy = withDeviceName(kEasyTemplate);
    expectHelp(kEasyConnect, {easy.text, {easy.lines, addsProductName(product())}});

    for (const PlainText& each : kPlainTexts) expectHelp(each.key, {tr(each.sid), {}});
    expectHelp(kList, {tr(kListFirst) + "\n" + tr(kListSecond), {}});

    const std::string features = tr("COM_SCREEN_SHARING") + ", " + tr("TV_SID_CONNECT_KELVO");
    expectHelp(kWifiDirect, {filled(tr(kDirectTemplate), features),
                             {call("CStringUtil::CombinateStrings", std::size_t{2048},
                                   tr(kDirectTemplate), features, "null", "", "")}});
  }
};

TEST_P(HelpTextOf, EveryItemIsComposedOfTranslations) {
  expectAllHelps();
}

TEST_P(HelpTextOf, EveryItemIsComposedOfKoreanTranslations) {
  useLanguage("ko");
  ASSERT_NE(tr(kTvNetwork), kTvNetwork);
  expectAllHelps();
}

// The device's name is filled into the templates, the product's into the five items with words of
// the product, and into no other text.
TEST_P(HelpTextOf, OnlyFiveItemsHaveTheProductsWords) {
  std::map<std::string, std::string> texts = {{"REP.DEVICE.PROJECTOR", "device"},
                                              {product().nameSid, "product"},
                                              {"COM_SCREEN_SHARING", "<<B>>"},
                                              {"TV_SID_CONNECT_KELVO", "two"}};
  for (const char* sid : {kTvNetwork, kNetworkTemplate, kScreenMobile, kMobileTemplate,
                          kTvDeviceName, kScreenDeviceName, kDeviceNameTemplate, kEasyTemplate,
                          kDirectTemplate, kListFirst, kListSecond}) {
    texts[sid] = "<<A>> <<B>> <<C>>";
  }
  for (const PlainText& each : kPlainTexts) texts[each.sid] = "<<A>> <<B>> <<C>>";
  useTextsNow(texts);

  const std::string withProduct = "product <<B>> <<C>>";
  const std::string withDevice = "device <<B>> <<C>>";
  EXPECT_EQ(help(kNetwork), product().network != nullptr ? withProduct : withDevice);
  EXPECT_EQ(help(kMobileUs), product().mobile != nullptr ? withProduct : withDevice);
  EXPECT_EQ(help(kMobileNotUs), product().mobile != nullptr ? withProduct : withDevice);
  EXPECT_EQ(help(kDeviceName), product().deviceName != nullptr ? withProduct : withDevice);
  EXPECT_EQ(help(kEasyConnect), withDevice);
  for (const PlainText& each : kPlainTexts) {
    EXPECT_EQ(help(each.key), "<<A>> <<B>> <<C>>") << each.key;
  }
  EXPECT_EQ(help(kList), "<<A>> <<B>> <<C>>\n<<A>> <<B>> <<C>>");
  // All placeholders are filled, and the inserted text is not changed.
  EXPECT_EQ(help(kWifiDirect), "<<B>>, two  ");
}

INSTANTIATE_TEST_SUITE_P(Products, HelpTextOf, testing::ValuesIn(kProducts),
                         [](const auto& kind) { return std::string(kind.param.name); });

// ---- The device's name ----

class DeviceNameInHelpText : public HelpTextTest {
 protected:
  void SetUp() override {
    HelpTextTest::SetUp();
    setProduct(kProjector);
    useTextsNow({{kEasyTemplate, "[<<A>>]"},
                 {"REP.DEVICE.TV", "Fernseher"},
                 {"REP.DEVICE.PROJECTOR", "Beamer"}});
  }

  void expectDeviceName(const std::string& name, const Journal& lines) const {
    EXPECT_EQ(help(kEasyConnect), "[" + name + "]");
    EXPECT_EQ(journal(),
              ofHelp({call("system_info_get_custom_string", kDeviceSid), lines,
                      replaces("[<<A>>]", "[" + name + "]"), addsProductName(kProjector)}));
  }
};

TEST_F(DeviceNameInHelpText, IsTheTranslationOfTheDevicesId) {
  expectDeviceName("Beamer", {mainLog("product device SID [REP.DEVICE.PROJECTOR]"),
                              mainLog("product device name [REP.DEVICE.PROJECTOR]")});
}

// ---- Long texts ----

TEST_F(HelpTextTest, ATextOf2047BytesIsWholeAndALongerOneIsCutThere) {
  for (const std::size_t size : {2046U, 2047U, 2048U, 5000U}) {
    const std::string text(size, 'x');
    std::map<std::string, std::string> texts = {{kTvNetwork, text},
                                                {kTvDeviceName, text},
                                                {kMobileTemplate, text},
                                                {kEasyTemplate, text},
                                                {kDirectTemplate, text}};
    for (const PlainText& each : kPlainTexts) texts[each.sid] = text;
    useTextsNow(texts);
    std::vector<std::string> keys = {kNetwork,     kDeviceName,  kMobileUs,
                                     kMobileNotUs, kEasyConnect, kWifiDirect};
    for (const PlainText& each : kPlainTexts) keys.emplace_back(each.key);
    for (const std::string& key : keys) {
      EXPECT_EQ(help(key), text.substr(0, 2047)) << key << " " << size;
    }
  }
}

TEST_F(HelpTextTest, TheTwoLinesOfTheCertificateListAreCutTogether) {
  for (const std::size_t first : {0U, 10U, 2045U, 2046U, 2047U, 3000U}) {
    useTextsNow({{kListFirst, std::string(first, '1')}, {kListSecond, std::string(3000, '2')}});
    const std::string all = std::string(first, '1') + "\n" + std::string(3000, '2');
    EXPECT_EQ(help(kList), all.substr(0, 2047)) << first;
  }
}

TEST_F(HelpTextTest, TheWorkBufferOfTheDevicesNameCutsBeforeTheProductsNameIsFilledIn) {
  const std::string start(2040, 'x');
  useTextsNow({{kEasyTemplate, start + "<<A>> and more"},
               {"REP.DEVICE.PROJECTOR", "12345<<"},  // not a token with the text that follows
               {"COM_SID_TV", "TV"}});
  EXPECT_EQ(help(kEasyConnect), start + "12345<<");
  EXPECT_TRUE(logLines().contains(Journal{mainLog("original text:" + start + "<<A>> and more"),
                                          mainLog("replaced text:" + start + "12345<< and more"),
                                          mainLog("result text:" + start + "12345<<")}));
  // A token that was cut is no longer a token.
  useTextsNow({{kEasyTemplate, std::string(2000, 'x') + "<<A>>"},
               {"REP.DEVICE.PROJECTOR", "<<A>>" + std::string(39, 'y')},
               {"COM_SID_TV", "TV"}});
  EXPECT_EQ(help(kEasyConnect), std::string(2000, 'x') + "TV" + std::string(42, 'y'));
}

TEST_F(HelpTextTest, WhatTheProductsNameMakesTooLongIsCut) {
  const std::string start(2040, 'x');
  useTextsNow({{kTvNetwork, start + "<<A>>"}, {"COM_SID_TV", "1234567890"}});
  EXPECT_EQ(help(kNetwork), start + "1234567");
  // The name is filled in before the text is cut, not after.
  useTextsNow({{kTvNetwork, "<<A>>" + std::string(2050, 'x')}, {"COM_SID_TV", ""}});
  EXPECT_EQ(help(kNetwork), std::string(2047, 'x'));
  useTextsNow({{kTvNetwork, std::string(2045, 'x') + "<<A>>"}, {"COM_SID_TV", "TV"}});
  EXPECT_EQ(help(kNetwork), std::string(2045, 'x') + "TV");
}

TEST_F(HelpTextTest, TheListOfFeaturesFillsTheTextToItsEnd) {
  useTextsNow({{kDirectTemplate, "[<<A>>]"},
               {"COM_SCREEN_SHARING", std::string(1500, 's')},
               {"TV_SID_CONNECT_KELVO", std::string(1500, 'k')}});
  EXPECT_EQ(help(kWifiDirect), "[" + std::string(1500, 's') + ", " + std::string(544, 'k'));
}

TEST_F(HelpTextTest, ATextComesInAZeroFilledBlockOf2048BytesAndTheResultIsZero) {
  for (const char* key : {kNetwork, kList, kEasyConnect, kWifiDirect, "no/such/key"}) {
    OwnedText text;
    EXPECT_EQ(table().get_help_text(key, text.out()), 0) << key;
    ASSERT_EQ(text.blockSize(), 2048U) << key;
    for (std::size_t i = text.length(); i < 2048; ++i) ASSERT_EQ(text.get()[i], '\0') << i;
  }
}

// ---- The menu's language ----

TEST_F(HelpTextTest, TheLanguageIsReadAndWithoutInfluence) {
  const std::string text = help(kWifi);
  EXPECT_EQ(journal(), ofHelp({}));
  for (const std::string& language :
       {std::string("ko"), std::string(), std::string("%s"), std::string(3000, 'x')}) {
    store().set(kLanguage, language);
    EXPECT_EQ(help(kWifi), text) << language;
    EXPECT_EQ(journal(), ofHelp({})) << language;
  }
}

TEST_F(HelpTextTest, WithoutALanguageNoTextIsGivenAndTheLockIsFree) {
  store().erase(kLanguage);
  char preset[] = "preset";
  for (const char* key : {kNetwork, kWifi, kList, kWifiDirect, "no/such/key", ""}) {
    char* value = preset;
    clearJournal();
    EXPECT_THROW(table().get_help_text(key, &value), std::logic_error) << key;
    EXPECT_EQ(value, preset) << key;
    EXPECT_EQ(journal(),
              (Journal{mainLog("START"), locks(), call("vconf_get_str", kLanguage), unlocks()}))
        << key;
  }
  store().set(kLanguage, "en");
  EXPECT_EQ(help(kWifi), tr("TV_SID_SETTINGS_CANOV_ENABLE_DISABLE_WIFI_OPTION"));
}

}  // namespace
