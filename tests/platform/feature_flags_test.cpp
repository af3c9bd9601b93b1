// The product's feature flags: where they come from, and errors in a product's file.
#include <cstdlib>
#include <memory>
#include <string>

#include "platform/host/errors.h"
#include "platform/host/product.h"
#include "platform/host/resources.h"
#include "platform/system_info.h"
#include "platform_test.h"

namespace platform_tests {
namespace {

using platform::host::ConfigurationError;
using platform::host::loadProduct;
using platform::host::Product;

constexpr char kB2b[] = "com.norvane/featureconf/product.b2b_option_support";
constexpr char kEnergy[] = "com.norvane/featureconf/setting.eu_energy_regulation";
constexpr char kNetwork[] = "com.norvane/featureconf/network.network_support";
constexpr char kDevice[] = "com.norvane/featureconf/product.device_sid";

std::string overrideOf(const char* flag) {
  constexpr std::string_view kPrefix = "com.norvane/featureconf/";
  return "memory/host/feature/" + std::string(flag).substr(kPrefix.size());
}

struct TextResult {
  int code;
  std::string text;
};

TextResult textFlag(const char* key) {
  char* value = nullptr;
  const int code = system_info_get_custom_string(key, &value);
  const std::unique_ptr<char, decltype(&std::free)> owner(value, &std::free);
  return {code, value != nullptr ? value : "untouched"};
}

class FeatureFlag : public PlatformTest {
 protected:
  // Makes the product one of those flags.
  void use(const std::string& flags) const {
    setenv("VENTARO_PRODUCT",
           write("product.json", R"({"description": "a product", "flags": )" + flags + "}").c_str(),
           1);
  }
};

TEST_F(FeatureFlag, IsThatOfTheOrdinaryTelevisionByDefault) {
  bool b2b = true;
  bool energy = false;
  int network = 0;
  EXPECT_EQ(system_info_get_custom_bool(kB2b, &b2b), 0);
  EXPECT_FALSE(b2b);
  EXPECT_EQ(system_info_get_custom_bool(kEnergy, &energy), 0);
  EXPECT_TRUE(energy);
  EXPECT_EQ(system_info_get_custom_int(kNetwork, &network), 0);
  EXPECT_EQ(network, 1);
  EXPECT_EQ(textFlag(kDevice).code, 0);
  EXPECT_EQ(textFlag(kDevice).text, "REP.DEVICE.TV");
}

TEST_F(FeatureFlag, IsThatOfTheProductInUse) {
  use(R"({"product.b2b_option_support": true, "orlex_version": -5,
         "product.device_sid": "é"})");
  bool b2b = false;
  int number = 0;
  EXPECT_EQ(system_info_get_custom_bool(kB2b, &b2b), 0);
  EXPECT_TRUE(b2b);
  EXPECT_EQ(system_info_get_custom_int("com.norvane/featureconf/orlex_version", &number), 0);
  EXPECT_EQ(number, -5);
  EXPECT_EQ(textFlag(kDevice).text, "\u00e9");
}

TEST_F(FeatureFlag, ThatTheProductHasNotIsAnError) {
  use("{}");
  bool flag = true;
  int number = 7;
  const int missing = codeOf(StoreCode::kNoSuchKey);
  EXPECT_EQ(system_info_get_custom_bool(kB2b, &flag), missing);
  EXPECT_TRUE(logged(std::string("system_info_get_custom_bool: there is no flag ") + kB2b));
  EXPECT_EQ(system_info_get_custom_int(kNetwork, &number), missing);
  EXPECT_EQ(textFlag(kDevice).code, missing);
  EXPECT_EQ(textFlag(kDevice).text, "untouched");
  EXPECT_TRUE(flag);
  EXPECT_EQ(number, 7);
}

TEST_F(FeatureFlag, OfNoKnownFamilyIsMissing) {
  bool flag = true;
  const int missing = codeOf(StoreCode::kNoSuchKey);
  for (const char* key : {"", "product.b2b_option_support", "com.norvane/featureconf/",
                          "com.norvane/featureconf", "com.norvane/product.b2b_option_support"}) {
    EXPECT_EQ(system_info_get_custom_bool(key, &flag), missing) << key;
  }
  EXPECT_TRUE(flag);
}

TEST_F(FeatureFlag, OfAnotherTypeIsAnErrorThatNamesTheType) {
  bool flag = true;
  int number = 7;
  const int wrong = codeOf(StoreCode::kWrongType);
  EXPECT_EQ(system_info_get_custom_bool(kNetwork, &flag), wrong);
  EXPECT_TRUE(logged(std::string("system_info_get_custom_bool: ") + kNetwork + " is of type int"));
  EXPECT_EQ(system_info_get_custom_bool(kDevice, &flag), wrong);
  EXPECT_EQ(system_info_get_custom_int(kB2b, &number), wrong);
  EXPECT_TRUE(logged(std::string("system_info_get_custom_int: ") + kB2b + " is of type bool"));
  EXPECT_EQ(system_info_get_custom_int(kDevice, &number), wrong);
  EXPECT_EQ(textFlag(kB2b).code, wrong);
  EXPECT_EQ(textFlag(kNetwork).code, wrong);
  EXPECT_TRUE(flag);
  EXPECT_EQ(number, 7);
}

TEST_F(FeatureFlag, HasNullArgumentsRefused) {
  bool flag = true;
  int number = 7;
  const int null = codeOf(StoreCode::kNullArgument);
  EXPECT_EQ(system_info_get_custom_bool(nullptr, &flag), null);
  EXPECT_EQ(system_info_get_custom_bool(kB2b, nullptr), null);
  EXPECT_EQ(system_info_get_custom_int(nullptr, &number), null);
  EXPECT_EQ(system_info_get_custom_int(kNetwork, nullptr), null);
  EXPECT_EQ(textFlag(nullptr).code, null);
  EXPECT_EQ(system_info_get_custom_string(kDevice, nullptr), null);
  EXPECT_TRUE(flag);
  EXPECT_EQ(number, 7);
}

TEST_F(FeatureFlag, FollowsTheStoreWhileTheProgramRuns) {
  bool b2b = false;
  EXPECT_EQ(system_info_get_custom_bool(kB2b, &b2b), 0);
  EXPECT_FALSE(b2b);
  store().set(overrideOf(kB2b), true);
  EXPECT_EQ(system_info_get_custom_bool(kB2b, &b2b), 0);
  EXPECT_TRUE(b2b);
  store().set(overrideOf(kB2b), false);
  EXPECT_EQ(system_info_get_custom_bool(kB2b, &b2b), 0);
  EXPECT_FALSE(b2b);
  store().set({{overrideOf(kNetwork), 9}, {overrideOf(kDevice), "REP.DEVICE.OTHER"}});
  int network = 0;
  EXPECT_EQ(system_info_get_custom_int(kNetwork, &network), 0);
  EXPECT_EQ(network, 9);
  EXPECT_EQ(textFlag(kDevice).text, "REP.DEVICE.OTHER");
}

TEST_F(FeatureFlag, CanBeOneThatOnlyTheStoreHas) {
  store().set("memory/host/feature/own.flag", true);
  bool flag = false;
  EXPECT_EQ(system_info_get_custom_bool("com.norvane/featureconf/own.flag", &flag), 0);
  EXPECT_TRUE(flag);
}

TEST_F(FeatureFlag, OverriddenByAnotherTypeIsOfThatType) {
  store().set(overrideOf(kB2b), 1);
  bool flag = true;
  int number = 0;
  EXPECT_EQ(system_info_get_custom_bool(kB2b, &flag), codeOf(StoreCode::kWrongType));
  EXPECT_EQ(system_info_get_custom_int(kB2b, &number), 0);
  EXPECT_EQ(number, 1);
  EXPECT_TRUE(flag);
}

TEST_F(FeatureFlag, WithANameThatNoKeyCanHaveIsAnError) {
  const std::string key = "com.norvane/featureconf/" + std::string(600, 'x');
  bool flag = true;
  EXPECT_EQ(system_info_get_custom_bool(key.c_str(), &flag), codeOf(StoreCode::kBadKey));
  EXPECT_TRUE(flag);
}

TEST_F(FeatureFlag, OfAProductThatCannotBeReadIsAnErrorThatNamesTheMistake) {
  const std::string path = write("product.json", "{\n\"description\": 5\n}");
  setenv("VENTARO_PRODUCT", path.c_str(), 1);
  bool flag = true;
  int number = 7;
  const int unavailable = codeOf(StoreCode::kUnavailable);
  EXPECT_EQ(system_info_get_custom_bool(kB2b, &flag), unavailable);
  EXPECT_TRUE(logged("system_info_get_custom_bool: " + path +
                     ":2: member \"description\": expected a string, found 5"));
  EXPECT_EQ(system_info_get_custom_int(kNetwork, &number), unavailable);
  EXPECT_EQ(textFlag(kDevice).code, unavailable);
  EXPECT_TRUE(flag);
  EXPECT_EQ(number, 7);
}

TEST_F(FeatureFlag, OfAProductThatIsAFolderIsAnError) {
  setenv("VENTARO_PRODUCT", folder().c_str(), 1);
  bool flag = true;
  EXPECT_EQ(system_info_get_custom_bool(kB2b, &flag), codeOf(StoreCode::kUnavailable));
  EXPECT_TRUE(logged(folder().string() + ": cannot be read: Is a directory"));
}

TEST_F(FeatureFlag, IsReadAgainWhenItsProductCouldNotBeRead) {
  const std::string path = write("product.json", "{");
  setenv("VENTARO_PRODUCT", path.c_str(), 1);
  bool flag = false;
  EXPECT_NE(system_info_get_custom_bool(kB2b, &flag), 0);
  use(R"({"product.b2b_option_support": true})");
  EXPECT_EQ(system_info_get_custom_bool(kB2b, &flag), 0);
  EXPECT_TRUE(flag);
}

class AProduct : public PlatformTest {
 protected:
  // The message about a product's file of that content, without its name before it.
  std::string messageAbout(const std::string& content) const {
    const std::string path = write("product.json", content);
    try {
      loadProduct(path);
    } catch (const ConfigurationError& error) {
      const std::string message = error.what();
      EXPECT_TRUE(message.starts_with(path + ":")) << message;
      return message.substr(path.size());
    }
    return "no error";
  }

  static std::string messageAboutName(const std::string& name) {
    try {
      loadProduct(name);
      return "no error";
    } catch (const ConfigurationError& error) {
      return error.what();
    }
  }
};

TEST_F(AProduct, IsFoundByItsNameOrItsPath) {
  const std::string content = R"({"description": "Two", "flags":
      {"orlex_version": 1, "projector_feature_support": true, "product.device_sid": "x"}})";
  setenv("VENTARO_RESOURCE_ROOT", folder().c_str(), 1);
  const std::string path = write("products/two.json", content);
  for (const std::string& name : {std::string("two"), path}) {
    const Product product = loadProduct(name);
    EXPECT_EQ(product.file, path);
    EXPECT_EQ(product.description, "Two");
    EXPECT_EQ(product.flags,
              (std::map<std::string, StoreValue>{{"orlex_version", 1},
                                                 {"product.device_sid", "x"},
                                                 {"projector_feature_support", true}}));
  }
}

TEST_F(AProduct, IsTheOneThatTheEnvironmentNames) {
  setenv("VENTARO_RESOURCE_ROOT", folder().c_str(), 1);
  write("products/tv.json", R"({"description": "default", "flags": {}})");
  write("products/other.json", R"({"description": "by name", "flags": {}})");
  const std::string path = write("elsewhere.json", R"({"description": "by path", "flags": {}})");
  EXPECT_EQ(loadProduct().description, "default");
  setenv("VENTARO_PRODUCT", "", 1);
  EXPECT_EQ(loadProduct().description, "default");
  setenv("VENTARO_PRODUCT", "other", 1);
  EXPECT_EQ(loadProduct().description, "by name");
  setenv("VENTARO_PRODUCT", path.c_str(), 1);
  EXPECT_EQ(loadProduct().description, "by path");
}

TEST_F(AProduct, InTheCurrentFolderIsFoundByItsFileName) {
  write("here.json", R"({"description": "here", "flags": {}})");
  std::filesystem::current_path(folder());
  EXPECT_EQ(loadProduct("here.json").description, "here");
}

TEST_F(AProduct, OfAnUnknownNameIsAnErrorThatSaysWhichThereAre) {
  setenv("VENTARO_RESOURCE_ROOT", folder().c_str(), 1);
  write("products/tv.json", "{}");
  write("products/screen.json", "{}");
  write("products/notes.txt", "");
  const std::string products = (folder() / "products").string();
  EXPECT_EQ(messageAboutName("radio"),
            "there is no \"radio\" in " + products + "; there are: screen, tv");
  std::filesystem::remove_all(products);
  EXPECT_EQ(messageAboutName("radio"), "there is no \"radio\" in " + products + "; there are: ");
}

TEST_F(AProduct, WhoseFileIsMissingIsNamed) {
  EXPECT_EQ(messageAboutName("/nowhere/product.json"),
            "/nowhere/product.json: cannot be read: No such file or directory");
}

TEST_F(AProduct, ThatIsNotJsonIsNamedWithItsLine) {
  EXPECT_EQ(messageAbout("{\n\"description\": \"x\"\n\"flags\": {}}"),
            ":3: Missing ',' or '}' in object declaration");
}

TEST_F(AProduct, WithAMemberOfAnotherTypeIsNamedWithItsLine) {
  EXPECT_EQ(messageAbout("{\n\"flags\": {}}"),
            ":1: member \"description\" is missing: expected a string");
  EXPECT_EQ(messageAbout("{\"description\": \"x\",\n\"flags\": []}"),
            ":2: member \"flags\": expected an object, found []");
  EXPECT_EQ(messageAbout("{\"description\": \"x\"}"),
            ":1: member \"flags\" is missing: expected an object");
}

TEST_F(AProduct, WithAnUnknownMemberOrFlagGetsTheNearestNameInTheMessage) {
  EXPECT_EQ(messageAbout("{\"description\": \"x\",\n\"flag\": {}}"),
            ":2: member \"flag\" means nothing here; did you mean \"flags\"?");
  EXPECT_EQ(messageAbout("{\"description\": \"x\", \"flags\": {\n\"orlex_verison\": 1}}"),
            ":2: member \"orlex_verison\" means nothing here; did you mean \"orlex_version\"?");
}

TEST_F(AProduct, WithAFlagOfNoTypeIsNamedWithItsLine) {
  const std::string start = "{\"description\": \"x\", \"flags\": {\n\n";
  const std::string expected = "expected true, false, an integer or a string, found ";
  EXPECT_EQ(messageAbout(start + "\"orlex_version\": 2.5}}"),
            ":3: member \"orlex_version\": " + expected + "2.5");
  EXPECT_EQ(messageAbout(start + "\"orlex_version\": [true]}}"),
            ":3: member \"orlex_version\": " + expected + "[true]");
  EXPECT_EQ(messageAbout(start + "\"orlex_version\": null}}"),
            ":3: member \"orlex_version\": " + expected + "nothing");
  EXPECT_EQ(messageAbout(start + "\"orlex_version\": 4294967296}}"),
            ":3: member \"orlex_version\": " + expected + "4294967296");
}

TEST_F(AProduct, WithAKnownFlagOfAnotherTypeIsNamedWithItsLine) {
  const std::string start = "{\"description\": \"x\", \"flags\": {\n";
  EXPECT_EQ(messageAbout(start + "\"product.b2b_option_support\": 1}}"),
            ":2: member \"product.b2b_option_support\": expected true or false, found 1");
  EXPECT_EQ(messageAbout(start + "\"orlex_version\": \"7\"}}"),
            ":2: member \"orlex_version\": expected an integer, found \"7\"");
  EXPECT_EQ(messageAbout(start + "\"network.network_support\": true}}"),
            ":2: member \"network.network_support\": expected an integer, found true");
  EXPECT_EQ(messageAbout(start + "\"product.device_sid\": false}}"),
            ":2: member \"product.device_sid\": expected a string, found false");
}

}  // namespace
}  // namespace platform_tests
