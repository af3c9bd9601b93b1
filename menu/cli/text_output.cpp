#include "output.h"

#include <algorithm>

#include "../host/display_text.h"
#include "../host/language.h"
#include "item_text.h"
#include "platform/host/visible_text.h"
#include "screen_text.h"

namespace cli {

namespace {

using menu::Item;
using menu::ItemKind;
using menu::translated;
using platform::host::StoreValue;
using platform::host::visibleLine;
using platform::host::visibleText;
using ListEntry = menu::Provider::ListEntry;
using MessageBox = menu::Provider::MessageBox;

constexpr std::size_t kIndent = 2;
constexpr std::size_t kGap = 3;

constexpr char kKey[] = "key:";
constexpr char kTitleIcon[] = "title icon:";
constexpr char kStatusIcon[] = "status icon:";
constexpr char kChoice[] = "choice:";
constexpr char kState[] = "state:";
constexpr char kAsks[] = "asks:";
constexpr const char* kLabels[] = {kKey, kTitleIcon, kStatusIcon, kChoice, kState, kAsks};

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
  return visibleLine(path.substr(path.rfind('/') + 1));
}

std::size_t labelColumns() {
  std::size_t width = 0;
  for (const char* label : kLabels) width = std::max(width, menu::columns(translated(label)));
  return width + 1;
}

std::string labelled(const char* label, const std::string& text) {
  const std::string word = translated(label);
  return word + std::string(labelColumns() - menu::columns(word), ' ') + text;
}

std::vector<std::string> explanation(const Item& item) {
  std::vector<std::string> lines;
  const auto add = [&lines](const char* label, const std::string& text) {
    if (!text.empty()) lines.push_back(labelled(label, text));
  };
  if (!item.help.empty()) lines.push_back(visibleText(item.help));
  add(kTitleIcon, fileName(item.titleIcon));
  add(kStatusIcon, fileName(item.statusIcon));
  // A saved network's list is that of its states, which nobody can choose.
  const char* entryLabel = item.kind == ItemKind::kSavedNetwork ? kState : kChoice;
  for (const ListEntry& entry : item.list) add(entryLabel, entryText(entry));
  if (item.box) add(kAsks, boxText(*item.box));
  return lines;
}

void collectLines(const std::vector<Item>& items, const View& view, std::size_t depth,
                  std::vector<Line>& lines) {
  for (const Item& item : items) {
    Line line{indented(depth, nameText(item)), valueText(item)};
    std::vector<std::string> below;
    if (view.detail == Detail::kAll) below = explanation(item);
    if (view.keys) below.insert(below.begin(), labelled(kKey, visibleLine(item.key)));
    for (const std::string& text : below) line.below.push_back(indented(depth + 2, text));
    lines.push_back(std::move(line));
    collectLines(item.items, view, depth + 1, lines);
  }
}

std::string storedText(const StoreValue& value) {
  if (const auto* text = std::get_if<std::string>(&value)) return *text;
  if (const auto* flag = std::get_if<bool>(&value)) return *flag ? "true" : "false";
  return std::to_string(std::get<int>(value));
}

}  // namespace

std::string toText(const std::vector<Item>& items, const View& view) {
  if (view.detail == Detail::kScreen) return screenText(items, view.keys);
  std::vector<Line> lines;
  collectLines(items, view, 0, lines);
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

std::string toText(const Item& item, const View& view) {
  return toText(std::vector{item}, view);
}

std::string toText(const std::vector<ListEntry>& entries) {
  std::string text;
  for (const ListEntry& entry : entries) text += entryText(entry) + "\n";
  return text;
}

std::string toText(const MessageBox& box) {
  return visibleText(box.text) + "\n" + buttonsText(box) + "\n";
}

std::string toText(const StoreEntry& entry) {
  return visibleLine(entry.first + " = " + storedText(entry.second)) + "\n";
}

std::string toText(const StoreEntries& entries) {
  std::string text;
  for (const StoreEntry& entry : entries) text += toText(entry);
  return text;
}

std::string toText(const RemovedKey& removed) {
  return visibleLine(removed.key + " is not set") + "\n";
}

std::string toText(const Descriptions& descriptions) {
  std::string text;
  for (const auto& [name, description] : descriptions) {
    text += visibleLine(std::string(name).append(": ").append(description)) + "\n";
  }
  return text;
}

}  // namespace cli
