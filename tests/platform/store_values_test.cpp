// The configuration store returns what was stored.
#include <climits>
#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "platform/config_store.h"
#include "platform_test.h"
#include "process.h"

namespace platform_tests {
namespace {

using Values = std::map<std::string, StoreValue>;
using OwnedText = std::unique_ptr<char, decltype(&std::free)>;

OwnedText textAt(const char* key) {
  return {vconf_get_str(key), &std::free};
}

// In both of the store's areas.
class StoredValue : public PlatformTest, public testing::WithParamInterface<const char*> {
 protected:
  std::string key(const std::string& name) const { return GetParam() + name; }
};

INSTANTIATE_TEST_SUITE_P(InEachArea, StoredValue, testing::Values("db/", "memory/"),
                         [](const auto& area) {
                           return std::string(area.param).substr(0, area.param[0] == 'd' ? 2 : 6);
                         });

TEST_P(StoredValue, IsAnIntegerOfAnySize) {
  for (const int value : {0, 1, -1, 42, INT_MAX, INT_MIN}) {
    EXPECT_EQ(vconf_set_int(key("number").c_str(), value), 0);
    int read = 7;
    EXPECT_EQ(vconf_get_int(key("number").c_str(), &read), 0);
    EXPECT_EQ(read, value);
  }
}

TEST_P(StoredValue, IsAStringOfAnyBytes) {
  for (const char* value :
       {"", "x", "Living Room", "Wohnzimmer \u00dcberraschung \uac70\uc2e4 \U0001f4fa", "a\nb\tc",
        "cut \xed\x95", "\xff\xfe", "i5", " "}) {
    EXPECT_EQ(vconf_set_str(key("text").c_str(), value), 0);
    const OwnedText read = textAt(key("text").c_str());
    ASSERT_NE(read, nullptr) << value;
    EXPECT_STREQ(read.get(), value);
  }
}

TEST_P(StoredValue, IsATruthValueThatFillsAnInt) {
  for (const bool value : {true, false}) {
    store().set(key("flag"), value);
    int read = INT_MIN;
    EXPECT_EQ(vconf_get_bool(key("flag").c_str(), &read), 0);
    EXPECT_EQ(read, value ? 1 : 0);
  }
}

TEST_P(StoredValue, KeepsTheZeroBytesOfAString) {
  const std::string value("a\0b\0", 4);
  store().set(key("bytes"), value);
  EXPECT_EQ(store().get(key("bytes")), StoreValue(value));
}

TEST_P(StoredValue, IsGoneWhenItIsOfAnotherType) {
  store().set(key("any"), 5);
  store().set(key("any"), true);
  EXPECT_EQ(store().get(key("any")), StoreValue(true));
  store().set(key("any"), "five");
  EXPECT_EQ(store().get(key("any")), StoreValue("five"));
}

TEST_P(StoredValue, OfAnotherTypeIsNotGiven) {
  store().set(key("int"), 1);
  store().set(key("bool"), true);
  store().set(key("string"), "1");
  const auto wrong = codeOf(StoreCode::kWrongType);
  for (const char* name : {"bool", "string"}) {
    int read = 7;
    EXPECT_EQ(vconf_get_int(key(name).c_str(), &read), wrong) << name;
    EXPECT_EQ(read, 7) << name;
  }
  for (const char* name : {"int", "string"}) {
    int read = 7;
    EXPECT_EQ(vconf_get_bool(key(name).c_str(), &read), wrong) << name;
    EXPECT_EQ(read, 7) << name;
  }
  EXPECT_EQ(textAt(key("int").c_str()), nullptr);
  EXPECT_EQ(textAt(key("bool").c_str()), nullptr);
  EXPECT_TRUE(
      logged("vconf_get_int: the value of " + key("string") + " is of type string, not int"));
  EXPECT_TRUE(logged("vconf_get_bool: the value of " + key("int") + " is of type int, not bool"));
  EXPECT_TRUE(
      logged("vconf_get_str: the value of " + key("bool") + " is of type bool, not string"));
}

TEST_P(StoredValue, ThatWasNeverSetIsAnErrorButNoEvent) {
  const std::string missing = key("missing");
  int read = 7;
  EXPECT_EQ(vconf_get_int(missing.c_str(), &read), codeOf(StoreCode::kNoSuchKey));
  EXPECT_EQ(vconf_get_bool(missing.c_str(), &read), codeOf(StoreCode::kNoSuchKey));
  EXPECT_EQ(read, 7);
  EXPECT_EQ(textAt(missing.c_str()), nullptr);
  EXPECT_EQ(store().get(missing), std::nullopt);
  EXPECT_EQ(linesOf(logFile()), std::vector<std::string>());
}

TEST_P(StoredValue, IsThereForTheNextProcess) {
  inOwnProcess([&] { store().set({{key("number"), 5}, {key("text"), "five"}}); });
  inOwnProcess([&] { store().set(key("flag"), true); });
  EXPECT_EQ(store().get(key("number")), StoreValue(5));
  EXPECT_EQ(store().get(key("text")), StoreValue("five"));
  EXPECT_EQ(store().get(key("flag")), StoreValue(true));
}

TEST_P(StoredValue, CanBeSetByAnyThread) {
  constexpr int kValues = 200;
  std::vector<std::thread> threads;
  for (const char* name : {"a", "b", "c", "d"}) {
    threads.emplace_back([this, name] {
      for (int i = 1; i <= kValues; ++i) {
        store().set(key(name + std::to_string(i)), i);
        EXPECT_EQ(store().get(key(name + std::to_string(i))), StoreValue(i));
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (const char* name : {"a", "b", "c", "d"}) {
    EXPECT_EQ(store().list(key(name)).size(), std::size_t{kValues}) << name;
  }
}

TEST_P(StoredValue, OfASetOfSeveralIsThereWithAllOthersOrNotAtAll) {
  constexpr int kRounds = 500;
  Process writer([&](Channel& test) {
    for (int i = 0; i < kRounds; ++i) store().set({{key("pair/a"), i}, {key("pair/b"), i}});
    test.sendLine("done");
  });
  store().setAbsent({{key("pair/a"), -1}, {key("pair/b"), -1}});
  int last = -1;
  while (last < kRounds - 1) {
    const Values pair = store().list(key("pair/"));
    ASSERT_EQ(pair.at(key("pair/a")), pair.at(key("pair/b")));
    last = std::get<int>(pair.at(key("pair/a")));
  }
  writer.join();
}

class Store : public PlatformTest {};

TEST_F(Store, HasWhatATelevisionLeavesTheFactoryWith) {
  const Values factory = {
      {"db/host/wake_on_mobile", false},
      {"db/menu/network/devicename/default_tv_name", "Living Room TV"},
      {"db/menu/network/devicename/tv_name", "Living Room TV"},
      {"db/menu/network/wifidirect", 0},
      {"db/menu/network/wiredeap", 0},
      {"db/menu/system/accessibility/highcontrast", 0},
      {"db/menu_widget/language", "en_US"},
  };
  EXPECT_EQ(store().list("db/"), factory);
  EXPECT_EQ(store().list("memory/"),
            (Values{{"memory/ephotel/hotelmenu/hotelfactorymode", false}}));
}

TEST_F(Store, DoesNotGoBackToTheFactorySettings) {
  inOwnProcess([] {
    store().set("db/menu_widget/language", "ko_KR");
    store().set("db/menu/network/wifidirect", "of another type");
    store().set("memory/ephotel/hotelmenu/hotelfactorymode", true);
  });
  EXPECT_EQ(store().get("db/menu_widget/language"), StoreValue("ko_KR"));
  EXPECT_EQ(store().get("db/menu/network/wifidirect"), StoreValue("of another type"));
  EXPECT_EQ(store().get("memory/ephotel/hotelmenu/hotelfactorymode"), StoreValue(true));
}

TEST_F(Store, ForgetsMemoryKeysWithTheRuntimeFolderOnly) {
  inOwnProcess([] {
    store().set("db/kept", 1);
    store().set("memory/lost", 1);
  });
  std::filesystem::remove_all(runtimeFolder());
  EXPECT_EQ(store().get("db/kept"), StoreValue(1));
  EXPECT_EQ(store().get("memory/lost"), std::nullopt);
}

TEST_F(Store, ListsTheKeysThatBeginWithAPrefixInTheirOrder) {
  store().set({{"db/list/b", 2}, {"db/list/a", 1}, {"db/list/a/x", true}, {"db/lisp", "no"}});
  EXPECT_EQ(store().list("db/list"),
            (Values{{"db/list/a", 1}, {"db/list/a/x", true}, {"db/list/b", 2}}));
  EXPECT_EQ(store().list("db/list/b"), (Values{{"db/list/b", 2}}));
  EXPECT_EQ(store().list("db/list/c"), Values());
}

TEST_F(Store, ListsBothAreasForAPrefixThatReachesBoth) {
  store().set({{"db/mine", 1}, {"memory/mine", 2}});
  const Values all = store().list("");
  EXPECT_EQ(all.size(), store().list("db/").size() + store().list("memory/").size());
  EXPECT_EQ(all.at("db/mine"), StoreValue(1));
  EXPECT_EQ(all.at("memory/mine"), StoreValue(2));
  EXPECT_EQ(store().list("d"), store().list("db/"));
  EXPECT_EQ(store().list("memo"), store().list("memory/"));
}

TEST_F(Store, ListsNothingForAPrefixThatNoKeyCanHave) {
  EXPECT_EQ(store().list("other/"), Values());
  EXPECT_EQ(store().list("dbx"), Values());
  EXPECT_EQ(store().list("db/" + std::string(600, 'x')), Values());
}

TEST_F(Store, SetsSeveralValuesOfBothAreas) {
  store().set({{"db/a", 1}, {"memory/b", "two"}, {"db/c", true}});
  EXPECT_EQ(store().get("db/a"), StoreValue(1));
  EXPECT_EQ(store().get("memory/b"), StoreValue("two"));
  EXPECT_EQ(store().get("db/c"), StoreValue(true));
  EXPECT_EQ(codeRaisedBy([] { store().set(Values()); }), StoreCode::kOk);
}

TEST_F(Store, SetsNoneOfSeveralValuesWhenOneCannotBe) {
  EXPECT_EQ(codeRaisedBy([] {
              store().set({{"db/a", 1}, {"elsewhere/b", 2}});
            }),
            StoreCode::kBadKey);
  EXPECT_EQ(codeRaisedBy([] {
              store().set(
                  {{"db/a", 1}, {"memory/b", std::string(platform::host::kMaxValueSize + 1, 'x')}});
            }),
            StoreCode::kValueTooLong);
  EXPECT_EQ(store().get("db/a"), std::nullopt);
}

TEST_F(Store, SetsWhatIsAbsentAndLeavesTheRest) {
  store().set({{"db/there", 1}, {"memory/there", "one"}});
  EXPECT_TRUE(store().setAbsent(
      {{"db/there", 2}, {"db/new", 2}, {"memory/there", 2}, {"memory/new", "two"}}));
  EXPECT_EQ(store().get("db/there"), StoreValue(1));
  EXPECT_EQ(store().get("db/new"), StoreValue(2));
  EXPECT_EQ(store().get("memory/there"), StoreValue("one"));
  EXPECT_EQ(store().get("memory/new"), StoreValue("two"));
  EXPECT_TRUE(store().setAbsent({{"db/another", 2}, {"memory/there", 2}}));
  EXPECT_TRUE(store().setAbsent({{"db/there", 2}, {"memory/another", 2}}));
  EXPECT_FALSE(store().setAbsent({{"db/there", 2}, {"memory/there", 2}}));
  EXPECT_FALSE(store().setAbsent({}));
}

TEST_F(Store, NamesTheTypesOfItsValues) {
  EXPECT_STREQ(platform::host::typeName(StoreValue(1)), "int");
  EXPECT_STREQ(platform::host::typeName(StoreValue(true)), "bool");
  EXPECT_STREQ(platform::host::typeName(StoreValue("")), "string");
}

}  // namespace
}  // namespace platform_tests
