// Text on its way to a person, a log or another program.
#include "platform/host/visible_text.h"

#include <gtest/gtest.h>

#include <string>

namespace platform_tests {
namespace {

using platform::host::validText;
using platform::host::visibleLine;
using platform::host::visibleText;

using namespace std::string_literals;

TEST(VisibleText, KeepsWhatCanBeSeen) {
  for (const std::string text : {"", "plain", "back\\slash \"quotes\"", "Caf\u00e9 \uac70\uc2e4",
                                 "\u063a\u0631\u0641\u0629 \U0001f4fa", "a\u00a0b\u200bc\ufffd"}) {
    EXPECT_EQ(validText(text), text);
    EXPECT_EQ(visibleText(text), text);
    EXPECT_EQ(visibleLine(text), text);
  }
}

TEST(VisibleText, ShowsControlCharactersAsJsonWritesThem) {
  EXPECT_EQ(visibleText("\x1b[31m\r\t\x7f"), R"(\u001b[31m\u000d\u0009\u007f)");
  EXPECT_EQ(visibleText("\u0080\u009b\u009f"), R"(\u0080\u009b\u009f)");
}

TEST(VisibleText, ShowsWhatWouldTurnTheWritingDirectionOrSeparateLines) {
  EXPECT_EQ(visibleText("\u061c\u200e\u200f"), R"(\u061c\u200e\u200f)");
  EXPECT_EQ(visibleText("\u202a\u202b\u202c\u202d\u202e"), R"(\u202a\u202b\u202c\u202d\u202e)");
  EXPECT_EQ(visibleText("\u2066\u2067\u2068\u2069"), R"(\u2066\u2067\u2068\u2069)");
  EXPECT_EQ(visibleText("\u2028\u2029"), R"(\u2028\u2029)");
}

TEST(VisibleText, KeepsLineFeedsUnlessItIsALine) {
  EXPECT_EQ(visibleText("one\ntwo"), "one\ntwo");
  EXPECT_EQ(visibleLine("one\ntwo"), R"(one\u000atwo)");
}

TEST(VisibleText, HasAReplacementForEachByteThatIsNoCharacter) {
  for (const auto of : {validText, visibleText, visibleLine}) {
    EXPECT_EQ(of("cut \xed\x95"), "cut \ufffd\ufffd");
    EXPECT_EQ(of("\xff\u00fc\xc0\x80"), "\ufffd\u00fc\ufffd\ufffd");
    EXPECT_EQ(of("\xed\xa0\x80"), "\ufffd\ufffd\ufffd") << "half of a pair";
    EXPECT_EQ(of("\xf4\x90\x80\x80"), "\ufffd\ufffd\ufffd\ufffd") << "above the last character";
  }
}

TEST(VisibleText, LosesNothingBehindANul) {
  EXPECT_EQ(validText("a\0b"s), "a\0b"s);
  EXPECT_EQ(visibleText("a\0b\0"s), R"(a\u0000b\u0000)");
  EXPECT_EQ(visibleText("\xc3\0b"s), "\ufffd\\u0000b");
}

}  // namespace
}  // namespace platform_tests
