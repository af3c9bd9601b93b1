#include "output.h"

#include <fcntl.h>
#include <json/writer.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <iostream>

#include "../host/display_text.h"

namespace cli {

namespace {

using menu::Item;
using menu::ItemKind;
using menu::NetworkState;
using platform::host::StoreValue;
using ListEntry = menu::Provider::ListEntry;
using MessageBox = menu::Provider::MessageBox;

std::FILE* standardOutput = nullptr;

constexpr std::size_t kIndent = 2;
constexpr std::size_t kGap = 3;

std::string jsonText(const Json::Value& value, const char* indentation) {
  Json::StreamWriterBuilder writer;
  writer["indentation"] = indentation;
  writer["emitUTF8"] = true;
  writer["enableYAMLCompatibility"] = true;  // "key": value, as most write it
  return Json::writeString(writer, value);
}

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
std::string valueColumn(const Item& item) {
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
  const bool none = item.kind == ItemKind::kSavedNetwork && item.problems.empty();
  return none ? "(no saved network)" : "(" + item.key + ")";
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

std::string entryLine(const ListEntry& entry) {
  const std::string line = std::to_string(entry.value) + " " + entry.text;
  switch (entry.action) {
    case ITEM_FOLLOWING_ACTION_NONE:
      return line;
    case ITEM_FOLLOWING_ACTION_REFRESH:
      return line + "  (then refreshes)";
    case ITEM_FOLLOWING_ACTION_MESSAGE_BOX:
      return line + "  (asks first)";
  }
  return line;
}

std::string boxLine(const MessageBox& box) {
  return box.text + "  [" + box.yes + "] [" + box.no + "]";
}

// A line of the menu, its right-hand side in a column of its own, and the lines that explain it.
struct Line {
  std::string left;
  std::string right;
  std::vector<std::string> below = {};
};

std::string indented(std::size_t depth, const std::string& text) {
  std::string lines = std::string(depth * kIndent, ' ');
  for (const char c : text) {
    lines += c;
    if (c == '\n') lines += std::string(depth * kIndent, ' ');
  }
  return lines;
}

// Icons by their file names: the folders are long, and the same for all.
std::string fileName(const std::string& path) {
  return path.substr(path.rfind('/') + 1);
}

std::vector<std::string> explanation(const Item& item) {
  std::vector<std::string> lines;
  const auto add = [&lines](const char* word, const std::string& text) {
    if (!text.empty()) lines.push_back(word + text);
  };
  add("", item.help);
  add("title icon:  ", fileName(item.titleIcon));
  add("status icon: ", fileName(item.statusIcon));
  for (const ListEntry& entry : item.list) add("choice:      ", entryLine(entry));
  if (item.box) add("asks:        ", boxLine(*item.box));
  return lines;
}

void collectLines(const std::vector<Item>& items, Detail detail, std::size_t depth,
                  std::vector<Line>& lines) {
  for (const Item& item : items) {
    Line line{indented(depth, shownName(item)), valueColumn(item)};
    if (detail == Detail::kAll) {
      for (const std::string& text : explanation(item)) {
        line.below.push_back(indented(depth + 2, text));
      }
    }
    lines.push_back(std::move(line));
    collectLines(item.items, detail, depth + 1, lines);
  }
}

void printAligned(const std::vector<Line>& lines) {
  std::size_t width = 0;
  for (const Line& line : lines) width = std::max(width, menu::columns(line.left));
  for (const Line& line : lines) {
    const std::string gap(width + kGap - menu::columns(line.left), ' ');
    printLine(line.right.empty() ? line.left : line.left + gap + line.right);
    for (const std::string& text : line.below) printLine(text);
  }
}

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

Json::Value toJson(const std::vector<Item>& items) {
  Json::Value json(Json::arrayValue);
  for (const Item& item : items) json.append(toJson(item));
  return json;
}

// Neither a key nor a stored string need be text; JSON must be.
Json::Value toJson(const std::string& key, const StoreValue& value) {
  Json::Value json(Json::objectValue);
  json["key"] = menu::validText(key);
  json["type"] = platform::host::typeName(value);
  const auto* text = std::get_if<std::string>(&value);
  json["value"] = text != nullptr
                      ? Json::Value(menu::validText(*text))
                      : std::visit([](const auto& typed) { return Json::Value(typed); }, value);
  return json;
}

std::string toText(const StoreValue& value) {
  if (const auto* text = std::get_if<std::string>(&value)) return *text;
  if (const auto* flag = std::get_if<bool>(&value)) return *flag ? "true" : "false";
  return std::to_string(std::get<int>(value));
}

}  // namespace

void claimStandardOutput() {
  standardOutput = fdopen(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3), "w");
  dup2(STDERR_FILENO, STDOUT_FILENO);
}

bool standardOutputIsWritten() {
  return standardOutput == nullptr ||
         (std::fflush(standardOutput) == 0 && std::ferror(standardOutput) == 0);
}

void printLine(const std::string& line) {
  std::FILE* stream = standardOutput != nullptr ? standardOutput : stdout;
  std::fputs((line + "\n").c_str(), stream);
  std::fflush(stream);
}

void printJson(const Json::Value& value) {
  printLine(jsonText(value, "  "));
}

void printJsonLine(const Json::Value& value) {
  printLine(jsonText(value, ""));
}

void printItems(const std::vector<Item>& items, Format format, Detail detail) {
  if (format == Format::kJson) return printJson(toJson(items));
  std::vector<Line> lines;
  collectLines(items, detail, 0, lines);
  printAligned(lines);
}

void printItem(const Item& item, Format format, Detail detail) {
  if (format == Format::kJson) return printJson(toJson(item));
  std::vector<Line> lines;
  collectLines({item}, detail, 0, lines);
  printAligned(lines);
}

void printUpdate(const Item& item, Format format) {
  if (format == Format::kJson) return printJsonLine(toJson(item));
  printItem(item, format);
}

void printUpdate(const std::vector<Item>& items, Format format) {
  if (format == Format::kJson) return printJsonLine(toJson(items));
  printItems(items, format, Detail::kLine);
  printLine("");
}

void printList(const std::vector<ListEntry>& entries, Format format) {
  if (format == Format::kText) {
    for (const ListEntry& entry : entries) printLine(entryLine(entry));
    return;
  }
  Json::Value json(Json::arrayValue);
  for (const ListEntry& entry : entries) json.append(toJson(entry));
  printJson(json);
}

void printBox(const MessageBox& box, Format format) {
  if (format == Format::kJson) return printJson(toJson(box));
  printLine(box.text);
  printLine("[" + box.yes + "] [" + box.no + "]");
}

void printValue(const std::string& key, const StoreValue& value, Format format) {
  if (format == Format::kJson) return printJson(toJson(key, value));
  printLine(key + " = " + toText(value));
}

void printUpdate(const std::string& key, const StoreValue& value, Format format) {
  if (format == Format::kJson) return printJsonLine(toJson(key, value));
  printValue(key, value, format);
}

void printValues(const std::map<std::string, StoreValue>& values, Format format) {
  Json::Value json(Json::arrayValue);
  for (const auto& [key, value] : values) {
    if (format == Format::kText) printValue(key, value, format);
    json.append(toJson(key, value));
  }
  if (format == Format::kJson) printJson(json);
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
