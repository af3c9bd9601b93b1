#include "output.h"

#include <json/reader.h>
#include <json/writer.h>

#include <sstream>

#include "platform/host/visible_text.h"

namespace cli {

namespace {

using menu::Item;
using menu::ItemKind;
using menu::NetworkState;
using ListEntry = menu::Provider::ListEntry;
using MessageBox = menu::Provider::MessageBox;

const char* stateName(NetworkState state) {
  switch (state) {
    case NetworkState::kNone:
      return "none";
    case NetworkState::kConnecting:
      return "connecting";
    case NetworkState::kConnected:
      return "connected";
  }
  return "";
}

const char* actionName(ITEM_FOLLOWING_ACTION_TYPE action) {
  switch (action) {
    case ITEM_FOLLOWING_ACTION_NONE:
      return "none";
    case ITEM_FOLLOWING_ACTION_REFRESH:
      return "refresh";
    case ITEM_FOLLOWING_ACTION_MESSAGE_BOX:
      return "message-box";
  }
  return "unknown";
}

template <typename Elements>
Json::Value arrayOf(const Elements& elements) {
  Json::Value json(Json::arrayValue);
  for (const auto& element : elements) json.append(toJson(element));
  return json;
}

}  // namespace

Json::Value toJson(const ListEntry& entry) {
  Json::Value json(Json::objectValue);
  json["text"] = entry.text;
  json["value"] = entry.value;
  json["then"] = actionName(entry.action);
  return json;
}

Json::Value toJson(const MessageBox& box) {
  Json::Value json(Json::objectValue);
  json["text"] = box.text;
  json["buttons"].append(box.yes);
  json["buttons"].append(box.no);
  json["type"] = box.type;
  return json;
}

Json::Value toJson(const Item& item) {
  Json::Value json(Json::objectValue);
  json["key"] = item.key;
  json["kind"] = menu::kindName(item.kind);
  json["name"] = item.name;
  json["visible"] = item.visible;
  json["enabled"] = item.enabled;
  if (item.value) json["value"] = *item.value;
  if (item.position) json["position"] = *item.position;
  if (item.kind == ItemKind::kSavedNetwork) json["state"] = stateName(item.state);
  json["help"] = item.help;
  json["titleIcon"] = item.titleIcon;
  json["statusIcon"] = item.statusIcon;
  for (const ListEntry& entry : item.list) json["list"].append(toJson(entry));
  if (item.box) json["box"] = toJson(*item.box);
  for (const Item& child : item.items) json["items"].append(toJson(child));
  for (const std::string& problem : item.problems) json["problems"].append(problem);
  return json;
}

Json::Value toJson(const StoreEntry& entry) {
  const auto& [key, value] = entry;
  Json::Value json(Json::objectValue);
  json["key"] = key;
  json["type"] = platform::host::typeName(value);
  const auto* text = std::get_if<std::string>(&value);
  json["value"] = text != nullptr
                      ? Json::Value(*text)
                      : std::visit([](const auto& typed) { return Json::Value(typed); }, value);
  return json;
}

Json::Value toJson(const std::vector<Item>& items) {
  return arrayOf(items);
}

Json::Value toJson(const std::vector<ListEntry>& entries) {
  return arrayOf(entries);
}

Json::Value toJson(const StoreEntries& entries) {
  return arrayOf(entries);
}

Json::Value toJson(const RemovedKey& removed) {
  Json::Value json(Json::objectValue);
  json["key"] = removed.key;
  json["type"] = Json::nullValue;
  json["value"] = Json::nullValue;
  return json;
}

Json::Value toJson(const Descriptions& descriptions) {
  Json::Value json(Json::arrayValue);
  for (const auto& [name, description] : descriptions) {
    Json::Value& element = json.append(Json::objectValue);
    element["name"] = name;
    element["description"] = description;
  }
  return json;
}

Json::Value jsonOf(const std::string& text) {
  Json::Value json;
  std::string errors;
  std::istringstream stream(text);
  return Json::parseFromStream(Json::CharReaderBuilder(), stream, &json, &errors)
             ? json
             : Json::Value(Json::nullValue);
}

std::string jsonText(const Json::Value& json, const char* indentation) {
  Json::StreamWriterBuilder writer;
  writer["indentation"] = indentation;
  writer["emitUTF8"] = true;
  writer["enableYAMLCompatibility"] = true;  // "key": value, as most write it
  // Neither a key nor a stored text need be text; JSON must be.
  return platform::host::visibleText(Json::writeString(writer, json)) + "\n";
}

}  // namespace cli
