// What the wired 802.1X switch does that no callback shows.
#include "list_copy.h"
#include "object_test.h"
#include "settings/CWiredEAP.h"

namespace {

constexpr char kKey[] = "menu/network/WiredEAP";
constexpr char kChoiceKey[] = "db/menu/network/wiredeap";

class WiredEapObject : public ObjectTest {
 protected:
  void SetUp() override {
    ObjectTest::SetUp();
    setProfiles({kEthernetProfile});
  }
};

TEST_F(WiredEapObject,
       ConstructionOpensAConnectionAndSearchesDestructionDestroysTheConnectionOnly) {
  { const CWiredEAP eap; }
  EXPECT_EQ(
      journal(),
      (Journal{
          call("connection_create"), call("connection_get_profile_iterator", "connection 1", 0),
          call("connection_profile_iterator_has_next", "iterator"),
          call("connection_profile_iterator_next", "iterator"),
          call("connection_profile_get_type", "profile 1"), mainLog("profile type ethernet"),
          call("connection_destroy", "connection 1"), mainLog("[connection_destroy success]")}));
}

TEST_F(WiredEapObject, EnablingAndDisablingStoreNothing) {
  CWiredEAP eap;
  clearJournal();
  eap.m_EnableEAP();
  eap.m_DisableEAP();
  EXPECT_EQ(journal(),
            (Journal{call("connection_profile_enable_ethernet_eap", "profile 1", true),
                     call("connection_profile_enable_ethernet_eap", "profile 1", false)}));
}

TEST_F(WiredEapObject, EnablingAndDisablingWithoutAProfileDoNothing) {
  setProfiles({});
  CWiredEAP eap;
  clearJournal();
  testing::internal::CaptureStdout();
  eap.m_EnableEAP();
  eap.m_DisableEAP();
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(journal(), Journal());
}

TEST_F(WiredEapObject, TheListDoesNotDependOnTheKey) {
  for (const char* key : {kKey, "", "no/such/key", static_cast<const char*>(nullptr)}) {
    CWiredEAP eap;
    clearJournal();
    EXPECT_EQ(takeList(eap, key), (std::vector<std::string>{"Off", "On"}));
    EXPECT_EQ(journal(), Journal{mainLog("listSize==2\n")});
    EXPECT_EQ(eap.setInt(key, 1), 0);
  }
}

TEST_F(WiredEapObject, FillingTheListIsWhatMakesItAcceptAValue) {
  CWiredEAP eap;
  EXPECT_EQ(eap.setInt(kKey, 0), -1);
  eap.fillList();
  EXPECT_EQ(eap.setInt(kKey, 0), 0);
}

TEST_F(WiredEapObject, FillingTheListTwiceLeavesTwoEntries) {
  CWiredEAP eap;
  eap.fillList();
  eap.fillList();
  EXPECT_EQ(eap.setInt(kKey, 2), -1);
  EXPECT_EQ(takeList(eap, kKey).size(), 2U);
}

TEST_F(WiredEapObject, EachObjectHasAListOfItsOwn) {
  CWiredEAP first;
  CWiredEAP second;
  first.fillList();
  EXPECT_EQ(second.setInt(kKey, 1), -1);
}

TEST_F(WiredEapObject, AChoiceThatCannotBeStoredIsLoggedWithTheKeyThatWasPassed) {
  CWiredEAP eap;
  eap.fillList();
  failWith("vconf_set_int", -6);
  clearJournal();
  EXPECT_EQ(eap.setInt("no/such/key", 1), -6);
  EXPECT_EQ(
      journal(),
      (Journal{call("connection_profile_enable_ethernet_eap", "profile 1", true),
               call("vconf_set_int", kChoiceKey, 1),
               mainLog("vconf KEY [no/such/key] is fail value [1]  and status=-6 !!!!!!!!!!")}));
}

TEST_F(WiredEapObject, TheKeyOfTheValueIsNotExamined) {
  CWiredEAP eap;
  store().set(kChoiceKey, 7);
  int value = 77;
  EXPECT_EQ(eap.getInt(nullptr, &value), 1);
  EXPECT_EQ(value, 1);
}

}  // namespace
