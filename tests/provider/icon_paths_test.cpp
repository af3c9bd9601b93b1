// The icons at an item's title and at its side.

#include <vector>

#include "provider_test.h"
#include "saved_network_document.h"

namespace {

constexpr char kFirst[] = VENTARO_KEY_SAVED_NETWORK_1;
constexpr char kSecond[] = VENTARO_KEY_SAVED_NETWORK_2;
constexpr char kHighContrast[] = "db/menu/system/accessibility/highcontrast";

constexpr char kHighContrastCheck[] =
    "/usr/apps/com.norvane.tv.theme-resource/shared/res//QX_ICONS/COMMON_HIGHCONTRAST/"
    "i_icon_info_check.svg";
constexpr char kCheck[] =
    "/usr/apps/com.norvane.tv.theme-resource/shared/res/ug-SystemSetupNetworkUG-efl/res/"
    "systemsetup/r_icon_xs_check.png";

std::string signalIcon(int level) {
  return "/usr/apps/com.norvane.tv.theme-resource/shared/res/ug-SystemSetupNetworkUG-efl/res/"
         "systemsetup/icon_wifi/oobe_icon_n_wifi_" +
         std::to_string(level) + ".svg";
}

class IconPaths : public ProviderTest {
 protected:
  void SetUp() override {
    ProviderTest::SetUp();
    create();
    titleIcon(kFirst);  // from here on the saved networks are watched
    clearJournal();
  }

  static void publish(const std::vector<std::string>& networks) {
    store().set(kSavedNetworksKey, document(static_cast<int>(networks.size()), networks));
  }

  std::string title(const std::string& key) const {
    clearJournal();
    return titleIcon(key.c_str()).str();
  }

  std::string second(const std::string& key) const {
    clearJournal();
    return secondIcon(key.c_str()).str();
  }

  // ---- Pieces of journals ----

  static Journal::Piece readsDocument() { return call("vconf_get_str", kSavedNetworksKey); }
  static Journal::Piece readsContrast() { return call("vconf_get_int", kHighContrast); }

  static Journal ofSecond(const std::string& key, const Journal& lines) {
    return {locks(), mainLog("key = " + key), mainLog("START"), lines, unlocks()};
  }
};

// ---- The title's icon ----

TEST_F(IconPaths, ASignalHasOneOfFiveLevels) {
  struct Level {
    int strength;
    int level;
  };
  for (const Level& each :
       {Level{-2147483647 - 1, 0}, Level{-200, 0}, Level{-100, 0}, Level{-90, 0}, Level{-89, 0},
        Level{-88, 1}, Level{-83, 1}, Level{-82, 2}, Level{-75, 2}, Level{-74, 3}, Level{-64, 3},
        Level{-63, 4}, Level{0, 4}, Level{10000, 4}, Level{10001, 4}, Level{2147483647, 4}}) {
    publish({network("One", each.strength, ""), network("Two", each.strength, "")});
    EXPECT_EQ(title(kFirst), signalIcon(each.level)) << each.strength;
    EXPECT_EQ(title(kSecond), signalIcon(each.level)) << each.strength;
  }
}

// ---- The second icon ----

TEST_F(IconPaths, AConnectingNetworkHasTheBusyAnimation) {
  publish({network("One", -60, "Connecting"), network("Two", -60, "")});
  EXPECT_EQ(second(kFirst), "loading");
  EXPECT_EQ(journal(), ofSecond(kFirst, {readsDocument(), networkLog("One", "Connecting"),
                                         networkLog("Two", ""), networkLog("One", "Connecting")}));
  EXPECT_EQ(second(kSecond), "");
}

TEST_F(IconPaths, AConnectedNetworkHasACheckMark) {
  store().set(kHighContrast, 0);
  publish({network("One", -60, ""), network("Two", -60, "Connected")});
  EXPECT_EQ(second(kSecond), kCheck);
  EXPECT_EQ(journal(),
            ofSecond(kSecond, {readsDocument(), networkLog("One", ""),
                               networkLog("Two", "Connected"), networkLog("Two", "Connected"),
                               readsContrast(), mainLog("Not high contrast mode")}));
  EXPECT_EQ(second(kFirst), "");
}

TEST_F(IconPaths, AnyOtherStatusHasNoSecondIcon) {
  for (const char* status :
       {"", "connected", "CONNECTED", "Connected ", " Connected", "Connecte", "connecting",
        "Connecting...", "ConnectingConnected", "Disconnected", "loading", "연결됨"}) {
    publish({network("One", -60, status), network("Two", -60, status)});
    EXPECT_EQ(second(kFirst), "") << status;
    EXPECT_EQ(second(kSecond), "") << status;
    EXPECT_FALSE(calls().contains(readsContrast())) << status;
  }
}

TEST_F(IconPaths, AStatusWithAZeroByteIsAnotherStatus) {
  publish({network("One", -60, "Connected\\u0000")});
  EXPECT_EQ(second(kFirst), "");
}

TEST_F(IconPaths, TheSecondIconFollowsTheDocument) {
  publish({network("One", -60, "Connecting")});
  EXPECT_EQ(second(kFirst), "loading");
  publish({network("One", -60, "Connected")});
  EXPECT_EQ(second(kFirst), kCheck);
  store().erase(kSavedNetworksKey);
  EXPECT_EQ(second(kFirst), "");
}

// ---- High contrast ----

TEST_F(IconPaths, InHighContrastTheCheckMarkIsAnother) {
  store().set(kHighContrast, 1);
  publish({network("One", -60, "Connected")});
  EXPECT_EQ(second(kFirst), kHighContrastCheck);
  EXPECT_EQ(journal(), ofSecond(kFirst, {readsDocument(), networkLog("One", "Connected"),
                                         networkLog("One", "Connected"), readsContrast(),
                                         mainLog("Is high contrast mode")}));
}

TEST_F(IconPaths, OnlyOneMeansHighContrast) {
  publish({network("One", -60, "Connected")});
  for (const int value : {0, 2, -1, 257}) {
    store().set(kHighContrast, value);
    EXPECT_EQ(second(kFirst), kCheck) << value;
    EXPECT_TRUE(logLines().contains(mainLog("Not high contrast mode"))) << value;
  }
}

TEST_F(IconPaths, AnUnreadableContrastIsTheNormalOne) {
  publish({network("One", -60, "Connected")});
  const Journal expected =
      ofSecond(kFirst, {readsDocument(), networkLog("One", "Connected"),
                        networkLog("One", "Connected"), readsContrast(),
                        mainLog("vconf_get_int db/menu/system/accessibility/highcontrast error")});
  EXPECT_EQ(second(kFirst), kCheck);
  EXPECT_EQ(journal(), expected);
  // Even if the failed read wrote a 1.
  store().set(kHighContrast, 1);
  failWith("vconf_get_int", kHighContrast, -5, Effect::kAsSuccess);
  EXPECT_EQ(second(kFirst), kCheck);
  EXPECT_EQ(journal(), expected);
}

// ---- Blocks, failures ----

TEST_F(IconPaths, PathsComeInZeroFilledBlocksOf2048BytesAndTheResultIsZero) {
  publish({network("One", -60, "Connected"), network("Two", -60, "")});
  for (const auto callback : {table().get_title_icon_path, table().get_second_icon_path}) {
    for (const char* key : {kFirst, kSecond, "no/such/key"}) {
      OwnedText path;
      EXPECT_EQ(callback(key, path.out()), 0) << key;
      ASSERT_EQ(path.blockSize(), 2048U) << key;
      for (std::size_t i = path.length(); i < 2048; ++i) ASSERT_EQ(path.get()[i], '\0') << i;
    }
  }
}

}  // namespace
