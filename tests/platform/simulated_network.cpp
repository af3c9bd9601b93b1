#include "simulated_network.h"

#include <json/reader.h>
#include <json/value.h>

#include <cstdlib>
#include <map>
#include <memory>

#include "platform/wifi.h"

namespace platform_tests {

std::string scenarioText(int connectMilliseconds, const std::string& connected) {
  return R"({
  "radio": true,
  "connected": ")" +
         connected + R"(",
  "connect_milliseconds": )" +
         std::to_string(connectMilliseconds) + R"(,
  "access_points": [
    { "ssid": "Attic", "frequency_mhz": 6135, "signal_dbm": -52, "saved": true },
    { "ssid": "Shed", "frequency_mhz": 2437, "signal_dbm": -78, "saved": true },
    { "ssid": "Door", "frequency_mhz": 5220, "signal_dbm": -71, "saved": false }
  ],
  "profiles": [
    { "name": "wifi0", "type": "wifi" },
    { "name": "eth0", "type": "ethernet" },
    { "name": "eth1", "type": "ethernet" }
  ]
})";
}

void NetworkTest::use(const std::string& scenario) const {
  setenv("VENTARO_SCENARIO", write("scenario.json", scenario).c_str(), 1);
}

std::string connectedNetwork() {
  static const std::map<int, std::string> kNames = {
      {6135, "Attic"}, {2437, "Shed"}, {5220, "Door"}};
  wifi_ap_h point = nullptr;
  int frequency = 0;
  if (wifi_get_connected_ap(&point) != 0) return "none";
  EXPECT_EQ(wifi_ap_get_frequency(point, &frequency), 0);
  EXPECT_EQ(wifi_ap_destroy(point), 0);
  return kNames.contains(frequency) ? kNames.at(frequency) : std::to_string(frequency);
}

std::string publishedNetworks() {
  const auto document = store().get("db/menu/network/TopSavedAP");
  const auto* text = document ? std::get_if<std::string>(&*document) : nullptr;
  if (text == nullptr) return "nothing";
  Json::Value root;
  const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
  if (!reader->parse(text->data(), text->data() + text->size(), &root, nullptr)) return *text;
  EXPECT_EQ(root["count"].asUInt(), root["values"].size());
  std::string networks;
  for (const Json::Value& entry : root["values"]) {
    networks +=
        (networks.empty() ? "" : " ") + entry["SSID"].asString() + "=" + entry["STATUS"].asString();
  }
  return networks;
}

StoreValue networkState(const std::string& name) {
  return store().get("memory/host/network/" + name).value_or("never set");
}

void setNetworkState(const std::string& name, const StoreValue& value) {
  store().set("memory/host/network/" + name, value);
}

}  // namespace platform_tests
