// The saved-network document, as another component leaves it in the store: the input is its text.
#include <glib.h>
#include <json/reader.h>
#include <json/value.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "framework.h"
#include "require.h"
#include "stand_in/tv.h"

using namespace fuzz;

namespace {

constexpr char kFirst[] = "menu/network/SavedAP1";
constexpr char kSecond[] = "menu/network/SavedAP2";
constexpr std::size_t kNameBlock = 2048;
constexpr char kNoNetworkIcon[] = "oobe_icon_n_wifi_0.svg";

struct Network {
  bool enabled = false;
  std::string name;
  std::string titleIcon;
  std::string statusIcon;
};

// What a document is to say of the networks, read another way.
struct Expected {
  bool isMisshapen = false;
  std::vector<Json::Value> networks = {};
};

bool isNumber(const Json::Value& value) {
  return value.isConvertibleTo(Json::intValue);
}

Expected expected(const std::string& text) {
  Json::CharReaderBuilder strict;
  Json::CharReaderBuilder::strictMode(&strict.settings_);
  const std::unique_ptr<Json::CharReader> reader(strict.newCharReader());
  Json::Value root;
  std::string errors;
  try {
    if (!reader->parse(text.data(), text.data() + text.size(), &root, &errors)) return {};
  } catch (const Json::Exception&) {
    return {};  // nested too deep
  }
  if (!root.isObject() || !root.isMember("count") || !isNumber(root["count"])) return {true};
  const int count = root["count"].asInt();
  const Json::Value& values = root["values"];
  if (values.isNull() || (!values.isString() && values.empty()) || count < 1) return {};
  if (!values.isArray()) return {true};
  Expected found;
  for (const Json::Value& entry : values) {
    const bool isEmpty = entry.isNull() || ((entry.isObject() || entry.isArray()) && entry.empty());
    if (isEmpty || static_cast<int>(found.networks.size()) == count) break;
    const auto isText = [&entry](const char* name) {
      return !entry.isMember(name) || entry[name].isConvertibleTo(Json::stringValue) ||
             entry[name].isNumeric();
    };
    if (!entry.isObject() || !entry.isMember("SIGNAL_STRENGTH") ||
        !isNumber(entry["SIGNAL_STRENGTH"]) || !isText("SSID") || !isText("STATUS")) {
      return {true};
    }
    found.networks.push_back(entry);
  }
  return found;
}

void requireAsExpected(const Network& network, const Expected& document, std::size_t position) {
  require(network.enabled == (position < document.networks.size()), "as many as the document has");
  if (!network.enabled) return;
  const Json::Value& entry = document.networks[position];
  require(network.name == cut(entry.get("SSID", "").asString().c_str(), kNameBlock),
          "a network's name is the document's");
  const std::string status = entry.get("STATUS", "").asString();
  require((network.statusIcon == "loading") == (status == "Connecting"), "the busy animation");
  require(network.statusIcon.ends_with("check.png") ==
              (status == "Connected" && network.statusIcon.find("HIGH") == std::string::npos),
          "the check mark");
  const int strength = entry["SIGNAL_STRENGTH"].asInt();
  int level = 0;
  for (const int limit : {-89, -83, -75, -64}) level += strength > limit ? 1 : 0;
  require(network.titleIcon.ends_with("_" + std::to_string(level) + ".svg"), "the signal's level");
}

// What the menu is told of a network; nothing when the document is misshapen, and then every
// question says so.
bool ask(Framework& framework, const std::string& key, Network& network) {
  const bool misshapen = framework.isEnabled(key, network.enabled) == Raised::kJson;
  require((framework.displayName(key, network.name) == Raised::kJson) == misshapen &&
              (framework.titleIcon(key, network.titleIcon) == Raised::kJson) == misshapen &&
              (framework.statusIcon(key, network.statusIcon) == Raised::kJson) == misshapen,
          "a misshapen document is raised by all that read it");
  return !misshapen;
}

std::string commandedName() {
  const auto text = readableText(kConnectCommandKey);
  require(text.has_value(), "a connection that is asked for leaves a command");
  Json::Value command;
  std::string errors;
  const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
  require(reader->parse(text->data(), text->data() + text->size(), &command, &errors),
          "a command is JSON");
  require(command.isObject() && command.size() == 2 && command["COMMAND"] == "1" &&
              command["SSID"].isString(),
          "a command has its two texts");
  return command["SSID"].asString();
}

void connect(Framework& framework, const std::string& key, const Network& network) {
  answers().store.erase(kConnectCommandKey);
  int result = 0;
  require(framework.setInt(key, 1, result) == Raised::kNothing, "what can be named is connected");
  const std::string name = commandedName();
  // A name that is no UTF-8, as one that was cut inside a character, cannot go into JSON as it is.
  if (g_utf8_validate(network.name.c_str(), -1, nullptr) == FALSE) return;
  require(cut(name.c_str(), kNameBlock) == network.name, "the network that is shown is connected");
}

void requireConsistent(const Network& first, const Network& second) {
  require(first.enabled || !second.enabled, "there is no second network without a first");
  for (const Network& network : {first, second}) {
    if (network.enabled) continue;
    require(network.name.empty() && network.statusIcon.empty() &&
                network.titleIcon.ends_with(kNoNetworkIcon),
            "a network that there is not shows nothing");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  resetAnswers();
  const std::string text = std::string(data, data + size).c_str();  // texts end at a NUL
  const Expected document = expected(text);
  answers().store[kSavedNetworksKey] = text;
  answers().store["db/menu/system/accessibility/highcontrast"] = static_cast<int>(size % 2);
  Framework framework;
  Network first;
  Network second;
  const bool isShaped = ask(framework, kFirst, first);
  require(isShaped == !document.isMisshapen, "a misshapen document raises, and only that");
  require(ask(framework, kSecond, second) == isShaped, "both networks are of one document");
  std::string otherIcon;
  const Raised other = framework.statusIcon("menu/network/WiFiOnOff", otherIcon);
  require((other == Raised::kNothing) == isShaped, "any other key is answered for the second");
  if (isShaped) {
    require(otherIcon == second.statusIcon, "any other key is answered for the second");
    requireAsExpected(first, document, 0);
    requireAsExpected(second, document, 1);
    requireConsistent(first, second);
    connect(framework, kFirst, first);
    connect(framework, kSecond, second);
  } else {
    int result = 0;
    require(framework.setInt(kFirst, 1, result) == Raised::kJson, "connecting reads it, too");
    require(!readableText(kConnectCommandKey), "a misshapen document leaves no command");
  }
  notify(kSavedNetworksKey);
  const auto refresh = answers().store.find("db/menu/refresh_menu");
  require(refresh != answers().store.end() && std::get<int>(refresh->second) == 100002,
          "a change of the document refreshes the network branch");
  return 0;
}
