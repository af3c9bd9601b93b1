// The network service of the simulated network.
#include "platform/host/network_service.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "network_service_test.h"
#include "platform/host/errors.h"
#include "platform/wifi.h"
#include "process.h"

namespace platform_tests {
namespace {

using platform::host::commandedNetwork;
using platform::host::ConfigurationError;
using platform::host::kConnectAnswerKey;
using platform::host::lastConnectAnswer;
using platform::host::loadScenario;

TEST_F(Service, LoadsAndPublishesTheScenario) {
  start();
  EXPECT_EQ(publishedNetworks(), "Attic=Connected Shed=Disconnected");
}

TEST_F(Service, DropsTheOldNetworkIsConnectingAndThenConnected) {
  use(scenarioText(kAMoment));
  start();
  connectTo("Shed");
  ASSERT_TRUE(publishes("Attic=Disconnected Shed=Connected"));
  EXPECT_EQ(published_, (std::vector<std::string>{"Attic=Disconnected Shed=Connecting",
                                                  "Attic=Disconnected Shed=Connected"}));
  EXPECT_EQ(connectedNetwork(), "Shed");
}

TEST_F(Service, IsConnectedToNothingWhileItIsConnecting) {
  start();
  connectTo("Shed");
  ASSERT_TRUE(publishes("Attic=Disconnected Shed=Connecting"));
  EXPECT_EQ(connectedNetwork(), "none");
  EXPECT_EQ(networkState("connected"), StoreValue(""));
  EXPECT_EQ(networkState("connecting"), StoreValue("Shed"));
}

TEST_F(Service, ConnectsWithoutDelayWhenTheScenarioSaysSo) {
  use(scenarioText(0));
  start();
  connectTo("Shed");
  ASSERT_TRUE(publishes("Attic=Disconnected Shed=Connected"));
  EXPECT_EQ(networkState("connecting"), StoreValue(""));
}

TEST_F(Service, ConnectsToANetworkThatIsNotSaved) {
  use(scenarioText(0));
  start();
  connectTo("Door");
  ASSERT_TRUE(iterateUntil([] { return connectedNetwork() == "Door"; }));
  EXPECT_TRUE(publishes("Attic=Disconnected Shed=Disconnected"));
}

TEST_F(Service, ConnectsAgainToTheNetworkItIsConnectedTo) {
  use(scenarioText(kAMoment));
  start();
  connectTo("Attic");
  ASSERT_TRUE(publishes("Attic=Connecting Shed=Disconnected"));
  ASSERT_TRUE(publishes("Attic=Connected Shed=Disconnected"));
}

TEST_F(Service, ObeysACommandAsTheMenuWritesIt) {
  start();
  command("{\n\t\"COMMAND\" : \"1\",\n\t\"SSID\" : \"Shed\"\n}");
  EXPECT_TRUE(publishes("Attic=Disconnected Shed=Connecting"));
}

TEST_F(Service, ObeysAnotherProcess) {
  Process other([](Channel& test) {
    test.receiveLine();
    connectTo("Shed");
  });
  start();
  other.channel().sendLine("go");
  EXPECT_TRUE(publishes("Attic=Disconnected Shed=Connecting"));
  other.join();
}

TEST_F(Service, DoesNotObeyWhatWasCommandedBeforeItStarted) {
  connectTo("Shed");
  start();
  connectTo("Attic");
  ASSERT_TRUE(publishes("Attic=Connecting Shed=Disconnected"));
  EXPECT_EQ(published_.size(), 1U);
}

TEST_F(Service, TurnsToAnotherNetworkWhileItIsConnecting) {
  start();
  connectTo("Shed");
  ASSERT_TRUE(publishes("Attic=Disconnected Shed=Connecting"));
  connectTo("Attic");
  ASSERT_TRUE(publishes("Attic=Connecting Shed=Disconnected"));
  setNetworkState("connect_milliseconds", 0);
  connectTo("Attic");
  ASSERT_TRUE(publishes("Attic=Connected Shed=Disconnected"));
}

TEST_F(Service, RefusesANetworkThatThereIsNot) {
  start();
  for (const char* ssid : {"Castle", "", "attic"}) {
    const std::string reason = "main NETWORK_SERVICE: cannot connect to \"" + std::string(ssid) +
                               "\": there is no such network within reach";
    connectTo(ssid);
    ASSERT_TRUE(iterateUntil([&] { return countLogged(reason) == 1; })) << ssid;
    EXPECT_EQ(connectedNetwork(), "Attic");
    EXPECT_EQ(publishedNetworks(), "Attic=Connected Shed=Disconnected");
  }
}

// "Shed: refusal", as the service last answered.
std::string answer() {
  const auto last = lastConnectAnswer();
  return last ? last->ssid + ": " + last->refusal : "none";
}

TEST_F(Service, AnswersEveryCommandToConnect) {
  start();
  int answers = 0;
  const auto subscription =
      store().subscribe(kConnectAnswerKey, [&](const std::string&) { ++answers; });
  EXPECT_EQ(answer(), "none");
  connectTo("Shed");
  ASSERT_TRUE(iterateUntil([&] { return answers == 1; }));
  EXPECT_EQ(answer(), "Shed: ");
  EXPECT_EQ(networkState("connecting"), StoreValue("Shed")) << "when it answers it has begun";
  connectTo("Castle");
  ASSERT_TRUE(iterateUntil([&] { return answers == 2; }));
  EXPECT_EQ(answer(), "Castle: there is no such network within reach");
  EXPECT_EQ(wifi_set_enable_qx(0), 0);
  connectTo("Shed");
  ASSERT_TRUE(iterateUntil([&] { return answers == 3; }));
  EXPECT_EQ(answer(), "Shed: Wi-Fi is off");
}

TEST_F(Service, HasGivenNoAnswerWhenTheStoredOneIsInvalid) {
  for (const char* text : {"", "[]", "5", "{", "{}", R"({"ssid": "Shed"})",
                           R"({"ssid": 5, "refusal": ""})", R"({"ssid": "Shed", "refusal": 5})"}) {
    store().set(kConnectAnswerKey, text);
    EXPECT_EQ(answer(), "none") << text;
  }
  store().set(kConnectAnswerKey, 5);
  EXPECT_EQ(answer(), "none");
}

TEST_F(Service, HasNoCommandWhenTheStoredOneIsInvalid) {
  EXPECT_EQ(commandedNetwork(), std::nullopt);
  for (const char* text :
       {"", "[]", "5", "{", "{}", R"({"COMMAND": "1"})", R"({"COMMAND": "2", "SSID": "Shed"})"}) {
    command(text);
    EXPECT_EQ(commandedNetwork(), std::nullopt) << text;
  }
  connectTo("Shed");
  EXPECT_EQ(commandedNetwork(), "Shed");
}

TEST_F(Service, ChangesOfADocumentThatAPersonWroteTheStatesAlone) {
  start();
  store().set(kDocumentKey, R"({"count": 3, "mine": true, "values": [
      {"SSID": "Shed", "SIGNAL_STRENGTH": -1, "STATUS": "odd", "own": 5},
      {"SSID": "Castle", "SIGNAL_STRENGTH": -2, "STATUS": "odd"}, "no object"]})");
  connectTo("Shed");
  ASSERT_TRUE(iterateUntil([] { return networkState("connecting") == StoreValue("Shed"); }));
  EXPECT_EQ(store().get(kDocumentKey),
            StoreValue(
                R"({"count":3,"mine":true,"values":[)"
                R"({"SIGNAL_STRENGTH":-1,"SSID":"Shed","STATUS":"Connecting","own":5},)"
                R"({"SIGNAL_STRENGTH":-2,"SSID":"Castle","STATUS":"Disconnected"},"no object"]})"));
}

TEST_F(Service, LeavesADocumentOfAPersonAloneThatItCannotRead) {
  start();
  for (const char* text : {"", "no document", "[]", "{}", R"({"values": 5})"}) {
    store().set(kDocumentKey, text);
    setNetworkState("connecting", "");
    connectTo("Shed");
    ASSERT_TRUE(iterateUntil([] { return networkState("connecting") == StoreValue("Shed"); }));
    EXPECT_EQ(store().get(kDocumentKey), StoreValue(text));
  }
}

TEST_F(Service, AnswersARefusedCommandWithTheUnchangedState) {
  start();
  connectTo("Castle");
  EXPECT_TRUE(publishes("Attic=Connected Shed=Disconnected"));
}

TEST_F(Service, IgnoresWhatIsNoCommandToConnect) {
  start();
  int ignored = 0;
  for (const std::string& text :
       {std::string(), std::string("{"), std::string("nonsense"), std::string("[]"),
        std::string("5"), std::string("\"Shed\""), std::string("{}"), std::string(100'000, '['),
        std::string("{\"a\":") + std::string(5000, '['),
        std::string(R"({"COMMAND": 1, "SSID": "Shed"})"),
        std::string(R"({"COMMAND": "2", "SSID": "Shed"})"),
        std::string(R"({"COMMAND": {"1": "1"}, "SSID": "Shed"})"),
        std::string(R"({"COMMAND": "1"})"), std::string(R"({"COMMAND": "1", "SSID": 5})"),
        std::string(R"({"COMMAND": "1", "SSID": null})"),
        std::string(R"({"COMMAND": "1", "SSID": ["Shed"]})"), std::string(R"({"SSID": "Shed"})"),
        std::string("\xff\xfe")}) {
    command(text);
    ++ignored;
    ASSERT_TRUE(iterateUntil([&] {
      return countLogged("main NETWORK_SERVICE: ignored a command that is not to connect") ==
             ignored;
    })) << text.substr(0, 40);
  }
  store().set(kConnectCommandKey, 1);
  store().set(kConnectCommandKey, true);
  ASSERT_TRUE(iterateUntil(
      [&] { return countLogged("ignored a command that is not to connect") == ignored + 2; }));
  EXPECT_EQ(connectedNetwork(), "Attic");
  connectTo("Shed");
  EXPECT_TRUE(publishes("Attic=Disconnected Shed=Connecting")) << "and goes on";
}

TEST_F(Service, CompletesAConnectionUnderWayWhenItEnds) {
  start();
  connectTo("Shed");
  ASSERT_TRUE(publishes("Attic=Disconnected Shed=Connecting"));
  service_.reset();
  EXPECT_EQ(publishedNetworks(), "Attic=Disconnected Shed=Connected");
  EXPECT_EQ(connectedNetwork(), "Shed");
}

TEST_F(Service, ObeysNobodyAfterItsEnd) {
  start();
  service_.reset();
  connectTo("Shed");
  store().set(kDocumentKey, "after the command");
  ASSERT_TRUE(publishes("after the command"));
  EXPECT_EQ(published_.size(), 1U);
  EXPECT_EQ(connectedNetwork(), "Attic");
}

TEST_F(Service, IsTheOnlyOneOfItsProcess) {
  start();
  EXPECT_EQ(NetworkService::start(), nullptr);
  service_.reset();
  EXPECT_NE(NetworkService::start(), nullptr);
}

TEST_F(Service, IsTheOnlyOneOfAllProcesses) {
  Process other([](Channel& test) {
    const auto service = NetworkService::start();
    test.sendLine(service != nullptr ? "runs" : "does not run");
    test.receiveLine();
  });
  ASSERT_EQ(other.channel().receiveLine(), "runs");
  EXPECT_EQ(NetworkService::start(), nullptr);
  other.channel().sendLine("end");
  other.join();
  EXPECT_NE(NetworkService::start(), nullptr);
}

TEST_F(Service, RunsBesideThatOfAnotherTelevision) {
  Process other([this](Channel& test) {
    setenv("VENTARO_STATE_DIR", (folder() / "other/state").c_str(), 1);
    setenv("VENTARO_RUNTIME_DIR", (folder() / "other/runtime").c_str(), 1);
    const auto service = NetworkService::start();
    test.sendLine(service != nullptr ? "runs" : "does not run");
    test.receiveLine();
  });
  ASSERT_EQ(other.channel().receiveLine(), "runs");
  start();
  connectTo("Shed");
  EXPECT_TRUE(publishes("Attic=Disconnected Shed=Connecting"));
  other.channel().sendLine("end");
  other.join();
}

TEST_F(Service, FinishesWhatAKilledOneBegan) {
  Process killed([](Channel& test) {
    const auto service = NetworkService::start();
    connectTo("Shed");
    EXPECT_TRUE(iterateUntil([] { return networkState("connecting") == StoreValue("Shed"); }));
    test.sendLine("connecting");
    test.receiveLine();
  });
  ASSERT_EQ(killed.channel().receiveLine(), "connecting");
  killed.kill();
  EXPECT_EQ(connectedNetwork(), "none");
  EXPECT_EQ(publishedNetworks(), "Attic=Disconnected Shed=Connecting");
  setNetworkState("connect_milliseconds", kAMoment);
  start();
  EXPECT_TRUE(publishes("Attic=Disconnected Shed=Connected"));
  EXPECT_EQ(connectedNetwork(), "Shed");
}

TEST_F(Service, KeepsTheConnectionOfAScenarioThatIsLoadedWhileItIsConnecting) {
  start();
  connectTo("Shed");
  ASSERT_TRUE(publishes("Attic=Disconnected Shed=Connecting"));
  loadScenario(write("other.json", scenarioText(kForEver, "Attic")));
  ASSERT_TRUE(publishes("Attic=Connected Shed=Disconnected"));
  service_.reset();
  EXPECT_EQ(publishedNetworks(), "Attic=Connected Shed=Disconnected");
  EXPECT_EQ(connectedNetwork(), "Attic");
}

TEST_F(Service, FollowsTheAccessPointsThatAPersonChanges) {
  start();
  setNetworkState("access_points",
                  R"([{"ssid": "New", "frequency_mhz": 1, "signal_dbm": -1, "saved": true}])");
  connectTo("New");
  ASSERT_TRUE(publishes("New=Connecting"));
  setNetworkState("access_points", "[broken");
  connectTo("New");
  ASSERT_TRUE(publishes(""));
  EXPECT_EQ(countLogged("cannot connect to \"New\": there is no such network within reach"), 1);
}

TEST_F(Service, BelongsToTheSimulatedNetwork) {
  setenv("VENTARO_NETWORK", "quantum", 1);
  EXPECT_THROW(NetworkService::start(), ConfigurationError);
}

TEST_F(Service, DoesNotStartOnAScenarioThatIsWrong) {
  use("{}");
  EXPECT_THROW(NetworkService::start(), ConfigurationError);
  use(scenarioText(0));
  start();
}

// A state folder that can only be read, with a runtime folder that can be written.
TEST_F(Service, RefusesAtOnceWhatTheStoreDoesNotTake) {
  use(scenarioText(0));
  inOwnProcess([] { loadScenario(); });
  const auto own = [](const std::filesystem::path& path) {
    return geteuid() != 0 || chown(path.c_str(), 65534, 65534) == 0;
  };
  ASSERT_TRUE(own(runtimeFolder()));
  for (const auto& file : std::filesystem::directory_iterator(runtimeFolder())) {
    ASSERT_TRUE(own(file.path()));
  }
  for (const auto& file : std::filesystem::directory_iterator(stateFolder())) {
    std::filesystem::permissions(file.path(), std::filesystem::perms(0444));
  }
  std::filesystem::permissions(stateFolder(), std::filesystem::perms(0555));
  inOwnProcess([this] {
    becomeOrdinaryUser();
    const auto service = NetworkService::start();
    ASSERT_NE(service, nullptr);
    connectTo("Shed");
    ASSERT_TRUE(iterateUntil([] { return lastConnectAnswer().has_value(); }));
    EXPECT_EQ(lastConnectAnswer()->ssid, "Shed");
    const std::string refusal = lastConnectAnswer()->refusal;
    EXPECT_TRUE(refusal.ends_with("the folder cannot be written: " + stateFolder().string()))
        << refusal;
    EXPECT_EQ(networkState("connecting"), StoreValue(""));
  });
  std::filesystem::permissions(stateFolder(), std::filesystem::perms(0755));
}

}  // namespace
}  // namespace platform_tests
