// What the saved networks' object keeps that no callback shows.
#include <json/value.h>

#include "object_test.h"
#include "saved_network_document.h"
#include "settings/SavedAPConnection.h"

namespace {

class SavedNetworksObject : public ObjectTest {
 protected:
  void read(const std::string& text) {
    store().set(kSavedNetworksKey, text);
    clearJournal();
    networks_.ReadVconf();
  }

  // The process's one object, which outlives each test.
  SavedAPConnection& networks_ = *SavedAPConnection::GetInstance();
};

TEST_F(SavedNetworksObject, ThereIsOne) {
  EXPECT_EQ(SavedAPConnection::GetInstance(), &networks_);
  EXPECT_EQ(journal(), Journal());
}

TEST_F(SavedNetworksObject, AReadingFindsWhatTheDocumentSays) {
  read(kHomeAndOffice);
  EXPECT_EQ(journal(), readingHomeAndOffice());
  EXPECT_EQ(networks_.GetCount(), 2U);
  read(kHomeOnly);
  EXPECT_EQ(journal(), readingHomeOnly());
  EXPECT_EQ(networks_.GetCount(), 1U);
}

TEST_F(SavedNetworksObject, AReadingThatFailsLeavesNoNetwork) {
  for (const char* text : {"no JSON", R"({"count": 2})", R"({"count": 0, "values": [5]})"}) {
    read(kHomeAndOffice);
    read(text);
    EXPECT_EQ(networks_.GetCount(), 0U) << text;
  }
  read(kHomeAndOffice);
  store().erase(kSavedNetworksKey);
  networks_.ReadVconf();
  EXPECT_EQ(networks_.GetCount(), 0U);
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

TEST_F(SavedNetworksObject, AChangedDocumentIsNotReadAndTheNetworksStay) {
  read(kHomeAndOffice);
  store().erase(kSavedNetworksKey);
  clearJournal();
  SavedAPConnection::_VconfSavedAPCommandChnage(nullptr, nullptr);
  EXPECT_EQ(journal(), Journal{call("vconf_set_int", "db/menu/refresh_menu", 100002)});
  EXPECT_EQ(networks_.GetCount(), 2U);
}

}  // namespace
