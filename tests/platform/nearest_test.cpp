// Suggestions for misspelt names.
#include "platform/host/nearest.h"

#include <gtest/gtest.h>

namespace platform_tests {
namespace {

using platform::host::nearest;
using platform::host::suggestion;

const std::vector<std::string> kNames = {"radio", "connected", "profiles"};

TEST(TheNearestName, IsTheOneWithTheFewestMistypedLetters) {
  EXPECT_EQ(nearest("raido", kNames), "radio") << "swapped";
  EXPECT_EQ(nearest("rado", kNames), "radio") << "left out";
  EXPECT_EQ(nearest("radiio", kNames), "radio") << "added";
  EXPECT_EQ(nearest("conected", kNames), "connected");
  EXPECT_EQ(nearest("cat", {"bats", "cats"}), "cats");
}

TEST(TheNearestName, IsFoundInAnyLetterCase) {
  EXPECT_EQ(nearest("RADIO", kNames), "radio");
}

TEST(TheNearestName, IsNoneThatHasLittleInCommonWithIt) {
  EXPECT_EQ(nearest("wifi", kNames), "");
  EXPECT_EQ(nearest("", kNames), "");
  EXPECT_EQ(nearest("x", {"a", "b"}), "") << "no letter is right";
  EXPECT_EQ(nearest("radio", {}), "");
}

TEST(ASuggestion, IsTheNearestNameOrElseAllOfThem) {
  EXPECT_EQ(suggestion("raido", kNames), "; did you mean \"radio\"?");
  EXPECT_EQ(suggestion("wifi", kNames), "; there are: radio, connected, profiles");
}

}  // namespace
}  // namespace platform_tests
