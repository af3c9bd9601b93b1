#include "saved_networks.h"

#include <json/value.h>

#include "../host/json_text.h"
#include "platform/host/config_store.h"
#include "platform/host/network_service.h"

namespace platform {

namespace {

using host::ConfigStore;

// What was last published, to tell it from a document that a person put there.
constexpr char kPublishedKey[] = "db/host/published_networks";

constexpr int kNotSeen = -100;  // dBm

const char* statusOf(const std::string& ssid, const std::string& connected,
                     const std::string& connecting) {
  if (ssid == connected) return "Connected";
  if (ssid == connecting) return "Connecting";
  return "Disconnected";
}

}  // namespace

void publishSavedNetworks(const std::vector<AccessPoint>& points, const std::string& connected,
                          const std::string& connecting) {
  Json::Value document(Json::objectValue);
  Json::Value& values = document["values"] = Json::arrayValue;
  const auto strongest = strongestOfEach(points);
  for (const AccessPoint& point : points) {
    if (!point.saved || &point != strongest.at(point.ssid)) continue;
    const bool isSeen = !point.hidden || point.ssid == connected;
    Json::Value& entry = values.append(Json::objectValue);
    entry["SSID"] = point.ssid;
    entry["SIGNAL_STRENGTH"] = isSeen ? point.signalDbm : kNotSeen;
    entry["STATUS"] = statusOf(point.ssid, connected, connecting);
  }
  document["count"] = static_cast<int>(values.size());
  const std::string text = jsonLine(document);
  ConfigStore::instance().set({{host::kSavedNetworksKey, text}, {kPublishedKey, text}});
}

void publishStates(const std::vector<AccessPoint>& points, const std::string& connected,
                   const std::string& connecting) {
  if (!isDocumentOfSomebodyElse()) return publishSavedNetworks(points, connected, connecting);
  Json::Value document = readStoredJson(host::kSavedNetworksKey, Json::objectValue);
  if (!document["values"].isArray()) return;
  Json::Value& values = document["values"];
  for (Json::Value& entry : values) {
    if (!entry.isObject() || !entry["SSID"].isString()) continue;
    entry["STATUS"] = statusOf(entry["SSID"].asString(), connected, connecting);
  }
  ConfigStore::instance().set(host::kSavedNetworksKey, jsonLine(document));
}

bool isDocumentThere() {
  return ConfigStore::instance().get(host::kSavedNetworksKey).has_value();
}

bool isDocumentOfSomebodyElse() {
  const auto document = ConfigStore::instance().get(host::kSavedNetworksKey);
  return document && document != ConfigStore::instance().get(kPublishedKey);
}

}  // namespace platform
