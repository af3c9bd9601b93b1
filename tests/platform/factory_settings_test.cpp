// The file of the factory settings.
#include <cstdlib>
#include <map>
#include <string>

#include "platform/config_store.h"
#include "platform_test.h"
#include "process.h"

namespace platform_tests {
namespace {

class FactorySettings : public PlatformTest {
 protected:
  void SetUp() override { setenv("VENTARO_RESOURCE_ROOT", folder().c_str(), 1); }

  std::string use(const std::string& content) const {
    return write("products/factory/settings.json", content);
  }

  // The error of opening the store with a file of that content, without the file's name.
  std::string messageAbout(const std::string& content) const {
    const std::string start = "the store in " + stateFolder().string() + ": " + use(content) + ":";
    const std::string message = errorRaisedBy([] { store().get("db/key"); });
    EXPECT_TRUE(message.starts_with(start)) << message;
    return message.substr(start.size());
  }
};

TEST_F(FactorySettings, AreWhatANewStoreHolds) {
  use(R"({"db/text": "é", "db/number": -5, "memory/flag": true})");
  EXPECT_EQ(store().list(""), (std::map<std::string, StoreValue>{
                                  {"db/number", -5}, {"db/text", "é"}, {"memory/flag", true}}));
}

TEST_F(FactorySettings, AreAddedToAStoreThatLacksThem) {
  use(R"({"db/old": 1, "memory/old": 1})");
  inOwnProcess([] { store().set({{"db/old", 2}, {"memory/old", 2}}); });
  use(R"({"db/old": 3, "db/new": 3, "memory/old": 3, "memory/new": 3})");
  EXPECT_EQ(store().list(""),
            (std::map<std::string, StoreValue>{
                {"db/new", 3}, {"db/old", 2}, {"memory/new", 3}, {"memory/old", 2}}));
}

TEST_F(FactorySettings, AreTheShippedOnesWhereAResourceRootHasNone) {
  EXPECT_EQ(store().get("db/menu/network/devicename/tv_name"), StoreValue("Living Room TV"));
}

TEST_F(FactorySettings, ThatCannotBeReadAreNamed) {
  const std::string file = (folder() / "products/factory/settings.json").string();
  std::filesystem::create_directories(file);
  EXPECT_EQ(
      errorRaisedBy([] { store().get("db/key"); }),
      "the store in " + stateFolder().string() + ": " + file + ": cannot be read: Is a directory");
  int value = 7;
  EXPECT_EQ(vconf_get_int("memory/key", &value), codeOf(StoreCode::kUnavailable));
  EXPECT_EQ(value, 7);
  EXPECT_TRUE(logged("vconf_get_int: the store in " + runtimeFolder().string() + ": " + file +
                     ": cannot be read: Is a directory"));
}

TEST_F(FactorySettings, ThatAreWrongAreNamedWithTheirLine) {
  EXPECT_EQ(messageAbout("{\n\"db/a\": 1\n\"db/b\": 2}"),
            "3: Missing ',' or '}' in object declaration");
  EXPECT_EQ(messageAbout("[]"), "1: expected an object");
  EXPECT_EQ(messageAbout("{\n\"db/a\": 2.5}"),
            "2: member \"db/a\": expected true, false, an integer or a string, found 2.5");
  EXPECT_EQ(messageAbout("{\n\"menu/a\": 1}"),
            "2: bad key \"menu/a\": it begins neither with \"db/\" nor with \"memory/\"");
  EXPECT_EQ(messageAbout("{\n\n\"\": 1}"), "3: bad key \"\": it is empty");
}

TEST_F(FactorySettings, AreReadAgainWhenTheyCouldNotBeRead) {
  messageAbout("{");
  use(R"({"db/key": 1})");
  EXPECT_EQ(store().get("db/key"), StoreValue(1));
}

}  // namespace
}  // namespace platform_tests
