// The product's words in generated texts, compared with a simple replacement that need not end.
#include "product_texts_test.h"

#include <optional>
#include <random>

namespace {

// Replaces the first token again and again, from the start. Empty when this seems endless.
std::optional<std::string> replacedFromTheStart(std::string text, const std::string& replacement) {
  for (int step = 0; step < 1500 && text.size() < 100'000; ++step) {
    const std::size_t at = text.find(kToken);
    if (at == std::string::npos) return text;
    text.replace(at, 5, replacement);
  }
  return std::nullopt;
}

// Replaces token after token, searching on from one byte after the last position.
std::optional<std::string> replacedOnwards(std::string text, const std::string& replacement) {
  std::size_t from = 0;
  for (int step = 0; step < 1500 && text.size() < 30000; ++step) {
    const std::size_t at = text.find(kToken, from);
    if (at == std::string::npos) return text;
    text.replace(at, 5, replacement);
    from = at + 1;
  }
  return std::nullopt;
}

// The same texts in every run.
class Texts {
 public:
  std::string name() { return pieces(4); }

  std::string text() {
    switch (below(5)) {
      case 0:
        return pieces(12);
      case 1:  // around the limit
        return std::string(kMost - below(40), 'x') + pieces(12);
      case 2:
        return pieces(6) + std::string(2500, 'x') + pieces(6);
      case 3: {  // a long run of the same, up to the limit and beyond
        std::string one = pieces(3);
        if (one.empty()) one = "<<A";
        return pieces(3) + repeated(one, below(3000)) + pieces(4);
      }
      default:
        return "The " + pieces(1) + "<<A>> is on " + pieces(2) + " <<A>>.";
    }
  }

 private:
  std::size_t below(std::size_t limit) { return random_() % limit; }

  std::string pieces(std::size_t most) {
    constexpr const char* kPieces[] = {"<<A>>", "<<A>>", "<<A",   "A>>", "<<", "<", ">>",
                                       ">",     "A",     "<<B>>", "x",   "TV", "ü", " "};
    std::string result;
    for (std::size_t count = below(most + 1); count > 0; --count) {
      result += kPieces[below(std::size(kPieces))];
    }
    return result;
  }

  std::mt19937 random_{20261120};  // NOLINT(cert-msc51-cpp): repeatable
};

class GeneratedReplaceText : public ReplaceText {
 protected:
  // Returns whether the replacing ends.
  static bool compare(const std::string& name, const std::string& text) {
    const auto expected = replacedFromTheStart(text, name);
    if (!expected) return false;
    const std::string result = replaced(text, name);
    EXPECT_EQ(result, expected->substr(0, kMost)) << "name: " << name << "\ntext: " << text;
    EXPECT_EQ(journal(), lines(text, *expected, result)) << "name: " << name;
    return true;
  }
};

TEST_F(GeneratedReplaceText, IsWhatReplacingFromTheStartGivesWhereverThatEnds) {
  Texts texts;
  int ended = 0;
  for (int i = 0; i < 1500 && !HasFailure(); ++i) {
    const std::string name = texts.name();
    if (compare(name, texts.text())) ++ended;
  }
  EXPECT_GT(ended, 900);
}

TEST_F(GeneratedReplaceText, EndsEvenIfTheSimpleReplacementDoesNot) {
  Texts texts;
  for (int endless = 0; endless < 6;) {
    const std::string name = texts.name();
    const std::string text = texts.text();
    if (name == kToken || replacedFromTheStart(text, name)) continue;
    ++endless;
    EXPECT_EQ(replaced(text, name).size(), kMost) << "name: " << name << "\ntext: " << text;
  }
}

// Each replacement creates a token one position before it, from beyond the limit into the bytes
// handed out.
TEST_F(GeneratedReplaceText, IsTheSameWhenATokenMovesInFromBeyondTheLimit) {
  EXPECT_TRUE(compare(">>abc<", std::string(kMost - 3, 'x') + "<<A<<A>>"));
  EXPECT_TRUE(compare(">>abc<", std::string(kMost - 3, 'x') + repeated("<<A", 300) + "<<A>>"));
  EXPECT_TRUE(compare("A>>><", std::string(kMost - 2, 'x') + "<<<<A>>"));
  EXPECT_TRUE(compare("<A>>.", std::string(kMost - 1, 'x') + "<<<A>>"));
}

class GeneratedProductName : public AddProductName {};

TEST_F(GeneratedProductName, IsWhatReplacingOnwardsGivesWhereverThatEnds) {
  Texts texts;
  for (int i = 0; i < 200 && !HasFailure(); ++i) {
    const std::string name = texts.name();
    callTelevision(name);
    for (int j = 0; j < 10; ++j) {
      const std::string text = texts.text();
      std::string result = text;
      CProductUtil::AddProductNameInSID(result);  // must return at all
      if (const auto expected = replacedOnwards(text, name)) {
        EXPECT_EQ(result, *expected) << "name: " << name << "\ntext: " << text;
      }
    }
  }
}

}  // namespace
