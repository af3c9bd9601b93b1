// The device-name list's operations that no callback calls.
#include <cstdlib>

#include "list_copy.h"
#include "object_test.h"
#include "settings/DeviceNameListInterface.h"

namespace {

constexpr char kDefaultNameKey[] = "db/menu/network/devicename/default_tv_name";
constexpr char kNameKey[] = "db/menu/network/devicename/tv_name";

class DeviceNameObject : public ObjectTest {
 protected:
  void SetUp() override {
    ObjectTest::SetUp();
    DeviceNameListInterface::m_IsFillDeviceNameList = false;
    DeviceNameListInterface::m_DefaultDeviceName.clear();
  }

  // Builds a list of two entries ...
  void fillWith(const std::string& defaultName) {
    store().set(kDefaultNameKey, defaultName);
    DeviceNameListInterface::fillDeviceNameList();
    clearJournal();
  }

  // ... of only user input ...
  void fillWithoutName() {
    DeviceNameListInterface::fillDeviceNameList();
    clearJournal();
  }

  // ... or of more entries than the store ever provides.
  void fillWithEntries(std::vector<std::string> entries) {
    fillWith(entries.front());
    DeviceNameListInterface::m_DevicenameList = std::move(entries);
  }

  // The index of an item with this text.
  int valueOf(std::string item, int preset = -7) {
    int value = preset;
    clearJournal();
    EXPECT_EQ(list_.getListItemIntValue(item.data(), &value), 0);
    return value;
  }

  static Journal::Piece marking(const std::string& name) {
    return call("evas_textblock_text_utf8_to_markup", "null", name);
  }

  DeviceNameListInterface list_;
};

// ---- Building the list ----

TEST_F(DeviceNameObject, TheListIsBuiltOnce) {
  store().set(kDefaultNameKey, "TV One");
  DeviceNameListInterface::fillDeviceNameList();
  EXPECT_EQ(journal(),
            (Journal{call("vconf_get_str", kDefaultNameKey), mainLog("dName==TV One\n")}));
  EXPECT_TRUE(DeviceNameListInterface::m_IsFillDeviceNameList);
  EXPECT_EQ(DeviceNameListInterface::m_DefaultDeviceName, "TV One");
  EXPECT_EQ(DeviceNameListInterface::m_DevicenameList,
            (std::vector<std::string>{"TV One", "SID_USER_INPUT"}));
  store().set(kDefaultNameKey, "TV Two");
  clearJournal();
  DeviceNameListInterface::fillDeviceNameList();
  EXPECT_EQ(journal(), Journal());
  EXPECT_EQ(DeviceNameListInterface::m_DefaultDeviceName, "TV One");
  EXPECT_EQ(DeviceNameListInterface::m_DevicenameList.size(), 2U);
}

TEST_F(DeviceNameObject, AListThatIsBuiltReplacesWhatWasThere) {
  DeviceNameListInterface::m_DevicenameList = {"one", "two", "three"};
  fillWith("TV One");
  EXPECT_EQ(DeviceNameListInterface::m_DevicenameList,
            (std::vector<std::string>{"TV One", "SID_USER_INPUT"}));
}

TEST_F(DeviceNameObject, TheListIsSharedByAllObjects) {
  fillWith("TV One");
  DeviceNameListInterface other;
  EXPECT_EQ(takeList(other, "any"), (std::vector<std::string>{"&#x202d;TV One", "SID_USER_INPUT"}));
}

// ---- The list's texts ----

TEST_F(DeviceNameObject, AnEmptyListIsAnArrayOfNothing) {
  DeviceNameListInterface::m_DevicenameList.clear();
  int count = 77;
  const char** texts = list_.getListItems("any", &count);
  EXPECT_EQ(count, 0);
  EXPECT_EQ(journal(), Journal());
  std::free(texts);
}

TEST_F(DeviceNameObject, EveryEntryButTheLastIsMarkup) {
  fillWithEntries({"a<b", "c&d", "e<f"});
  EXPECT_EQ(takeList(list_, nullptr),
            (std::vector<std::string>{"&#x202d;a&lt;b", "&#x202d;c&amp;d", "e<f"}));
  EXPECT_EQ(journal(), (Journal{marking("a<b"), marking("c&d")}));
}

// ---- The index of an item ----

TEST_F(DeviceNameObject, AnItemIsFoundByItsMarkup) {
  fillWith("TV One");
  EXPECT_EQ(valueOf("&#x202d;TV One"), 0);
  EXPECT_EQ(journal(), (Journal{marking("TV One"), mainLog("dName=&#x202d;TV One\n")}));
}

TEST_F(DeviceNameObject, TheBareNameIsUserInput) {
  fillWith("TV One");
  EXPECT_EQ(valueOf("TV One"), 1);
  EXPECT_EQ(journal(), Journal{marking("TV One")});
}

TEST_F(DeviceNameObject, AnyOtherTextIsUserInput) {
  fillWith("TV One");
  for (const char* text : {"SID_USER_INPUT", "", "&#x202d;TV On", "&#x202d;TV One ", "&#x202d;"}) {
    EXPECT_EQ(valueOf(text), 1) << text;
  }
}

TEST_F(DeviceNameObject, TheFirstEqualEntryCountsAndTheLastIsNeverCompared) {
  fillWithEntries({"one", "two", "two", "last"});
  EXPECT_EQ(valueOf("&#x202d;two"), 1);
  EXPECT_EQ(journal(), (Journal{marking("one"), marking("two"), mainLog("dName=&#x202d;two\n")}));
  EXPECT_EQ(valueOf("&#x202d;last"), 3);
  EXPECT_EQ(journal(), (Journal{marking("one"), marking("two"), marking("two")}));
}

TEST_F(DeviceNameObject, MarkupThatFailsMakesTheEmptyTextTheItem) {
  fillWith("TV One");
  failWith("evas_textblock_text_utf8_to_markup", -1);
  EXPECT_EQ(valueOf(""), 0);
  EXPECT_EQ(journal(),
            (Journal{marking("TV One"), mainLog("evas_textblock_text_utf8_to_markup returned NULL"),
                     mainLog("dName=\n")}));
  EXPECT_EQ(valueOf("&#x202d;TV One"), 1);
}

TEST_F(DeviceNameObject, ALongNameIsFoundOnlyByItsWholeMarkup) {
  const std::string name(300, 'n');
  fillWith(name);
  EXPECT_EQ(valueOf("&#x202d;" + name), 0);
  EXPECT_EQ(valueOf(takeList(list_, "any").front()), 1);  // cut
}

TEST_F(DeviceNameObject, ANullItemIsRefusedAndTheOutputUntouched) {
  fillWith("TV One");
  int value = 5;
  EXPECT_EQ(list_.getListItemIntValue(nullptr, &value), -1);
  EXPECT_EQ(value, 5);
  EXPECT_EQ(journal(), Journal{mainLog("wifi_direct_get_device_name::status [0xffffffff]")});
}

TEST_F(DeviceNameObject, InAListOfOneEntryEveryItemIsThatEntryWithoutAComparison) {
  fillWithoutName();
  for (const char* text : {"SID_USER_INPUT", "", "any"}) {
    EXPECT_EQ(valueOf(text), 0) << text;
    EXPECT_EQ(journal(), Journal()) << text;
  }
}

TEST_F(DeviceNameObject, InAListOfOneEntryANullItemIsThatEntryAndRefused) {
  fillWithoutName();
  int value = 5;
  EXPECT_EQ(list_.getListItemIntValue(nullptr, &value), -1);
  EXPECT_EQ(value, 0);
  EXPECT_EQ(journal(), Journal{mainLog("wifi_direct_get_device_name::status [0xffffffff]")});
}

TEST_F(DeviceNameObject, InAnEmptyListTheOutputsStayUntouched) {
  DeviceNameListInterface::m_DevicenameList.clear();
  store().set(kNameKey, "TV One");
  EXPECT_EQ(valueOf("any", 5), 5);
  int value = 5;
  EXPECT_EQ(list_.getListItemIntValue(nullptr, &value), -1);
  EXPECT_EQ(value, 5);
  EXPECT_EQ(list_.getInt("any", &value), 0);
  EXPECT_EQ(value, 5);
  EXPECT_EQ(list_.setInt("any", 0), -1);
}

// ---- The item's text and icon ----

TEST_F(DeviceNameObject, AnItemsTextIsTheItemItself) {
  char item[] = "item";
  char* text = nullptr;
  EXPECT_EQ(list_.getListItemDisplayValue(item, &text), 0);
  EXPECT_EQ(text, item);
  EXPECT_EQ(list_.getListItemDisplayValue(nullptr, &text), 0);
  EXPECT_EQ(text, nullptr);
  EXPECT_EQ(journal(), Journal());
}

TEST_F(DeviceNameObject, ThereAreNoIcons) {
  char item[] = "item";
  char* icon = item;
  EXPECT_EQ(list_.getListItemIcon(item, &icon), 0);
  EXPECT_EQ(icon, item);
  EXPECT_EQ(journal(), Journal());
}

// ---- The stored name ----

TEST_F(DeviceNameObject, TheKeyOfTheValueIsNotExamined) {
  fillWith("TV One");
  EXPECT_EQ(list_.setInt(nullptr, 0), 0);
  EXPECT_EQ(store().stringAt(kNameKey), "TV One");
  int value = 77;
  EXPECT_EQ(list_.getInt(nullptr, &value), 0);
  EXPECT_EQ(value, 0);
}

TEST_F(DeviceNameObject, TheFirstEntryOfTheStoredNameCountsAndTheLastIsNeverCompared) {
  fillWithEntries({"one", "two", "two", "last"});
  int value = 77;
  store().set(kNameKey, "two");
  EXPECT_EQ(list_.getInt("any", &value), 0);
  EXPECT_EQ(value, 1);
  store().set(kNameKey, "last");
  clearJournal();
  EXPECT_EQ(list_.getInt("any", &value), 0);
  EXPECT_EQ(value, 3);
  EXPECT_EQ(journal(), (Journal{call("vconf_get_str", kNameKey), mainLog("value=3\n")}));
}

TEST_F(DeviceNameObject, EveryIndexButTheLastStoresTheDefaultName) {
  fillWithEntries({"TV One", "two", "three", "last"});
  for (const int index : {0, 1, 2}) {
    store().erase(kNameKey);
    EXPECT_EQ(list_.setInt("any", index), 0) << index;
    EXPECT_EQ(store().stringAt(kNameKey), "TV One") << index;
  }
  EXPECT_EQ(list_.setInt("any", 3), -1);
}

}  // namespace
