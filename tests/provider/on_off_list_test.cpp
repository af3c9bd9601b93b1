// The lists and texts of the four On/Off settings, as far as they are the same for all four.
#include <cstring>
#include <ostream>

#include "provider_test.h"

namespace {

constexpr std::size_t kBlockSize = 256;

struct Setting {
  const char* name;
  const char* key;
  void (*switchOn)();
};

// How GoogleTest shows a parameter.
void PrintTo(const Setting& setting, std::ostream* out) {
  *out << setting.key;
}

constexpr Setting kSettings[] = {
    {"WiFiPower", VENTARO_KEY_WIFI, [] { setRadio(1); }},
    {"WiFiDirect", VENTARO_KEY_WIFI_DIRECT,
     [] {
       setConnectedAp(5955);
       store().set("db/menu/network/wifidirect", 1);
     }},
    {"WiredEap", VENTARO_KEY_WIRED_EAP, [] { store().set("db/menu/network/wiredeap", 1); }},
    {"PowerOnWithMobile", VENTARO_KEY_POWER_ON_WITH_MOBILE_US, [] { setWakeOnMobile(true); }},
};

class OnOffList : public ProviderTest, public testing::WithParamInterface<Setting> {
 protected:
  OptionList list() const { return listItems(GetParam().key); }
  OwnedText text() const { return stringValue(GetParam().key); }

  // The texts On and Off of the language whose texts are this many bytes long.
  static std::string longOn(std::size_t size) { return "ON." + std::string(size - 3, '-'); }
  static std::string longOff(std::size_t size) { return "OFF." + std::string(size - 4, '-'); }

  // The whole block of a list's text.
  static std::string block(const OptionList& list, int index) {
    EXPECT_EQ(requestedSize(list.rawText(index)), kBlockSize);
    return {list.rawText(index), kBlockSize};
  }
};

INSTANTIATE_TEST_SUITE_P(Settings, OnOffList, testing::ValuesIn(kSettings),
                         [](const auto& setting) { return setting.param.name; });

TEST_P(OnOffList, TheListIsOffThenOnInTheUsersLanguage) {
  useLanguage("ko");
  create();
  const OptionList list = this->list();
  ASSERT_EQ(list.count(), 2);
  EXPECT_EQ(list.text(0), "끄기");
  EXPECT_EQ(list.text(1), "켜기");
}

TEST_P(OnOffList, AnotherLanguageShowsAtTheNextRequest) {
  create();
  const OptionList english = list();
  useLanguage("ko");
  const OptionList korean = list();
  EXPECT_EQ(korean.count(), 2);
  EXPECT_EQ(korean.text(0), "끄기");
  EXPECT_EQ(korean.text(1), "켜기");
  EXPECT_EQ(english.text(0), "Off");
  EXPECT_EQ(english.text(1), "On");
}

TEST_P(OnOffList, InALanguageWithoutACatalogueTheListIsTheStringIds) {
  useLanguage("xx");
  create();
  const OptionList list = this->list();
  EXPECT_EQ(list.text(0), "SID_OFF");
  EXPECT_EQ(list.text(1), "SID_ON");
}

TEST_P(OnOffList, EachTextStandsInABlockOfItsOwnFilledUpWithZeroes) {
  create();
  const OptionList list = this->list();
  EXPECT_EQ(block(list, 0), "Off" + std::string(kBlockSize - 3, '\0'));
  EXPECT_EQ(block(list, 1), "On" + std::string(kBlockSize - 2, '\0'));
}

TEST_P(OnOffList, EveryRequestGivesBlocksOfItsOwn) {
  create();
  const OptionList first = list();
  const OptionList second = list();
  EXPECT_NE(first.rawText(0), second.rawText(0));
  EXPECT_NE(first.rawText(1), second.rawText(1));
  EXPECT_EQ(second.text(0), "Off");
}

TEST_P(OnOffList, ATextOf255BytesIsWholeAndTerminated) {
  useLongTexts(255);
  create();
  const OptionList list = this->list();
  EXPECT_EQ(block(list, 0), longOff(255) + '\0');
  EXPECT_EQ(block(list, 1), longOn(255) + '\0');
}

TEST_P(OnOffList, ATextOf256BytesFillsItsBlockWithoutANul) {
  useLongTexts(256);
  create();
  const OptionList list = this->list();
  EXPECT_EQ(block(list, 0), longOff(256));
  EXPECT_EQ(block(list, 1), longOn(256));
}

TEST_P(OnOffList, ALongerTextIsCutTo256BytesWithoutANul) {
  useLongTexts(300);
  create();
  const OptionList list = this->list();
  EXPECT_EQ(block(list, 0), longOff(256));
  EXPECT_EQ(block(list, 1), longOn(256));
}

TEST_P(OnOffList, TheTextOfTheValueIsACopyOfExactlyItsLength) {
  create();
  const OwnedText off = text();
  EXPECT_EQ(off, "Off");
  EXPECT_EQ(off.blockSize(), 4U);
  GetParam().switchOn();
  const OwnedText on = text();
  EXPECT_EQ(on, "On");
  EXPECT_EQ(on.blockSize(), 3U);
}

TEST_P(OnOffList, TheTextOfTheValueIsNeverCut) {
  for (const int size : {255, 256, 300}) {
    useLongTexts(size);
    create();
    const auto length = static_cast<std::size_t>(size);
    const OwnedText off = text();
    EXPECT_EQ(off, longOff(length));
    EXPECT_EQ(off.blockSize(), length + 1);
    GetParam().switchOn();
    const OwnedText on = text();
    EXPECT_EQ(on, longOn(length));
    EXPECT_EQ(on.blockSize(), length + 1);
    unload();
    reset();
  }
}

TEST_P(OnOffList, TheTextOfTheValueIsInTheLanguageOfTheMoment) {
  create();
  GetParam().switchOn();
  EXPECT_EQ(text(), "On");
  useLanguage("ko");
  EXPECT_EQ(text(), "켜기");
  useLanguage("xx");
  EXPECT_EQ(text(), "SID_ON");
}

}  // namespace
