// The structured log: records as lines of JSON, while storage is on.
#include "platform/structured_log.h"

#include <glib.h>
#include <json/reader.h>
#include <json/value.h>
#include <json/writer.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <regex>
#include <string>
#include <vector>

#include "platform_test.h"

namespace platform_tests {
namespace {

constexpr ht::TSCodeLocation kHere = {"src/Here.cpp", 42, "void here()"};
constexpr char kStorage[] = "memory/host/structured_log";

class StructuredLog : public PlatformTest {
 protected:
  std::filesystem::path file() const { return stateFolder() / "log/structured.jsonl"; }

  std::vector<Json::Value> records() const {
    std::vector<Json::Value> found;
    for (const std::string& line : linesOf(file())) found.push_back(parsed(line));
    return found;
  }

  // Expects that the line is valid JSON in valid UTF-8.
  static Json::Value parsed(const std::string& line) {
    Json::CharReaderBuilder builder;
    Json::CharReaderBuilder::strictMode(&builder.settings_);
    const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
    Json::Value record;
    std::string errors;
    EXPECT_TRUE(reader->parse(line.data(), line.data() + line.size(), &record, &errors)) << errors;
    EXPECT_TRUE(g_utf8_validate(line.data(), static_cast<gssize>(line.size()), nullptr)) << line;
    return record;
  }
};

TEST_F(StructuredLog, HasARecordForEachMessage) {
  store().set(kStorage, true);
  ht::TSLoggerHelper::Log(kHere, "%s is %d", "five", 5);
  ht::TSLoggerHelper::Log({"src/There.cpp", 7, "int there(char)"}, "again");
  const auto found = records();
  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(found[0].getMemberNames(),
            (std::vector<std::string>{"function", "line", "message", "path", "time"}));
  EXPECT_EQ(found[0]["message"], "five is 5");
  EXPECT_EQ(found[0]["path"], "src/Here.cpp");
  EXPECT_EQ(found[0]["line"], 42);
  EXPECT_EQ(found[0]["function"], "void here()");
  EXPECT_TRUE(std::regex_match(found[0]["time"].asString(),
                               std::regex(R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z)")))
      << found[0]["time"];
  EXPECT_EQ(found[1]["message"], "again");
  EXPECT_EQ(found[1]["line"], 7);
}

TEST_F(StructuredLog, IsKeptOnlyWhileStorageIsOn) {
  ht::TSLoggerHelper::Log(kHere, "before");
  EXPECT_FALSE(std::filesystem::exists(file()));
  store().set(kStorage, true);
  ht::TSLoggerHelper::Log(kHere, "on");
  store().set(kStorage, false);
  ht::TSLoggerHelper::Log(kHere, "off");
  store().set(kStorage, true);
  ht::TSLoggerHelper::Log(kHere, "on again");
  const auto found = records();
  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(found[0]["message"], "on");
  EXPECT_EQ(found[1]["message"], "on again");
}

TEST_F(StructuredLog, SaysWhetherStorageIsOn) {
  const ht::TCLogger& logger = ht::TCLogger::Instance();
  EXPECT_EQ(&logger, &ht::TCLogger::Instance());
  EXPECT_FALSE(logger.IsStorageEnabled());
  store().set(kStorage, true);
  EXPECT_TRUE(logger.IsStorageEnabled());
  for (const StoreValue& value : {StoreValue(false), StoreValue(1), StoreValue("true")}) {
    store().set(kStorage, value);
    EXPECT_FALSE(logger.IsStorageEnabled());
  }
}

TEST_F(StructuredLog, IsOffWithoutAStore) {
  setenv("VENTARO_RUNTIME_DIR", write("file", "").c_str(), 1);
  EXPECT_FALSE(ht::TCLogger::Instance().IsStorageEnabled());
  ht::TSLoggerHelper::Log(kHere, "lost");
  EXPECT_FALSE(std::filesystem::exists(file()));
}

TEST_F(StructuredLog, IsValidWhateverTheMessageHolds) {
  store().set(kStorage, true);
  const std::vector<std::string> messages = {"\"quotes\" \\ /",
                                             "line\nline\r\n\ttab",
                                             "\x01\x1f\x7f",
                                             "\u009b\u202e\u2028",
                                             "{} {0} %s",
                                             "",
                                             "\u00fcber \uac70\uc2e4 \U0001f4fa"};
  for (const std::string& message : messages) {
    ht::TSLoggerHelper::Log(kHere, "%s", message.c_str());
  }
  const auto found = records();
  ASSERT_EQ(found.size(), messages.size());
  for (std::size_t i = 0; i < found.size(); ++i) EXPECT_EQ(found[i]["message"], messages[i]);
}

TEST_F(StructuredLog, HasNothingInItThatATerminalWouldObey) {
  store().set(kStorage, true);
  const std::string message = "\x1b[31m\x7f\u009b\u202e\u2028";
  ht::TSLoggerHelper::Log(kHere, "%s", message.c_str());
  const std::string line = linesOf(file()).at(0);
  EXPECT_NE(line.find(R"(\u001b[31m\u007f\u009b\u202e\u2028)"), std::string::npos) << line;
  EXPECT_EQ(parsed(line)["message"], message);
}

TEST_F(StructuredLog, ShowsBytesThatAreNoCharacterAsTheReplacementCharacter) {
  store().set(kStorage, true);
  ht::TSLoggerHelper::Log({"src/\xff.cpp", 1, "void \xfe()"}, "cut \xed\x95");
  const auto found = records();
  ASSERT_EQ(found.size(), 1U);
  EXPECT_TRUE(found[0]["message"].asString().starts_with("cut \ufffd")) << found[0]["message"];
  EXPECT_EQ(found[0]["path"], "src/\ufffd.cpp");
  EXPECT_EQ(found[0]["function"], "void \ufffd()");
}

TEST_F(StructuredLog, TakesNullPointers) {
  store().set(kStorage, true);
  const char* volatile none = nullptr;
  ht::TSLoggerHelper::Log({nullptr, 0, nullptr}, "null is %s", none);
  // Hides the format from the compiler's check.
  void (*const log)(const ht::TSCodeLocation&, const char*, ...) = &ht::TSLoggerHelper::Log;
  log(kHere, nullptr);
  const auto found = records();
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0]["message"], "null is (null)");
  EXPECT_EQ(found[0]["path"], "");
  EXPECT_EQ(found[0]["function"], "");
}

TEST_F(StructuredLog, TakesAMessageOfAnyLength) {
  store().set(kStorage, true);
  const std::string message(std::size_t{2} << 20, 'x');
  ht::TSLoggerHelper::Log(kHere, "%s", message.c_str());
  const auto found = records();
  ASSERT_EQ(found.size(), 1U);
  EXPECT_TRUE(found[0]["message"] == message);
}

TEST_F(StructuredLog, KeepsNothingOfTheCallers) {
  store().set(kStorage, true);
  {
    const std::string path = "src/" + std::string(100, 'p');
    ht::TSLoggerHelper::Log({path.c_str(), 1, path.c_str()}, "%s", path.c_str());
  }
  const auto found = records();
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0]["path"], "src/" + std::string(100, 'p'));
}

TEST_F(StructuredLog, GoesToStandardErrorWhenAsked) {
  setenv("VENTARO_LOG", "stderr", 1);
  store().set(kStorage, true);
  testing::internal::CaptureStderr();
  ht::TSLoggerHelper::Log(kHere, "seen live");
  std::string output = testing::internal::GetCapturedStderr();
  ASSERT_TRUE(output.ends_with("\n"));
  output.pop_back();
  EXPECT_EQ(parsed(output)["message"], "seen live");
  EXPECT_FALSE(std::filesystem::exists(file()));
}

TEST_F(StructuredLog, ThatCannotBeWrittenCostsNothing) {
  write("state/log", "a file in the way");
  store().set(kStorage, true);
  ht::TSLoggerHelper::Log(kHere, "lost");
  EXPECT_EQ(readFile(stateFolder() / "log"), "a file in the way");
}

}  // namespace
}  // namespace platform_tests
