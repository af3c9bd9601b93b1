// What the power-on-with-mobile switch does that no callback shows.
#include <cstdlib>

#include "list_copy.h"
#include "object_test.h"
#include "settings/CMobileDeviceTV.h"

namespace {

class PowerOnWithMobileObject : public ObjectTest {
 protected:
  // The copy that the object makes of this text.
  static std::string copyOf(const std::string& source) {
    char* copy = nullptr;
    CMobileDeviceTV::string2cstr(source.c_str(), &copy);
    EXPECT_NE(copy, source.c_str());
    std::string text = copy != nullptr ? copy : "(null)";
    std::free(copy);
    return text;
  }
};

TEST_F(PowerOnWithMobileObject, ConstructionOpensAConnectionAndDestructionDestroysIt) {
  { const CMobileDeviceTV mobile; }
  EXPECT_EQ(journal(),
            (Journal{call("connection_create"), call("connection_destroy", "connection 1")}));
}

TEST_F(PowerOnWithMobileObject, TheListDoesNotDependOnTheKey) {
  CMobileDeviceTV mobile;
  for (const char* key : {"menu/network/MobileDeviceTV_US", "menu/network/MobileDeviceTV_NOT_US",
                          "", "no/such/key", static_cast<const char*>(nullptr)}) {
    clearJournal();
    EXPECT_EQ(takeList(mobile, key), (std::vector<std::string>{"Off", "On"}));
    EXPECT_EQ(journal(), Journal{mainLog("listSize==2\n")});
  }
}

TEST_F(PowerOnWithMobileObject, FillingTheListTwiceLeavesTwoEntries) {
  CMobileDeviceTV mobile;
  mobile.fillList();
  mobile.fillList();
  EXPECT_EQ(takeList(mobile, "any").size(), 2U);
}

TEST_F(PowerOnWithMobileObject, TheKeyOfAValueIsNotExamined) {
  CMobileDeviceTV mobile;
  EXPECT_EQ(mobile.setInt(nullptr, 1), 1);
  int value = 77;
  EXPECT_EQ(mobile.getInt("no/such/key", &value), 1);
  EXPECT_EQ(value, 1);
}

TEST_F(PowerOnWithMobileObject, TheModeIsReadAndSetWithoutTheValuesLogLines) {
  CMobileDeviceTV mobile;
  clearJournal();
  EXPECT_EQ(mobile.connection_get_wakeOnMobile_mode(), 0);
  EXPECT_EQ(journal(), (Journal{call("util_get_wakeOnMobile_mode"),
                                mainLog("Request to get wakeOnMobile mode succeeded : "),
                                mainLog("wakeOnMobile Disabled\n")}));
  clearJournal();
  EXPECT_EQ(mobile.connection_set_wakeOnMobile_mode(-1), -1);
  EXPECT_EQ(journal(),
            (Journal{mainLog("Enter the wakeOnMobile Mode Value Enable ->1 ,Disable ->0:\n"),
                     mainLog("Failed to read input data Try Again..\n")}));
}

TEST_F(PowerOnWithMobileObject, ACopyOfATextIsWholeWhateverItsLength) {
  for (const std::size_t length : {0U, 1U, 255U, 256U, 5000U}) {
    const std::string source(length, 'x');
    EXPECT_EQ(copyOf(source), source);
  }
}

}  // namespace
