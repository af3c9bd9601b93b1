#include "simulated_network.h"

#include <json/value.h>

#include <algorithm>
#include <map>

#include "../host/environment.h"
#include "../host/json_text.h"
#include "platform/host/config_store.h"
#include "platform/host/errors.h"
#include "platform/host/resources.h"
#include "platform/log.h"
#include "saved_networks.h"

namespace platform {

namespace {

using host::ConfigStore;
using host::StoreValue;

constexpr char kDefaultScenario[] = "home";
const std::string kPrefix = "memory/host/network/";

// A value that somebody made another type of counts as not there.
template <typename T>
T valueOf(const std::string& name, T otherwise) {
  const auto value = ConfigStore::instance().get(kPrefix + name);
  const T* typed = value ? std::get_if<T>(&*value) : nullptr;
  return typed != nullptr ? *typed : otherwise;
}

std::string textMember(const Json::Value& entry, const char* name) {
  return entry.isObject() && entry[name].isString() ? entry[name].asString() : "";
}

bool flagMember(const Json::Value& entry, const char* name) {
  return entry.isObject() && entry[name].isBool() && entry[name].asBool();
}

int intMember(const Json::Value& entry, const char* name) {
  return entry.isObject() && entry[name].isInt() ? entry[name].asInt() : 0;
}

Json::Value toJson(const std::vector<AccessPoint>& points) {
  Json::Value array(Json::arrayValue);
  for (const AccessPoint& point : points) {
    Json::Value& entry = array.append(Json::objectValue);
    entry["ssid"] = point.ssid;
    entry["frequency_mhz"] = point.frequencyMhz;
    entry["signal_dbm"] = point.signalDbm;
    entry["saved"] = point.saved;
    entry["hidden"] = point.hidden;
  }
  return array;
}

Json::Value toJson(const std::vector<Profile>& profiles) {
  Json::Value array(Json::arrayValue);
  for (const Profile& profile : profiles) {
    Json::Value& entry = array.append(Json::objectValue);
    entry["name"] = profile.name;
    entry["type"] = profile.type == ProfileType::kEthernet ? "ethernet" : "wifi";
  }
  return array;
}

std::string connectedOf(const Scenario& scenario) {
  return scenario.radioOn ? scenario.connected : "";
}

std::map<std::string, StoreValue> stateOf(const Scenario& scenario, const std::string& name) {
  return {
      {kPrefix + "wifi", scenario.hasWifi},
      {kPrefix + "radio", scenario.radioOn},
      {kPrefix + "connected", connectedOf(scenario)},
      {kPrefix + "connecting", ""},
      {kPrefix + "connect_milliseconds", static_cast<int>(scenario.connectTime.count())},
      {kPrefix + "access_points", jsonLine(toJson(scenario.accessPoints))},
      {kPrefix + "profiles", jsonLine(toJson(scenario.profiles))},
      {kPrefix + "scenario", name},
  };
}

void publish(const Scenario& scenario) {
  publishSavedNetworks(scenario.accessPoints, connectedOf(scenario), "");
}

// The scenario that the environment names.
struct Wanted {
  std::string variable = variableOr("VENTARO_SCENARIO");
  std::string name = variable.empty() ? kDefaultScenario : variable;
  Scenario scenario = readScenario(host::findResource("scenarios", name));

  std::map<std::string, StoreValue> state() const {
    std::map<std::string, StoreValue> state = stateOf(scenario, name);
    state.emplace(kPrefix + "scenario_variable", variable);
    return state;
  }
};

}  // namespace

SimulatedNetwork::SimulatedNetwork() {
  loadWantedOnce();
  publishWhereMissing();
}

void SimulatedNetwork::loadWantedOnce() {
  const std::string wanted = variableOr("VENTARO_SCENARIO");
  const auto held = valueOf<std::string>("scenario", "");
  const auto applied = valueOf<std::string>("scenario_variable", "");
  if (!held.empty() && (wanted.empty() || wanted == applied)) return;
  const Wanted scenario;
  if (!held.empty()) {
    ConfigStore::instance().set(scenario.state());
  } else if (!ConfigStore::instance().setAbsent(scenario.state())) {
    return;  // another process was faster, and may have gone on from there
  }
  if (!isDocumentOfSomebodyElse()) publish(scenario.scenario);
}

void SimulatedNetwork::loadWanted() {
  const Wanted scenario;
  ConfigStore::instance().set(scenario.state());
  publish(scenario.scenario);
}

// The state folder may be newer than the runtime folder that holds the scenario. The radio depends
// on the latter alone, so it works without the document, too.
void SimulatedNetwork::publishWhereMissing() const try {
  if (!isDocumentThere()) publishSavedNetworks(accessPoints(), connected(), connecting());
} catch (const host::StoreError& error) {
  __dlog_print(PLATFORM_LOG_SYSTEM, PLATFORM_LOG_INFO, "NETWORK",
               "cannot publish the saved networks: %s", error.what());
}

void SimulatedNetwork::load(const Scenario& scenario, const std::string& name) {
  std::map<std::string, StoreValue> state = stateOf(scenario, name);
  // What the environment names was not asked for later than this.
  const std::string variable = variableOr("VENTARO_SCENARIO");
  if (!variable.empty()) state.emplace(kPrefix + "scenario_variable", variable);
  ConfigStore::instance().set(state);
  publish(scenario);
}

bool SimulatedNetwork::hasWifi() {
  return valueOf("wifi", true);
}

bool SimulatedNetwork::isRadioOn() {
  return hasWifi() && valueOf("radio", false);
}

void SimulatedNetwork::setRadio(bool on) {
  std::map<std::string, StoreValue> state = {{kPrefix + "radio", on}};
  if (!on) {
    state.emplace(kPrefix + "connected", "");
    state.emplace(kPrefix + "connecting", "");
  }
  ConfigStore::instance().set(state);
}

std::optional<AccessPoint> SimulatedNetwork::connectedAccessPoint() {
  const std::string ssid = connected();
  if (!isRadioOn() || ssid.empty()) return std::nullopt;
  const std::vector<AccessPoint> points = accessPoints();
  const AccessPoint* point = strongest(points, ssid);
  return point != nullptr ? std::optional(*point) : std::nullopt;
}

std::vector<Profile> SimulatedNetwork::profiles() {
  std::vector<Profile> profiles;
  for (const Json::Value& entry : readStoredJson(kPrefix + "profiles", Json::arrayValue)) {
    const bool ethernet = textMember(entry, "type") == "ethernet";
    profiles.push_back(
        {textMember(entry, "name"), ethernet ? ProfileType::kEthernet : ProfileType::kWifi});
  }
  return profiles;
}

void SimulatedNetwork::setEthernetEap(const Profile& profile, bool on) {
  ConfigStore::instance().set(kPrefix + "eap/" + profile.name, on);
}

std::vector<AccessPoint> SimulatedNetwork::accessPoints() const {
  std::vector<AccessPoint> points;
  for (const Json::Value& entry : readStoredJson(kPrefix + "access_points", Json::arrayValue)) {
    points.push_back({textMember(entry, "ssid"), intMember(entry, "frequency_mhz"),
                      intMember(entry, "signal_dbm"), flagMember(entry, "saved"),
                      flagMember(entry, "hidden")});
  }
  return points;
}

std::string SimulatedNetwork::connected() const {
  return valueOf<std::string>("connected", "");
}

std::string SimulatedNetwork::connecting() const {
  return valueOf<std::string>("connecting", "");
}

std::chrono::milliseconds SimulatedNetwork::connectTime() const {
  return std::chrono::milliseconds(std::max(valueOf("connect_milliseconds", 0), 0));
}

void SimulatedNetwork::setConnection(const std::string& connected, const std::string& connecting) {
  ConfigStore::instance().set(
      {{kPrefix + "connected", connected}, {kPrefix + "connecting", connecting}});
}

}  // namespace platform
