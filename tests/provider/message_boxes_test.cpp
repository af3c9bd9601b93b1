// The confirmation box: its message, its buttons, its type.
#include <algorithm>
#include <cstring>
#include <vector>

#include "provider_test.h"
#include "texts.h"

namespace {

constexpr char kKey[] = VENTARO_KEY_WIFI;
constexpr char kRegulation[] = "com.norvane/featureconf/setting.eu_energy_regulation";

constexpr char kSomeFeatures[] = "TV_SID_SETTINGS_MIX_CASEP_SOME_FEATURES_NOT_AVAIL_GO_AHEAD";
constexpr char kMorePower[] = "TV_SID_CHANGING_FEATURE_INCREASE_POWER";

// The caller's buffers, exactly as large as required: a sanitizer detects one byte too many.
struct Box {
  explicit Box(const std::string& preset = "", std::size_t extra = 0)
      : text(1024 + extra), first(512 + extra), second(512 + extra) {
    for (std::vector<char>* buffer : {&text, &first, &second}) {
      std::fill(buffer->begin(), buffer->end(), '#');
      std::memcpy(buffer->data(), preset.c_str(), preset.size() + 1);
    }
  }

  std::vector<char> text;
  std::vector<char> first;
  std::vector<char> second;
  int type = 77;
};

class MessageBoxes : public ProviderTest {
 protected:
  void SetUp() override {
    ProviderTest::SetUp();
    flags().setBool("setting.eu_energy_regulation", false);
    create();
  }

  void ask(Box& box, const char* key = kKey) const {
    clearJournal();
    EXPECT_EQ(table().get_messagebox_info(key, box.text.data(), box.first.data(), box.second.data(),
                                          &box.type),
              0);
  }

  // The message that the box shows now.
  std::string message() const {
    Box box;
    ask(box);
    return box.text.data();
  }

  // ---- Pieces of journals ----

  static Journal fillsIn(const std::string& text, const std::string& feature) {
    return {
        call("CStringUtil::CombinateStrings", std::size_t{1024}, text, feature, "null", "", "")};
  }
  static Journal regulation(bool set) {
    return {mainLog("START"), call("system_info_get_custom_bool", kRegulation),
            mainLog(set ? "[WifiOFFON => 1]" : "[WifiOFFON => 0]")};
  }
  static Journal unreadableRegulation() {
    return {
        mainLog("START"), call("system_info_get_custom_bool", kRegulation),
        mainLog(" Error: Fail to get com.norvane/featureconf/setting.eu_energy_regulation value"),
        mainLog("[WifiOFFON => 1]")};
  }
  static Journal radio(int result, int value) {
    return {call("wifi_get_enable_qx"),
            mainLog("wifi_get_power_state  ret = [" + std::to_string(result) + "], value = [" +
                    std::to_string(value) + "]")};
  }
  static Journal ofBox(const Journal& lines) {
    return {locks(), mainLog("START"), lines, mainLog("END"), unlocks()};
  }

  static Journal english() { return fillsIn(tr(kSomeFeatures), "Wi-Fi"); }
  static std::string someFeatures() {
    std::string text = tr(kSomeFeatures);
    return text.replace(text.find("<<A>>"), 5, "Wi-Fi");
  }
};

// ---- The message ----

TEST_F(MessageBoxes, WithoutTheEnergyRegulationSomeFeaturesGoWhateverTheRadio) {
  for (const int state : {0, 1}) {
    setRadio(state);
    EXPECT_EQ(message(), someFeatures()) << state;
    EXPECT_EQ(journal(), ofBox({english(), regulation(false)})) << state;
  }
}

TEST_F(MessageBoxes, UnderTheEnergyRegulationSwitchingWifiOnCostsPower) {
  flags().setBool("setting.eu_energy_regulation", true);
  setRadio(0);
  EXPECT_EQ(message(), tr(kMorePower));
  EXPECT_EQ(journal(), ofBox({english(), regulation(true), radio(0, 0)}));
}

TEST_F(MessageBoxes, UnderTheEnergyRegulationSomeFeaturesGoWhileWifiIsOn) {
  flags().setBool("setting.eu_energy_regulation", true);
  for (const int state : {1, 2, -1}) {
    setRadio(state);
    EXPECT_EQ(message(), someFeatures()) << state;
    EXPECT_EQ(journal(), ofBox({english(), regulation(true), radio(0, state)})) << state;
  }
}

TEST_F(MessageBoxes, AnUnreadableEnergyRegulationCountsAsSet) {
  flags().erase("setting.eu_energy_regulation");
  setRadio(0);
  EXPECT_EQ(message(), tr(kMorePower));
  EXPECT_EQ(journal(), ofBox({english(), unreadableRegulation(), radio(0, 0)}));
  setRadio(1);
  EXPECT_EQ(message(), someFeatures());
  EXPECT_EQ(journal(), ofBox({english(), unreadableRegulation(), radio(0, 1)}));
}

TEST_F(MessageBoxes, AnEnergyRegulationWhoseReadingFailedCountsAsSetWhateverItLeft) {
  failWith("system_info_get_custom_bool", "setting.eu_energy_regulation", -5, Effect::kAsSuccess);
  EXPECT_EQ(message(), tr(kMorePower));
  EXPECT_EQ(journal(), ofBox({english(), unreadableRegulation(), radio(0, 0)}));
}

TEST_F(MessageBoxes, ARadioThatDoesNotAnswerCountsAsOff) {
  flags().setBool("setting.eu_energy_regulation", true);
  setRadio(1);
  failWith("wifi_get_enable_qx", -5);
  EXPECT_EQ(message(), tr(kMorePower));
  EXPECT_EQ(journal(), ofBox({english(), regulation(true), radio(-5, 0)}));
}

TEST_F(MessageBoxes, OnlyTheRadiosStateCountsNotWhetherTheReadingFailed) {
  flags().setBool("setting.eu_energy_regulation", true);
  setRadio(1);
  failWith("wifi_get_enable_qx", -5, Effect::kAsSuccess);
  EXPECT_EQ(message(), someFeatures());
  EXPECT_EQ(journal(), ofBox({english(), regulation(true), radio(-5, 1)}));
}

TEST_F(MessageBoxes, TheFlagAndTheRadioAreReadAgainEveryTime) {
  EXPECT_EQ(message(), someFeatures());
  flags().setBool("setting.eu_energy_regulation", true);
  EXPECT_EQ(message(), tr(kMorePower));
  setRadio(1);
  EXPECT_EQ(message(), someFeatures());
}

// ---- Keys, type, buttons ----

TEST_F(MessageBoxes, EveryKeyHasTheSameBoxOfTypeTwo) {
  for (const char* key : {VENTARO_KEY_WIFI, VENTARO_KEY_POWER_ON_WITH_MOBILE_US,
                          VENTARO_KEY_DEVICE_NAME, "no/such/key", "%s", ""}) {
    Box box;
    ask(box, key);
    EXPECT_EQ(box.text.data(), someFeatures()) << key;
    EXPECT_STREQ(box.first.data(), "Yes") << key;
    EXPECT_STREQ(box.second.data(), "No") << key;
    EXPECT_EQ(box.type, 2) << key;
    EXPECT_EQ(journal(), ofBox({english(), regulation(false)})) << key;
  }
}

TEST_F(MessageBoxes, TextsFollowTheUsersLanguage) {
  useLanguage("ko");
  Box box;
  ask(box);
  EXPECT_EQ(box.first.data(), tr("SID_YES"));
  EXPECT_NE(tr("SID_YES"), "Yes");
  EXPECT_EQ(box.second.data(), tr("SID_NO"));
  EXPECT_EQ(journal(), ofBox({fillsIn(tr(kSomeFeatures), tr("COM_WI_FI")), regulation(false)}));
}

TEST_F(MessageBoxes, WithoutACatalogueTextsAreTheirIds) {
  useLanguage("none");
  Box box;
  ask(box);
  EXPECT_STREQ(box.text.data(), kSomeFeatures);
  EXPECT_STREQ(box.first.data(), "SID_YES");
  EXPECT_STREQ(box.second.data(), "SID_NO");
  flags().setBool("setting.eu_energy_regulation", true);
  EXPECT_EQ(message(), kMorePower);
}

TEST_F(MessageBoxes, OnlyWifiIsFilledIntoTheMessage) {
  useTexts({{kSomeFeatures, "<<A>>-<<B>>-<<C>>-<<D>>-<<A>>"}, {"COM_WI_FI", "WLAN"}});
  bindCatalogues();
  EXPECT_EQ(message(), "WLAN----WLAN");
}

TEST_F(MessageBoxes, NothingIsFilledIntoTheMessageAboutPower) {
  useTexts({{kMorePower, "More power: <<A>> %s"}});
  bindCatalogues();
  flags().setBool("setting.eu_energy_regulation", true);
  EXPECT_EQ(message(), "More power: <<A>> %s");
}

TEST_F(MessageBoxes, AMessageAboutPowerLeavesNothingOfALongerMessage) {
  useTexts({{kSomeFeatures, std::string(800, 'x')}, {kMorePower, "power"}});
  bindCatalogues();
  flags().setBool("setting.eu_energy_regulation", true);
  EXPECT_EQ(message(), "power");
}

// ---- Appending ----

TEST_F(MessageBoxes, WhatTheBuffersHoldStays) {
  Box box("[before] ");
  ask(box);
  EXPECT_EQ(box.text.data(), "[before] " + someFeatures());
  EXPECT_STREQ(box.first.data(), "[before] Yes");
  EXPECT_STREQ(box.second.data(), "[before] No");
}

TEST_F(MessageBoxes, AskingTwiceGivesEachTextTwice) {
  Box box;
  ask(box);
  ask(box);
  EXPECT_EQ(box.text.data(), someFeatures() + someFeatures());
  EXPECT_STREQ(box.first.data(), "YesYes");
  EXPECT_STREQ(box.second.data(), "NoNo");
  EXPECT_EQ(box.type, 2);
}

TEST_F(MessageBoxes, BehindTheTextsTheBuffersAreUntouched) {
  Box box;
  ask(box);
  for (const std::vector<char>* buffer : {&box.text, &box.first, &box.second}) {
    const std::string all(buffer->begin(), buffer->end());
    const std::size_t end = all.find('\0') + 1;
    EXPECT_EQ(all.substr(end), std::string(all.size() - end, '#'));
  }
}

// ---- Limits ----

// Texts of these many bytes.
std::map<std::string, std::string> textsOfSizes(std::size_t message, std::size_t button) {
  return {{kSomeFeatures, std::string(message, 'f')},
          {kMorePower, std::string(message, 'p')},
          {"SID_YES", std::string(button, 'y')},
          {"SID_NO", std::string(button, 'n')}};
}

TEST_F(MessageBoxes, AMessageOf1023BytesAndButtonsOf511FillTheBuffersAndAllBeyondIsCut) {
  struct Size {
    std::size_t message;
    std::size_t button;
    std::size_t expectedMessage;
    std::size_t expectedButton;
  };
  for (const Size& size : {Size{1022, 510, 1022, 510}, Size{1023, 511, 1023, 511},
                           Size{1024, 512, 1023, 511}, Size{5000, 5000, 1023, 511}}) {
    useTexts(textsOfSizes(size.message, size.button));
    bindCatalogues();
    for (const bool regulated : {false, true}) {
      flags().setBool("setting.eu_energy_regulation", regulated);
      Box box;
      ask(box);
      EXPECT_EQ(box.text.data(), std::string(size.expectedMessage, regulated ? 'p' : 'f'));
      EXPECT_EQ(box.first.data(), std::string(size.expectedButton, 'y'));
      EXPECT_EQ(box.second.data(), std::string(size.expectedButton, 'n'));
    }
  }
}

TEST_F(MessageBoxes, TheLimitsCountWhatIsAppendedNotWhatTheBuffersHold) {
  useTexts(textsOfSizes(3000, 3000));
  bindCatalogues();
  Box box("before", std::strlen("before"));
  ask(box);
  EXPECT_EQ(box.text.data(), "before" + std::string(1023, 'f'));
  EXPECT_EQ(box.first.data(), "before" + std::string(511, 'y'));
  EXPECT_EQ(box.second.data(), "before" + std::string(511, 'n'));
}

TEST_F(MessageBoxes, AFeatureThatFillsTheMessageIsCut) {
  useTexts({{kSomeFeatures, "Without <<A>>!"}, {"COM_WI_FI", std::string(2000, 'w')}});
  bindCatalogues();
  EXPECT_EQ(message(), "Without " + std::string(1015, 'w'));
}

}  // namespace
