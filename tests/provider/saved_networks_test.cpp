// The saved networks: the one object that reads their document, what it makes of the document, and
// what it does when the document changes.
#include <json/reader.h>
#include <json/value.h>

#include <functional>
#include <memory>

#include "provider_test.h"
#include "saved_network_document.h"

namespace {

constexpr char kFirst[] = "menu/network/SavedAP1";
constexpr char kSecond[] = "menu/network/SavedAP2";
constexpr char kRefreshKey[] = "db/menu/refresh_menu";
constexpr char kCommandKey[] = "memory/NW-Daemon/Command";

class SavedNetworks : public ProviderTest {
 protected:
  // A provider whose object exists already.
  void createWithObject() {
    create();
    entries().check_enable_int(kFirst, 0);
    clearJournal();
  }

  // Makes the provider read this document, or none.
  void read(const std::optional<std::string>& text) const {
    store().erase(kSavedNetworksKey);
    if (text) store().set(kSavedNetworksKey, *text);
    clearJournal();
    entries().check_enable_int(kFirst, 0);
  }

  // What the journal of a reading should be: what was logged, how many networks were found.
  static Journal reading(const Journal& logged, int count) {
    return {locks(),
            mainLog(std::string("key = ") + kFirst),
            call("vconf_get_str", kSavedNetworksKey),
            logged,
            mainLog("Saved AP Count " + std::to_string(count)),
            unlocks()};
  }

  // The same of a reading that raises an exception.
  static Journal readingUntilException(const Journal& logged) {
    return {locks(), mainLog(std::string("key = ") + kFirst),
            call("vconf_get_str", kSavedNetworksKey), logged, unlocks()};
  }

  // What the exception says that leaves the provider for this document.
  std::string exceptionOf(const std::string& text) const {
    try {
      read(text);
    } catch (const Json::LogicError& error) {
      return error.what();
    }
    return "none";
  }

  // What a parser without leniency says to this document. Empty when it finds nothing wrong.
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

// ---- The one object ----

TEST_F(SavedNetworks, LoadingAndCreatingNeitherReadThemNorSubscribe) {
  store().set(kSavedNetworksKey, kHomeAndOffice);
  load();
  create();
  EXPECT_FALSE(calls().contains(call("vconf_get_str", kSavedNetworksKey)));
  EXPECT_EQ(store().subscriptions(), std::vector<std::string>());
}

TEST_F(SavedNetworks, TheFirstUseSubscribesAndThenReads) {
  create();
  EXPECT_FALSE(entries().check_enable_int(kFirst, 0));
  EXPECT_EQ(journal(), (Journal{locks(), mainLog(std::string("key = ") + kFirst),
                                call("vconf_notify_key_changed", kSavedNetworksKey),
                                call("vconf_get_str", kSavedNetworksKey),
                                mainLog("Saved AP Count 0"), unlocks()}));
}

TEST_F(SavedNetworks, FurtherUsesOnlyRead) {
  create();
  read(kHomeOnly);
  read(kHomeOnly);
  EXPECT_EQ(journal(), reading({networkLog("Home", "Connected")}, 1));
  EXPECT_EQ(store().subscriptions(), std::vector<std::string>{kSavedNetworksKey});
}

TEST_F(SavedNetworks, WhicheverCallbackIsFirstMakesTheOneObject) {
  const std::function<void()> uses[] = {
      [this] { entries().check_enable_int(kSecond, 0); },
      [this] { displayName(kFirst); },
      [this] { displayName(kSecond); },
      [this] { titleIcon(kFirst); },
      [this] { titleIcon(kSecond); },
      [this] { secondIcon(kFirst); },
      [this] { secondIcon("no/such/key"); },
      [this] { setInt(kFirst, 0); },
      [this] { setInt(kSecond, 0); },
  };
  for (const auto& first : uses) {
    create();
    first();
    for (const auto& each : uses) each();
    EXPECT_EQ(calls().lines().front(), "vconf_notify_key_changed(db/menu/network/TopSavedAP)");
    EXPECT_EQ(calls().count(call("vconf_notify_key_changed", kSavedNetworksKey)), 1U);
    unload();
    reset();
  }
}

TEST_F(SavedNetworks, ItemsThatAreNoSavedNetworksMakeNoObject) {
  create();
  entries().check_enable_int("menu/network/WiFiOnOff", 0);
  displayName("menu/network/WiFiOnOff");
  titleIcon("menu/network/WiFiOnOff");
  getInt(kFirst);
  listItems("SAVEDAP1_NAME_KEY");
  EXPECT_EQ(store().subscriptions(), std::vector<std::string>());
}

TEST_F(SavedNetworks, ASecondProviderSharesTheObject) {
  create();
  read(kHomeOnly);
  data_provider_cbs* second = nullptr;
  entries().create_provider(&second);
  entries().delete_provider(&second);
  read(kHomeOnly);
  EXPECT_EQ(store().subscriptions(), std::vector<std::string>{kSavedNetworksKey});
}

TEST_F(SavedNetworks, ASubscriptionThatFailsIsNeitherReportedNorTriedAgain) {
  failWith("vconf_notify_key_changed", -5);
  create();
  read(kHomeOnly);
  EXPECT_EQ(logLines(), (Journal{mainLog(std::string("key = ") + kFirst),
                                 networkLog("Home", "Connected"), mainLog("Saved AP Count 1")}));
  read(kHomeOnly);
  EXPECT_FALSE(calls().contains(call("vconf_notify_key_changed", kSavedNetworksKey)));
}

TEST_F(SavedNetworks, UnloadingDoesNothingWithTheStore) {
  createWithObject();
  unload();
  EXPECT_EQ(calls(), (Journal{call("connection_destroy", "connection 3"),
                              call("connection_destroy", "connection 2"),
                              call("connection_destroy", "connection 1")}));
}

// ---- A changed document ----

TEST_F(SavedNetworks, AChangedDocumentAsksForARefreshOfTheNetworkMenuAndDoesNothingElse) {
  createWithObject();
  store().set(kSavedNetworksKey, kHomeAndOffice);
  store().notify(kSavedNetworksKey);
  EXPECT_EQ(journal(), Journal{call("vconf_set_int", kRefreshKey, 100002)});
  EXPECT_EQ(store().intAt(kRefreshKey), 100002);
}

TEST_F(SavedNetworks, EveryChangeAsksAlsoOneToTheSameOrAnInvalidOrNoDocument) {
  createWithObject();
  store().set(kSavedNetworksKey, kHomeAndOffice);
  store().notify(kSavedNetworksKey);
  store().notify(kSavedNetworksKey);
  store().set(kSavedNetworksKey, "no JSON");
  store().notify(kSavedNetworksKey);
  store().erase(kSavedNetworksKey);
  store().notify(kSavedNetworksKey);
  const auto refresh = call("vconf_set_int", kRefreshKey, 100002);
  EXPECT_EQ(journal(), (Journal{refresh, refresh, refresh, refresh}));
}

TEST_F(SavedNetworks, AChangeWhileACallbackHoldsTheLockDoesNotWait) {
  createWithObject();
  onCall("vconf_get_str", [] { store().notify(kSavedNetworksKey); });
  read(kHomeOnly);
  EXPECT_EQ(
      journal(),
      reading({call("vconf_set_int", kRefreshKey, 100002), networkLog("Home", "Connected")}, 1));
}

TEST_F(SavedNetworks, AChangeWhileTheDocumentIsReadLeavesTheListAlone) {
  createWithObject();
  store().set(kSavedNetworksKey, kHomeAndOffice);
  onCall("vconf_get_str", [] { store().notify(kSavedNetworksKey); });
  EXPECT_EQ(displayName(kSecond), "Office");
}

TEST_F(SavedNetworks, ARefreshThatCannotBeWrittenIsNotReported) {
  createWithObject();
  failWith("vconf_set_int", kRefreshKey, -3);
  store().notify(kSavedNetworksKey);
  EXPECT_EQ(journal(), Journal{call("vconf_set_int", kRefreshKey, 100002)});
}

TEST_F(SavedNetworks, ChangesOfOtherKeysAskForNothing) {
  createWithObject();
  store().notify("db/menu/network/wifidirect");
  store().notify(kCommandKey);
  EXPECT_EQ(journal(), Journal());
}

// ---- Reading the document ----

TEST_F(SavedNetworks, TheNetworksAreReadInTheirOrder) {
  createWithObject();
  read(kHomeAndOffice);
  EXPECT_EQ(journal(),
            reading({networkLog("Home", "Connected"), networkLog("Office", "Saved")}, 2));
  EXPECT_EQ(displayName(kFirst), "Home");
  EXPECT_EQ(displayName(kSecond), "Office");
}

TEST_F(SavedNetworks, WithoutADocumentThereIsNoNetworkAndNothingIsLogged) {
  createWithObject();
  read(std::nullopt);
  EXPECT_EQ(journal(), reading({}, 0));
}

TEST_F(SavedNetworks, ADocumentThatCannotBeReadIsAsNone) {
  createWithObject();
  failWith("vconf_get_str", kSavedNetworksKey, -1);
  read(kHomeAndOffice);
  EXPECT_EQ(journal(), reading({}, 0));
}

TEST_F(SavedNetworks, AValueThatIsNoTextIsAsNone) {
  store().set(kSavedNetworksKey, 5);
  createWithObject();
  entries().check_enable_int(kFirst, 0);
  EXPECT_EQ(journal(), reading({}, 0));
}

TEST_F(SavedNetworks, EveryReadingReplacesTheNetworks) {
  createWithObject();
  read(kHomeAndOffice);
  read(document(1, {network("Cafe", -70, "Saved")}));
  EXPECT_EQ(journal(), reading({networkLog("Cafe", "Saved")}, 1));
  read("no JSON");
  EXPECT_TRUE(journal().contains(mainLog("Saved AP Count 0")));
  read(kHomeAndOffice);
  EXPECT_TRUE(journal().contains(mainLog("Saved AP Count 2")));
  read(std::nullopt);
  EXPECT_EQ(journal(), reading({}, 0));
}

TEST_F(SavedNetworks, TheDocumentIsReadAfreshByEveryCallback) {
  createWithObject();
  store().set(kSavedNetworksKey, kHomeOnly);
  EXPECT_EQ(displayName(kFirst), "Home");
  store().set(kSavedNetworksKey, document(1, {network("Cafe", -90, "Connecting")}));
  EXPECT_EQ(displayName(kFirst), "Cafe");
  EXPECT_EQ(secondIcon(kFirst), "loading");
}

// ---- "count" and "values" ----

TEST_F(SavedNetworks, ElementsBeyondTheCountAreIgnored) {
  createWithObject();
  read(document(1, {network("Home", -60, "Connected"), "5"}));
  EXPECT_EQ(journal(), reading({networkLog("Home", "Connected")}, 1));
}

TEST_F(SavedNetworks, AnArrayShorterThanTheCountEndsTheReading) {
  createWithObject();
  read(document(3, {network("Home", -60, "Connected")}));
  EXPECT_EQ(journal(),
            reading({networkLog("Home", "Connected"), mainLog("itemdata.empty() - return")}, 1));
  read(document("2147483647", {network("Home", -60, "Connected")}));
  EXPECT_EQ(journal(),
            reading({networkLog("Home", "Connected"), mainLog("itemdata.empty() - return")}, 1));
}

TEST_F(SavedNetworks, MissingOrEmptyValuesAreLogged) {
  createWithObject();
  for (const char* text :
       {R"({"count": 2, "values": []})", R"({"count": 2})", R"({"count": 2, "values": null})",
        R"({"count": 2, "values": {}})", R"({"count": 0, "values": []})", R"({"count": -1})"}) {
    read(text);
    EXPECT_EQ(journal(), reading({mainLog("request.empty() - return")}, 0)) << text;
  }
}

TEST_F(SavedNetworks, ACountBelowOneFindsNothingAndLogsNothing) {
  createWithObject();
  for (const int count : {0, -1, -2147483647}) {
    read(document(count, {network("Home", -60, "Connected")}));
    EXPECT_EQ(journal(), reading({}, 0)) << count;
  }
}

TEST_F(SavedNetworks, TheCountIsTakenAsAnIntegerWhereItCanBeOne) {
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

TEST_F(SavedNetworks, AnEmptyElementEndsTheReadingAndKeepsWhatWasRead) {
  createWithObject();
  for (const char* element : {"null", "{}", "[]"}) {
    read(document(3, {network("Home", -60, "Connected"), element, network("Cafe", -70, "Saved")}));
    EXPECT_EQ(journal(),
              reading({networkLog("Home", "Connected"), mainLog("itemdata.empty() - return")}, 1))
        << element;
  }
}

TEST_F(SavedNetworks, ThereIsNoLimitToTheirNumber) {
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

TEST_F(SavedNetworks, NetworksOfOneNameAreKeptApart) {
  createWithObject();
  read(document(2, {network("Home", -60, "Connected"), network("Home", -60, "Connected")}));
  EXPECT_EQ(journal(),
            reading({networkLog("Home", "Connected"), networkLog("Home", "Connected")}, 2));
}

// ---- The members of an element ----

TEST_F(SavedNetworks, AMissingNameOrStatusIsEmpty) {
  createWithObject();
  read(document(3,
                {R"({"SSID": "Home", "SIGNAL_STRENGTH": -60})",
                 R"({"SIGNAL_STRENGTH": -60, "STATUS": "Saved"})", R"({"SIGNAL_STRENGTH": -60})"}));
  EXPECT_EQ(journal(),
            reading({networkLog("Home", ""), networkLog("", "Saved"), networkLog("", "")}, 3));
}

TEST_F(SavedNetworks, ANameOrStatusThatIsNoTextIsTakenAsOneWhereItCanBe) {
  createWithObject();
  read(document(2, {R"({"SSID": 5, "SIGNAL_STRENGTH": -60, "STATUS": true})",
                    R"({"SSID": null, "SIGNAL_STRENGTH": -60, "STATUS": null})"}));
  EXPECT_EQ(journal(), reading({networkLog("5", "true"), networkLog("", "")}, 2));
}

TEST_F(SavedNetworks, AStrengthIsTakenAsAnIntegerWhereItCanBeOne) {
  createWithObject();
  store().set(kSavedNetworksKey,
              document(2, {R"({"SSID": "Home", "SIGNAL_STRENGTH": -82.9, "STATUS": ""})",
                           R"({"SSID": "Cafe", "SIGNAL_STRENGTH": null, "STATUS": ""})"}));
  EXPECT_TRUE(titleIcon(kFirst).str().ends_with("oobe_icon_n_wifi_2.svg"));
  EXPECT_TRUE(titleIcon(kSecond).str().ends_with("oobe_icon_n_wifi_4.svg"));
}

TEST_F(SavedNetworks, UnknownMembersAreIgnored) {
  createWithObject();
  read(R"({"version": {"major": [1, 2]}, "count": 1, "values": [
          {"SSID": "Home", "BSSID": "00:11", "SIGNAL_STRENGTH": -60, "STATUS": "Connected",
           "ssid": "other", "SECURITY": {"type": null}}], "time": 1e3})");
  EXPECT_EQ(journal(), reading({networkLog("Home", "Connected")}, 1));
}

TEST_F(SavedNetworks, NamesAreKeptByteForByte) {
  createWithObject();
  for (const char* name : {"거실", "\xf0\x9f\x93\xb6 4", "\xff\xfe", "a\xc3", "tab\there", "%s%n",
                           " blank ", "a\nb"}) {
    read(document(1, {network(name, -60, name)}));
    EXPECT_EQ(journal(), reading({networkLog(name, name)}, 1)) << name;
  }
}

TEST_F(SavedNetworks, EscapesInNamesAreResolved) {
  createWithObject();
  read(document(1, {network(R"(\"a\\b\/\u00e9\ud83d\udcf6\t)", -60, R"(\u0001)")}));
  EXPECT_EQ(journal(), reading({networkLog("\"a\\b/é\xf0\x9f\x93\xb6\t", "\x01")}, 1));
}

TEST_F(SavedNetworks, ANulInANameEndsItInTheLog) {
  createWithObject();
  read(document(1, {network(R"(a\u0000b)", -60, "Saved")}));
  EXPECT_EQ(journal(), reading({networkLog("a", "Saved")}, 1));
}

// ---- Documents that do not parse ----

TEST_F(SavedNetworks, ADocumentThatIsNotStrictJsonIsLoggedWithTheParsersWords) {
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

TEST_F(SavedNetworks, TheParsersWordsSayWhereTheMistakeIs) {
  createWithObject();
  read("{\"count\": 1,\n \"count\": 1}");
  EXPECT_EQ(journal(), reading(parseFailure("* Line 2, Column 2\n  Duplicate key: 'count'\n"), 0));
}

TEST_F(SavedNetworks, BlanksAroundTheDocumentAreAllowed) {
  createWithObject();
  read("\n\t " + kHomeOnly + " \r\n");
  EXPECT_EQ(journal(), reading({networkLog("Home", "Connected")}, 1));
}

TEST_F(SavedNetworks, ADocumentNestedTooDeepDoesNotParseAndRaisesNothing) {
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

TEST_F(SavedNetworks, ADeepMemberWithinTheParsersLimitIsIgnored) {
  createWithObject();
  const std::string deep = std::string(900, '[') + std::string(900, ']');
  read(R"({"x": )" + deep + R"(, "count": 1, "values": [)" + network("Home", -60, "Connected") +
       "]}");
  EXPECT_EQ(journal(), reading({networkLog("Home", "Connected")}, 1));
}

TEST_F(SavedNetworks, ANameOfAMegabyteIsRead) {
  createWithObject();
  const std::string name(1 << 20, 'n');
  read(document(1, {network(name, -60, "Saved")}));
  EXPECT_EQ(journal(), reading({networkLog(name, "Saved")}, 1));
}

// ---- Documents of a wrong shape ----

TEST_F(SavedNetworks, ACountThatIsNoIntegerRaisesTheParsersException) {
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

TEST_F(SavedNetworks, AMissingCountRaisesItBeforeTheValuesAreLookedAt) {
  createWithObject();
  for (const char* text : {"{}", R"({"values": []})", R"({"values": [{}]})", R"({"Count": 1})"}) {
    EXPECT_EQ(exceptionOf(text), "Value is not convertible to Int.") << text;
    EXPECT_EQ(journal(), readingUntilException({})) << text;
  }
}

TEST_F(SavedNetworks, ADocumentThatIsAnArrayRaisesIt) {
  createWithObject();
  for (const std::string& text : {std::string("[]"), "[" + kHomeOnly + "]", std::string("[[]]")}) {
    EXPECT_NE(exceptionOf(text), "none") << text;
    EXPECT_EQ(journal(), readingUntilException({})) << text;
  }
}

TEST_F(SavedNetworks, ValuesThatAreNoArrayRaiseItWhenAnElementIsWanted) {
  createWithObject();
  for (const char* values : {R"("text")", "5", "true", R"({"0": {}})"}) {
    const std::string rest = std::string(R"(, "values": )") + values + "}";
    EXPECT_NE(exceptionOf(R"({"count": 1)" + rest), "none") << values;
    EXPECT_EQ(journal(), readingUntilException({})) << values;
    EXPECT_EQ(exceptionOf(R"({"count": 0)" + rest), "none") << values;
    EXPECT_EQ(journal(), reading({}, 0)) << values;
  }
}

TEST_F(SavedNetworks, AnElementThatIsNoObjectRaisesIt) {
  createWithObject();
  for (const char* element : {"5", R"("text")", "true", "[1]"}) {
    EXPECT_NE(exceptionOf(document(2, {network("Home", -60, "Connected"), element})), "none")
        << element;
    EXPECT_EQ(journal(), readingUntilException({networkLog("Home", "Connected")})) << element;
  }
}

TEST_F(SavedNetworks, AStrengthThatIsMissingOrNoIntegerRaisesIt) {
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

TEST_F(SavedNetworks, ANameOrStatusThatCannotBeATextRaisesIt) {
  createWithObject();
  for (const char* element :
       {R"({"SSID": [], "SIGNAL_STRENGTH": 1})", R"({"SSID": {}, "SIGNAL_STRENGTH": 1})",
        R"({"SIGNAL_STRENGTH": 1, "STATUS": []})",
        R"({"SIGNAL_STRENGTH": 1, "STATUS": {"a": 1}})"}) {
    EXPECT_EQ(exceptionOf(document(1, {element})), "Type is not convertible to string") << element;
    EXPECT_EQ(journal(), readingUntilException({})) << element;
  }
}

TEST_F(SavedNetworks, TheNameIsReadBeforeTheStrengthAndTheStatusAfterIt) {
  createWithObject();
  EXPECT_EQ(exceptionOf(document(1, {R"({"STATUS": [], "SIGNAL_STRENGTH": "", "SSID": []})"})),
            "Type is not convertible to string");
  EXPECT_EQ(exceptionOf(document(1, {R"({"STATUS": [], "SIGNAL_STRENGTH": "", "SSID": ""})"})),
            "Value is not convertible to Int.");
}

TEST_F(SavedNetworks, TheExceptionLeavesEveryCallbackThatReadsThemAndFreesTheLock) {
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
  EXPECT_EQ(store().stringAt(kCommandKey), std::nullopt);
}

TEST_F(SavedNetworks, AfterTheExceptionAGoodDocumentIsReadAsEver) {
  createWithObject();
  EXPECT_NE(exceptionOf(document(2, {network("Cafe", -60, "Saved"), "5"})), "none");
  read(kHomeAndOffice);
  EXPECT_EQ(journal(),
            reading({networkLog("Home", "Connected"), networkLog("Office", "Saved")}, 2));
}

}  // namespace
