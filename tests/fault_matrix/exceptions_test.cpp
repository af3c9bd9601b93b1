// The three reasons for which an exception may leave the provider, for every function and every
// key: the lock cannot be taken, the saved networks' document is misshapen, there is no menu
// language. And one case in which none may.
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

// What contract/ says of the function that is called.
const contract::Function& ofContract(const Function& function) {
  const auto isNamed = [&](const contract::Function& each) {
    return function.name.substr(0, function.name.find(' ')) == each.name;
  };
  return *std::ranges::find_if(contract::kFunctions, isNamed);
}

// Documents in which a number is missing or not a number.
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
    R"({"count": 2, "values": [{"SSID": "a", "SIGNAL_STRENGTH": -70, "STATUS": "b"},
        {"SSID": "c", "STATUS": "d"}]})",
};

// Correct except for its depth: deeper than the parser's limit.
std::string tooDeeplyNested() {
  constexpr int kDepth = 2000;
  return R"({"count": 1, "values": [{"SSID": )" + std::string(kDepth, '[') +
         std::string(kDepth, ']') + R"(, "SIGNAL_STRENGTH": -70, "STATUS": "b"}]})";
}

// The parser raises an exception, instead of returning false.
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

  // Exactly those functions and keys raise this exception that contract/ allows, with the outputs
  // untouched and no "END" logged. All of them release the lock and leak no block of the C heap.
  void expectRaised(
      const std::string& exception, const std::function<void()>& beforeEach = [] {}) {
    for (const Function& function : functions().all()) {
      for (const std::string& key : allKeys()) {
        const int blocksBefore = liveBlocks();
        if (function.prepare) function.prepare(key);
        beforeEach();
        const Outcome outcome = callOnce(function, key, false);
        if (contract::mayRaise(ofContract(function), key, exception)) {
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
};

TEST_F(Exceptions, ALockThatCannotBeHadLeavesEveryLockedFunctionAsItsSystemError) {
  for (const int error : {EDEADLK, EAGAIN, EINVAL}) {
    expectRaised("std::system_error " + std::to_string(error), [error] { failNextLock(error); });
  }
}

TEST_F(Exceptions, AMalformedNumberOfTheSavedNetworksLeavesTheFunctionsThatReadThem) {
  for (const std::string& document : kMalformed) {
    SCOPED_TRACE(document);
    store().set(kNetworksKey, document);
    expectRaised(contract::kDocumentError);
  }
}

TEST_F(Exceptions, ATooDeeplyNestedDocumentOfTheSavedNetworksLeavesNone) {
  expectParserRaises(tooDeeplyNested());
  store().set(kNetworksKey, tooDeeplyNested());
  expectRaised("");
}

TEST_F(Exceptions, AMissingMenuLanguageLeavesTheHelpTexts) {
  store().erase(kLanguageKey);
  expectRaised(contract::kLanguageError);
}

}  // namespace
