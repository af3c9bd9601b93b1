// The option lists: their entries, what follows when one is chosen, and who frees what.
#include <cstdint>
#include <cstring>
#include <memory>
#include <ostream>
#include <vector>

#include "provider_test.h"
#include "texts.h"

namespace {

constexpr char kFirstStates[] = VENTARO_KEY_SAVED_NETWORK_1_STATES;
constexpr char kSecondStates[] = VENTARO_KEY_SAVED_NETWORK_2_STATES;
constexpr char kPowerOnWithMobile[] = VENTARO_KEY_POWER_ON_WITH_MOBILE_US;
constexpr char kWifi[] = VENTARO_KEY_WIFI;
constexpr char kWifiDirect[] = VENTARO_KEY_WIFI_DIRECT;
constexpr char kWiredEap[] = VENTARO_KEY_WIRED_EAP;
constexpr char kDeviceName[] = VENTARO_KEY_DEVICE_NAME;

constexpr char kRegulation[] = "com.norvane/featureconf/setting.eu_energy_regulation";
constexpr char kDefaultName[] = "db/menu/network/devicename/default_tv_name";

constexpr auto kNothing = ITEM_FOLLOWING_ACTION_NONE;
constexpr auto kRefresh = ITEM_FOLLOWING_ACTION_REFRESH;
constexpr auto kMessageBox = ITEM_FOLLOWING_ACTION_MESSAGE_BOX;

// An item's layout in memory.
struct Record {
  char* text;
  int value;
  std::int32_t action;
};
static_assert(sizeof(Record) == sizeof(void*) + 8);

struct Entry {
  std::string text;
  int value;
  ITEM_FOLLOWING_ACTION_TYPE action;
  bool operator==(const Entry&) const = default;
};
void PrintTo(const Entry& entry, std::ostream* out) {
  *out << '"' << entry.text << "\" " << entry.value << " action " << entry.action;
}
using Entries = std::vector<Entry>;

Entries entriesOf(const OptionList& list) {
  Entries entries;
  for (int i = 0; i < list.count(); ++i) {
    entries.push_back({list.text(i), list.value(i), list.action(i)});
  }
  return entries;
}

const Record& recordOf(const OptionList& list, int index) {
  return *static_cast<const Record*>(list.item(index));
}

struct Free {
  void operator()(void* block) const { std::free(block); }
};
using Block = std::unique_ptr<void, Free>;

// The second record of a list with one entry: only the test frees it.
Block uncounted(const OptionList& list) {
  return Block(list.item(1));
}

const Entries kStates = {
    {"disconnected", 0, kNothing}, {"loading", 1, kNothing}, {"connected", 2, kNothing}};

class ListItems : public ProviderTest {
 protected:
  void SetUp() override {
    ProviderTest::SetUp();
    store().set(kDefaultName, "TV One");
    flags().setBool("setting.eu_energy_regulation", true);
    create();
  }

  // Requests only the list and checks the journal: the key's line, then these.
  Entries expectList(const std::string& key, const Journal& lines) const {
    clearJournal();
    const OptionList list = listItems(key.c_str());
    EXPECT_EQ(journal(), (Journal{locks(), mainLog("START"), mainLog("Key ---->" + key + "::\n"),
                                  lines, unlocks()}))
        << key;
    return entriesOf(list);
  }

  static Journal switchLines() { return {mainLog("listSize==2\n")}; }

  static Journal wifiLines(bool regulated) {
    return {mainLog("listSize==2\n"), mainLog("START"),
            call("system_info_get_custom_bool", kRegulation),
            mainLog(regulated ? "[WifiOFFON => 1]" : "[WifiOFFON => 0]")};
  }

  static Journal nameIsConverted(const std::string& name) {
    return {call("evas_textblock_text_utf8_to_markup", "null", name)};
  }

  // The journal of a callback that does only this.
  static Journal underLock(const Journal& lines) {
    return {locks(), mainLog("START"), lines, unlocks()};
  }
};

// ---- The lists ----

TEST_F(ListItems, BothSavedNetworksHaveTheSameThreeStates) {
  EXPECT_EQ(expectList(kFirstStates, {}), kStates);
  EXPECT_EQ(expectList(kSecondStates, {}), kStates);
}

TEST_F(ListItems, PowerOnWithMobileAsksBeforeItIsSwitchedOn) {
  EXPECT_EQ(expectList(kPowerOnWithMobile, switchLines()),
            (Entries{{"Off", 0, kNothing}, {"On", 1, kMessageBox}}));
}

TEST_F(ListItems, WifiUnderTheEnergyRegulationAsksBeforeEverySwitch) {
  EXPECT_EQ(expectList(kWifi, wifiLines(true)),
            (Entries{{"Off", 0, kMessageBox}, {"On", 1, kMessageBox}}));
}

TEST_F(ListItems, WifiWithoutTheEnergyRegulationAsksOnlyBeforeItIsSwitchedOff) {
  flags().setBool("setting.eu_energy_regulation", false);
  EXPECT_EQ(expectList(kWifi, wifiLines(false)),
            (Entries{{"Off", 0, kMessageBox}, {"On", 1, kNothing}}));
}

TEST_F(ListItems, AnUnreadableEnergyRegulationCountsAsSet) {
  flags().erase("setting.eu_energy_regulation");
  const Journal lines = {
      mainLog("listSize==2\n"), mainLog("START"), call("system_info_get_custom_bool", kRegulation),
      mainLog(" Error: Fail to get com.norvane/featureconf/setting.eu_energy_regulation value"),
      mainLog("[WifiOFFON => 1]")};
  const Entries regulated = {{"Off", 0, kMessageBox}, {"On", 1, kMessageBox}};
  EXPECT_EQ(expectList(kWifi, lines), regulated);
  // Even if the failed read wrote another answer.
  flags().setBool("setting.eu_energy_regulation", false);
  failWith("system_info_get_custom_bool", "setting.eu_energy_regulation", -5, Effect::kAsSuccess);
  EXPECT_EQ(expectList(kWifi, lines), regulated);
}

TEST_F(ListItems, WifiDirectAndTheWiredSwitchAskForARefreshAfterEveryChoice) {
  const Entries entries = {{"Off", 0, kRefresh}, {"On", 1, kRefresh}};
  EXPECT_EQ(expectList(kWifiDirect, switchLines()), entries);
  EXPECT_EQ(expectList(kWiredEap, {mainLog("listSize==2\n"), mainLog("pDisplayValue[0]=Off::Off"),
                                   mainLog("pDisplayValue[1]=On::On")}),
            entries);
}

TEST_F(ListItems, TheDeviceNamesAreTheDefaultNameAndTheOneToBeTyped) {
  EXPECT_EQ(expectList(kDeviceName, nameIsConverted("TV One")),
            (Entries{{"&#x202d;TV One", 0, kNothing}, {"SID_USER_INPUT", 1, kRefresh}}));
}

TEST_F(ListItems, TheStatesOfASavedNetworkAreNeverTranslated) {
  useLanguage("ko");
  EXPECT_EQ(entriesOf(listItems(kFirstStates)), kStates);
}

TEST_F(ListItems, EveryCallBuildsAListOfItsOwn) {
  for (const char* key : {kFirstStates, kPowerOnWithMobile, kWifi, kDeviceName}) {
    const OptionList first = listItems(key);
    const OptionList second = listItems(key);
    EXPECT_NE(first.array(), second.array()) << key;
    EXPECT_NE(first.item(0), second.item(0)) << key;
    EXPECT_NE(first.rawText(0), second.rawText(0)) << key;
    EXPECT_EQ(entriesOf(first), entriesOf(second)) << key;
  }
}

// ---- Blocks ----

TEST_F(ListItems, AnItemIsATextAValueAndAnActionInThisOrder) {
  const OptionList list = listItems(kPowerOnWithMobile);
  EXPECT_STREQ(recordOf(list, 1).text, "On");
  EXPECT_EQ(recordOf(list, 1).value, 1);
  EXPECT_EQ(recordOf(list, 1).action, 2);
}

TEST_F(ListItems, EveryBlockIsAsLargeAsItsContents) {
  for (const char* key : {kPowerOnWithMobile, kWifi, kWifiDirect, kWiredEap, kDeviceName}) {
    const OptionList list = listItems(key);
    EXPECT_EQ(requestedSize(list.array()), 2 * sizeof(void*)) << key;
    for (int i = 0; i < 2; ++i) {
      EXPECT_EQ(requestedSize(list.item(i)), sizeof(Record)) << key;
      EXPECT_EQ(requestedSize(list.rawText(i)), 256U) << key;
    }
  }
}

TEST_F(ListItems, TheStatesStandInBlocksOf2048Bytes) {
  const OptionList list = listItems(kFirstStates);
  EXPECT_EQ(requestedSize(list.array()), 3 * sizeof(void*));
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(requestedSize(list.item(i)), sizeof(Record));
    EXPECT_EQ(requestedSize(list.rawText(i)), 2048U);
  }
}

TEST_F(ListItems, BehindATextItsBlockIsZeroes) {
  const OptionList states = listItems(kFirstStates);
  for (std::size_t i = std::strlen("loading"); i < 2048; ++i) {
    ASSERT_EQ(states.rawText(1)[i], '\0') << i;
  }
  const OptionList choices = listItems(kWifi);
  for (std::size_t i = std::strlen("Off"); i < 256; ++i) {
    ASSERT_EQ(choices.rawText(0)[i], '\0') << i;
  }
}

// ---- Long texts ----

TEST_F(ListItems, ALongTextIsLoggedToTheEndOfItsBlock) {
  useLongTexts(300);
  bindCatalogues();
  const std::string off = tr("SID_OFF").substr(0, 256);
  const std::string on = tr("SID_ON").substr(0, 256);
  expectList(kWiredEap, {mainLog("listSize==2\n"), mainLog("pDisplayValue[0]=" + off + "::" + off),
                         mainLog("pDisplayValue[1]=" + on + "::" + on)});
  const OptionList list = listItems(kWiredEap);
  clearJournal();
  list.rawText(1);
  EXPECT_EQ(journal(), underLock({mainLog("pDisplayValue = " + on + "::1")}));
}

TEST_F(ListItems, TextsAreNoFormats) {
  useTexts({{"SID_OFF", "%s%n"}, {"SID_ON", "100 %"}});
  bindCatalogues();
  EXPECT_EQ(expectList(kWiredEap, {mainLog("listSize==2\n"), mainLog("pDisplayValue[0]=%s%n::%s%n"),
                                   mainLog("pDisplayValue[1]=100 %::100 %")}),
            (Entries{{"%s%n", 0, kRefresh}, {"100 %", 1, kRefresh}}));
}

// ---- The device names without a default name ----

class OneDeviceName : public ListItems {
 protected:
  void SetUp() override {
    ListItems::SetUp();
    unload();
    store().erase(kDefaultName);
    create();
  }
};

TEST_F(OneDeviceName, IsTheRawIdOfTheNameToBeTyped) {
  const OptionList list = listItems(kDeviceName);
  const Block second = uncounted(list);
  EXPECT_EQ(journal(), underLock({mainLog("Key ---->menu/network/devicename::\n")}));
  EXPECT_EQ(entriesOf(list), (Entries{{"SID_USER_INPUT", 0, kNothing}}));
}

TEST_F(OneDeviceName, StillHasASecondRecordWithoutAText) {
  const OptionList list = listItems(kDeviceName);
  const Block second = uncounted(list);
  EXPECT_EQ(requestedSize(list.array()), 2 * sizeof(void*));
  EXPECT_EQ(requestedSize(second.get()), sizeof(Record));
  EXPECT_EQ(list.rawText(1), nullptr);
  EXPECT_EQ(list.value(1), 1);
  EXPECT_EQ(list.action(1), kRefresh);
}

TEST_F(OneDeviceName, TheMissingTextIsLoggedAsItIs) {
  const OptionList list = listItems(kDeviceName);
  const Block second = uncounted(list);
  char preset[] = "preset";
  char* text = preset;
  clearJournal();
  EXPECT_EQ(table().get_list_item_display_value(list.item(1), &text), 0);
  EXPECT_EQ(text, nullptr);
  EXPECT_EQ(journal(), underLock({mainLog("pDisplayValue = (null)::1")}));
}

TEST_F(OneDeviceName, FreeingItByItsCountLeavesTheSecondRecord) {
  OptionList list = listItems(kDeviceName);
  const Block second = uncounted(list);
  EXPECT_EQ(table().free_list_items(list.release(), 1), 0);
  EXPECT_EQ(static_cast<Record*>(second.get())->value, 1);
}

TEST_F(OneDeviceName, FreeingItWithTwoFreesTheSecondRecordToo) {
  OptionList list = listItems(kDeviceName);
  EXPECT_EQ(table().free_list_items(list.release(), 2), 0);
}

// ---- The callbacks of an item ----

TEST_F(ListItems, AnItemsTextIsTheRecordsOwnAndLogged) {
  const OptionList list = listItems(kPowerOnWithMobile);
  for (int i = 0; i < 2; ++i) {
    char* text = nullptr;
    clearJournal();
    EXPECT_EQ(table().get_list_item_display_value(list.item(i), &text), 0);
    EXPECT_EQ(text, recordOf(list, i).text);
    EXPECT_EQ(journal(),
              underLock({mainLog(i == 0 ? "pDisplayValue = Off::0" : "pDisplayValue = On::1")}));
  }
}

TEST_F(ListItems, AnItemsValueIsGivenAndTheEndLogged) {
  const OptionList list = listItems(kFirstStates);
  for (int i = 0; i < 3; ++i) {
    int value = -1;
    clearJournal();
    EXPECT_EQ(table().get_list_item_int_value(list.item(i), &value), 0);
    EXPECT_EQ(value, i);
    EXPECT_EQ(journal(), underLock({mainLog("END")}));
  }
}

TEST_F(ListItems, AnItemsActionIsGivenWithoutAFurtherLine) {
  const OptionList list = listItems(kWifiDirect);
  auto action = kNothing;
  clearJournal();
  EXPECT_EQ(table().get_list_item_following_action_type(list.item(0), &action), 0);
  EXPECT_EQ(action, kRefresh);
  EXPECT_EQ(journal(), underLock({}));
}

TEST_F(ListItems, ANullItemHasNoValueAndThatIsLogged) {
  int value = 77;
  EXPECT_EQ(table().get_list_item_int_value(nullptr, &value), 0);
  EXPECT_EQ(value, 77);
  EXPECT_EQ(journal(), underLock({mainLog("Item Is NULL"), mainLog("END")}));
}

TEST_F(ListItems, ANullItemHasNoTextAndNoAction) {
  char preset[] = "preset";
  char* text = preset;
  EXPECT_EQ(table().get_list_item_display_value(nullptr, &text), 0);
  EXPECT_EQ(text, preset);
  EXPECT_EQ(journal(), underLock({}));

  auto action = kMessageBox;
  clearJournal();
  EXPECT_EQ(table().get_list_item_following_action_type(nullptr, &action), 0);
  EXPECT_EQ(action, kMessageBox);
  EXPECT_EQ(journal(), underLock({}));
}

// ---- free_list_items ----

TEST_F(ListItems, FreeingAListFreesItsItemsAndTheirTexts) {
  for (const char* key : {kFirstStates, kWifi, kDeviceName}) {
    OptionList list = listItems(key);
    clearJournal();
    EXPECT_EQ(table().free_list_items(list.release(), list.count()), 0) << key;
    EXPECT_EQ(journal(), underLock({})) << key;
  }
}

TEST_F(ListItems, FreeingWithACountBelowOneFreesTheArrayAlone) {
  for (const int count : {0, -1, -2147483647 - 1}) {
    OptionList list = listItems(kFirstStates);
    const Block records[] = {Block(list.item(0)), Block(list.item(1)), Block(list.item(2))};
    const Block texts[] = {Block(recordOf(list, 0).text), Block(recordOf(list, 1).text),
                           Block(recordOf(list, 2).text)};
    clearJournal();
    EXPECT_EQ(table().free_list_items(list.release(), count), 0) << count;
    EXPECT_EQ(journal(), underLock({})) << count;
    EXPECT_STREQ(static_cast<const char*>(texts[2].get()), "connected") << count;
    EXPECT_EQ(static_cast<const Record*>(records[2].get())->value, 2) << count;
  }
}

TEST_F(ListItems, FreeingWithASmallerCountFreesOnlySoManyItems) {
  OptionList list = listItems(kFirstStates);
  const Block record(list.item(2));
  const Block text(recordOf(list, 2).text);
  EXPECT_EQ(table().free_list_items(list.release(), 2), 0);
  EXPECT_STREQ(static_cast<const char*>(text.get()), "connected");
}

TEST_F(ListItems, FreeingPassesOverEmptySlotsAndMissingTexts) {
  OptionList list = listItems(kFirstStates);
  std::free(recordOf(list, 0).text);
  static_cast<Record*>(list.item(0))->text = nullptr;
  std::free(recordOf(list, 1).text);
  std::free(list.item(1));
  void** items = list.release();
  items[1] = nullptr;
  EXPECT_EQ(table().free_list_items(items, 3), 0);
}

TEST_F(ListItems, FreeingNothingSucceeds) {
  for (const int count : {-1, 0, 3}) {
    clearJournal();
    EXPECT_EQ(table().free_list_items(nullptr, count), 0) << count;
    EXPECT_EQ(journal(), underLock({})) << count;
  }
}

}  // namespace
