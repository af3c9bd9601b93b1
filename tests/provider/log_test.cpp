// The two channels of the log.
#include <thread>

#include "provider_test.h"

namespace {

class Log : public ProviderTest {
 protected:
  // The statements of a callback that logs to both buffers.
  std::vector<LogStatement> statementsOfGetInt() const {
    clearJournal();
    getInt(VENTARO_KEY_DEVICE_NAME);
    return logStatements();
  }
};

TEST_F(Log, EveryStatementGoesToThePlatformLogFirstAndThenToTheRecords) {
  create();
  table().release_string(nullptr);
  EXPECT_EQ(journal(), (Journal{mainLog("START"), mainLog("END")}));
}

TEST_F(Log, FailuresAndDataTracesGoToTheSystemBufferAllElseToTheMainOne) {
  create();
  getInt(VENTARO_KEY_DEVICE_NAME, 3);
  EXPECT_EQ(
      logLines(),
      (Journal{mainLog("START"), systemLog("Key ---->menu/network/devicename::Value------>3\n"),
               mainLog("wifi_direct_get_device_name::status [0xffffffff]"), mainLog("value=0\n"),
               systemLog("status------>-1\n"), mainLog("END")}));
}

TEST_F(Log, EveryLineIsOfInfoPriorityAndTaggedVentaro) {
  create();
  for (const LogStatement& each : statementsOfGetInt()) {
    EXPECT_EQ(each.priority, 4) << each.message;
    EXPECT_EQ(each.tag, "VENTARO") << each.message;
  }
}

TEST_F(Log, ThePrefixNamesTheFileTheFunctionAndTheLine) {
  create();
  const std::vector<LogStatement> statements = statementsOfGetInt();
  ASSERT_FALSE(statements.empty());
  EXPECT_EQ(statements.front().file, "values.cpp");
  EXPECT_EQ(statements.front().function, "get_int");
  EXPECT_GT(statements.back().line, statements.front().line);
}

TEST_F(Log, TheRecordHoldsThePathTheSameLineAndTheWholeSignature) {
  create();
  for (const LogStatement& each : statementsOfGetInt()) {
    EXPECT_TRUE(each.path.ends_with(each.file)) << each.path;
    EXPECT_EQ(each.recordedLine, each.line) << each.message;
    EXPECT_EQ(each.recordedMessage, each.message);
    EXPECT_NE(each.signature.find(each.function + "("), std::string::npos) << each.signature;
  }
}

TEST_F(Log, AStatementsPlaceIsTheSameRecordEveryTime) {
  create();
  const std::vector<LogStatement> first = statementsOfGetInt();
  std::vector<LogStatement> second;
  // On another stack, so that a location on the stack would have another address.
  std::thread([&] { second = statementsOfGetInt(); }).join();
  ASSERT_EQ(first.size(), second.size());
  for (std::size_t i = 0; i < first.size(); ++i) {
    EXPECT_EQ(first[i].location, second[i].location) << first[i].message;
  }
}

TEST_F(Log, EveryStatementHasAPlaceOfItsOwn) {
  create();
  const std::vector<LogStatement> statements = statementsOfGetInt();
  for (std::size_t i = 1; i < statements.size(); ++i) {
    EXPECT_NE(statements[i - 1].location, statements[i].location) << statements[i].message;
  }
}

TEST_F(Log, AMissingTextIsPassedOnAsItIs) {
  load();
  data_provider_cbs* cbs = nullptr;
  entries().create_provider(&cbs);
  EXPECT_TRUE(logLines().contains(mainLog("dName==(null)\n")));
  entries().delete_provider(&cbs);
}

TEST_F(Log, TextsAreNoFormats) {
  create();
  table().set_string("any", "100%s %n");
  EXPECT_TRUE(logLines().contains(mainLog("Device Name set to 100%s %n")));
}

}  // namespace
