// Texts for display: markup and placeholders.
#include <array>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "platform/app_util.h"
#include "platform/markup.h"
#include "platform_test.h"

namespace platform_tests {
namespace {

std::string markupOf(const char* text) {
  const std::unique_ptr<char, decltype(&std::free)> markup(
      evas_textblock_text_utf8_to_markup(nullptr, text), &std::free);
  return markup != nullptr ? markup.get() : "null";
}

class Markup : public PlatformTest {};

TEST_F(Markup, EscapesWhatATextWidgetWouldReadAsMarkup) {
  const std::vector<std::pair<const char*, const char*>> table = {
      {"", ""},
      {"plain text", "plain text"},
      {"&", "&amp;"},
      {"<", "&lt;"},
      {">", "&gt;"},
      {"\n", "<br/>"},
      {"\t", "<tab/>"},
      {"\u2029", "<ps/>"},
      {"\ufffc", "&#xfffc;"},
      {"&&", "&amp;&amp;"},
      {"&amp;", "&amp;amp;"},
      {"<b>R&D</b>\n", "&lt;b&gt;R&amp;D&lt;/b&gt;<br/>"},
      {"\"'\\/ \r", "\"'\\/ \r"},
  };
  for (const auto& [text, markup] : table) EXPECT_EQ(markupOf(text), markup);
}

TEST_F(Markup, PassesAllOtherCharactersThrough) {
  for (const char* text :
       {"Caf\u00e9", "\uac70\uc2e4", "\U0001f4fa", "\u2028", "\u2030", "\ufffb", "\ufffd"}) {
    EXPECT_EQ(markupOf(text), text);
  }
}

TEST_F(Markup, PassesBytesThatAreNoCharacterThrough) {
  for (const char* text : {"\xff", "\xc3", "cut \xed\x95", "\xe2\x80", "\xef\xbf", "\x80\x80"}) {
    EXPECT_EQ(markupOf(text), text);
  }
  EXPECT_EQ(markupOf("\xe2\x80<"), "\xe2\x80&lt;");
}

TEST_F(Markup, OfANullTextIsNull) {
  EXPECT_EQ(evas_textblock_text_utf8_to_markup(nullptr, nullptr), nullptr);
}

TEST_F(Markup, DoesNotLookAtTheWidget) {
  const int widget = 0;
  const std::unique_ptr<char, decltype(&std::free)> markup(
      evas_textblock_text_utf8_to_markup(&widget, "a<b"), &std::free);
  EXPECT_STREQ(markup.get(), "a&lt;b");
}

TEST_F(Markup, IsOfAnyLength) {
  EXPECT_EQ(markupOf(std::string(100'000, '<').c_str()).size(), 400'000U);
}

using Arguments = std::array<const char*, 4>;

std::string combined(const char* text, const Arguments& arguments = {"1", "2", "3", "4"},
                     std::size_t capacity = 256) {
  std::vector<char> buffer(capacity + 1, '#');
  CStringUtil::CombinateStrings(buffer.data(), capacity, text, arguments[0], arguments[1],
                                arguments[2], arguments[3]);
  EXPECT_EQ(buffer[capacity], '#') << "wrote past the buffer";
  EXPECT_EQ(std::string(buffer.data()).find('#'), std::string::npos) << "without an end";
  return buffer.data();
}

class CombinedText : public testing::Test {};

TEST_F(CombinedText, HasItsPlaceholdersFilledInTheOrderOfTheArguments) {
  EXPECT_EQ(combined("<<A>> <<B>> <<C>> <<D>>"), "1 2 3 4");
  EXPECT_EQ(combined("<<D>><<C>><<B>><<A>>"), "4321");
  EXPECT_EQ(combined("Connect to <<A>>?", {"Attic", nullptr, nullptr, nullptr}),
            "Connect to Attic?");
}

TEST_F(CombinedText, HasEveryOneOfRepeatedPlaceholdersFilled) {
  EXPECT_EQ(combined("<<A>><<A>> <<B>> <<A>>"), "11 2 1");
}

TEST_F(CombinedText, HasNothingForANullArgument) {
  EXPECT_EQ(combined("[<<A>>][<<B>>][<<C>>][<<D>>]", {nullptr, "2", nullptr, nullptr}),
            "[][2][][]");
  EXPECT_EQ(combined("[<<A>>]", {"", "", "", ""}), "[]");
}

TEST_F(CombinedText, IsNotSearchedAgainInWhatWasFilledIn) {
  EXPECT_EQ(combined("<<A>> <<B>>", {"<<B>>", "<<A>>", "3", "4"}), "<<B>> <<A>>");
  EXPECT_EQ(combined("<<A>>A>>", {"<<", "2", "3", "4"}), "<<A>>");
}

TEST_F(CombinedText, KeepsWhatIsNoPlaceholder) {
  for (const char* text : {"", "plain", "<<E>>", "<<a>>", "<A>", "<<A>", "<A>>", "<< A>>", "<<AB>>",
                           "<<>>", "<<", "<<A", "%s %d", "A>>"}) {
    EXPECT_EQ(combined(text), text);
  }
  EXPECT_EQ(combined("<<<A>>>"), "<1>");
  EXPECT_EQ(combined("<<<<A>>>>"), "<<1>>");
}

TEST_F(CombinedText, OfNoTextIsEmpty) {
  EXPECT_EQ(combined(nullptr), "");
}

TEST_F(CombinedText, IsCutAtTheCapacity) {
  EXPECT_EQ(combined("ab<<A>>", {"cdef", "", "", ""}, 7), "abcdef");
  EXPECT_EQ(combined("ab<<A>>", {"cdef", "", "", ""}, 6), "abcde");
  EXPECT_EQ(combined("ab<<A>>", {"cdef", "", "", ""}, 2), "a");
  EXPECT_EQ(combined("ab<<A>>", {"cdef", "", "", ""}, 1), "");
  EXPECT_EQ(combined(std::string(1000, 'x').c_str(), {}, 256), std::string(255, 'x'));
}

TEST_F(CombinedText, IsNotWrittenWithoutRoom) {
  char buffer = '#';
  CStringUtil::CombinateStrings(&buffer, 0, "text", "1", "2", "3", "4");
  EXPECT_EQ(buffer, '#');
  CStringUtil::CombinateStrings(nullptr, 0, "text", "1", "2", "3", "4");
  CStringUtil::CombinateStrings(nullptr, 100, "text", "1", "2", "3", "4");
}

}  // namespace
}  // namespace platform_tests
