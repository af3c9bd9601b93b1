// The saved networks' operations behind the two items, by themselves.
#include <json/value.h>

#include <climits>

#include "object_test.h"
#include "saved_network_document.h"
#include "settings/SavedAPConnection.h"

namespace {

constexpr char kCommandKey[] = "memory/NW-Daemon/Command";

// The path of the icon of a level.
std::string icon(int level) {
  return "/usr/apps/com.norvane.tv.theme-resource/shared/res/ug-SystemSetupNetworkUG-efl/res/"
         "systemsetup/icon_wifi/oobe_icon_n_wifi_" +
         std::to_string(level) + ".svg";
}

class SavedNetworkItems : public ObjectTest {
 protected:
  // Publishes this document as the one to read, and clears the journal.
  static void publish(const std::string& text) {
    store().set(kSavedNetworksKey, text);
    clearJournal();
  }

  static Journal connecting(const std::string& ssid) {
    return {call("vconf_set_str", kCommandKey,
                 "{\n\t\"COMMAND\" : \"1\",\n\t\"SSID\" : \"" + ssid + "\"\n}")};
  }

  // The process's one object, which outlives each test.
  SavedAPConnection& networks_ = *SavedAPConnection::GetInstance();
};

// ---- Names and status ----

TEST_F(SavedNetworkItems, ANameIsReadAndLogged) {
  publish(kHomeAndOffice);
  EXPECT_EQ(networks_.GetFirstItemName(), "Home");
  EXPECT_EQ(journal(), (Journal{readingHomeAndOffice(), networkLog("Home", "Connected")}));
  clearJournal();
  EXPECT_EQ(networks_.GetSecondItemName(), "Office");
  EXPECT_EQ(journal(), (Journal{readingHomeAndOffice(), networkLog("Office", "Saved")}));
}

TEST_F(SavedNetworkItems, AnUnchangedDocumentIsReadAndLoggedAsAChangedOneIs) {
  publish(kHomeAndOffice);
  EXPECT_EQ(networks_.GetFirstItemName(), "Home");
  publish(document(1, {network("Attic", -60, "Saved")}));
  EXPECT_EQ(networks_.GetFirstItemName(), "Attic");
  for (int i = 0; i < 3; ++i) {
    publish(kHomeAndOffice);
    EXPECT_EQ(networks_.GetSecondItemName(), "Office");
    EXPECT_EQ(journal(), (Journal{readingHomeAndOffice(), networkLog("Office", "Saved")})) << i;
  }
}

TEST_F(SavedNetworkItems, ADocumentThatCannotBeReadToItsEndIsReadAnewEachTime) {
  for (int i = 0; i < 3; ++i) {
    publish(R"({"count":2,"values":[{"SSID":"Home","STATUS":"Saved","SIGNAL_STRENGTH":-50}]})");
    EXPECT_EQ(networks_.GetFirstItemName(), "Home");
    EXPECT_EQ(logLines().count(mainLog("itemdata.empty() - return")), 1U) << i;
    publish(R"({"count":"two","values":[1]})");
    EXPECT_THROW(networks_.GetFirstItemName(), Json::LogicError) << i;
    publish("no JSON");
    EXPECT_EQ(networks_.GetFirstItemName(), "") << i;
    publish(kHomeAndOffice);
    EXPECT_EQ(networks_.GetFirstItemName(), "Home");
  }
}

TEST_F(SavedNetworkItems, ADocumentThatIsGoneAndComesBackIsRead) {
  publish(kHomeAndOffice);
  EXPECT_EQ(networks_.GetFirstItemName(), "Home");
  store().erase(kSavedNetworksKey);
  EXPECT_EQ(networks_.GetFirstItemName(), "");
  publish(kHomeAndOffice);
  EXPECT_EQ(networks_.GetFirstItemName(), "Home");
}

TEST_F(SavedNetworkItems, AStatusIsReadAndLoggedBehindAStart) {
  publish(kHomeAndOffice);
  EXPECT_EQ(networks_.GetFirstItemStatus(), "Connected");
  EXPECT_EQ(journal(),
            (Journal{mainLog("START"), readingHomeAndOffice(), networkLog("Home", "Connected")}));
  clearJournal();
  EXPECT_EQ(networks_.GetSecondItemStatus(), "Saved");
  EXPECT_EQ(journal(),
            (Journal{mainLog("START"), readingHomeAndOffice(), networkLog("Office", "Saved")}));
}

TEST_F(SavedNetworkItems, AStatusIsPassedOnAsPublished) {
  for (const char* status : {"", "connected", " Connected", "연결됨", "\xff", "Whatever 5%"}) {
    publish(document(2, {network("Home", -60, status), network("Office", -80, status)}));
    EXPECT_EQ(networks_.GetFirstItemStatus(), status);
    EXPECT_EQ(networks_.GetSecondItemStatus(), status);
  }
}

TEST_F(SavedNetworkItems, ANameIsKeptWithANulInIt) {
  publish(document(1, {network(R"(a\u0000b)", -60, R"(c\u0000d)")}));
  EXPECT_EQ(networks_.GetFirstItemName(), std::string("a\0b", 3));
  EXPECT_EQ(networks_.GetFirstItemStatus(), std::string("c\0d", 3));
}

TEST_F(SavedNetworkItems, AMissingNetworkHasAnEmptyNameAndStatusAndLogsNoMore) {
  publish(kHomeOnly);
  EXPECT_EQ(networks_.GetSecondItemName(), "");
  EXPECT_EQ(journal(), readingHomeOnly());
  clearJournal();
  EXPECT_EQ(networks_.GetSecondItemStatus(), "");
  EXPECT_EQ(journal(), (Journal{mainLog("START"), readingHomeOnly()}));
  publish(R"({"count": 1})");
  EXPECT_EQ(networks_.GetFirstItemName(), "");
  EXPECT_EQ(networks_.GetFirstItemStatus(), "");
}

// ---- Icons ----

TEST_F(SavedNetworkItems, AnIconIsThatOfTheStrengthWhichIsLoggedUnsigned) {
  publish(kHomeAndOffice);
  EXPECT_EQ(networks_.GetFirstItemIcon(), icon(4));
  EXPECT_EQ(journal(),
            (Journal{readingHomeAndOffice(),
                     mainLog(" AP Name = Home status = Connected SignalStrength =  4294967236")}));
  clearJournal();
  EXPECT_EQ(networks_.GetSecondItemIcon(), icon(2));
  EXPECT_EQ(journal(),
            (Journal{readingHomeAndOffice(),
                     mainLog(" AP Name = Office status = Saved SignalStrength =  4294967216")}));
}

TEST_F(SavedNetworkItems, APositiveStrengthIsLoggedAsItIs) {
  publish(document(1, {network("Home", 5, "Connected")}));
  EXPECT_EQ(networks_.GetFirstItemIcon(), icon(4));
  EXPECT_TRUE(
      logLines().contains(mainLog(" AP Name = Home status = Connected SignalStrength =  5")));
}

TEST_F(SavedNetworkItems, AMissingNetworkHasTheLowestIconAndLogsNoMore) {
  publish(kHomeOnly);
  EXPECT_EQ(networks_.GetSecondItemIcon(), icon(0));
  EXPECT_EQ(journal(), readingHomeOnly());
  publish("no JSON");
  EXPECT_EQ(networks_.GetFirstItemIcon(), icon(0));
}

TEST_F(SavedNetworkItems, TheLevelOfAStrengthIsFoundWithoutReadingTheDocument) {
  const struct {
    int strength;
    int level;
  } levels[] = {{INT_MIN, 0}, {-200, 0},  {-100, 0},   {-90, 0}, {-89, 0}, {-88, 1},
                {-84, 1},     {-83, 1},   {-82, 2},    {-76, 2}, {-75, 2}, {-74, 3},
                {-65, 3},     {-64, 3},   {-63, 4},    {-1, 4},  {0, 4},   {9999, 4},
                {10000, 4},   {10001, 4}, {INT_MAX, 4}};
  for (const auto& each : levels) {
    EXPECT_EQ(networks_.GetSignalStrength(each.strength), icon(each.level)) << each.strength;
  }
  EXPECT_EQ(journal(), Journal());
}

TEST_F(SavedNetworkItems, TheIconOfANetworkFollowsTheSameLevels) {
  for (const int strength : {INT_MIN, -89, -88, -83, -82, -75, -74, -64, -63, 10001, INT_MAX}) {
    publish(document(2, {network("Home", strength, ""), network("Office", strength, "")}));
    const std::string expected = networks_.GetSignalStrength(strength);
    EXPECT_EQ(networks_.GetFirstItemIcon(), expected) << strength;
    EXPECT_EQ(networks_.GetSecondItemIcon(), expected) << strength;
  }
}

// ---- Connecting ----

TEST_F(SavedNetworkItems, IndexZeroConnectsToTheFirstNetwork) {
  publish(kHomeAndOffice);
  networks_.Connect(0);
  EXPECT_EQ(journal(),
            (Journal{readingHomeAndOffice(), networkLog("Home", "Connected"), connecting("Home")}));
}

TEST_F(SavedNetworkItems, AnyOtherIndexConnectsToTheSecondNetwork) {
  for (const int index : {1, 5, 2, -1, INT_MAX, INT_MIN}) {
    publish(kHomeAndOffice);
    networks_.Connect(index);
    EXPECT_EQ(journal(), (Journal{readingHomeAndOffice(), networkLog("Office", "Saved"),
                                  connecting("Office")}))
        << index;
  }
}

TEST_F(SavedNetworkItems, ConnectingToAMissingNetworkWritesAnEmptyName) {
  publish(kHomeOnly);
  networks_.Connect(5);
  EXPECT_EQ(journal(), (Journal{readingHomeOnly(), connecting("")}));
}

TEST_F(SavedNetworkItems, ACommandIsWrittenForAnyNameWithoutReadingTheDocument) {
  networks_.WriteConnectToVconf("Cafe");
  EXPECT_EQ(journal(), connecting("Cafe"));
  clearJournal();
  networks_.WriteConnectToVconf("");
  EXPECT_EQ(journal(), connecting(""));
  clearJournal();
  networks_.WriteConnectToVconf(std::string("\"\\\0/\n\xf0\x9f\x93\xb6\xff", 10));
  EXPECT_EQ(journal(), connecting(R"(\"\\\u0000/\n\ud83d\udcf6\ufffd)"));
}

TEST_F(SavedNetworkItems, AnExceptionOfTheReadingLeavesEveryOperation) {
  publish("{}");
  EXPECT_THROW(networks_.GetFirstItemName(), Json::LogicError);
  EXPECT_THROW(networks_.GetSecondItemName(), Json::LogicError);
  EXPECT_THROW(networks_.GetFirstItemStatus(), Json::LogicError);
  EXPECT_THROW(networks_.GetSecondItemStatus(), Json::LogicError);
  EXPECT_THROW(networks_.GetFirstItemIcon(), Json::LogicError);
  EXPECT_THROW(networks_.GetSecondItemIcon(), Json::LogicError);
  EXPECT_THROW(networks_.Connect(0), Json::LogicError);
  EXPECT_THROW(networks_.Connect(1), Json::LogicError);
  EXPECT_EQ(store().stringAt(kCommandKey), std::nullopt);
}

}  // namespace
