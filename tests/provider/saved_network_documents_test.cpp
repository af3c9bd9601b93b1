// What the saved networks' object makes of valid and invalid documents.
#include <json/reader.h>
#include <json/value.h>

#include <functional>
#include <memory>

#include "saved_networks_test.h"

namespace {

constexpr char kFirst[] = VENTARO_KEY_SAVED_NETWORK_1;
constexpr char kSecond[] = VENTARO_KEY_SAVED_NETWORK_2;

class SavedNetworkDocuments : public SavedNetworks {
 protected:
  // The journal of a reading that raises an exception.
  static Journal readingUntilException(const Journal& logged) {
    return {locks(), mainLog(std::string("key = ") + kFirst),
            call("vconf_get_str", kSavedNetworksKey), logged, unlocks()};
  }

  // The message of the exception that leaves the provider for this document.
  std::string exceptionOf(const std::string& text) const {
    try {
      read(text);
    } catch (const Json::LogicError& error) {
      return error.what();
    }
    return "none";
  }

  // The error of a strict parser for this document; empty when there is none.
  static std::string parseErrors(const std::string& text) {
    Json::CharReaderBuilder builder;
    Json::CharReaderBuilder::strictMode(&builder.settings_);
    const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
    Json::Value root;
    std::string errors;
    reader->parse(text.data(), text.data() + text.size(), &root, &errors);
    return errors;
  }

  static Journal parseFailure(const std::string& errors) {
    return {mainLog("reader.parse() - return false errs=" + errors)};
  }
};

// ---- "count" and "values" ----

TEST_F(SavedNetworkDocuments, ElementsBeyondTheCountAreIgnored) {
  createWithObject();
  read(document(1, {network("Home", -60, "Connected"), "5"}));
  EXPECT_EQ(journal(), reading({networkLog("Home", "Connected")}, 1));
}

TEST_F(SavedNetworkDocuments, AnArrayShorterThanTheCountEndsTheReading) {
  createWithObject();
  read(document(3, {network("Home", -60, "Connected")}));
  EXPECT_EQ(journal(),
            reading({networkLog("Home", "Connected"), mainLog("itemdata.empty() - return")}, 1));
  read(document("2147483647", {network("Home", -60, "Connected")}));
  EXPECT_EQ(journal(),
            reading({networkLog("Home", "Connected"), mainLog("itemdata.empty() - return")}, 1));
}

TEST_F(SavedNetworkDocuments, MissingOrEmptyValuesAreLogged) {
  createWithObject();
  for (const char* text :
       {R"({"count": 2, "values": []})", R"({"count": 2})", R"({"count": 2, "values": null})",
        R"({"count": 2, "values": {}})", R"({"count": 0, "values": []})", R"({"count": -1})"}) {
    read(text);
    EXPECT_EQ(journal(), reading({mainLog("request.empty() - return")}, 0)) << text;
  }
}

TEST_F(SavedNetworkDocuments, ACountBelowOneFindsNothingAndLogsNothing) {
  createWithObject();
  for (const int count : {0, -1, -2147483647}) {
    read(document(count, {network("Home", -60, "Connected")}));
    EXPECT_EQ(journal(), reading({}, 0)) << count;
  }
}

TEST_F(SavedNetworkDocuments, TheCountIsConvertedToAnIntegerIfPossible) {
  createWithObject();
  const std::vector<std::string> elements = {network("Home", -60, "Connected"),
                                             network("Office", -80, "Saved")};
  read(document("2.9", elements));
  EXPECT_TRUE(journal().contains(mainLog("Saved AP Count 2")));
  read(document("true", elements));
  EXPECT_TRUE(journal().contains(mainLog("Saved AP Count 1")));
  for (const char* count : {"false", "null", "0.9"}) {
    read(document(count, elements));
    EXPECT_EQ(journal(), reading({}, 0)) << count;
  }
}

TEST_F(SavedNetworkDocuments, AnEmptyElementEndsTheReadingAndKeepsWhatWasRead) {
  createWithObject();
  for (const char* element : {"null", "{}", "[]"}) {
    read(document(3, {network("Home", -60, "Connected"), element, network("Cafe", -70, "Saved")}));
    EXPECT_EQ(journal(),
              reading({networkLog("Home", "Connected"), mainLog("itemdata.empty() - return")}, 1))
        << element;
  }
}

TEST_F(SavedNetworkDocuments, ThereIsNoLimitToTheirNumber) {
  createWithObject();
  std::vector<std::string> elements;
  Journal logged;
  for (int i = 0; i < 300; ++i) {
    const std::string name = "Network " + std::to_string(i);
    elements.push_back(network(name, -60, "Saved"));
    for (const std::string& line : networkLog(name, "Saved").lines) logged.add(line);
  }
  read(document(300, elements));
  EXPECT_EQ(journal(), reading(logged, 300));
}

TEST_F(SavedNetworkDocuments, NetworksOfOneNameAreKeptApart) {
  createWithObject();
  read(document(2, {network("Home", -60, "Connected"), network("Home", -60, "Connected")}));
  EXPECT_EQ(journal(),
            reading({networkLog("Home", "Connected"), networkLog("Home", "Connected")}, 2));
}

// ---- The members of an element ----

TEST_F(SavedNetworkDocuments, AMissingNameOrStatusIsEmpty) {
  createWithObject();
  read(document(3,
                {R"({"SSID": "Home", "SIGNAL_STRENGTH": -60})",
                 R"({"SIGNAL_STRENGTH": -60, "STATUS": "Saved"})", R"({"SIGNAL_STRENGTH": -60})"}));
  EXPECT_EQ(journal(),
            reading({networkLog("Home", ""), networkLog("", "Saved"), networkLog("", "")}, 3));
}

TEST_F(SavedNetworkDocuments, ANameOrStatusThatIsNotATextIsConvertedIfPossible) {
  createWithObject();
  read(document(2, {R"({"SSID": 5, "SIGNAL_STRENGTH": -60, "STATUS": true})",
                    R"({"SSID": null, "SIGNAL_STRENGTH": -60, "STATUS": null})"}));
  EXPECT_EQ(journal(), reading({networkLog("5", "true"), networkLog("", "")}, 2));
}

TEST_F(SavedNetworkDocuments, AStrengthIsConvertedToAnIntegerIfPossible) {
  createWithObject();
  store().set(kSavedNetworksKey,
              document(2, {R"({"SSID": "Home", "SIGNAL_STRENGTH": -82.9, "STATUS": ""})",
                           R"({"SSID": "Cafe", "SIGNAL_STRENGTH": null, "STATUS": ""})"}));
  EXPECT_TRUE(titleIcon(kFirst).str().ends_with("oobe_icon_n_wifi_2.svg"));
  EXPECT_TRUE(titleIcon(kSecond).str().ends_with("oobe_icon_n_wifi_4.svg"));
}

TEST_F(SavedNetworkDocuments, UnknownMembersAreIgnored) {
  createWithObject();
  read(R"({"version": {"major": [1, 2]}, "count": 1, "values": [
          {"SSID": "Home", "BSSID": "00:11", "SIGNAL_STRENGTH": -60, "STATUS": "Connected",
           "ssid": "other", "SECURITY": {"type": null}}], "time": 1e3})");
  EXPECT_EQ(journal(), reading({networkLog("Home", "Connected")}, 1));
}

TEST_F(SavedNetworkDocuments, NamesAreKeptByteForByte) {
  createWithObject();
  for (const char* name : {"거실", "\xf0\x9f\x93\xb6 4", "\xff\xfe", "a\xc3", "tab\there", "%s%n",
                           " blank ", "a\nb"}) {
    read(document(1, {network(name, -60, name)}));
    EXPECT_EQ(journal(), reading({networkLog(name, name)}, 1)) << name;
  }
}

TEST_F(SavedNetworkDocuments, EscapesInNamesAreResolved) {
  createWithObject();
  read(document(1, {network(R"(\"a\\b\/\u00e9\ud83d\udcf6\t)", -60, R"(\u0001)")}));
  EXPECT_EQ(journal(), reading({networkLog("\"a\\b/é\xf0\x9f\x93\xb6\t", "\x01")}, 1));
}

TEST_F(SavedNetworkDocuments, ANulInANameEndsItInTheLog) {
  createWithObject();
  read(document(1, {network(R"(a\u0000b)", -60, "Saved")}));
  EXPECT_EQ(journal(), reading({networkLog("a", "Saved")}, 1));
}

// ---- Documents that do not parse ----

TEST_F(SavedNetworkDocuments, ADocumentThatIsNotStrictJsonIsLoggedWithTheParsersWords) {
  createWithObject();
  const std::string home = network("Home", -60, "Connected");
  const std::string good = R"("count": 1, "values": [)" + home + "]";
  const std::vector<std::string> texts = {
      "",
      " ",
      "no JSON",
      "5",
      "\"text\"",
      "null",
      "{" + good,
      // trailing commas
      "{" + good + ",}",
      R"({"count": 1, "values": [)" + home + ",]}",
      // comments
      "// comment\n{" + good + "}",
      R"({"count": /* comment */ 1, "values": [)" + home + "]}",
      "{" + good + "} // comment",
      // trailing content
      "{" + good + "} x",
      "{" + good + "}{" + good + "}",
      "{" + good + "}]",
      // duplicate keys
      "{" + good + R"(, "count": 1})",
      document(1, {R"({"SSID": "a", "SSID": "b", "SIGNAL_STRENGTH": 1})"}),
      // numbers that are none
      "{" + good + R"(, "x": NaN})",
      "{" + good + R"(, "x": Infinity})",
      "{" + good + R"(, "x": -Infinity})",
      document("NaN", {home}),
      // quotes
      R"({'count': 1, 'values': []})",
      R"({count: 1, "values": []})",
      // half a character, no such escape
      document(1, {network(R"(\ud800)", -60, "Saved")}),
      document(1, {network(R"(\x41)", -60, "Saved")}),
  };
  for (const std::string& text : texts) {
    const std::string errors = parseErrors(text);
    ASSERT_NE(errors, "") << text;
    read(text);
    EXPECT_EQ(journal(), reading(parseFailure(errors), 0)) << text;
  }
}

TEST_F(SavedNetworkDocuments, TheParsersMessageSaysWhereTheMistakeIs) {
  createWithObject();
  read("{\"count\": 1,\n \"count\": 1}");
  EXPECT_EQ(journal(), reading(parseFailure("* Line 2, Column 2\n  Duplicate key: 'count'\n"), 0));
}

TEST_F(SavedNetworkDocuments, BlanksAroundTheDocumentAreAllowed) {
  createWithObject();
  read("\n\t " + kHomeOnly + " \r\n");
  EXPECT_EQ(journal(), reading({networkLog("Home", "Connected")}, 1));
}

TEST_F(SavedNetworkDocuments, ADocumentNestedTooDeepDoesNotParseAndRaisesNothing) {
  createWithObject();
  constexpr int kDepth = 2000;
  std::string objects;
  for (int i = 0; i < kDepth; ++i) objects += R"({"a":)";
  objects += "1" + std::string(kDepth, '}');
  const std::string arrays = std::string(kDepth, '[') + std::string(kDepth, ']');
  for (const std::string& text :
       {arrays, objects, std::string(kDepth, '['), R"({"count": 1, "x": )" + arrays + "}",
        document(1, {network("Home", -60, "Connected"), arrays})}) {
    read(text);
    EXPECT_EQ(journal(), reading(parseFailure("Exceeded stackLimit in readValue()."), 0));
  }
}

TEST_F(SavedNetworkDocuments, ADeepMemberWithinTheParsersLimitIsIgnored) {
  createWithObject();
  const std::string deep = std::string(900, '[') + std::string(900, ']');
  read(R"({"x": )" + deep + R"(, "count": 1, "values": [)" + network("Home", -60, "Connected") +
       "]}");
  EXPECT_EQ(journal(), reading({networkLog("Home", "Connected")}, 1));
}

TEST_F(SavedNetworkDocuments, ANameOfAMegabyteIsRead) {
  createWithObject();
  const std::string name(1 << 20, 'n');
  read(document(1, {network(name, -60, "Saved")}));
  EXPECT_EQ(journal(), reading({networkLog(name, "Saved")}, 1));
}

// ---- Documents of a wrong shape ----

TEST_F(SavedNetworkDocuments, ACountThatIsNoIntegerRaisesTheParsersException) {
  createWithObject();
  const std::vector<std::string> elements = {network("Home", -60, "Connected")};
  for (const char* count : {R"("1")", R"("")", "[]", "{}", "[1]"}) {
    EXPECT_EQ(exceptionOf(document(count, elements)), "Value is not convertible to Int.") << count;
    EXPECT_EQ(journal(), readingUntilException({})) << count;
  }
  for (const char* count : {"2147483648", "-2147483649", "1e300"}) {
    EXPECT_TRUE(exceptionOf(document(count, elements)).ends_with("out of Int range")) << count;
    EXPECT_EQ(journal(), readingUntilException({})) << count;
  }
}

TEST_F(SavedNetworkDocuments, AMissingCountRaisesItBeforeTheValuesAreLookedAt) {
  createWithObject();
  for (const char* text : {"{}", R"({"values": []})", R"({"values": [{}]})", R"({"Count": 1})"}) {
    EXPECT_EQ(exceptionOf(text), "Value is not convertible to Int.") << text;
    EXPECT_EQ(journal(), readingUntilException({})) << text;
  }
}

TEST_F(SavedNetworkDocuments, ADocumentThatIsAnArrayRaisesIt) {
  createWithObject();
  for (const std::string& text : {std::string("[]"), "[" + kHomeOnly + "]", std::string("[[]]")}) {
    EXPECT_NE(exceptionOf(text), "none") << text;
    EXPECT_EQ(journal(), readingUntilException({})) << text;
  }
}

TEST_F(SavedNetworkDocuments, ValuesThatAreNoArrayRaiseItWhenAnElementIsWanted) {
  createWithObject();
  for (const char* values : {R"("text")", "5", "true", R"({"0": {}})"}) {
    const std::string rest = std::string(R"(, "values": )") + values + "}";
    EXPECT_NE(exceptionOf(R"({"count": 1)" + rest), "none") << values;
    EXPECT_EQ(journal(), readingUntilException({})) << values;
    EXPECT_EQ(exceptionOf(R"({"count": 0)" + rest), "none") << values;
    EXPECT_EQ(journal(), reading({}, 0)) << values;
  }
}

TEST_F(SavedNetworkDocuments, AnElementThatIsNoObjectRaisesIt) {
  createWithObject();
  for (const char* element : {"5", R"("text")", "true", "[1]"}) {
    EXPECT_NE(exceptionOf(document(2, {network("Home", -60, "Connected"), element})), "none")
        << element;
    EXPECT_EQ(journal(), readingUntilException({networkLog("Home", "Connected")})) << element;
  }
}

TEST_F(SavedNetworkDocuments, AStrengthThatIsMissingOrNoIntegerRaisesIt) {
  createWithObject();
  for (const char* strength : {"", R"("SIGNAL_STRENGTH": "",)", R"("SIGNAL_STRENGTH": "-60",)",
                               R"("SIGNAL_STRENGTH": [],)", R"("SIGNAL_STRENGTH": {},)"}) {
    const std::string element =
        std::string(R"({"SSID": "Cafe", )") + strength + R"("STATUS": "Saved"})";
    EXPECT_EQ(exceptionOf(document(2, {network("Home", -60, "Connected"), element})),
              "Value is not convertible to Int.")
        << strength;
    EXPECT_EQ(journal(), readingUntilException({networkLog("Home", "Connected")})) << strength;
  }
  EXPECT_TRUE(exceptionOf(document(1, {R"({"SIGNAL_STRENGTH": 3000000000})"}))
                  .ends_with("out of Int range"));
}

TEST_F(SavedNetworkDocuments, ANameOrStatusThatCannotBeATextRaisesIt) {
  createWithObject();
  for (const char* element :
       {R"({"SSID": [], "SIGNAL_STRENGTH": 1})", R"({"SSID": {}, "SIGNAL_STRENGTH": 1})",
        R"({"SIGNAL_STRENGTH": 1, "STATUS": []})",
        R"({"SIGNAL_STRENGTH": 1, "STATUS": {"a": 1}})"}) {
    EXPECT_EQ(exceptionOf(document(1, {element})), "Type is not convertible to string") << element;
    EXPECT_EQ(journal(), readingUntilException({})) << element;
  }
}

TEST_F(SavedNetworkDocuments, TheNameIsReadBeforeTheStrengthAndTheStatusAfterIt) {
  createWithObject();
  EXPECT_EQ(exceptionOf(document(1, {R"({"STATUS": [], "SIGNAL_STRENGTH": "", "SSID": []})"})),
            "Type is not convertible to string");
  EXPECT_EQ(exceptionOf(document(1, {R"({"STATUS": [], "SIGNAL_STRENGTH": "", "SSID": ""})"})),
            "Value is not convertible to Int.");
}

TEST_F(SavedNetworkDocuments, TheExceptionLeavesEveryCallbackThatReadsThemAndFreesTheLock) {
  createWithObject();
  store().set(kSavedNetworksKey, "{}");
  char preset[] = "preset";
  char* value = preset;
  const std::function<void()> uses[] = {
      [this] { entries().check_enable_int(kFirst, 0); },
      [this] { entries().check_enable_int(kSecond, 0); },
      [&] { table().get_display_name(kFirst, &value); },
      [&] { table().get_display_name(kSecond, &value); },
      [&] { table().get_title_icon_path(kFirst, &value); },
      [&] { table().get_title_icon_path(kSecond, &value); },
      [&] { table().get_second_icon_path(kFirst, &value); },
      [&] { table().get_second_icon_path(kSecond, &value); },
      [this] { setInt(kFirst, 0); },
      [this] { setInt(kSecond, 0); },
  };
  for (const auto& use : uses) {
    clearJournal();
    EXPECT_THROW(use(), Json::LogicError);
    EXPECT_EQ(lockActions(), (Journal{locks(), unlocks()}));
    EXPECT_EQ(journal().lines().back(), "unlock");
    EXPECT_FALSE(logLines().contains(mainLog("END")));
    EXPECT_EQ(value, preset);
  }
  EXPECT_EQ(store().stringAt("memory/NW-Daemon/Command"), std::nullopt);
}

TEST_F(SavedNetworkDocuments, AfterTheExceptionAGoodDocumentIsReadAsEver) {
  createWithObject();
  EXPECT_NE(exceptionOf(document(2, {network("Cafe", -60, "Saved"), "5"})), "none");
  read(kHomeAndOffice);
  EXPECT_EQ(journal(),
            reading({networkLog("Home", "Connected"), networkLog("Office", "Saved")}, 2));
}

}  // namespace
