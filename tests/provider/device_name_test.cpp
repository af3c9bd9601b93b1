// The device-name list: its building when the provider is created, its texts, the stored name.
#include <climits>
#include <cstdlib>

#include "setting_test.h"

namespace {

constexpr char kDefaultNameKey[] = "db/menu/network/devicename/default_tv_name";
constexpr char kNameKey[] = "db/menu/network/devicename/tv_name";
constexpr char kDirection[] = "&#x202d;";
constexpr char kUserInput[] = "SID_USER_INPUT";
constexpr std::size_t kBlockSize = 256;

class DeviceName : public SettingTest {
 protected:
  DeviceName() : SettingTest(VENTARO_KEY_DEVICE_NAME) {}

  void createWith(const std::string& defaultName) {
    store().set(kDefaultNameKey, defaultName);
    create();
  }

  // The call that turns a name into markup.
  static Journal::Piece marking(const std::string& name) {
    return call("evas_textblock_text_utf8_to_markup", "null", name);
  }

  // A name whose markup is this many bytes long.
  static std::string nameOfMarkup(std::size_t size) {
    std::string name(size - std::string(kDirection).size(), 'n');
    return name;
  }
};

// ---- Building the list ----

TEST_F(DeviceName, CreatingTheProviderReadsTheDefaultNameOnly) {
  store().set(kDefaultNameKey, "TV One");
  store().set(kNameKey, "TV Two");
  load();
  EXPECT_FALSE(calls().contains(call("vconf_get_str", kDefaultNameKey)));
  clearJournal();
  data_provider_cbs* cbs = nullptr;
  entries().create_provider(&cbs);
  EXPECT_EQ(journal(),
            (Journal{locks(), mainLog("START"), call("platform_mkpath", 44, "res/locale"),
                     call("vconf_get_str", kDefaultNameKey), mainLog("dName==TV One\n"),
                     mainLog("END"), unlocks()}));
  entries().delete_provider(&cbs);
}

TEST_F(DeviceName, ADefaultNameThatCannotBeReadIsLoggedAsNull) {
  store().set(kDefaultNameKey, "TV One");
  failWith("vconf_get_str", -1);
  load();
  clearJournal();
  data_provider_cbs* cbs = nullptr;
  entries().create_provider(&cbs);
  EXPECT_EQ(journal(),
            (Journal{locks(), mainLog("START"), call("platform_mkpath", 44, "res/locale"),
                     call("vconf_get_str", kDefaultNameKey), mainLog("dName==(null)\n"),
                     mainLog("END"), unlocks()}));
  entries().delete_provider(&cbs);
}

TEST_F(DeviceName, TheListIsTheDefaultNameAndUserInput) {
  createWith("TV One");
  const OptionList list = this->list();
  EXPECT_EQ(journal(), aroundGetListItems({marking("TV One")}));
  ASSERT_EQ(list.count(), 2);
  EXPECT_EQ(list.text(0), "&#x202d;TV One");
  EXPECT_EQ(list.text(1), kUserInput);
}

TEST_F(DeviceName, WithoutADefaultNameTheListIsUserInputAlone) {
  create();
  void* secondRecord = nullptr;
  {
    const OptionList list = this->list();
    EXPECT_EQ(journal(), aroundGetListItems({}));
    EXPECT_EQ(list.count(), 1);
    EXPECT_EQ(list.text(0), kUserInput);
    EXPECT_EQ(list.text(1), "(null)");
    secondRecord = list.item(1);
  }
  std::free(secondRecord);  // a list of one entry is returned without it
}

TEST_F(DeviceName, AnEmptyDefaultNameIsStillAnEntryWithoutADirection) {
  createWith("");
  const OptionList list = this->list();
  EXPECT_EQ(journal(), aroundGetListItems({marking("")}));
  ASSERT_EQ(list.count(), 2);
  EXPECT_EQ(list.text(0), "");
  EXPECT_EQ(list.text(1), kUserInput);
}

TEST_F(DeviceName, TheListIsBuiltOnce) {
  createWith("TV One");
  store().set(kDefaultNameKey, "TV Two");
  data_provider_cbs* second = nullptr;
  entries().create_provider(&second);
  EXPECT_FALSE(calls().contains(call("vconf_get_str", kDefaultNameKey)));
  const OptionList list = this->list();
  ASSERT_EQ(list.count(), 2);
  EXPECT_EQ(list.text(0), "&#x202d;TV One");
  EXPECT_EQ(set(0), 0);
  EXPECT_EQ(store().stringAt(kNameKey), "TV One");
  entries().delete_provider(&second);
}

TEST_F(DeviceName, AListWithoutADefaultNameIsBuiltOnceToo) {
  create();
  store().set(kDefaultNameKey, "TV Two");
  data_provider_cbs* second = nullptr;
  entries().create_provider(&second);
  EXPECT_EQ(set(0), -1);
  EXPECT_EQ(get(), (IntAnswer{-1, 0}));
  entries().delete_provider(&second);
}

TEST_F(DeviceName, ADefaultNameThatIsNoTextIsNoName) {
  store().set(kDefaultNameKey, 5);
  create();
  EXPECT_EQ(set(0), -1);
}

// ---- The texts of the list ----

TEST_F(DeviceName, MarkupCharactersOfTheNameAreConverted) {
  createWith("Tom & <Jerry>");
  EXPECT_EQ(list().text(0), "&#x202d;Tom &amp; &lt;Jerry&gt;");
}

TEST_F(DeviceName, ANameInAnyScriptIsKeptByteForByte) {
  createWith("거실 TV é \xff");
  EXPECT_EQ(list().text(0), "&#x202d;거실 TV é \xff");
}

TEST_F(DeviceName, UserInputIsNeitherTranslatedNorConverted) {
  createWith("TV One");
  EXPECT_EQ(list().text(1), kUserInput);
  EXPECT_EQ(calls(), Journal{marking("TV One")});
}

TEST_F(DeviceName, MarkupThatFailsLeavesTheEntryEmptyAndSaysSo) {
  createWith("TV One");
  failWith("evas_textblock_text_utf8_to_markup", -1);
  const OptionList list = this->list();
  EXPECT_EQ(journal(),
            aroundGetListItems(
                {marking("TV One"), mainLog("evas_textblock_text_utf8_to_markup returned NULL")}));
  ASSERT_EQ(list.count(), 2);
  EXPECT_EQ(list.text(0), "");
  EXPECT_EQ(list.text(1), kUserInput);
}

TEST_F(DeviceName, TheMarkupIsMadeAfreshForEveryList) {
  createWith("TV One");
  failCall("evas_textblock_text_utf8_to_markup", 1, -1);
  EXPECT_EQ(list().text(0), "");
  EXPECT_EQ(list().text(0), "&#x202d;TV One");
}

TEST_F(DeviceName, EachTextStandsInABlockOf256BytesFilledUpWithZeroes) {
  createWith("TV One");
  const OptionList list = this->list();
  for (const int index : {0, 1}) {
    EXPECT_EQ(requestedSize(list.rawText(index)), kBlockSize);
    const std::string block(list.rawText(index), kBlockSize);
    const std::string text = list.text(index);
    EXPECT_EQ(block, text + std::string(kBlockSize - text.size(), '\0'));
  }
}

TEST_F(DeviceName, AMarkupOf255BytesIsWholeAndTerminated) {
  createWith(nameOfMarkup(255));
  const OptionList list = this->list();
  const std::string block(list.rawText(0), kBlockSize);
  EXPECT_EQ(block, kDirection + nameOfMarkup(255) + '\0');
}

TEST_F(DeviceName, AMarkupOf256BytesFillsTheBlockWithoutANul) {
  createWith(nameOfMarkup(256));
  const OptionList list = this->list();
  ASSERT_EQ(requestedSize(list.rawText(0)), kBlockSize);
  const std::string block(list.rawText(0), kBlockSize);
  EXPECT_EQ(block, kDirection + nameOfMarkup(256));
}

TEST_F(DeviceName, ALongerMarkupIsCutTo256Bytes) {
  for (const std::size_t size : {257U, 300U, 3000U}) {
    createWith(nameOfMarkup(size));
    {
      const OptionList list = this->list();
      ASSERT_EQ(requestedSize(list.rawText(0)), kBlockSize) << size;
      const std::string block(list.rawText(0), kBlockSize);
      EXPECT_EQ(block, kDirection + nameOfMarkup(kBlockSize)) << size;
      EXPECT_EQ(list.text(1), kUserInput) << size;
    }
    unload();
  }
}

TEST_F(DeviceName, TheMarkupIsWhatIsCutNotTheName) {
  createWith(std::string(60, '&'));  // five bytes of markup each
  const std::string text = list().text(0);
  EXPECT_EQ(text.size(), kBlockSize);
  EXPECT_TRUE(text.ends_with("&amp;&am")) << text;
}

// ---- The stored name ----

TEST_F(DeviceName, TheDefaultNameIsEntryZero) {
  createWith("TV One");
  store().set(kNameKey, "TV One");
  EXPECT_EQ(get(), (IntAnswer{0, 0}));
  EXPECT_EQ(journal(), aroundGetInt(0, {call("vconf_get_str", kNameKey), mainLog("dName==TV One\n"),
                                        mainLog("value=0\n")}));
}

TEST_F(DeviceName, AnyOtherNameIsUserInput) {
  createWith("TV One");
  store().set(kNameKey, "My TV");
  EXPECT_EQ(get(), (IntAnswer{0, 1}));
  EXPECT_EQ(journal(), aroundGetInt(0, {call("vconf_get_str", kNameKey), mainLog("value=1\n")}));
}

TEST_F(DeviceName, TheNamesAreComparedByteForByte) {
  createWith("TV One");
  for (const char* name :
       {"TV on", "tv one", "TV One ", " TV One", "TV On", "", "&#x202d;TV One", kUserInput}) {
    store().set(kNameKey, name);
    EXPECT_EQ(get(), (IntAnswer{0, 1})) << name;
  }
}

TEST_F(DeviceName, TheNameIsComparedUnconverted) {
  createWith("Tom & Jerry");
  store().set(kNameKey, "Tom & Jerry");
  EXPECT_EQ(get(), (IntAnswer{0, 0}));
  EXPECT_EQ(calls(), Journal{call("vconf_get_str", kNameKey)});
  store().set(kNameKey, "Tom &amp; Jerry");
  EXPECT_EQ(get(), (IntAnswer{0, 1}));
}

TEST_F(DeviceName, NamesLongerThanAListTextAreComparedWhole) {
  createWith(std::string(300, 'n'));
  store().set(kNameKey, std::string(300, 'n'));
  EXPECT_EQ(get(), (IntAnswer{0, 0}));
  store().set(kNameKey, std::string(299, 'n') + 'm');
  EXPECT_EQ(get(), (IntAnswer{0, 1}));
  store().set(kNameKey, std::string(256, 'n'));
  EXPECT_EQ(get(), (IntAnswer{0, 1}));
}

TEST_F(DeviceName, AnEmptyNameIsTheDefaultNameWhereThatIsEmptyToo) {
  createWith("");
  store().set(kNameKey, "");
  EXPECT_EQ(get(), (IntAnswer{0, 0}));
  EXPECT_EQ(journal(), aroundGetInt(0, {call("vconf_get_str", kNameKey), mainLog("dName==\n"),
                                        mainLog("value=0\n")}));
}

TEST_F(DeviceName, ANameThatCannotBeReadIsMinusOneAndLeavesTheValueUntouched) {
  createWith("TV One");
  store().set(kNameKey, "TV One");
  failWith("vconf_get_str", -1);
  EXPECT_EQ(get(), (IntAnswer{-1, kPreset}));
  EXPECT_EQ(journal(),
            aroundGetInt(-1, {call("vconf_get_str", kNameKey),
                              mainLog("wifi_direct_get_device_name::status [0xffffffff]"),
                              mainLog("value=77\n")}));
}

TEST_F(DeviceName, InAListOfOneEntryAnyNameIsThatEntry) {
  create();
  for (const char* name : {"My TV", "", kUserInput}) {
    store().set(kNameKey, name);
    EXPECT_EQ(get(), (IntAnswer{0, 0})) << name;
    EXPECT_EQ(journal(), aroundGetInt(0, {call("vconf_get_str", kNameKey), mainLog("value=0\n")}));
  }
}

TEST_F(DeviceName, InAListOfOneEntryANameThatCannotBeReadIsThatEntryAndMinusOne) {
  create();
  EXPECT_EQ(get(), (IntAnswer{-1, 0}));
  EXPECT_EQ(journal(),
            aroundGetInt(-1, {call("vconf_get_str", kNameKey),
                              mainLog("wifi_direct_get_device_name::status [0xffffffff]"),
                              mainLog("value=0\n")}));
}

// ---- Choosing an entry ----

TEST_F(DeviceName, ChoosingTheDefaultNameStoresIt) {
  createWith("TV One");
  store().set(kNameKey, "My TV");
  EXPECT_EQ(set(0), 0);
  EXPECT_EQ(journal(), aroundSetInt(0, {call("vconf_set_str", kNameKey, "TV One"),
                                        mainLog("Device Name set to TV One")}));
  EXPECT_EQ(store().stringAt(kNameKey), "TV One");
}

TEST_F(DeviceName, TheDefaultNameIsStoredUnconvertedAndWhole) {
  const std::string name = "<" + std::string(300, '&') + ">";
  createWith(name);
  EXPECT_EQ(set(0), 0);
  EXPECT_EQ(store().stringAt(kNameKey), name);
}

TEST_F(DeviceName, UserInputAndIndicesOutsideTheListStoreNothing) {
  createWith("TV One");
  store().set(kNameKey, "My TV");
  for (const int value : {1, 2, -1, INT_MAX, INT_MIN}) {
    EXPECT_EQ(set(value), -1) << value;
    EXPECT_EQ(journal(), aroundSetInt(value, {mainLog("set_device_name::status [0xffffffff]")}));
  }
  EXPECT_EQ(store().stringAt(kNameKey), "My TV");
}

TEST_F(DeviceName, InAListOfOneEntryNothingCanBeChosen) {
  create();
  for (const int value : {0, 1, -1}) {
    EXPECT_EQ(set(value), -1) << value;
    EXPECT_EQ(journal(), aroundSetInt(value, {mainLog("set_device_name::status [0xffffffff]")}));
  }
  EXPECT_EQ(store().stringAt(kNameKey), std::nullopt);
}

TEST_F(DeviceName, ANameThatCannotBeStoredReturnsTheStoresError) {
  createWith("TV One");
  store().set(kNameKey, "My TV");
  failWith("vconf_set_str", kNameKey, -6);
  EXPECT_EQ(set(0), -6);
  EXPECT_EQ(journal(), aroundSetInt(0, {call("vconf_set_str", kNameKey, "TV One"),
                                        mainLog("set_device_name::status [0xfffffffa]")}));
  EXPECT_EQ(store().stringAt(kNameKey), "My TV");
  failWith("vconf_set_str", kNameKey, 0x12);
  EXPECT_EQ(set(0), 0x12);
  EXPECT_TRUE(logLines().contains(mainLog("set_device_name::status [0x0012]")));
}

TEST_F(DeviceName, AChosenNameIsEntryZeroAgain) {
  createWith("TV One");
  store().set(kNameKey, "My TV");
  EXPECT_EQ(get(), (IntAnswer{0, 1}));
  set(0);
  EXPECT_EQ(get(), (IntAnswer{0, 0}));
}

}  // namespace
