// The product's words in texts.
#include "product_texts_test.h"

#include <stdexcept>

namespace {

// ---- ReplaceText ----

TEST_F(ReplaceText, ReplacesEveryTokenAndLogsThreeTexts) {
  EXPECT_EQ(replaced("The <<A>> and the <<A>>.", "Beamer"), "The Beamer and the Beamer.");
  EXPECT_EQ(journal(), lines("The <<A>> and the <<A>>.", "The Beamer and the Beamer.",
                             "The Beamer and the Beamer."));
}

TEST_F(ReplaceText, LeavesATextWithoutTheTokenAsItIs) {
  for (const char* text :
       {"", "No token.", "<<B>><<C>>", "<<a>>", "<A>", "<<A>", "<<A", "100 %s"}) {
    EXPECT_EQ(replaced(text, "Beamer"), text);
    EXPECT_EQ(journal(), lines(text, text, text));
  }
}

TEST_F(ReplaceText, InsertsAnEmptyReplacement) {
  EXPECT_EQ(replaced("The <<A>>.", ""), "The .");
  EXPECT_EQ(replaced("<<A>>", ""), "");
}

TEST_F(ReplaceText, SearchesFromTheStartAfterEveryReplacement) {
  // The token arises before the replacement.
  EXPECT_EQ(replaced("<<<<A>>A>>", ""), "");
  EXPECT_EQ(replaced("<<A<<A>>", ">>"), ">>");
  EXPECT_EQ(replaced("<<A<<A<<A>>.", ">>"), ">>.");
  // And after its start.
  EXPECT_EQ(replaced("<<A>>>>", "-<<A"), "--<<A");
}

TEST_F(ReplaceText, HandsOut2047BytesAtMost) {
  for (const std::size_t size : {2046U, 2047U, 2048U, 5000U}) {
    const std::string text(size, 'x');
    EXPECT_EQ(replaced(text, "Beamer"), text.substr(0, kMost)) << size;
    EXPECT_EQ(journal(), lines(text, text, text.substr(0, kMost))) << size;
  }
}

TEST_F(ReplaceText, CutsWhatAReplacementMadeTooLong) {
  const std::string start(2040, 'x');
  EXPECT_EQ(replaced(start + "<<A>>.", "1234567890"), start + "1234567");
  EXPECT_EQ(journal(), lines(start + "<<A>>.", start + "1234567890.", start + "1234567"));
}

TEST_F(ReplaceText, ReplacesAndLogsEvenBeyondWhatItHandsOut) {
  const std::string start(3000, 'x');
  EXPECT_EQ(replaced(start + "<<A>>", "TV"), start.substr(0, kMost));
  EXPECT_EQ(journal(), lines(start + "<<A>>", start + "TV", start.substr(0, kMost)));
}

TEST_F(ReplaceText, ReplacesAndLogsAWholeTextEvenForANameWithBrackets) {
  const std::string start(3000, 'x');
  EXPECT_EQ(replaced(start + "<<A>>", "<b>TV</b>"), start.substr(0, kMost));
  EXPECT_EQ(journal(), lines(start + "<<A>>", start + "<b>TV</b>", start.substr(0, kMost)));
}

TEST_F(ReplaceText, CountsBytesNotCharacters) {
  std::string text = "x";
  for (int i = 0; i < 1100; ++i) text += "ü";
  EXPECT_EQ(replaced(text, "Beamer"), text.substr(0, kMost));
}

TEST_F(ReplaceText, TakesAnotherTokenAndSize) {
  EXPECT_EQ(replaced("<<A>> {name} {name}", "TV", "{name}", 12), "<<A>> TV TV");
  EXPECT_EQ(replaced("<<A>> {name} {name}", "Beamer", "{name}", 12), "<<A>> Beame");
}

TEST_F(ReplaceText, RefusesANullTextOrReplacementByAnException) {
  std::vector<char> buffer(kSize);
  EXPECT_THROW(CProductUtil::ReplaceText(buffer.data(), nullptr, kToken, "TV", kSize),
               std::logic_error);
  EXPECT_THROW(CProductUtil::ReplaceText(buffer.data(), "TV", kToken, nullptr, kSize),
               std::logic_error);
  EXPECT_EQ(journal(), Journal());
}

// ---- AddProductNameInSID ----

TEST_F(AddProductName, FillsTheNameInAndLogsTheType) {
  EXPECT_EQ(named("Fernseher", "Der <<A>> und der <<A>>."), "Der Fernseher und der Fernseher.");
  EXPECT_EQ(journal(), (Journal{findsTv(), mainLog("Product type =>1")}));
}

TEST_F(AddProductName, LeavesATextWithoutTheTokenAsItIs) {
  for (const std::string text : {"", "No token.", "<<a>>", "<A>", "<<A>", "<<AA>>", "%s"}) {
    EXPECT_EQ(named("Fernseher", text), text);
    EXPECT_EQ(journal(), (Journal{findsTv(), mainLog("Product type =>1")}));
  }
}

TEST_F(AddProductName, LeavesTheTwoOtherTokensAlone) {
  EXPECT_EQ(named("TV", "<<C>><<B>><<A>><<B>><<C>><<D>>"), "<<C>><<B>>TV<<B>><<C>><<D>>");
  EXPECT_EQ(named("", "<<C>><<B>><<A>><<B>><<C>>"), "<<C>><<B>><<B>><<C>>");
  EXPECT_EQ(named("<<B>>", "<<A>>"), "<<B>>");
}

TEST_F(AddProductName, FillsInEvenAnEmptyName) {
  EXPECT_EQ(named("", "The <<A>>."), "The .");
  EXPECT_EQ(named("", "<<A>>"), "");
}

TEST_F(AddProductName, SearchesOnFromTheSecondByteOfTheInsertedName) {
  // The search does not go on at the start of the name, which would find the name's own token,
  EXPECT_EQ(named("<<A>>!", "<<A>> <<A>>"), "<<A>>! <<A>>!");
  EXPECT_EQ(named("", "<<A>><<A>>"), "<<A>>");
  // not after its end, which would miss the token that it forms with the text that follows,
  EXPECT_EQ(named("-<<A", "<<A>>>>"), "--<<A");
  // and not at the start of the text, which would find the token that it forms with the text
  // before.
  EXPECT_EQ(named(">>", "<<A<<A>>"), "<<A>>");
  EXPECT_EQ(named("", "<<<<A>>A>>"), "<<A>>");
}

TEST_F(AddProductName, IsTheNameOfTheProductsType) {
  struct Case {
    ProductFlags product;
    const char* text;
    const char* code;
  };
  useTexts({{"REP.DEVICE.SCREEN", "zero"},
            {"COM_SID_TV", "one"},
            {"COM_SID_ORLEX", "three"},
            {"PJT_SID_TV", "six"},
            {"COM_TV_SID_MLED_CAOCT_NON_MICRO_LED", "seven"},
            {"COM_SID_SMNT_CAAUG_MNT", "eight"}});
  bindCatalogues();
  for (const Case& each :
       {Case{{true, 0, false, false}, "[zero]", "0"}, Case{kTv, "[one]", "1"},
        Case{{false, 1, false, false}, "[three]", "3"}, Case{{false, 0, true, false}, "[six]", "6"},
        Case{{false, 2, false, false}, "[seven]", "7"},
        Case{{false, 0, false, true}, "[eight]", "8"}}) {
    setFlags(each.product);
    clearJournal();
    std::string text = "[<<A>>]";
    CProductUtil::AddProductNameInSID(text);
    EXPECT_EQ(text, each.text);
    EXPECT_EQ(logLines().count(mainLog(std::string("Product type =>") + each.code)), 1U);
  }
}

TEST_F(AddProductName, DoesNotCutTheText) {
  const std::string start(3000, 'x');
  EXPECT_EQ(named("Fernseher", start + "<<A>>" + start + "<<A>>"),
            start + "Fernseher" + start + "Fernseher");
}

// ---- Names that bring the token in again ----

// A name, and the bytes handed out for the token.
struct EndlessName {
  const char* name;
  std::string replaced;  // by ReplaceText
  std::string named;     // by AddProductNameInSID; empty if that ends
};

const EndlessName kEndlessNames[] = {
    {"<<A>>x", "<<A>>" + repeated("x", kSize), ""},          // at its start
    {"x<<A>>", repeated("x", kSize), repeated("x", kSize)},  // at its end
    {"x<<A>>y", repeated("x", kSize), repeated("x", kSize)},
    {"xyz<<A>>", repeated("xyz", kSize), repeated("xyz", kSize)},
    {"<<A>>-<<A>>", "<<A>>" + repeated("-<<A>>", kSize), repeated("<<A>>-", kSize)},
    {"<<A>><<A>>", repeated("<<A>>", kSize), repeated("<<A>>", kSize)},
    {"x<<A>>y<<A>>z", repeated("x", kSize), repeated("x", kSize)},
};

// The position of the first token.
constexpr std::size_t kStarts[] = {0, 10, 2042, 2044, 2047, 3000};

TEST_F(ReplaceText, EndsForANameThatHoldsTheTokenWithTheFinalBytes) {
  for (const EndlessName& each : kEndlessNames) {
    for (const std::size_t start : kStarts) {
      for (const std::size_t rest : {0U, 3000U}) {
        const std::string before(start, 'b');
        const std::string text = before + "<<A>>" + std::string(rest, 'r') + "<<A>>";
        EXPECT_EQ(replaced(text, each.name), (before + each.replaced).substr(0, kMost))
            << each.name << " " << start << " " << rest;
      }
    }
  }
}

std::string times(std::size_t count, const std::string& text) {
  return repeated(text, count * text.size());
}

TEST_F(ReplaceText, IsCarriedToItsEndHoweverMuchTheTextGrows) {
  // Each replacement makes a token with what stands before it.
  const std::string tail(1000, 'x');
  const std::string text = times(578, "<<A>") + "<<A>>";
  const std::string expected = ">" + times(579, tail);
  EXPECT_EQ(replaced(text, ">" + tail), expected.substr(0, kMost));
  EXPECT_EQ(journal(), lines(text, expected, expected.substr(0, kMost)));
}

// Each of the second parts passes each of the first ones, one replacement at a time: of texts as
// long as the buffer, none that is known to end takes longer.
TEST_F(ReplaceText, IsCarriedToItsEndHoweverOftenItReplaces) {
  const std::string text = times(256, "<<A>") + times(1023, ">");
  const std::string expected = times(1023, ">") + times(256, "<<A>");
  EXPECT_EQ(replaced(text, "><<A>"), expected);
  EXPECT_EQ(journal(), lines(text, expected, expected));
}

TEST_F(ReplaceText, EndsForANameThatMakesTheTokenWithWhatStandsAroundIt) {
  EXPECT_EQ(replaced("y<<A>>", "><A><<A>>" + std::string(89, 'p')),
            ("y" + repeated("><A>", kSize)).substr(0, kMost));
  EXPECT_EQ(replaced("<<A>>>", ">><<A><<A>"), repeated(">", kMost));  // holds no token itself
}

TEST_F(ReplaceText, LeavesTheTextForANameThatIsTheToken) {
  for (const std::size_t start : kStarts) {
    const std::string text = std::string(start, 'b') + "<<A>> and <<A>>";
    EXPECT_EQ(replaced(text, kToken), text.substr(0, kMost)) << start;
  }
}

TEST_F(ReplaceText, EndsForANameOfOpeningBracketsThatHoldsTheToken) {
  EXPECT_EQ(replaced("<<A>>", "<<<A>>"), repeated("<", kMost));
}

TEST_F(ReplaceText, EndsForALongNameThatHoldsTheToken) {
  const std::string tail(3000, 't');
  EXPECT_EQ(replaced("<<A>>", "x<<A>>" + tail), repeated("x", kMost));
  EXPECT_EQ(replaced("<<A>>", tail + "<<A>>"), tail.substr(0, kMost));
  EXPECT_EQ(replaced("<<A>>", "<<A>>" + tail), "<<A>>" + tail.substr(0, kMost - 5));
}

TEST_F(AddProductName, EndsForANameThatHoldsTheTokenWithTheFinalBytesHandedOut) {
  for (const EndlessName& each : kEndlessNames) {
    if (each.named.empty()) continue;
    callTelevision(each.name);
    for (const std::size_t start : kStarts) {
      for (const std::size_t rest : {0U, 3000U}) {
        const std::string before(start, 'b');
        std::string text = before + "<<A>>" + std::string(rest, 'r') + "<<A>>";
        CProductUtil::AddProductNameInSID(text);
        EXPECT_EQ(text.substr(0, kMost), (before + each.named).substr(0, kMost))
            << each.name << " " << start << " " << rest;
      }
    }
  }
}

TEST_F(AddProductName, KeepsOnlyTheBytesHandedOutOfATextThatWouldGrowWithoutEnd) {
  callTelevision("x<<A>>" + std::string(3000, 't'));
  std::string text = "<<A>>" + std::string(3000, 'r');
  CProductUtil::AddProductNameInSID(text);
  EXPECT_EQ(text.substr(0, kMost), repeated("x", kMost));
  EXPECT_LT(text.size(), kMost + sizeof("<<A>>"));
}

TEST_F(AddProductName, InsertsANameThatBeginsWithTheTokenOnce) {
  for (const std::size_t start : kStarts) {
    const std::string before(start, 'b');
    EXPECT_EQ(named("<<A>>x", before + "<<A>> and <<A>>"), before + "<<A>>x and <<A>>x") << start;
    EXPECT_EQ(named("<<A>>", before + "<<A>> and <<A>>"), before + "<<A>> and <<A>>") << start;
  }
}

}  // namespace
