#include "output.h"

#include <algorithm>

#include "../host/display_text.h"

namespace cli {

namespace {

using menu::Item;
using menu::ItemKind;
using menu::NetworkState;
using platform::host::StoreValue;
using ListEntry = menu::Provider::ListEntry;
using MessageBox = menu::Provider::MessageBox;

constexpr std::size_t kIndent = 2;
constexpr std::size_t kGap = 3;

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

std::string valueText(const StoreValue& value) {
  if (const auto* text = std::get_if<std::string>(&value)) return *text;
  if (const auto* flag = std::get_if<bool>(&value)) return *flag ? "true" : "false";
  return std::to_string(std::get<int>(value));
}

}  // namespace

std::string toText(const std::vector<Item>& items, Detail detail) {
  std::vector<Line> lines;
  collectLines(items, detail, 0, lines);
  std::size_t width = 0;
  for (const Line& line : lines) width = std::max(width, menu::columns(line.left));
  std::string text;
  for (const Line& line : lines) {
    const std::string gap(width + kGap - menu::columns(line.left), ' ');
    text += line.right.empty() ? line.left + "\n" : line.left + gap + line.right + "\n";
    for (const std::string& below : line.below) text += below + "\n";
  }
  return text;
}

std::string toText(const Item& item, Detail detail) {
  return toText(std::vector{item}, detail);
}

std::string toText(const std::vector<ListEntry>& entries) {
  std::string text;
  for (const ListEntry& entry : entries) text += entryLine(entry) + "\n";
  return text;
}

std::string toText(const MessageBox& box) {
  return box.text + "\n[" + box.yes + "] [" + box.no + "]\n";
}

std::string toText(const StoreEntry& entry) {
  return entry.first + " = " + valueText(entry.second) + "\n";
}

std::string toText(const StoreEntries& entries) {
  std::string text;
  for (const StoreEntry& entry : entries) text += toText(entry);
  return text;
}

std::string toText(const Descriptions& descriptions) {
  std::string text;
  for (const auto& [name, description] : descriptions) {
    text.append(name).append(": ").append(description).append("\n");
  }
  return text;
}

}  // namespace cli
