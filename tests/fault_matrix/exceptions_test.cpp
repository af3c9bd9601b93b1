// The three ways in which an exception may leave the provider, for every function and every key:
// the lock cannot be had, the saved networks' document is misshapen, there is no menu language. And
// one in which none may.
#include <json/reader.h>

#include <algorithm>
#include <cerrno>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "fault_matrix.h"
#include "heap.h"

namespace {

struct Raising {
  std::string function;
  std::vector<std::string> keys;  // none: every key
};

const std::vector<Raising> kLocked = {
    {"set_int with 1", {}},
    {"set_string", {}},
    {"get_int", {}},
    {"get_string", {}},
    {"get_display_name", {}},
    {"get_help_text", {}},
    {"get_list_items", {}},
    {"get_list_item_display_value", {}},
    {"get_list_item_int_value", {}},
    {"get_list_item_following_action_type", {}},
    {"free_list_items", {}},
    {"get_messagebox_info", {}},
    {"get_module_info", {}},
    {"get_title_icon_path", {}},
    {"get_second_icon_path", {}},
    {"create_provider", {}},
    {"delete_provider", {}},
    {"check_visibility_int", {}},
    {"check_enable_int", {}},
};

const std::vector<Raising> kReadNetworks = {
    {"set_int with 1", {kFirstNetworkKey, kSecondNetworkKey}},
    {"get_display_name", {kFirstNetworkKey, kSecondNetworkKey, ""}},
    {"get_title_icon_path", {kFirstNetworkKey, kSecondNetworkKey}},
    {"get_second_icon_path", {}},
    {"check_enable_int", {kFirstNetworkKey, kSecondNetworkKey}},
};

const std::vector<Raising> kReadLanguage = {{"get_help_text", {}}};

bool isNamed(const std::vector<Raising>& table, const Function& function, const std::string& key) {
  return std::ranges::any_of(table, [&](const Raising& row) {
    return row.function == function.name &&
           (row.keys.empty() || std::ranges::find(row.keys, key) != row.keys.end());
  });
}

// Documents in which a number is missing or is none.
const std::vector<std::string> kMalformed = {
    R"({"values": [{"SSID": "a", "SIGNAL_STRENGTH": -70, "STATUS": "b"}]})",
    R"({"count": "1", "values": [{"SSID": "a", "SIGNAL_STRENGTH": -70, "STATUS": "b"}]})",
    R"({"count": [], "values": [{"SSID": "a", "SIGNAL_STRENGTH": -70, "STATUS": "b"}]})",
    R"({"count": 4294967296, "values": [{"SSID": "a", "SIGNAL_STRENGTH": -70, "STATUS": "b"}]})",
    R"({"count": 1e10, "values": [{"SSID": "a", "SIGNAL_STRENGTH": -70, "STATUS": "b"}]})",
    R"({"count": 1, "values": [{"SSID": "a", "STATUS": "b"}]})",
    R"({"count": 1, "values": [{"SSID": "a", "SIGNAL_STRENGTH": "-70", "STATUS": "b"}]})",
    R"({"count": 1, "values": [{"SSID": "a", "SIGNAL_STRENGTH": {}, "STATUS": "b"}]})",
    R"({"count": 1, "values": [{"SSID": "a", "SIGNAL_STRENGTH": 2147483648, "STATUS": "b"}]})",
    R"({"count": 2, "values": [{"SSID": "a", "SIGNAL_STRENGTH": -70, "STATUS": "b"},)"
    R"( {"SSID": "c", "STATUS": "d"}]})",
};

// Right but for its depth: deeper than the parser goes.
std::string tooDeeplyNested() {
  constexpr int kDepth = 2000;
  return R"({"count": 1, "values": [{"SSID": )" + std::string(kDepth, '[') +
         std::string(kDepth, ']') + R"(, "SIGNAL_STRENGTH": -70, "STATUS": "b"}]})";
}

// The parser does not merely refuse it.
void expectParserRaises(const std::string& document) {
  Json::CharReaderBuilder strict;
  Json::CharReaderBuilder::strictMode(&strict.settings_);
  const std::unique_ptr<Json::CharReader> parser(strict.newCharReader());
  Json::Value root;
  EXPECT_THROW(parser->parse(document.data(), document.data() + document.size(), &root, nullptr),
               Json::RuntimeError);
}

class Exceptions : public FaultMatrix {
 protected:
  void SetUp() override {
    FaultMatrix::SetUp();
    enter(World());
  }

  std::vector<Function> allFunctions() {
    Functions& f = functions();
    return {f.setInt(1),          f.setString(),        f.getInt(),         f.currentValue(),
            f.getString(),        f.displayName(),      f.helpText(),       f.listItems(),
            f.itemDisplayValue(), f.itemIntValue(),     f.itemAction(),     f.freeList(),
            f.messageBox(),       f.moduleInfo(),       f.titleIcon(),      f.secondIcon(),
            f.releaseString(),    f.createProvider(),   f.deleteProvider(), f.visibilityInt(),
            f.visibilityString(), f.visibilityDouble(), f.visibilityBool(), f.enableInt(),
            f.enableString(),     f.enableDouble(),     f.enableBool()};
  }

  // Of every function and key, exactly those of the table raise this, and leave the outputs
  // untouched and no "END" behind. All leave the lock free, and no block of the C heap that was not
  // there before.
  void expectRaisedBy(
      const std::vector<Raising>& table, const std::string& exception,
      const std::function<void()>& beforeEach = [] {}) {
    for (const Function& function : allFunctions()) {
      for (const std::string& key : allKeys()) {
        const int blocksBefore = liveBlocks();
        if (function.prepare) function.prepare(key.c_str());
        beforeEach();
        const Outcome outcome = callOnce(function, key, false);
        if (isNamed(table, function, key)) {
          EXPECT_EQ(outcome.answer, "raises " + exception + ", untouched")
              << function.name << " of \"" << key << "\"";
          EXPECT_FALSE(outcome.journal.contains(mainLog("END"))) << function.name;
        } else {
          EXPECT_FALSE(outcome.answer.starts_with("raises"))
              << function.name << " of \"" << key << "\" " << outcome.answer;
        }
        EXPECT_EQ(outcome.journal.count(locks()), outcome.journal.count(unlocks()))
            << function.name;
        EXPECT_EQ(liveBlocks() - blocksBefore, keptTexts(outcome.journal))
            << function.name << " of \"" << key << "\": blocks that nobody has freed";
      }
    }
  }

 private:
  // A product's device name is kept for ever, deliberately.
  static int keptTexts(const Journal& journal) {
    const Journal::Piece reading =
        call("system_info_get_custom_string", "com.norvane/featureconf/product.device_sid");
    return countsBlocks() ? static_cast<int>(journal.count(reading)) : 0;
  }
};

TEST_F(Exceptions, ALockThatCannotBeHadLeavesEveryLockedFunctionAsItsSystemError) {
  for (const int error : {EDEADLK, EAGAIN, EINVAL}) {
    expectRaisedBy(kLocked, "std::system_error " + std::to_string(error),
                   [error] { failNextLock(error); });
  }
}

TEST_F(Exceptions, AMalformedNumberOfTheSavedNetworksLeavesTheFunctionsThatReadThem) {
  for (const std::string& document : kMalformed) {
    SCOPED_TRACE(document);
    store().set(kNetworksKey, document);
    expectRaisedBy(kReadNetworks, "Json::LogicError");
  }
}

TEST_F(Exceptions, ATooDeeplyNestedDocumentOfTheSavedNetworksLeavesNone) {
  expectParserRaises(tooDeeplyNested());
  store().set(kNetworksKey, tooDeeplyNested());
  expectRaisedBy({}, "");
}

TEST_F(Exceptions, AMissingMenuLanguageLeavesTheHelpTexts) {
  store().erase(kLanguageKey);
  expectRaisedBy(kReadLanguage, "std::logic_error");
}

}  // namespace
