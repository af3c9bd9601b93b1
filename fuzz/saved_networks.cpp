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
#include "tv.h"

using namespace fuzz;
using fake_platform::store;

namespace {

constexpr char kFirst[] = VENTARO_KEY_SAVED_NETWORK_1;
constexpr char kSecond[] = VENTARO_KEY_SAVED_NETWORK_2;
constexpr char kNoNetworkIcon[] = "oobe_icon_n_wifi_0.svg";

struct Network {
  bool enabled = false;
  std::string name;
  std::string titleIcon;
  std::string statusIcon;
};

// What a document says of the networks, parsed in a different way.
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
  require(network.name == cut(entry.get("SSID", "").asString(), VENTARO_TEXT_SIZE),
          "a network's name is the document's");
  const std::string status = entry.get("STATUS", "").asString();
  require((network.statusIcon == VENTARO_ICON_BUSY) == (status == "Connecting"),
          "the busy animation");
  require(network.statusIcon.ends_with("check.png") ==
              (status == "Connected" && network.statusIcon.find("HIGH") == std::string::npos),
          "the check mark");
  const int strength = entry["SIGNAL_STRENGTH"].asInt();
  int level = 0;
  for (const int limit : {-89, -83, -75, -64}) level += strength > limit ? 1 : 0;
  require(network.titleIcon.ends_with("_" + std::to_string(level) + ".svg"), "the signal's level");
}

bool isMisshapen(const contract::Answer& answer) {
  return answer.raised == contract::kDocumentError;
}

// What the provider tells the menu about a network; nothing when the document is misshapen, and
// then every call must raise.
bool ask(contract::Calls& calls, const std::string& key, Network& network) {
  const contract::Answer enabled = calls.isEnabledInt(key);
  const contract::Answer name = calls.displayName(key);
  const contract::Answer titleIcon = calls.titleIcon(key);
  const contract::Answer statusIcon = calls.secondIcon(key);
  const bool misshapen = isMisshapen(enabled);
  require(isMisshapen(name) == misshapen && isMisshapen(titleIcon) == misshapen &&
              isMisshapen(statusIcon) == misshapen,
          "a misshapen document is raised by all that read it");
  if (!misshapen) network = {enabled.result == 1, *name.text, *titleIcon.text, *statusIcon.text};
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

void connect(contract::Calls& calls, const std::string& key, const Network& network) {
  store().erase(kConnectCommandKey);
  require(!calls.setInt(key, 1).hasRaised(), "what can be named is connected");
  const std::string name = commandedName();
  // A name that is not valid UTF-8, such as one cut inside a character, cannot be written to JSON
  // unchanged.
  if (g_utf8_validate(network.name.c_str(), -1, nullptr) == FALSE) return;
  require(cut(name, VENTARO_TEXT_SIZE) == network.name, "the network that is shown is connected");
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
  newTv();
  const std::string text = untilNul({reinterpret_cast<const char*>(data), size});
  const Expected document = expected(text);
  store().set(kSavedNetworksKey, text);
  store().set("db/menu/system/accessibility/highcontrast", static_cast<int>(size % 2));
  Framework framework;
  Network first;
  Network second;
  contract::Calls& calls = framework.calls();
  const bool isShaped = ask(calls, kFirst, first);
  require(isShaped == !document.isMisshapen, "a misshapen document raises, and only that");
  require(ask(calls, kSecond, second) == isShaped, "both networks are of one document");
  const contract::Answer other = calls.secondIcon(VENTARO_KEY_WIFI);
  require(isMisshapen(other) == !isShaped, "any other key is answered for the second");
  if (isShaped) {
    require(other.text == second.statusIcon, "any other key is answered for the second");
    requireAsExpected(first, document, 0);
    requireAsExpected(second, document, 1);
    requireConsistent(first, second);
    connect(calls, kFirst, first);
    connect(calls, kSecond, second);
  } else {
    require(isMisshapen(calls.setInt(kFirst, 1)), "connecting reads it, too");
    require(!readableText(kConnectCommandKey), "a misshapen document leaves no command");
  }
  store().notify(kSavedNetworksKey);
  require(store().intAt("db/menu/refresh_menu") == 100002,
          "a change of the document refreshes the network branch");
  return 0;
}
