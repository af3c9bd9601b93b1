// The documents, read and written with jsoncpp as the provider does.
#include <json/json.h>

#include <memory>
#include <string>
#include <vector>

#include "floor.h"
#include "floor_log.h"

namespace {

struct Network {
  std::string ssid;
  std::string status;
  int strength;
};

std::vector<Network> networks;
std::string document;  // from which they are

void logNetwork(const Network& network) {
  LOG_MAIN(" AP Name = %s status = %s ", network.ssid.c_str(), network.status.c_str());
}

bool parse(const Json::CharReaderBuilder& builder, const std::string& text, Json::Value& root) {
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  std::string errors;
  return reader->parse(text.data(), text.data() + text.size(), &root, &errors);
}

}  // namespace

std::size_t floor_read_document(const char* text) {
  if (document == text) {
    for (const Network& network : networks) logNetwork(network);
    return networks.size();
  }
  networks.clear();
  Json::CharReaderBuilder builder;
  Json::CharReaderBuilder::strictMode(&builder.settings_);
  Json::Value root;
  parse(builder, text, root);
  const int count = root["count"].asInt();
  const Json::Value& values = root["values"];
  for (int i = 0; i < count; ++i) {
    const Json::Value& item = values[static_cast<Json::ArrayIndex>(i)];
    Network network{item["SSID"].asString(), item["STATUS"].asString(),
                    item["SIGNAL_STRENGTH"].asInt()};
    logNetwork(network);
    networks.push_back(std::move(network));
  }
  document = text;
  return networks.size();
}

const char* floor_ssid(int position) {
  return networks[static_cast<std::size_t>(position)].ssid.c_str();
}

const char* floor_status(int position) {
  return networks[static_cast<std::size_t>(position)].status.c_str();
}

int floor_strength(int position) {
  return networks[static_cast<std::size_t>(position)].strength;
}

bool floor_parse_state(const char* text, const char** style, const char** status) {
  static std::string styleText;
  static std::string statusText;
  Json::Value root;
  if (!parse(Json::CharReaderBuilder(), text, root)) return false;
  styleText = root["end"]["style"].asString();
  statusText = root["status"].asString();
  *style = styleText.c_str();
  *status = statusText.c_str();
  return true;
}

const char* floor_connect_command(const char* ssid) {
  static std::string text;
  Json::Value command(Json::objectValue);
  command["COMMAND"] = "1";
  command["SSID"] = ssid;
  text = Json::writeString(Json::StreamWriterBuilder(), command);
  return text.c_str();
}
