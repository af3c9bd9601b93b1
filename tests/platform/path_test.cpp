// The well-known folders, and the files in them.
#include "platform/path.h"

#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "platform/host/errors.h"
#include "platform/host/resources.h"
#include "platform_test.h"

namespace platform_tests {
namespace {

using platform::host::ConfigurationError;
using platform::host::findResource;
using platform::host::resourceNames;
using platform::host::resourceRoot;

class Paths : public PlatformTest {};

TEST_F(Paths, LeadToTheResourcesBesideTheLibrary) {
  EXPECT_EQ(resourceRoot(), SHARE_FOLDER);
  EXPECT_STREQ(platform_mkpath(PLATFORM_ROOT_RESOURCES, "products/tv.json"),
               SHARE_FOLDER "/products/tv.json");
  EXPECT_TRUE(std::filesystem::exists(platform_mkpath(PLATFORM_ROOT_RESOURCES, "products")));
}

TEST_F(Paths, LeadToTheResourcesThatTheEnvironmentNames) {
  setenv("VENTARO_RESOURCE_ROOT", "/some/where", 1);
  EXPECT_EQ(resourceRoot(), "/some/where");
  EXPECT_STREQ(platform_mkpath(44, "res/locale"), "/some/where/res/locale");
  setenv("VENTARO_RESOURCE_ROOT", "/else/where", 1);
  EXPECT_STREQ(platform_mkpath(44, "res"), "/else/where/res");
  setenv("VENTARO_RESOURCE_ROOT", "", 1);
  EXPECT_EQ(resourceRoot(), SHARE_FOLDER);
}

TEST_F(Paths, NeedNotExist) {
  EXPECT_STREQ(platform_mkpath(44, "no/such/file"), SHARE_FOLDER "/no/such/file");
}

TEST_F(Paths, OfAnotherRootAreNone) {
  for (const int root : {0, 1, 43, 45, -1}) {
    EXPECT_EQ(platform_mkpath(root, "res"), nullptr) << root;
    EXPECT_TRUE(logged("platform_mkpath: there is no root " + std::to_string(root) +
                       ", or no relative path"));
  }
}

TEST_F(Paths, WithoutARelativePathAreNone) {
  EXPECT_EQ(platform_mkpath(44, nullptr), nullptr);
  EXPECT_EQ(platform_mkpath(44, "/etc/hosts"), nullptr);
}

TEST_F(Paths, StayUntilTheNextCallOfTheSameThread) {
  setenv("VENTARO_RESOURCE_ROOT", "/root", 1);
  const char* mine = platform_mkpath(44, "mine");
  const char* theirs = nullptr;
  std::thread([&] {
    theirs = platform_mkpath(44, "theirs");
    EXPECT_STREQ(theirs, "/root/theirs");
    EXPECT_NE(theirs, mine);
    EXPECT_STREQ(platform_mkpath(44, std::string(10'000, 'x').c_str()),
                 ("/root/" + std::string(10'000, 'x')).c_str());
  }).join();
  EXPECT_STREQ(mine, "/root/mine");
  EXPECT_STREQ(platform_mkpath(44, "next"), "/root/next");
}

TEST_F(Paths, OfAFailedCallLeaveTheOldOne) {
  setenv("VENTARO_RESOURCE_ROOT", "/root", 1);
  const char* path = platform_mkpath(44, "mine");
  EXPECT_EQ(platform_mkpath(1, "other"), nullptr);
  EXPECT_STREQ(path, "/root/mine");
}

class Resources : public PlatformTest {
 protected:
  void SetUp() override { setenv("VENTARO_RESOURCE_ROOT", folder().c_str(), 1); }
};

TEST_F(Resources, AreNamedInTheirOrder) {
  for (const char* name : {"b.json", "a.json", "c d.json", "notes.txt", "json"}) {
    write(std::string("things/") + name, "{}");
  }
  EXPECT_EQ(resourceNames("things"), (std::vector<std::string>{"a", "b", "c d"}));
  EXPECT_EQ(resourceNames("nothing"), std::vector<std::string>());
}

TEST_F(Resources, AreFoundByNameOrPath) {
  const std::string file = write("things/a.json", "{}");
  EXPECT_EQ(findResource("things", "a"), file);
  EXPECT_EQ(findResource("things", "a.json"), "a.json") << "a path below the current folder";
  EXPECT_EQ(findResource("things", "/x/y"), "/x/y");
  EXPECT_EQ(findResource("things", "./a"), "./a");
}

TEST_F(Resources, OfAnUnknownNameAreAnErrorThatSaysWhichThereAre) {
  write("things/b.json", "{}");
  write("things/a.json", "{}");
  for (const char* name : {"c", "", "A"}) {
    EXPECT_EQ(errorRaisedBy([&] { findResource("things", name); }),
              "there is no \"" + std::string(name) + "\" in " + (folder() / "things").string() +
                  "; there are: a, b");
  }
  EXPECT_THROW(findResource("things", "c"), ConfigurationError);
}

}  // namespace
}  // namespace platform_tests
