#include "output.h"

#include <json/writer.h>

#include <algorithm>
#include <iostream>

#include "../host/display_text.h"

namespace cli {

namespace {

using menu::Item;
using menu::ItemKind;
using menu::NetworkState;

constexpr std::size_t kIndent = 2;
constexpr std::size_t kGap = 3;

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

// The right-hand side of an item's line.
std::string detail(const Item& item) {
  std::string text = item.value.value_or("");
  if (item.state == NetworkState::kConnecting) text = "Connecting";
  if (item.state == NetworkState::kConnected) text = "Connected";
  if (item.kind == ItemKind::kPage && item.items.empty()) text = ">";
  if (!item.enabled) text += text.empty() ? "(disabled)" : " (disabled)";
  if (!item.visible) text += text.empty() ? "(hidden)" : " (hidden)";
  return text;
}

std::string shownName(const Item& item) {
  if (!item.name.empty()) return item.name;
  return item.kind == ItemKind::kSavedNetwork ? "(no saved network)" : "(" + item.key + ")";
}

struct Line {
  std::string left;
  std::string right;
};

void collectLines(const std::vector<Item>& items, std::size_t depth, std::vector<Line>& lines) {
  for (const Item& item : items) {
    lines.push_back({std::string(depth * kIndent, ' ') + shownName(item), detail(item)});
    collectLines(item.items, depth + 1, lines);
  }
}

void printAligned(const std::vector<Line>& lines) {
  std::size_t width = 0;
  for (const Line& line : lines) width = std::max(width, menu::columns(line.left));
  for (const Line& line : lines) {
    const std::string gap(width + kGap - menu::columns(line.left), ' ');
    printLine(line.right.empty() ? line.left : line.left + gap + line.right);
  }
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
  for (const Item& child : item.items) json["items"].append(toJson(child));
  for (const std::string& problem : item.problems) json["problems"].append(problem);
  return json;
}

Json::Value toJson(const platform::host::StoreValue& value) {
  return std::visit([](const auto& typed) { return Json::Value(typed); }, value);
}

std::string toText(const platform::host::StoreValue& value) {
  if (const auto* text = std::get_if<std::string>(&value)) return *text;
  if (const auto* flag = std::get_if<bool>(&value)) return *flag ? "true" : "false";
  return std::to_string(std::get<int>(value));
}

}  // namespace

void printLine(const std::string& line) {
  std::cout << line << std::endl;
}

void printJson(const Json::Value& value) {
  Json::StreamWriterBuilder writer;
  writer["indentation"] = "  ";
  writer["emitUTF8"] = true;
  writer["enableYAMLCompatibility"] = true;  // "key": value, as most write it
  printLine(Json::writeString(writer, value));
}

void printItems(const std::vector<Item>& items, Format format) {
  if (format == Format::kJson) {
    Json::Value json(Json::arrayValue);
    for (const Item& item : items) json.append(toJson(item));
    return printJson(json);
  }
  std::vector<Line> lines;
  collectLines(items, 0, lines);
  printAligned(lines);
}

void printItem(const Item& item, Format format) {
  if (format == Format::kJson) return printJson(toJson(item));
  printAligned({{shownName(item), detail(item)}});
}

void printValue(const std::string& key, const platform::host::StoreValue& value, Format format) {
  if (format == Format::kText) return printLine(key + " = " + toText(value));
  Json::Value json(Json::objectValue);
  json["key"] = key;
  json["type"] = platform::host::typeName(value);
  json["value"] = toJson(value);
  printJson(json);
}

bool printProblems(const std::vector<Item>& items) {
  bool any = false;
  for (const Item& item : items) {
    for (const std::string& problem : item.problems) {
      std::cerr << "ventaro: " << item.key << ": " << problem << '\n';
      any = true;
    }
    any = printProblems(item.items) || any;
  }
  return any;
}

}  // namespace cli
