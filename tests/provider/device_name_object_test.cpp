// The device-name list's operations that no callback calls.
#include "DeviceNameListInterface.h"
#include "object_test.h"

namespace {

constexpr char kDefaultNameKey[] = "db/menu/network/devicename/default_tv_name";

class DeviceNameObject : public ObjectTest {
 protected:
  void SetUp() override {
    ObjectTest::SetUp();
    DeviceNameListInterface::m_IsFillDeviceNameList = false;
    DeviceNameListInterface::m_DefaultDeviceName.clear();
  }

  void fillWith(const std::string& defaultName) {
    store().set(kDefaultNameKey, defaultName);
    DeviceNameListInterface::fillDeviceNameList();
    clearJournal();
  }

  int valueOf(std::string item) {
    int value = -1;
    EXPECT_EQ(list_.getListItemIntValue(item.data(), &value), 0);
    return value;
  }

  DeviceNameListInterface list_;
};

TEST_F(DeviceNameObject, AnItemIsFoundByItsMarkupNotByTheBareName) {
  fillWith("TV One");
  EXPECT_EQ(valueOf("&#x202d;TV One"), 0);
  EXPECT_EQ(valueOf("TV One"), 1);
}

TEST_F(DeviceNameObject, AnItemWithMarkupCharactersIsStillFound) {
  fillWith("Tom & <Jerry>");
  EXPECT_EQ(valueOf("&#x202d;Tom &amp; &lt;Jerry&gt;"), 0);
}

TEST_F(DeviceNameObject, ANullItemIsRefusedAndTheOutputUntouched) {
  fillWith("TV One");
  int value = 5;
  EXPECT_EQ(list_.getListItemIntValue(nullptr, &value), -1);
  EXPECT_EQ(value, 5);
  EXPECT_EQ(journal(), Journal{mainLog("wifi_direct_get_device_name::status [0xffffffff]")});
}

TEST_F(DeviceNameObject, MarkupThatFailsIsTheEmptyText) {
  failWith("evas_textblock_text_utf8_to_markup", -1);
  EXPECT_EQ(DeviceNameListInterface::MakeMarkup("TV One"), "");
  EXPECT_EQ(journal(), (Journal{call("evas_textblock_text_utf8_to_markup", "null", "TV One"),
                                mainLog("evas_textblock_text_utf8_to_markup returned NULL")}));
}

TEST_F(DeviceNameObject, AnItemsTextIsTheItemItself) {
  char item[] = "item";
  char* text = nullptr;
  EXPECT_EQ(list_.getListItemDisplayValue(item, &text), 0);
  EXPECT_EQ(text, item);
}

TEST_F(DeviceNameObject, ThereAreNoIcons) {
  char item[] = "item";
  char* icon = item;
  EXPECT_EQ(list_.getListItemIcon(item, &icon), 0);
  EXPECT_EQ(icon, item);
}

}  // namespace
