#include "scenario.h"

#include <algorithm>

#include "platform/host/json_file.h"

namespace platform {

namespace {

using host::JsonFile;

constexpr int kLongestConnectMilliseconds = 60'000;

AccessPoint readAccessPoint(const JsonFile& file, const Json::Value& entry) {
  file.allowOnly(entry, {"ssid", "frequency_mhz", "signal_dbm", "saved"});
  return {file.text(entry, "ssid"), file.integer(entry, "frequency_mhz"),
          file.integer(entry, "signal_dbm"), file.flag(entry, "saved")};
}

Profile readProfile(const JsonFile& file, const Json::Value& entry) {
  file.allowOnly(entry, {"name", "type"});
  const std::string type = file.text(entry, "type");
  if (type != "wifi" && type != "ethernet") {
    file.expected("\"wifi\" or \"ethernet\"", "type", entry["type"]);
  }
  return {file.text(entry, "name"), type == "wifi" ? ProfileType::kWifi : ProfileType::kEthernet};
}

bool hasAccessPoint(const Scenario& scenario, const std::string& ssid) {
  return std::ranges::find(scenario.accessPoints, ssid, &AccessPoint::ssid) !=
         scenario.accessPoints.end();
}

int readConnectTime(const JsonFile& file) {
  const int milliseconds = file.integer(file.root(), "connect_milliseconds");
  if (milliseconds < 0 || milliseconds > kLongestConnectMilliseconds) {
    file.expected("0 to 60000", "connect_milliseconds", file.root()["connect_milliseconds"]);
  }
  return milliseconds;
}

}  // namespace

Scenario readScenario(const std::filesystem::path& path) {
  const JsonFile file(path);
  file.allowOnly(file.root(), {"description", "radio", "connected", "connect_milliseconds",
                               "access_points", "profiles"});
  Scenario scenario;
  scenario.radioOn = file.flag(file.root(), "radio");
  scenario.connected = file.text(file.root(), "connected");
  scenario.connectTime = std::chrono::milliseconds(readConnectTime(file));
  for (const Json::Value& entry : file.array(file.root(), "access_points")) {
    const AccessPoint point = readAccessPoint(file, entry);
    if (point.ssid.empty() || hasAccessPoint(scenario, point.ssid)) {
      file.expected("a name that no other access point has", "ssid", entry["ssid"]);
    }
    scenario.accessPoints.push_back(point);
  }
  for (const Json::Value& entry : file.array(file.root(), "profiles")) {
    scenario.profiles.push_back(readProfile(file, entry));
  }
  if (!scenario.connected.empty() && !hasAccessPoint(scenario, scenario.connected)) {
    file.expected("the ssid of one of the access points, or \"\"", "connected",
                  file.root()["connected"]);
  }
  return scenario;
}

}  // namespace platform
