// The two saved networks of the menu through the callbacks that show them and connect to them.
#include <climits>

#include "saved_network_document.h"
#include "setting_test.h"

namespace {

constexpr char kFirst[] = VENTARO_KEY_SAVED_NETWORK_1;
constexpr char kSecond[] = VENTARO_KEY_SAVED_NETWORK_2;
constexpr char kCommandKey[] = "memory/NW-Daemon/Command";
constexpr char kIcons[] =
    "/usr/apps/com.norvane.tv.theme-resource/shared/res/ug-SystemSetupNetworkUG-efl/res/"
    "systemsetup/icon_wifi/";

class SavedNetworkItem : public SettingTest {
 protected:
  explicit SavedNetworkItem(const char* key) : SettingTest(key) {}

  void SetUp() override {
    SettingTest::SetUp();
    create();
    entries().check_enable_int(kFirst, 0);  // makes the object
  }

  static void publish(const std::string& text) { store().set(kSavedNetworksKey, text); }

  // The command to connect to a network with this name, which it contains unchanged.
  static std::string command(const std::string& ssid) {
    return "{\n\t\"COMMAND\" : \"1\",\n\t\"SSID\" : \"" + ssid + "\"\n}";
  }

  static Journal connecting(const std::string& ssid) {
    return {call("vconf_set_str", kCommandKey, command(ssid))};
  }

  // The callbacks with the journal cleared first.
  OwnedText name() const {
    clearJournal();
    return displayName(key());
  }
  OwnedText strengthIcon() const {
    clearJournal();
    return titleIcon(key());
  }
  OwnedText statusIcon() const {
    clearJournal();
    return secondIcon(key());
  }

  Journal aroundName(const Journal& object) const {
    return {mainLog("START"), locks(), mainLog(std::string("Key ---->") + key() + "\n"), object,
            unlocks()};
  }
  Journal aroundStrengthIcon(const Journal& object) const {
    return {locks(), mainLog("START"), mainLog(std::string("key = ") + key()), object, unlocks()};
  }
  Journal aroundStatusIcon(const Journal& object) const {
    return {locks(), mainLog(std::string("key = ") + key()), object, unlocks()};
  }
};

class FirstSavedNetwork : public SavedNetworkItem {
 protected:
  FirstSavedNetwork() : SavedNetworkItem(kFirst) {}
};

class SecondSavedNetwork : public SavedNetworkItem {
 protected:
  SecondSavedNetwork() : SavedNetworkItem(kSecond) {}
};

// ---- Name, status and signal ----

TEST_F(SecondSavedNetwork, WithOneNetworkItHasNoNameNoStatusAndTheLowestSignal) {
  publish(kHomeOnly);
  EXPECT_EQ(name(), "");
  EXPECT_EQ(journal(), aroundName(readingHomeOnly()));
  EXPECT_EQ(statusIcon(), "");
  EXPECT_EQ(journal(), aroundStatusIcon({mainLog("START"), readingHomeOnly()}));
  EXPECT_EQ(strengthIcon(), std::string(kIcons) + "oobe_icon_n_wifi_0.svg");
  EXPECT_EQ(journal(), aroundStrengthIcon(readingHomeOnly()));
}

TEST_F(FirstSavedNetwork, WithoutADocumentItHasNoNameNoStatusAndTheLowestSignal) {
  EXPECT_EQ(name(), "");
  EXPECT_EQ(journal(), aroundName({call("vconf_get_str", kSavedNetworksKey)}));
  EXPECT_EQ(statusIcon(), "");
  EXPECT_EQ(journal(),
            aroundStatusIcon({mainLog("START"), call("vconf_get_str", kSavedNetworksKey)}));
  EXPECT_EQ(strengthIcon(), std::string(kIcons) + "oobe_icon_n_wifi_0.svg");
  EXPECT_EQ(journal(), aroundStrengthIcon({call("vconf_get_str", kSavedNetworksKey)}));
}

TEST_F(SecondSavedNetwork, AThirdNetworkIsNeverShown) {
  publish(document(3, {network("Home", -60, "Connected"), network("Office", -80, "Saved"),
                       network("Cafe", -90, "Saved")}));
  EXPECT_EQ(name(), "Office");
  EXPECT_EQ(strengthIcon(), std::string(kIcons) + "oobe_icon_n_wifi_2.svg");
}

// ---- Connecting ----

TEST_F(FirstSavedNetwork, SettingItConnectsToTheFirstNetworkWhateverTheValue) {
  publish(kHomeAndOffice);
  for (const int value : {5, 1, 0, -1, INT_MAX, INT_MIN}) {
    EXPECT_EQ(set(value), -1) << value;
    EXPECT_EQ(journal(),
              aroundSetInt(value, {readingHomeAndOffice(), networkLog("Home", "Connected"),
                                   connecting("Home")}));
  }
  EXPECT_EQ(store().stringAt(kCommandKey), command("Home"));
}

TEST_F(SecondSavedNetwork, SettingItConnectsToTheSecondNetworkWhateverTheValue) {
  publish(kHomeAndOffice);
  for (const int value : {5, 1, 0, -1}) {
    EXPECT_EQ(set(value), -1) << value;
    EXPECT_EQ(journal(), aroundSetInt(value, {readingHomeAndOffice(), networkLog("Office", "Saved"),
                                              connecting("Office")}));
  }
  EXPECT_EQ(store().stringAt(kCommandKey), command("Office"));
}

TEST_F(FirstSavedNetwork, ConnectingReadsTheDocumentOfTheMoment) {
  publish(kHomeOnly);
  EXPECT_EQ(name(), "Home");
  publish(document(1, {network("Cafe", -60, "Saved")}));
  set(1);
  EXPECT_EQ(store().stringAt(kCommandKey), command("Cafe"));
}

TEST_F(FirstSavedNetwork, WithoutADocumentTheCommandHasAnEmptyName) {
  EXPECT_EQ(set(1), -1);
  EXPECT_EQ(journal(), aroundSetInt(1, {call("vconf_get_str", kSavedNetworksKey), connecting("")}));
}

TEST_F(FirstSavedNetwork, ACommandThatCannotBeWrittenIsNotReported) {
  publish(kHomeOnly);
  failWith("vconf_set_str", kCommandKey, -6);
  EXPECT_EQ(set(1), -1);
  EXPECT_EQ(journal(), aroundSetInt(1, {readingHomeOnly(), networkLog("Home", "Connected"),
                                        connecting("Home")}));
}

TEST_F(FirstSavedNetwork, TheNameStandsInTheCommandAsJson) {
  const struct {
    const char* published;
    const char* written;
  } names[] = {
      {R"(\"quoted\")", R"(\"quoted\")"},
      {R"(back\\slash)", R"(back\\slash)"},
      {R"(slash\/)", "slash/"},
      {R"(\b\f\n\r\t)", R"(\b\f\n\r\t)"},
      {"\x01\x1f\x7f", "\\u0001\\u001f\x7f"},
      {R"(a\u0000b)", R"(a\u0000b)"},
      {"é", R"(\u00e9)"},
      {"거실", R"(\uac70\uc2e4)"},
      {"\xf0\x9f\x93\xb6", R"(\ud83d\udcf6)"},
      {"\xe2\x80\xa8", R"(\u2028)"},
      {"\xff", R"(\ufffd)"},
      {"a\xc3", R"(a\ufffd)"},
      {"<&>'", "<&>'"},
      {"%s%n", "%s%n"},
      {" blank ", " blank "},
  };
  for (const auto& each : names) {
    publish(document(1, {network(each.published, -60, "Saved")}));
    set(1);
    EXPECT_EQ(store().stringAt(kCommandKey), command(each.written)) << each.published;
  }
}

TEST_F(FirstSavedNetwork, ALongNameIsWholeInTheCommand) {
  const std::string name(3000, 'n');
  publish(document(1, {network(name, -60, "Saved")}));
  set(1);
  EXPECT_EQ(store().stringAt(kCommandKey), command(name));
}

TEST_F(FirstSavedNetwork, NamesThatAreNoPlainTextAreShownAsTheyAre) {
  for (const char* each : {"거실", "\xf0\x9f\x93\xb6", "\xff\xfe", "a\xc3", "\x01\x1f", "%s%n"}) {
    publish(document(1, {network(each, -60, "Saved")}));
    EXPECT_EQ(name(), each);
  }
  publish(document(1, {network(R"(\"a\"\\b)", -60, "Saved")}));
  EXPECT_EQ(name(), "\"a\"\\b");
}

}  // namespace
