// How the simulated network is loaded, and its state in the store.
#include <cstdlib>
#include <filesystem>
#include <string>

#include "platform/connection.h"
#include "platform/host/errors.h"
#include "platform/host/network_service.h"
#include "platform/wifi.h"
#include "process.h"
#include "simulated_network.h"

namespace platform_tests {
namespace {

using platform::host::ConfigurationError;
using platform::host::loadScenario;
using platform::host::openNetwork;

int radio() {
  int state = -1;
  EXPECT_EQ(wifi_get_enable_qx(&state), 0);
  return state;
}

int countProfiles() {
  connection_h connection = nullptr;
  connection_profile_iterator_h iterator = nullptr;
  EXPECT_EQ(connection_create(&connection), 0);
  EXPECT_EQ(connection_get_profile_iterator(connection, 0, &iterator), 0);
  int count = 0;
  for (connection_profile_h profile = nullptr;
       connection_profile_iterator_next(iterator, &profile) == 0;) {
    ++count;
  }
  EXPECT_EQ(connection_destroy(connection), 0);
  return count;
}

class AScenario : public NetworkTest {};

TEST_F(AScenario, IsThatOfTheHomeByDefault) {
  openNetwork();
  EXPECT_EQ(networkState("scenario"), StoreValue("home"));
  EXPECT_EQ(radio(), 1);
  EXPECT_EQ(networkState("connected"), StoreValue("Attic 6E"));
  EXPECT_EQ(connectedNetwork(), "Attic");  // its frequency
  EXPECT_EQ(publishedNetworks(), "Attic 6E=Connected Garden Shed=Disconnected");
  EXPECT_EQ(countProfiles(), 2);
}

TEST_F(AScenario, IsTheOneThatTheEnvironmentNames) {
  setenv("VENTARO_RESOURCE_ROOT", folder().c_str(), 1);
  write("scenarios/attic.json", scenarioText(5));
  setenv("VENTARO_SCENARIO", "attic", 1);
  openNetwork();
  EXPECT_EQ(networkState("scenario"), StoreValue("attic"));
  EXPECT_EQ(networkState("connect_milliseconds"), StoreValue(5));
  EXPECT_EQ(connectedNetwork(), "Attic");
  EXPECT_EQ(countProfiles(), 3);
}

TEST_F(AScenario, CanBeNamedByItsPath) {
  use(scenarioText(5, "Shed"));
  openNetwork();
  EXPECT_EQ(connectedNetwork(), "Shed");
}

TEST_F(AScenario, IsLoadedByTheFirstUseOfTheNetwork) {
  use(scenarioText(0));
  EXPECT_EQ(networkState("scenario"), StoreValue("never set"));
  EXPECT_EQ(wifi_initialize(), 0);
  EXPECT_EQ(networkState("radio"), StoreValue(true));
}

TEST_F(AScenario, ConnectsNothingWhileItsRadioIsOff) {
  std::string scenario = scenarioText(0);
  scenario.replace(scenario.find("true"), 4, "false");
  use(scenario);
  EXPECT_EQ(radio(), 0);
  EXPECT_EQ(connectedNetwork(), "none");
  EXPECT_EQ(publishedNetworks(), "Attic=Disconnected Shed=Disconnected");
}

TEST_F(AScenario, MayHoldNothing) {
  use(R"({"radio": true, "connected": "", "connect_milliseconds": 0,
          "access_points": [], "profiles": []})");
  EXPECT_EQ(radio(), 1);
  EXPECT_EQ(connectedNetwork(), "none");
  EXPECT_EQ(publishedNetworks(), "");
  EXPECT_EQ(countProfiles(), 0);
}

TEST_F(AScenario, IsTheSameForEveryProcess) {
  use(scenarioText(0));
  inOwnProcess([] {
    EXPECT_EQ(connectedNetwork(), "Attic");
    EXPECT_EQ(wifi_set_enable_qx(0), 0);
  });
  inOwnProcess([] {
    EXPECT_EQ(radio(), 0);
    EXPECT_EQ(connectedNetwork(), "none");
    EXPECT_EQ(wifi_set_enable_qx(1), 0);
  });
  EXPECT_EQ(radio(), 1);
}

TEST_F(AScenario, IsNotLoadedAgainByAProcessThatNamesNone) {
  use(scenarioText(0, "Shed"));
  inOwnProcess([] { openNetwork(); });
  unsetenv("VENTARO_SCENARIO");
  EXPECT_EQ(connectedNetwork(), "Shed");
}

TEST_F(AScenario, IsLoadedOverAnotherByAProcessThatNamesAnother) {
  use(scenarioText(0, "Shed"));
  inOwnProcess([] {
    openNetwork();
    setNetworkState("radio", false);
  });
  const std::string other = write("other.json", scenarioText(7, "Door"));
  setenv("VENTARO_SCENARIO", other.c_str(), 1);
  EXPECT_EQ(connectedNetwork(), "Door");
  EXPECT_EQ(networkState("scenario"), StoreValue(other));
  EXPECT_EQ(networkState("connect_milliseconds"), StoreValue(7));
  EXPECT_EQ(publishedNetworks(), "Attic=Disconnected Shed=Disconnected");
}

TEST_F(AScenario, ThatTheEnvironmentStillNamesDoesNotReplaceOneThatWasLoadedSince) {
  use(scenarioText(0, "Shed"));
  inOwnProcess([this] {
    openNetwork();
    loadScenario(write("other.json", scenarioText(0, "Door")));
  });
  EXPECT_EQ(connectedNetwork(), "Door");
}

TEST_F(AScenario, IsLoadedOnceByProcessesThatStartTogether) {
  use(scenarioText(0, "Shed"));
  const auto openAndSwitch = [](Channel& test) {
    test.receiveLine();
    EXPECT_EQ(wifi_set_enable_qx(0), 0);
  };
  Process first(openAndSwitch);
  Process second(openAndSwitch);
  first.channel().sendLine("go");
  second.channel().sendLine("go");
  first.join();
  second.join();
  EXPECT_EQ(radio(), 0) << "the second did not undo what the first did";
}

TEST_F(AScenario, CanBeLoadedOverAnyPreviousState) {
  use(scenarioText(0, "Shed"));
  EXPECT_EQ(connectedNetwork(), "Shed");
  loadScenario(write("other.json", scenarioText(0, "Attic")));
  EXPECT_EQ(connectedNetwork(), "Attic");
  EXPECT_EQ(publishedNetworks(), "Attic=Connected Shed=Disconnected");
  EXPECT_EQ(wifi_set_enable_qx(0), 0);
  loadScenario(write("other.json", scenarioText(0, "Attic")));
  EXPECT_EQ(connectedNetwork(), "Attic") << "the same again";
}

TEST_F(AScenario, LeavesADocumentOfSavedNetworksAloneThatAPersonWrote) {
  use(scenarioText(0));
  store().set("db/menu/network/TopSavedAP", "a person's");
  openNetwork();
  EXPECT_EQ(publishedNetworks(), "a person's");
  loadScenario(write("other.json", scenarioText(0)));
  EXPECT_EQ(publishedNetworks(), "Attic=Connected Shed=Disconnected");
}

TEST_F(AScenario, ThatIsLoadedPublishesItsSavedNetworksInANewStateFolder) {
  use(scenarioText(0));
  inOwnProcess([] {
    openNetwork();
    setNetworkState("connected", "Shed");
  });
  setenv("VENTARO_STATE_DIR", (folder() / "moved").c_str(), 1);
  openNetwork();
  EXPECT_EQ(publishedNetworks(), "Attic=Disconnected Shed=Connected") << "as they are now";
}

TEST_F(AScenario, ThatIsLoadedKeepsTheRadioWhereTheStateFolderCannotBe) {
  use(scenarioText(0));
  inOwnProcess([] { openNetwork(); });
  setenv("VENTARO_STATE_DIR", write("file", "").c_str(), 1);
  EXPECT_EQ(radio(), 1);
}

TEST_F(AScenario, PublishesItsSavedNetworksAsOneLineOfJson) {
  std::string scenario = scenarioText(0);
  scenario.replace(scenario.find("Shed"), 4, "Caf\u00e9");
  use(scenario);
  openNetwork();
  EXPECT_EQ(store().get("db/menu/network/TopSavedAP"),
            StoreValue(R"({"count":2,"values":[)"
                       R"({"SIGNAL_STRENGTH":-52,"SSID":"Attic","STATUS":"Connected"},)"
                       R"({"SIGNAL_STRENGTH":-78,"SSID":"Café","STATUS":"Disconnected"}]})"));
}

TEST_F(AScenario, OfAnUnknownNameIsAnErrorThatSaysWhichThereAre) {
  setenv("VENTARO_RESOURCE_ROOT", folder().c_str(), 1);
  write("scenarios/home.json", scenarioText(0));
  write("scenarios/empty.json", "{}");
  EXPECT_EQ(errorRaisedBy([] { loadScenario("castle"); }), "there is no \"castle\" in " +
                                                               (folder() / "scenarios").string() +
                                                               "; there are: empty, home");
}

TEST_F(AScenario, ThatIsWrongMakesTheNetworkUnavailable) {
  const std::string path = write("scenario.json", "{\n\"radio\": 1}");
  setenv("VENTARO_SCENARIO", path.c_str(), 1);
  EXPECT_THROW(openNetwork(), ConfigurationError);
  int state = 7;
  EXPECT_NE(wifi_get_enable_qx(&state), 0);
  EXPECT_EQ(state, 7);
  EXPECT_TRUE(logged("system NETWORK: wifi_get_enable_qx: " + path +
                     ":2: member \"radio\": expected true or false, found 1"));
  EXPECT_NE(wifi_initialize(), 0);
  EXPECT_NE(wifi_set_enable_qx(1), 0);
  use(scenarioText(0));
  EXPECT_EQ(wifi_initialize(), 0) << "once it is right";
}

TEST_F(AScenario, ThatIsWrongLeavesTheNetworkAsItWas) {
  use(scenarioText(0));
  openNetwork();
  const auto before = store().list("memory/host/network/");
  EXPECT_THROW(loadScenario(write("wrong.json", "{}")), ConfigurationError);
  EXPECT_EQ(store().list("memory/host/network/"), before);
  EXPECT_EQ(publishedNetworks(), "Attic=Connected Shed=Disconnected");
}

TEST_F(AScenario, OfAnUnknownNetworkIsRefused) {
  setenv("VENTARO_NETWORK", "quantum", 1);
  EXPECT_EQ(errorRaisedBy([] { openNetwork(); }),
            "VENTARO_NETWORK is \"quantum\"; there is: simulated");
  EXPECT_NE(wifi_initialize(), 0);
  EXPECT_TRUE(logged("wifi_initialize: VENTARO_NETWORK is \"quantum\"; there is: simulated"));
  setenv("VENTARO_NETWORK", "", 1);
  EXPECT_EQ(wifi_initialize(), 0);
}

// One place of a correct scenario, made invalid.
struct Mistake {
  const char* name;
  std::string right;
  std::string wrong;
  std::string message;  // after the file's name
};

void PrintTo(const Mistake& mistake, std::ostream* out) {
  *out << mistake.name;
}

class AScenarioWith : public NetworkTest, public testing::WithParamInterface<Mistake> {};

INSTANTIATE_TEST_SUITE_P(
    AMistake, AScenarioWith,
    testing::Values(
        Mistake{"ARadioOfAnotherType", "true", "\"on\"",
                ":2: member \"radio\": expected true or false, found \"on\""},
        Mistake{"AConnectionOfAnotherType", "\"Attic\"", "null",
                ":3: member \"connected\": expected a string, found nothing"},
        Mistake{"AConnectionToAnUnknownNetwork", "\"Attic\"", "\"Castle\"",
                ":3: member \"connected\": expected the ssid of one of the access points, or \"\", "
                "found \"Castle\""},
        Mistake{"ATimeOfAnotherType", "1500", "\"1500\"",
                ":4: member \"connect_milliseconds\": expected an integer, found \"1500\""},
        Mistake{"ATimeThatIsNegative", "1500", "-1",
                ":4: member \"connect_milliseconds\": expected 0 to 60000, found -1"},
        Mistake{"ATimeThatIsTooLong", "1500", "60001",
                ":4: member \"connect_milliseconds\": expected 0 to 60000, found 60001"},
        Mistake{"AnSsidOfAnotherType", "{ \"ssid\": \"Shed\"", "{ \"ssid\": 5",
                ":7: member \"ssid\": expected a string, found 5"},
        Mistake{"ANetworkThatIsSavedInOnePlaceOnly", "{ \"ssid\": \"Door\"",
                "{ \"ssid\": \"Attic\"",
                ":8: member \"saved\": expected the same as at the other access point of that "
                "name, found false"},
        Mistake{"AnSsidThatIsEmpty", "{ \"ssid\": \"Shed\"", "{ \"ssid\": \"\"",
                ":7: member \"ssid\": expected a name that is not empty, found \"\""},
        Mistake{"AnSsidOfHalfAByte", "{ \"ssid\": \"Shed\"", "{ \"ssid_hex\": \"ff1\"",
                ":7: member \"ssid_hex\": expected two hexadecimal digits for each byte, found "
                "\"ff1\""},
        Mistake{"AnSsidOfOtherDigits", "{ \"ssid\": \"Shed\"", "{ \"ssid_hex\": \"f-1g\"",
                ":7: member \"ssid_hex\": expected two hexadecimal digits for each byte, found "
                "\"f-1g\""},
        Mistake{"TwoNames", "{ \"ssid\": \"Shed\"", "{ \"ssid\": \"Shed\", \"ssid_hex\": \"ff\"",
                ":7: \"ssid\" and \"ssid_hex\" are both there"},
        Mistake{"AHiddenOfAnotherType", "\"saved\": false", "\"saved\": false, \"hidden\": 1",
                ":8: member \"hidden\": expected true or false, found 1"},
        Mistake{"ARadioWithoutAWifiDevice", "\"radio\": true", "\"wifi\": false, \"radio\": true",
                ":2: member \"radio\": expected false without a Wi-Fi device, found true"},
        Mistake{"NetworksWithoutAWifiDevice", "\"radio\": true",
                "\"wifi\": false, \"radio\": false",
                ":5: member \"access_points\": expected [] without a Wi-Fi device, found "
                "[{\"frequency_mhz\":6135,\"saved\":true,\"signal_dbm\":-52,\"ssid\":..."},
        Mistake{"AFrequencyOfAnotherType", "2437", "2.4",
                ":7: member \"frequency_mhz\": expected an integer, found 2.4"},
        Mistake{"ASignalOfAnotherType", "-78", "\"strong\"",
                ":7: member \"signal_dbm\": expected an integer, found \"strong\""},
        Mistake{"ASavedOfAnotherType", "\"saved\": true },\n    { \"ssid\": \"Shed\"",
                "\"saved\": 1 },\n    { \"ssid\": \"Shed\"",
                ":6: member \"saved\": expected true or false, found 1"},
        Mistake{"AnAccessPointThatLacksAMember", ", \"saved\": false", "",
                ":8: member \"saved\" is missing: expected true or false"},
        Mistake{"AProfileOfAnUnknownType", "\"type\": \"wifi\"", "\"type\": \"bluetooth\"",
                ":11: member \"type\": expected \"wifi\" or \"ethernet\", found \"bluetooth\""},
        Mistake{"AProfileWithoutAName", "\"name\": \"eth0\", ", "",
                ":12: member \"name\" is missing: expected a string"},
        Mistake{"AProfileThatIsNoObject", "{ \"name\": \"eth1\", \"type\": \"ethernet\" }", "5",
                ":13: member \"type\": expected an object, found 5"},
        Mistake{"ProfilesThatAreNoArray", "\"profiles\": [", "\"profiles\": 5, \"description\": [",
                ":10: member \"profiles\": expected an array, found 5"},
        Mistake{"NoAccessPoints", "\"access_points\": [", "\"description\": [",
                ":1: member \"access_points\" is missing: expected an array"},
        Mistake{"AMemberThatThereIsNot", "\"access_points\"", "\"acces_points\"",
                ":5: member \"acces_points\" means nothing here; did you mean \"access_points\"?"},
        Mistake{"AnAccessPointsMemberThatThereIsNot", "\"signal_dbm\": -78", "\"signal\": -78",
                ":7: member \"signal\" means nothing here; there are: ssid, ssid_hex, "
                "frequency_mhz, signal_dbm, saved, hidden"},
        Mistake{"AProfilesMemberThatThereIsNot", "\"name\": \"eth0\"", "\"nmae\": \"eth0\"",
                ":12: member \"nmae\" means nothing here; did you mean \"name\"?"},
        Mistake{"ACommaTooFew", "\"radio\": true,", "\"radio\": true",
                ":3: Missing ',' or '}' in object declaration"}),
    [](const auto& mistake) { return mistake.param.name; });

TEST_P(AScenarioWith, IsNamedWithItsLineAndWhatWasExpected) {
  std::string scenario = scenarioText(1500);
  const auto place = scenario.find(GetParam().right);
  ASSERT_NE(place, std::string::npos);
  scenario.replace(place, GetParam().right.size(), GetParam().wrong);
  const std::string path = write("scenario.json", scenario);
  EXPECT_EQ(errorRaisedBy([&] { loadScenario(path); }), path + GetParam().message);
}

// Values that the user may write into the store.
class NetworkState : public NetworkTest {
 protected:
  void SetUp() override { use(scenarioText(0)); }
};

TEST_F(NetworkState, CanBeChangedWhileTheProgramRuns) {
  EXPECT_EQ(connectedNetwork(), "Attic");
  setNetworkState("connected", "Door");
  EXPECT_EQ(connectedNetwork(), "Door");
  setNetworkState("access_points",
                  R"([{"ssid": "Door", "frequency_mhz": 1, "signal_dbm": 2, "saved": true}])");
  EXPECT_EQ(connectedNetwork(), "1");
  setNetworkState("profiles", R"([{"name": "eth9", "type": "ethernet"}])");
  EXPECT_EQ(countProfiles(), 1);
}

TEST_F(NetworkState, OfARadioThatIsOffIsNotConnected) {
  EXPECT_EQ(connectedNetwork(), "Attic");
  setNetworkState("radio", false);
  EXPECT_EQ(connectedNetwork(), "none");
}

TEST_F(NetworkState, OfAnotherTypeCountsAsNotThere) {
  openNetwork();
  setNetworkState("radio", "yes");
  EXPECT_EQ(radio(), 0);
  setNetworkState("radio", true);
  setNetworkState("connected", 5);
  EXPECT_EQ(connectedNetwork(), "none");
  setNetworkState("profiles", 5);
  EXPECT_EQ(countProfiles(), 0);
}

TEST_F(NetworkState, ThatIsNoJsonArrayCountsAsEmpty) {
  openNetwork();
  for (const std::string& broken :
       {std::string(), std::string("["), std::string("nonsense"), std::string("{}"),
        std::string("5"), std::string(100'000, '['), std::string("\xff\xfe[]")}) {
    setNetworkState("access_points", broken);
    EXPECT_EQ(connectedNetwork(), "none") << broken.substr(0, 20);
    setNetworkState("profiles", broken);
    EXPECT_EQ(countProfiles(), 0) << broken.substr(0, 20);
  }
}

TEST_F(NetworkState, WithWrongEntriesKeepsTheOthers) {
  openNetwork();
  setNetworkState("access_points", R"([5, null, [], {}, {"ssid": 5},
      {"ssid": "Attic", "frequency_mhz": "high", "saved": "yes"},
      {"ssid": "Shed", "frequency_mhz": 2437}])");
  EXPECT_EQ(connectedNetwork(), "0") << "a frequency that is no integer";
  setNetworkState("connected", "Shed");
  EXPECT_EQ(connectedNetwork(), "Shed");
  setNetworkState("profiles", R"([5, {"name": 5, "type": "ethernet"}, {"type": []}])");
  EXPECT_EQ(countProfiles(), 3);
}

TEST_F(NetworkState, NamesAConnectionThatIsNoAccessPoint) {
  openNetwork();
  setNetworkState("connected", "Castle");
  EXPECT_EQ(connectedNetwork(), "none");
}

}  // namespace
}  // namespace platform_tests
