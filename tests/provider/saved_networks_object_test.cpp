// State of the saved networks' object that no callback shows.
#include <json/value.h>

#include <climits>

#include "object_test.h"
#include "saved_network_document.h"
#include "settings/SavedAPConnection.h"

namespace {

constexpr char kCommandKey[] = "memory/NW-Daemon/Command";

class SavedNetworksObject : public ObjectTest {
 protected:
  void read(const std::string& text) {
    publish(text);
    networks_.ReadVconf();
  }

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

TEST_F(SavedNetworksObject, ThereIsOne) {
  EXPECT_EQ(SavedAPConnection::GetInstance(), &networks_);
  EXPECT_EQ(journal(), Journal());
}

TEST_F(SavedNetworksObject, TheNetworksBeforeAnExceptionStay) {
  read(kHomeOnly);
  const std::string bad =
      document(3, {network("Cafe", -60, "Saved"), network("Gym", -60, "Saved"), "5"});
  EXPECT_THROW(read(bad), Json::LogicError);
  EXPECT_EQ(networks_.GetCount(), 2U);
  EXPECT_EQ(journal(), (Journal{call("vconf_get_str", kSavedNetworksKey),
                                networkLog("Cafe", "Saved"), networkLog("Gym", "Saved")}));
}

TEST_F(SavedNetworksObject, TheNetworksOfThePreviousReadingDoNotStayWhenTheFirstRaisesAnException) {
  read(kHomeAndOffice);
  EXPECT_THROW(read("{}"), Json::LogicError);
  EXPECT_EQ(networks_.GetCount(), 0U);
}

TEST_F(SavedNetworksObject, AnUnchangedDocumentIsReadAndLoggedAsAChangedOneIs) {
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

TEST_F(SavedNetworksObject, ADocumentThatCannotBeReadToItsEndIsReadAgainEachTime) {
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

TEST_F(SavedNetworksObject, ADocumentThatIsGoneAndComesBackIsRead) {
  publish(kHomeAndOffice);
  EXPECT_EQ(networks_.GetFirstItemName(), "Home");
  store().erase(kSavedNetworksKey);
  EXPECT_EQ(networks_.GetFirstItemName(), "");
  publish(kHomeAndOffice);
  EXPECT_EQ(networks_.GetFirstItemName(), "Home");
}

TEST_F(SavedNetworksObject, ANameIsKeptWithANulInIt) {
  publish(document(1, {network(R"(a\u0000b)", -60, R"(c\u0000d)")}));
  EXPECT_EQ(networks_.GetFirstItemName(), std::string("a\0b", 3));
  EXPECT_EQ(networks_.GetFirstItemStatus(), std::string("c\0d", 3));
}

TEST_F(SavedNetworksObject, APositiveStrengthIsLoggedAsItIs) {
  publish(document(1, {network("Home", 5, "Connected")}));
  networks_.GetFirstItemIcon();
  EXPECT_TRUE(
      logLines().contains(mainLog(" AP Name = Home status = Connected SignalStrength =  5")));
}

TEST_F(SavedNetworksObject, AnyOtherIndexConnectsToTheSecondNetwork) {
  for (const int index : {1, 5, 2, -1, INT_MAX, INT_MIN}) {
    publish(kHomeAndOffice);
    networks_.Connect(index);
    EXPECT_EQ(journal(), (Journal{readingHomeAndOffice(), networkLog("Office", "Saved"),
                                  connecting("Office")}))
        << index;
  }
}

TEST_F(SavedNetworksObject, ACommandIsWrittenForAnyNameWithoutReadingTheDocument) {
  networks_.WriteConnectToVconf("Cafe");
  EXPECT_EQ(journal(), connecting("Cafe"));
  clearJournal();
  networks_.WriteConnectToVconf("");
  EXPECT_EQ(journal(), connecting(""));
  clearJournal();
  networks_.WriteConnectToVconf(std::string("\"\\\0/\n\xf0\x9f\x93\xb6\xff", 10));
  EXPECT_EQ(journal(), connecting(R"(\"\\\u0000/\n\ud83d\udcf6\ufffd)"));
}

}  // namespace
