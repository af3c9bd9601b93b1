// The files that people write: the input is read as a product, as a scenario and as a menu tree.
// Each must be refused with a message that names the file, or be accepted completely.
#include <json/reader.h>
#include <json/value.h>

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <functional>
#include <memory>
#include <string>

#include "../menu/host/menu_tree.h"
#include "platform/connection.h"
#include "platform/host/config_store.h"
#include "platform/host/errors.h"
#include "platform/host/network_service.h"
#include "platform/host/product.h"
#include "platform/wifi.h"
#include "require.h"
#include "scratch_store.h"

using namespace fuzz;
using platform::host::ConfigStore;
using platform::host::StoreValue;

namespace {

std::string file() {
  return scratchFile("input.json");
}

// Whether the file is accepted; if not, it must be refused with the one allowed error.
bool isTaken(const std::function<void()>& read) {
  try {
    read();
    return true;
  } catch (const platform::host::ConfigurationError& error) {
    const std::string message = error.what();
    require(message.starts_with(file() + ":"), "a refusal names the file");
    require(message.size() > file().size() + 3, "a refusal says what is wrong");
    return false;
  }
}

void requireProduct(const platform::host::Product& product) {
  require(product.file == file(), "a product knows its file");
  const auto known = product.flags.find("orlex_version");
  require(known == product.flags.end() || std::holds_alternative<int>(known->second),
          "a flag that the TV reads has its type");
  for (const char* name : {"broadcast.removable_rf_tuner_support", "projector_feature_support"}) {
    const auto flag = product.flags.find(name);
    require(flag == product.flags.end() || std::holds_alternative<bool>(flag->second),
            "a flag that the TV reads has its type");
  }
}

StoreValue stored(const std::string& key) {
  const auto value = ConfigStore::instance().get(key);
  require(value.has_value(), "a scenario sets all of the network's values");
  return *value;
}

Json::Value storedArray(const std::string& key) {
  const StoreValue value = stored(key);
  const auto& text = std::get<std::string>(value);
  Json::Value root;
  std::string errors;
  const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
  require(reader->parse(text.data(), text.data() + text.size(), &root, &errors) && root.isArray(),
          "what a scenario stores is JSON");
  return root;
}

void requireRadio(std::size_t points) {
  int radio = -1;
  require(wifi_get_enable_qx(&radio) == 0, "the radio answers");
  require(StoreValue(radio == 1) == stored("memory/host/network/radio"), "as the scenario says");
  const auto connected = std::get<std::string>(stored("memory/host/network/connected"));
  wifi_ap_h point = nullptr;
  const bool isConnected = wifi_get_connected_ap(&point) == 0;
  require(isConnected == (radio == 1 && !connected.empty()), "connected as the scenario says");
  require(!isConnected || points > 0, "connected to one of the access points");
  int mhz = 0;
  require((wifi_ap_get_frequency(point, &mhz) == 0) == isConnected,
          "an access point has a channel");
  require((wifi_ap_destroy(point) == 0) == isConnected, "an access point is returned");
}

void requireProfiles(std::size_t profiles) {
  connection_h connection = nullptr;
  connection_profile_iterator_h iterator = nullptr;
  require(connection_create(&connection) == 0, "there is a connection");
  require(connection_get_profile_iterator(connection, 0, &iterator) == 0, "it has its profiles");
  std::size_t count = 0;
  for (; connection_profile_iterator_has_next(iterator); ++count) {
    connection_profile_h profile = nullptr;
    int type = 0;
    require(connection_profile_iterator_next(iterator, &profile) == 0, "there is a next profile");
    require(connection_profile_get_type(profile, &type) == 0, "a profile has a type");
    const int result = connection_profile_enable_ethernet_eap(profile, true);
    require(type == 2 ? result == 0 || result == -106 : result == -104, "802.1X is for Ethernet");
  }
  require(count == profiles, "all profiles of the scenario are there");
  require(connection_destroy(connection) == 0, "the connection is returned");
}

void requireScenario() {
  const Json::Value points = storedArray("memory/host/network/access_points");
  requireRadio(points.size());
  requireProfiles(storedArray("memory/host/network/profiles").size());
  const auto document = std::get<std::string>(stored("db/menu/network/TopSavedAP"));
  Json::Value root;
  std::string errors;
  Json::CharReaderBuilder strict;
  Json::CharReaderBuilder::strictMode(&strict.settings_);
  const std::unique_ptr<Json::CharReader> reader(strict.newCharReader());
  require(reader->parse(document.data(), document.data() + document.size(), &root, &errors),
          "the published networks are strict JSON");
  require(root["count"] == Json::Value(static_cast<int>(root["values"].size())),
          "their count is theirs");
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  makeScratchFolder();
  std::ofstream(file()) << "{\"radio\": true, \"connected\": \"\", \"connect_milliseconds\": 0, "
                           "\"access_points\": [], \"profiles\": []}";
  setenv("VENTARO_SCENARIO", file().c_str(), 1);
  platform::host::openNetwork();
  ConfigStore::instance().list("");
  rememberStore();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::ofstream(file(), std::ios::binary | std::ios::trunc)
      .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  isTaken([] { requireProduct(platform::host::loadProduct(file())); });
  isTaken([] { menu::readMenuTree(file(), "us"); });
  if (isTaken([] { platform::host::loadScenario(file()); })) {
    requireScenario();
    restoreStore();
  }
  return 0;
}
