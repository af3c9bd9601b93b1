#include "scenario.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <optional>
#include <string_view>

#include "platform/host/json_file.h"

namespace platform {

namespace {

using host::JsonFile;

constexpr int kLongestConnectMilliseconds = 60'000;

bool flagOr(const JsonFile& file, const Json::Value& object, const char* member, bool otherwise) {
  return object.isMember(member) ? file.flag(object, member) : otherwise;
}

// The bytes that two hexadecimal digits each stand for; nothing for other text.
std::optional<std::string> bytesOf(std::string_view digits) {
  std::string bytes;
  for (; digits.size() >= 2; digits.remove_prefix(2)) {
    unsigned char byte = 0;
    const char* end = digits.data() + 2;
    if (std::from_chars(digits.data(), end, byte, 16).ptr != end) return std::nullopt;
    bytes += static_cast<char>(byte);
  }
  return digits.empty() ? std::optional(bytes) : std::nullopt;
}

// JSON has no bytes that are not UTF-8, and a name may have any.
std::string readSsid(const JsonFile& file, const Json::Value& entry) {
  const bool isHex = entry.isMember("ssid_hex");
  if (isHex && entry.isMember("ssid")) file.fail(entry, "\"ssid\" and \"ssid_hex\" are both there");
  const char* member = isHex ? "ssid_hex" : "ssid";
  const std::string text = file.text(entry, member);
  if (text.empty()) file.expected("a name that is not empty", member, entry[member]);
  if (!isHex) return text;
  const auto bytes = bytesOf(text);
  if (!bytes) file.expected("two hexadecimal digits for each byte", member, entry[member]);
  return *bytes;
}

AccessPoint readAccessPoint(const JsonFile& file, const Json::Value& entry) {
  file.allowOnly(entry, {"ssid", "ssid_hex", "frequency_mhz", "signal_dbm", "saved", "hidden"});
  return {readSsid(file, entry), file.integer(entry, "frequency_mhz"),
          file.integer(entry, "signal_dbm"), file.flag(entry, "saved"),
          flagOr(file, entry, "hidden", false)};
}

Profile readProfile(const JsonFile& file, const Json::Value& entry) {
  file.allowOnly(entry, {"name", "type"});
  const std::string type = file.text(entry, "type");
  if (type != "wifi" && type != "ethernet") {
    file.expected("\"wifi\" or \"ethernet\"", "type", entry["type"]);
  }
  return {file.text(entry, "name"), type == "wifi" ? ProfileType::kWifi : ProfileType::kEthernet};
}

int readConnectTime(const JsonFile& file) {
  const int milliseconds = file.integer(file.root(), "connect_milliseconds");
  if (milliseconds < 0 || milliseconds > kLongestConnectMilliseconds) {
    file.expected("0 to 60000", "connect_milliseconds", file.root()["connect_milliseconds"]);
  }
  return milliseconds;
}

void readAccessPoints(const JsonFile& file, Scenario& scenario) {
  std::map<std::string, bool> savedNames;
  for (const Json::Value& entry : file.array(file.root(), "access_points")) {
    const AccessPoint point = readAccessPoint(file, entry);
    if (savedNames.try_emplace(point.ssid, point.saved).first->second != point.saved) {
      file.expected("the same as at the other access point of that name", "saved", entry["saved"]);
    }
    scenario.accessPoints.push_back(point);
  }
}

void requireNoRadio(const JsonFile& file, const Scenario& scenario) {
  const Json::Value& root = file.root();
  if (scenario.radioOn) file.expected("false without a Wi-Fi device", "radio", root["radio"]);
  if (scenario.accessPoints.empty()) return;
  file.expected("[] without a Wi-Fi device", "access_points", root["access_points"]);
}

}  // namespace

Scenario readScenario(const std::filesystem::path& path) {
  const JsonFile file(path);
  file.allowOnly(file.root(), {"description", "wifi", "radio", "connected", "connect_milliseconds",
                               "access_points", "profiles"});
  Scenario scenario;
  scenario.hasWifi = flagOr(file, file.root(), "wifi", true);
  scenario.radioOn = file.flag(file.root(), "radio");
  scenario.connected = file.text(file.root(), "connected");
  scenario.connectTime = std::chrono::milliseconds(readConnectTime(file));
  readAccessPoints(file, scenario);
  for (const Json::Value& entry : file.array(file.root(), "profiles")) {
    scenario.profiles.push_back(readProfile(file, entry));
  }
  if (!scenario.connected.empty() &&
      strongest(scenario.accessPoints, scenario.connected) == nullptr) {
    file.expected("the ssid of one of the access points, or \"\"", "connected",
                  file.root()["connected"]);
  }
  if (!scenario.hasWifi) requireNoRadio(file, scenario);
  return scenario;
}

}  // namespace platform
