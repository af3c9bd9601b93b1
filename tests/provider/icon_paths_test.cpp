// The icons at an item's title and at its side.
#include <json/value.h>

#include <cerrno>
#include <system_error>
#include <vector>

#include "provider_test.h"

namespace {

constexpr char kFirst[] = "menu/network/SavedAP1";
constexpr char kSecond[] = "menu/network/SavedAP2";
constexpr char kDocument[] = "db/menu/network/TopSavedAP";
constexpr char kHighContrast[] = "db/menu/system/accessibility/highcontrast";

constexpr char kFullSignal[] =
    "/usr/apps/com.norvane.tv.theme-resource/shared/res/ug-SystemSetupNetworkUG-efl/res/"
    "systemsetup/icon_wifi/oobe_icon_n_wifi_4.png";
constexpr char kHighContrastCheck[] =
    "/usr/apps/com.norvane.tv.theme-resource/shared/res//QX_ICONS/COMMON_HIGHCONTRAST/"
    "i_icon_info_check.svg";
constexpr char kCheck[] =
    "/usr/apps/com.norvane.tv.theme-resource/shared/res/ug-SystemSetupNetworkUG-efl/res/"
    "systemsetup/r_icon_xs_check.png";

// Keys that are not exactly the first or the second network's.
const std::vector<std::string> kOtherKeys = {"menu/network/WiFiOnOff",
                                             "menu/general/network",
                                             "menu/network/SavedAP",
                                             "menu/network/SavedAP11",
                                             "menu/network/SavedAP1 ",
                                             "menu/network/SavedAP3",
                                             "menu/network/savedap1",
                                             "SAVEDAP1_NAME_KEY",
                                             "no/such/key",
                                             ""};

std::string signalIcon(int level) {
  return "/usr/apps/com.norvane.tv.theme-resource/shared/res/ug-SystemSetupNetworkUG-efl/res/"
         "systemsetup/icon_wifi/oobe_icon_n_wifi_" +
         std::to_string(level) + ".svg";
}

struct Network {
  std::string name;
  int strength;
  std::string status;
};

class IconPaths : public ProviderTest {
 protected:
  void SetUp() override {
    ProviderTest::SetUp();
    create();
    titleIcon(kFirst);  // from here on the saved networks are watched
    clearJournal();
  }

  static void publish(const std::vector<Network>& networks) {
    std::string values;
    for (const Network& each : networks) {
      values += (values.empty() ? "" : ", ") + (R"({"SSID": ")" + each.name) +
                R"(", "SIGNAL_STRENGTH": )" + std::to_string(each.strength) + R"(, "STATUS": ")" +
                each.status + R"("})";
    }
    store().set(kDocument, R"({"count": )" + std::to_string(networks.size()) + R"(, "values": [)" +
                               values + "]}");
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

  static Journal::Piece readsDocument() { return call("vconf_get_str", kDocument); }
  static Journal::Piece readsContrast() { return call("vconf_get_int", kHighContrast); }
  static Journal::Piece network(const std::string& name, const std::string& status) {
    return mainLog(" AP Name = " + name + " status = " + status + " ");
  }

  static Journal ofTitle(const std::string& key, const Journal& lines) {
    return {locks(), mainLog("START"), mainLog("key = " + key), lines, unlocks()};
  }
  static Journal ofSecond(const std::string& key, const Journal& lines) {
    return {locks(), mainLog("key = " + key), mainLog("START"), lines, unlocks()};
  }
};

// ---- The title's icon ----

TEST_F(IconPaths, AnItemThatIsNoSavedNetworkHasTheFullSignalAndReadsNothing) {
  publish({{"One", -100, "Connected"}, {"Two", -100, "Connected"}});
  for (const std::string& key : kOtherKeys) {
    EXPECT_EQ(title(key), kFullSignal) << key;
    EXPECT_EQ(journal(), ofTitle(key, {})) << key;
  }
}

TEST_F(IconPaths, ASavedNetworkShowsItsOwnSignalAtItsTitle) {
  publish({{"One", -60, "Connected"}, {"Two", -80, ""}});
  const Journal list = {readsDocument(), network("One", "Connected"), network("Two", "")};
  EXPECT_EQ(title(kFirst), signalIcon(4));
  EXPECT_EQ(journal(),
            ofTitle(kFirst, {list, mainLog(" AP Name = One status = Connected SignalStrength =  "
                                           "4294967236")}));
  EXPECT_EQ(title(kSecond), signalIcon(2));
  EXPECT_EQ(journal(), ofTitle(kSecond, {list, mainLog(" AP Name = Two status =  SignalStrength =  "
                                                       "4294967216")}));
}

TEST_F(IconPaths, ASignalHasOneOfFiveLevels) {
  struct Level {
    int strength;
    int level;
  };
  for (const Level& each :
       {Level{-2147483647 - 1, 0}, Level{-200, 0}, Level{-100, 0}, Level{-90, 0}, Level{-89, 0},
        Level{-88, 1}, Level{-83, 1}, Level{-82, 2}, Level{-75, 2}, Level{-74, 3}, Level{-64, 3},
        Level{-63, 4}, Level{0, 4}, Level{10000, 4}, Level{10001, 4}, Level{2147483647, 4}}) {
    publish({{"One", each.strength, ""}, {"Two", each.strength, ""}});
    EXPECT_EQ(title(kFirst), signalIcon(each.level)) << each.strength;
    EXPECT_EQ(title(kSecond), signalIcon(each.level)) << each.strength;
  }
}

TEST_F(IconPaths, AMissingNetworkHasTheLowestSignal) {
  EXPECT_EQ(title(kFirst), signalIcon(0));
  EXPECT_EQ(journal(), ofTitle(kFirst, {readsDocument()}));
  publish({{"One", -60, "Connected"}});
  EXPECT_EQ(title(kSecond), signalIcon(0));
  EXPECT_EQ(journal(), ofTitle(kSecond, {readsDocument(), network("One", "Connected")}));
}

TEST_F(IconPaths, TheTitleFollowsTheDocument) {
  publish({{"One", -60, ""}});
  EXPECT_EQ(title(kFirst), signalIcon(4));
  publish({{"One", -80, ""}});
  EXPECT_EQ(title(kFirst), signalIcon(2));
}

// ---- The second icon ----

TEST_F(IconPaths, AConnectingNetworkHasTheBusyAnimation) {
  publish({{"One", -60, "Connecting"}, {"Two", -60, ""}});
  EXPECT_EQ(second(kFirst), "loading");
  EXPECT_EQ(journal(), ofSecond(kFirst, {readsDocument(), network("One", "Connecting"),
                                         network("Two", ""), network("One", "Connecting")}));
  EXPECT_EQ(second(kSecond), "");
}

TEST_F(IconPaths, AConnectedNetworkHasACheckMark) {
  store().set(kHighContrast, 0);
  publish({{"One", -60, ""}, {"Two", -60, "Connected"}});
  EXPECT_EQ(second(kSecond), kCheck);
  EXPECT_EQ(journal(), ofSecond(kSecond, {readsDocument(), network("One", ""),
                                          network("Two", "Connected"), network("Two", "Connected"),
                                          readsContrast(), mainLog("Not high contrast mode")}));
  EXPECT_EQ(second(kFirst), "");
}

TEST_F(IconPaths, AnyKeyButTheFirstNetworksHasTheSecondNetworksIcon) {
  publish({{"One", -60, ""}, {"Two", -60, "Connecting"}});
  for (const std::string& key : kOtherKeys) {
    EXPECT_EQ(second(key), "loading") << key;
    EXPECT_EQ(journal(),
              ofSecond(key, {readsDocument(), network("One", ""), network("Two", "Connecting"),
                             network("Two", "Connecting")}))
        << key;
  }
  publish({{"One", -60, "Connecting"}, {"Two", -60, ""}});
  for (const std::string& key : kOtherKeys) EXPECT_EQ(second(key), "") << key;
}

TEST_F(IconPaths, AnyOtherStatusHasNoSecondIcon) {
  for (const char* status :
       {"", "connected", "CONNECTED", "Connected ", " Connected", "Connecte", "connecting",
        "Connecting...", "ConnectingConnected", "Disconnected", "loading", "연결됨"}) {
    publish({{"One", -60, status}, {"Two", -60, status}});
    EXPECT_EQ(second(kFirst), "") << status;
    EXPECT_EQ(second(kSecond), "") << status;
    EXPECT_FALSE(calls().contains(readsContrast())) << status;
  }
}

TEST_F(IconPaths, AMissingNetworkHasNoSecondIcon) {
  EXPECT_EQ(second(kFirst), "");
  EXPECT_EQ(journal(), ofSecond(kFirst, {readsDocument()}));
  publish({{"One", -60, "Connected"}});
  EXPECT_EQ(second(kSecond), "");
  EXPECT_EQ(journal(), ofSecond(kSecond, {readsDocument(), network("One", "Connected")}));
}

TEST_F(IconPaths, AStatusWithAZeroByteIsAnotherStatus) {
  publish({{"One", -60, "Connected\\u0000"}});
  EXPECT_EQ(second(kFirst), "");
}

TEST_F(IconPaths, TheSecondIconFollowsTheDocument) {
  publish({{"One", -60, "Connecting"}});
  EXPECT_EQ(second(kFirst), "loading");
  publish({{"One", -60, "Connected"}});
  EXPECT_EQ(second(kFirst), kCheck);
  store().erase(kDocument);
  EXPECT_EQ(second(kFirst), "");
}

// ---- High contrast ----

TEST_F(IconPaths, InHighContrastTheCheckMarkIsAnother) {
  store().set(kHighContrast, 1);
  publish({{"One", -60, "Connected"}});
  EXPECT_EQ(second(kFirst), kHighContrastCheck);
  EXPECT_EQ(journal(), ofSecond(kFirst, {readsDocument(), network("One", "Connected"),
                                         network("One", "Connected"), readsContrast(),
                                         mainLog("Is high contrast mode")}));
}

TEST_F(IconPaths, OnlyOneMeansHighContrast) {
  publish({{"One", -60, "Connected"}});
  for (const int value : {0, 2, -1, 257}) {
    store().set(kHighContrast, value);
    EXPECT_EQ(second(kFirst), kCheck) << value;
    EXPECT_TRUE(logLines().contains(mainLog("Not high contrast mode"))) << value;
  }
}

TEST_F(IconPaths, AnUnreadableContrastIsTheNormalOne) {
  publish({{"One", -60, "Connected"}});
  const Journal expected =
      ofSecond(kFirst, {readsDocument(), network("One", "Connected"), network("One", "Connected"),
                        readsContrast(),
                        mainLog("vconf_get_int db/menu/system/accessibility/highcontrast error")});
  EXPECT_EQ(second(kFirst), kCheck);
  EXPECT_EQ(journal(), expected);
  // Also when the failed reading left a 1.
  store().set(kHighContrast, 1);
  failWith("vconf_get_int", kHighContrast, -5, Effect::kAsSuccess);
  EXPECT_EQ(second(kFirst), kCheck);
  EXPECT_EQ(journal(), expected);
}

TEST_F(IconPaths, TheContrastIsReadAnewForEveryCheckMark) {
  publish({{"One", -60, "Connected"}});
  store().set(kHighContrast, 1);
  EXPECT_EQ(second(kFirst), kHighContrastCheck);
  store().set(kHighContrast, 0);
  EXPECT_EQ(second(kFirst), kCheck);
}

// ---- Blocks, failures ----

TEST_F(IconPaths, PathsComeInZeroFilledBlocksOf2048BytesAndTheResultIsZero) {
  publish({{"One", -60, "Connected"}, {"Two", -60, ""}});
  for (const auto callback : {table().get_title_icon_path, table().get_second_icon_path}) {
    for (const char* key : {kFirst, kSecond, "no/such/key"}) {
      OwnedText path;
      EXPECT_EQ(callback(key, path.out()), 0) << key;
      ASSERT_EQ(path.blockSize(), 2048U) << key;
      for (std::size_t i = path.length(); i < 2048; ++i) ASSERT_EQ(path.get()[i], '\0') << i;
    }
  }
}

TEST_F(IconPaths, TheFirstIconOfASavedNetworkSubscribesToTheDocument) {
  const Journal::Piece subscribes = call("vconf_notify_key_changed", kDocument);
  unload();
  create();
  EXPECT_EQ(title("menu/network/WiFiOnOff"), kFullSignal);
  EXPECT_EQ(calls(), Journal());
  EXPECT_EQ(title(kSecond), signalIcon(0));
  EXPECT_EQ(journal(), ofTitle(kSecond, {subscribes, readsDocument()}));
  unload();
  create();
  EXPECT_EQ(second("menu/network/WiFiOnOff"), "");
  EXPECT_EQ(journal(), (Journal{locks(), mainLog("key = menu/network/WiFiOnOff"), subscribes,
                                mainLog("START"), readsDocument(), unlocks()}));
}

TEST_F(IconPaths, DocumentsWithoutNetworksCountAsNoNetworks) {
  const std::string deep = std::string(2000, '[') + std::string(2000, ']');
  for (const std::string& document :
       {std::string(), std::string("no json"), deep, std::string(1U << 20U, 'x'),
        std::string(R"({"count": 2, "values": []})"),
        std::string(R"({"count": 0, "values": [{"SIGNAL_STRENGTH": 0}]})")}) {
    store().set(kDocument, document);
    EXPECT_EQ(title(kFirst), signalIcon(0)) << document.substr(0, 30);
    EXPECT_EQ(title(kSecond), signalIcon(0)) << document.substr(0, 30);
    EXPECT_EQ(second(kFirst), "") << document.substr(0, 30);
    EXPECT_EQ(second(kSecond), "") << document.substr(0, 30);
  }
}

TEST_F(IconPaths, ADocumentOfAWrongShapeRaisesTouchesNothingAndLeavesTheLockFree) {
  char preset[] = "preset";
  for (const char* document :
       {"[]", R"({"values": []})", R"({"count": 1, "values": [{"SSID": "One"}]})",
        R"({"count": 1, "values": [{"SSID": [], "SIGNAL_STRENGTH": 0}]})"}) {
    store().set(kDocument, document);
    char* path = preset;
    clearJournal();
    EXPECT_THROW(table().get_title_icon_path(kFirst, &path), Json::LogicError) << document;
    EXPECT_EQ(path, preset) << document;
    EXPECT_EQ(journal(), ofTitle(kFirst, {readsDocument()})) << document;
    clearJournal();
    EXPECT_THROW(table().get_second_icon_path("no/such/key", &path), Json::LogicError) << document;
    EXPECT_EQ(path, preset) << document;
    EXPECT_EQ(journal(), ofSecond("no/such/key", {readsDocument()})) << document;
  }
  EXPECT_EQ(title("no/such/key"), kFullSignal);
}

TEST_F(IconPaths, ALockThatCannotBeTakenRaisesItsErrorAndTouchesNothing) {
  char preset[] = "preset";
  char* path = preset;
  failNextLock(EDEADLK);
  EXPECT_THROW(table().get_title_icon_path(kFirst, &path), std::system_error);
  failNextLock(EDEADLK);
  EXPECT_THROW(table().get_second_icon_path(kFirst, &path), std::system_error);
  EXPECT_EQ(path, preset);
  EXPECT_EQ(journal(), (Journal{lockFails(EDEADLK), lockFails(EDEADLK)}));
}

}  // namespace
