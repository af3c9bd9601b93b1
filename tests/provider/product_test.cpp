// What kind of product this is, and the product's words in texts.
#include <algorithm>
#include <optional>
#include <random>
#include <stdexcept>
#include <vector>

#include "CProductSIDUtil.h"
#include "globals.h"
#include "object_test.h"
#include "texts.h"

namespace {

constexpr char kTunerless[] = "com.norvane/featureconf/broadcast.removable_rf_tuner_support";
constexpr char kGeneration[] = "com.norvane/featureconf/orlex_version";
constexpr char kProjector[] = "com.norvane/featureconf/projector_feature_support";
constexpr char kSmartMonitor[] = "com.norvane/featureconf/product.smart_monitor_feature_support";
constexpr char kDeviceSid[] = "com.norvane/featureconf/product.device_sid";

constexpr char kToken[] = "<<A>>";
constexpr std::size_t kSize = 2048;
constexpr std::size_t kMost = kSize - 1;

// The product's flags; an empty one cannot be read.
struct ProductFlags {
  std::optional<bool> tunerless;
  std::optional<int> generation;
  std::optional<bool> projector;
  std::optional<bool> smartMonitor;
};

constexpr ProductFlags kTv = {false, 0, false, false};

class Product : public ObjectTest {
 protected:
  static void setFlags(const ProductFlags& product) {
    for (const char* name : {kTunerless, kGeneration, kProjector, kSmartMonitor}) {
      flags().erase(name);
    }
    if (product.tunerless) flags().setBool(kTunerless, *product.tunerless);
    if (product.generation) flags().set(kGeneration, *product.generation);
    if (product.projector) flags().setBool(kProjector, *product.projector);
    if (product.smartMonitor) flags().setBool(kSmartMonitor, *product.smartMonitor);
  }

  // ---- Pieces of journals ----

  static Journal tunerlessIs(bool value) {
    return {call("system_info_get_custom_bool", kTunerless),
            mainLog(value ? "Tunerless support = 1" : "Tunerless support = 0")};
  }
  static Journal tunerlessIsUnreadable() {
    return {call("system_info_get_custom_bool", kTunerless),
            systemLog("get com.norvane/featureconf/broadcast.removable_rf_tuner_support failed"),
            mainLog("Tunerless support = 0")};
  }
  static Journal readsGeneration() { return {call("system_info_get_custom_int", kGeneration)}; }
  static Journal generationIsUnreadable() {
    return {readsGeneration(), systemLog("fail to get com.norvane/featureconf/orlex_version")};
  }
  static Journal readsProjector() { return {call("system_info_get_custom_bool", kProjector)}; }
  static Journal readsSmartMonitor() {
    return {call("system_info_get_custom_bool", kSmartMonitor)};
  }
  static Journal smartMonitorIsUnreadable() {
    return {readsSmartMonitor(),
            systemLog("fail to get com.norvane/featureconf/product.smart_monitor_feature_support")};
  }
  // What finding out takes on a television.
  static Journal findsTv() {
    return {tunerlessIs(false), readsGeneration(), readsProjector(), readsSmartMonitor()};
  }
};

TEST_F(Product, HasNamesOfTwoProjectorFeatures) {
  EXPECT_EQ(PROJECTOR_FMS, "com.norvane/featureconf/projector_feature_support");
  EXPECT_EQ(SOLVENA_FMS, "com.norvane/featureconf/projector.engine_type");
}

// ---- IsProductTunerless ----

TEST_F(Product, IsTunerlessWhenItsTunerCanBeRemoved) {
  for (const bool flag : {true, false}) {
    flags().setBool(kTunerless, flag);
    clearJournal();
    EXPECT_EQ(CProductUtil::IsProductTunerless(), flag);
    EXPECT_EQ(journal(), tunerlessIs(flag));
  }
}

TEST_F(Product, IsNotTunerlessWhenThatCannotBeReadWhateverTheReadingLeft) {
  EXPECT_FALSE(CProductUtil::IsProductTunerless());
  EXPECT_EQ(journal(), tunerlessIsUnreadable());
  clearJournal();
  flags().setBool(kTunerless, true);
  failWith("system_info_get_custom_bool", kTunerless, -5, Effect::kAsSuccess);
  EXPECT_FALSE(CProductUtil::IsProductTunerless());
  EXPECT_EQ(journal(), tunerlessIsUnreadable());
}

// ---- GetProductType ----

class ProductType : public Product {
 protected:
  // The code and the product's name; the name's old text must be gone.
  static void expectType(const ProductFlags& product, int code, const char* nameSid,
                         const Journal& expected) {
    setFlags(product);
    expectType(code, nameSid, expected);
  }

  static void expectType(int code, const char* nameSid, const Journal& expected) {
    clearJournal();
    std::string name = "what was there before, and longer than every name";
    EXPECT_EQ(CProductUtil::GetProductType(name), code) << nameSid;
    EXPECT_EQ(name, tr(nameSid)) << nameSid;
    EXPECT_EQ(journal(), expected) << nameSid;
  }

  static void expectScreen(const ProductFlags& product) {
    expectType(product, 0, "REP.DEVICE.SCREEN", tunerlessIs(true));
  }
};

TEST_F(ProductType, WithoutATunerIsAScreenWhateverTheOtherFlagsSay) {
  expectScreen({true, 1, true, true});
  expectScreen({true, 2, true, true});
  expectScreen({true, 0, false, false});
  expectScreen({true, std::nullopt, std::nullopt, std::nullopt});
}

TEST_F(ProductType, OfTheFirstModularGenerationBeatsTheProjectorAndTheMonitor) {
  for (const bool others : {false, true}) {
    expectType({false, 1, others, others}, 3, "COM_SID_ORLEX",
               {tunerlessIs(false), readsGeneration()});
  }
}

TEST_F(ProductType, OfTheSecondModularGenerationBeatsTheProjectorAndTheMonitor) {
  for (const bool others : {false, true}) {
    expectType({false, 2, others, others}, 7, "COM_TV_SID_MLED_CAOCT_NON_MICRO_LED",
               {tunerlessIs(false), readsGeneration()});
  }
}

TEST_F(ProductType, OfAnyOtherGenerationIsNotModular) {
  for (const int generation : {0, 3, 4, -1, 257, 2147483647}) {
    expectType({false, generation, false, false}, 1, "COM_SID_TV", findsTv());
    expectType({false, generation, true, false}, 6, "PJT_SID_TV",
               {tunerlessIs(false), readsGeneration(), readsProjector()});
  }
}

TEST_F(ProductType, WithTheProjectorsFlagIsAProjectorAlsoWithTheMonitorsFlag) {
  for (const bool monitor : {false, true}) {
    expectType({false, 0, true, monitor}, 6, "PJT_SID_TV",
               {tunerlessIs(false), readsGeneration(), readsProjector()});
  }
}

TEST_F(ProductType, WithTheMonitorsFlagIsASmartMonitor) {
  expectType({false, 0, false, true}, 8, "COM_SID_SMNT_CAAUG_MNT", findsTv());
}

TEST_F(ProductType, WithNoneOfThemIsATelevision) {
  expectType(kTv, 1, "COM_SID_TV", findsTv());
}

TEST_F(ProductType, WithEveryFlagUnreadableIsATelevisionAfterThreeFailures) {
  expectType({}, 1, "COM_SID_TV",
             {tunerlessIsUnreadable(), generationIsUnreadable(), readsProjector(),
              smartMonitorIsUnreadable()});
}

TEST_F(ProductType, AnUnreadableFlagLetsTheLaterOnesDecide) {
  expectType({std::nullopt, 1, false, false}, 3, "COM_SID_ORLEX",
             {tunerlessIsUnreadable(), readsGeneration()});
  expectType({false, std::nullopt, true, false}, 6, "PJT_SID_TV",
             {tunerlessIs(false), generationIsUnreadable(), readsProjector()});
  expectType({false, 0, std::nullopt, true}, 8, "COM_SID_SMNT_CAAUG_MNT", findsTv());
  expectType({false, 0, false, std::nullopt}, 1, "COM_SID_TV",
             {tunerlessIs(false), readsGeneration(), readsProjector(), smartMonitorIsUnreadable()});
}

TEST_F(ProductType, AGenerationWhoseReadingFailedIsNoneWhateverItLeft) {
  for (const int generation : {1, 2}) {
    setFlags({false, generation, false, false});
    failWith("system_info_get_custom_int", kGeneration, -5, Effect::kAsSuccess);
    expectType(
        1, "COM_SID_TV",
        {tunerlessIs(false), generationIsUnreadable(), readsProjector(), readsSmartMonitor()});
  }
}

TEST_F(ProductType, TheProjectorsAndTheMonitorsFlagCountAsTheyStandAfterAFailure) {
  setFlags({false, 0, true, false});
  failWith("system_info_get_custom_bool", kProjector, -5, Effect::kAsSuccess);
  expectType(6, "PJT_SID_TV", {tunerlessIs(false), readsGeneration(), readsProjector()});
  setFlags({false, 0, false, true});
  failWith("system_info_get_custom_bool", kSmartMonitor, -5, Effect::kAsSuccess);
  expectType(8, "COM_SID_SMNT_CAAUG_MNT",
             {tunerlessIs(false), readsGeneration(), readsProjector(), smartMonitorIsUnreadable()});
}

TEST_F(ProductType, IsFoundOutAnewAtEveryCall) {
  expectType(kTv, 1, "COM_SID_TV", findsTv());
  expectScreen({true, 0, false, false});
  expectType(kTv, 1, "COM_SID_TV", findsTv());
}

TEST_F(ProductType, HasANameInTheUsersLanguage) {
  useTexts({{"COM_SID_TV", "Fernseher"}});
  bindCatalogues();
  setFlags(kTv);
  std::string name;
  CProductUtil::GetProductType(name);
  EXPECT_EQ(name, "Fernseher");
}

TEST_F(ProductType, WithoutACatalogueHasItsNamesId) {
  useLanguage("none");
  expectType(kTv, 1, "COM_SID_TV", findsTv());
  expectScreen({true, 0, false, false});
  std::string name;
  CProductUtil::GetProductType(name);
  EXPECT_EQ(name, "REP.DEVICE.SCREEN");
}

// ---- GetDeviceNameString ----

class DeviceSid : public Product {
 protected:
  static void expectSid(const std::string& sid, const Journal& lines) {
    clearJournal();
    EXPECT_EQ(CProductUtil::GetDeviceNameString(), sid);
    EXPECT_EQ(journal(), (Journal{call("system_info_get_custom_string", kDeviceSid), lines}));
  }

  static Journal failed() { return {systemLog("get product device sid failed.")}; }
};

TEST_F(DeviceSid, IsTheFlagAsItStandsUntranslated) {
  for (const std::string sid : {"REP.DEVICE.PROJECTOR", "REP.DEVICE.TV", "no such id", "not_ready",
                                "Not_Ready", "NOT_READY ", "NOT_READ", "%s%n", ""}) {
    flags().set(kDeviceSid, sid);
    expectSid(sid, {mainLog("product device SID [" + sid + "]"),
                    mainLog("product device name [" + sid + "]")});
  }
}

TEST_F(DeviceSid, ThatIsNotReadyIsTheTelevisions) {
  flags().set(kDeviceSid, "NOT_READY");
  expectSid("REP.DEVICE.TV", {mainLog("product device SID [NOT_READY]"),
                              mainLog("get product device sid NOT_READY.")});
}

TEST_F(DeviceSid, ThatCannotBeReadIsTheTelevisions) {
  expectSid("REP.DEVICE.TV", failed());
  flags().setNullText(kDeviceSid);
  expectSid("REP.DEVICE.TV", failed());
  flags().set(kDeviceSid, "REP.DEVICE.PROJECTOR");
  failWith("system_info_get_custom_string", kDeviceSid, -5, Effect::kAsSuccess);
  expectSid("REP.DEVICE.TV", failed());
}

TEST_F(DeviceSid, IsReadAnewAtEveryCall) {
  flags().set(kDeviceSid, "REP.DEVICE.PROJECTOR");
  EXPECT_EQ(CProductUtil::GetDeviceNameString(), "REP.DEVICE.PROJECTOR");
  flags().set(kDeviceSid, "REP.DEVICE.MONITOR");
  EXPECT_EQ(CProductUtil::GetDeviceNameString(), "REP.DEVICE.MONITOR");
}

// ---- ReplaceText ----

class ReplaceText : public Product {
 protected:
  // The text that comes back in a buffer of zeroes.
  static std::string replaced(const std::string& text, const std::string& replacement,
                              const char* token = kToken, std::size_t size = kSize) {
    std::vector<char> buffer(size);
    clearJournal();
    CProductUtil::ReplaceText(buffer.data(), text.c_str(), token, replacement.c_str(), size);
    EXPECT_EQ(buffer.back(), '\0');
    return buffer.data();
  }

  static Journal lines(const std::string& original, const std::string& replaced,
                       const std::string& result) {
    return {mainLog("original text:" + original), mainLog("replaced text:" + replaced),
            mainLog("result text:" + result)};
  }
};

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

TEST_F(ReplaceText, FillsAnEmptyReplacementIn) {
  EXPECT_EQ(replaced("The <<A>>.", ""), "The .");
  EXPECT_EQ(replaced("<<A>>", ""), "");
}

TEST_F(ReplaceText, SearchesFromTheStartAfterEveryReplacement) {
  // The token arises in front of what was filled in.
  EXPECT_EQ(replaced("<<<<A>>A>>", ""), "");
  EXPECT_EQ(replaced("<<A<<A>>", ">>"), ">>");
  EXPECT_EQ(replaced("<<A<<A<<A>>.", ">>"), ">>.");
  // And behind its start.
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

TEST_F(ReplaceText, ReplacesAndLogsAlsoBehindWhatItHandsOut) {
  const std::string start(3000, 'x');
  EXPECT_EQ(replaced(start + "<<A>>", "TV"), start.substr(0, kMost));
  EXPECT_EQ(journal(), lines(start + "<<A>>", start + "TV", start.substr(0, kMost)));
}

TEST_F(ReplaceText, ReplacesAndLogsAllOfATextAlsoForANameWithBrackets) {
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

TEST_F(ReplaceText, RefusesANullTextByAnException) {
  std::vector<char> buffer(kSize);
  EXPECT_THROW(CProductUtil::ReplaceText(buffer.data(), nullptr, kToken, "TV", kSize),
               std::logic_error);
  EXPECT_EQ(journal(), Journal());
}

// ---- AddProductNameInSID ----

class AddProductName : public Product {
 protected:
  // The text with the name of a television that is called so.
  static std::string named(const std::string& name, std::string text) {
    callTelevision(name);
    clearJournal();
    CProductUtil::AddProductNameInSID(text);
    return text;
  }

  static void callTelevision(const std::string& name) {
    setFlags(kTv);
    useTexts({{"COM_SID_TV", name}});
    bindCatalogues();
  }
};

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

TEST_F(AddProductName, FillsAlsoAnEmptyNameIn) {
  EXPECT_EQ(named("", "The <<A>>."), "The .");
  EXPECT_EQ(named("", "<<A>>"), "");
}

TEST_F(AddProductName, GoesOnOneByteBehindTheStartOfWhatItFilledIn) {
  // Not at the start of what was filled in, which would find the name's own token,
  EXPECT_EQ(named("<<A>>!", "<<A>> <<A>>"), "<<A>>! <<A>>!");
  EXPECT_EQ(named("", "<<A>><<A>>"), "<<A>>");
  // not behind its end, which would miss the token that it makes with what follows,
  EXPECT_EQ(named("-<<A", "<<A>>>>"), "--<<A");
  // and not at the start of the text, which would find the token that it makes with what precedes.
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

std::string repeated(const std::string& text, std::size_t size) {
  std::string result;
  while (result.size() < size) result += text;
  return result;
}

// A name, and what the token grows to, as far as bytes are handed out.
struct EndlessName {
  const char* name;
  std::string replaced;  // by ReplaceText
  std::string named;     // by AddProductNameInSID; empty where that comes to an end
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

// Where the first token stands.
constexpr std::size_t kStarts[] = {0, 10, 2042, 2044, 2047, 3000};

TEST_F(ReplaceText, EndsForANameThatHoldsTheTokenWithWhatItWouldHandOutInTheEnd) {
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

TEST_F(AddProductName, EndsForANameThatHoldsTheTokenWithWhatWouldBeHandedOutInTheEnd) {
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

TEST_F(AddProductName, KeepsNoMoreThanIsHandedOutOfATextThatWouldGrowWithoutEnd) {
  callTelevision("x<<A>>" + std::string(3000, 't'));
  std::string text = "<<A>>" + std::string(3000, 'r');
  CProductUtil::AddProductNameInSID(text);
  EXPECT_EQ(text.substr(0, kMost), repeated("x", kMost));
  EXPECT_LT(text.size(), kMost + sizeof("<<A>>"));
}

TEST_F(AddProductName, FillsANameThatBeginsWithTheTokenInOnce) {
  for (const std::size_t start : kStarts) {
    const std::string before(start, 'b');
    EXPECT_EQ(named("<<A>>x", before + "<<A>> and <<A>>"), before + "<<A>>x and <<A>>x") << start;
    EXPECT_EQ(named("<<A>>", before + "<<A>> and <<A>>"), before + "<<A>> and <<A>>") << start;
  }
}

// ---- Generated texts ----

// Replaces the first token over and over, from the start. Empty when there is no end in sight.
std::optional<std::string> replacedFromTheStart(std::string text, const std::string& replacement) {
  for (int step = 0; step < 1500 && text.size() < 30000; ++step) {
    const std::size_t at = text.find(kToken);
    if (at == std::string::npos) return text;
    text = text.substr(0, at) + replacement + text.substr(at + 5);
  }
  return std::nullopt;
}

// Replaces token after token, each time from one byte behind the last one's place.
std::optional<std::string> replacedOnwards(std::string text, const std::string& replacement) {
  std::size_t from = 0;
  for (int step = 0; step < 1500 && text.size() < 30000; ++step) {
    const std::size_t at = text.find(kToken, from);
    if (at == std::string::npos) return text;
    text = text.substr(0, at) + replacement + text.substr(at + 5);
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
      case 3: {  // a long row of the same, as far as the limit and beyond
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

  std::mt19937 random_{20261120};  // NOLINT(cert-msc51-cpp): on purpose the same every time
};

class GeneratedReplaceText : public ReplaceText {
 protected:
  // Returns whether the replacing comes to an end.
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

TEST_F(GeneratedReplaceText, EndsAlsoWhereThatDoesNot) {
  Texts texts;
  for (int endless = 0; endless < 6;) {
    const std::string name = texts.name();
    const std::string text = texts.text();
    if (name == kToken || replacedFromTheStart(text, name)) continue;
    ++endless;
    EXPECT_EQ(replaced(text, name).size(), kMost) << "name: " << name << "\ntext: " << text;
  }
}

// Each replacement makes a token one place in front of it, from behind the limit into what is
// handed out.
TEST_F(GeneratedReplaceText, IsSoAlsoWhenATokenComesInFromBehindTheLimit) {
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
      CProductUtil::AddProductNameInSID(result);  // ends, in any case
      if (const auto expected = replacedOnwards(text, name)) {
        EXPECT_EQ(result, *expected) << "name: " << name << "\ntext: " << text;
      }
    }
  }
}

}  // namespace
