#include "documents.h"

#include <json/value.h>
#include <json/writer.h>

namespace {

Json::Value network(int number) {
  constexpr int kStrongest = -50;  // dBm
  constexpr int kStrengths = 50;
  Json::Value entry;
  entry["SSID"] = "Network " + std::to_string(number);
  entry["SIGNAL_STRENGTH"] = kStrongest - number % kStrengths;
  entry["STATUS"] = number == 0 ? "Connected" : "Disconnected";
  return entry;
}

}  // namespace

std::string document(int entries) {
  Json::Value root;
  root["count"] = entries;
  root["values"] = Json::arrayValue;
  for (int i = 0; i < entries; ++i) root["values"].append(network(i));
  Json::StreamWriterBuilder writer;
  writer["indentation"] = "";
  return Json::writeString(writer, root);
}
