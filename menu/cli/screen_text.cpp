#include "screen_text.h"

#include <algorithm>

#include "../host/display_text.h"
#include "../host/language.h"
#include "item_text.h"
#include "platform/host/visible_text.h"
#include "terminal.h"

namespace cli {

namespace {

using menu::Item;
using menu::ItemKind;
using platform::host::visibleLine;
using platform::host::visibleText;

constexpr std::size_t kIndent = 2;
constexpr std::size_t kGap = 3;
constexpr std::size_t kNarrowest = 20;  // the width that texts have even where there is less room

// The columns up to the values.
std::size_t nameColumns(const std::vector<Item>& items, std::size_t depth = 0) {
  std::size_t width = 0;
  for (const Item& item : items) {
    width = std::max({width, depth * kIndent + menu::columns(nameText(item)),
                      nameColumns(item.items, depth + 1)});
  }
  return width;
}

// The name, and the value in its column.
struct NameAndValue {
  std::string name;
  std::string value;
};

NameAndValue lineOf(const Item& item, std::size_t indent, std::size_t valueColumn) {
  const std::string name = nameText(item);
  const std::string value = valueText(item);
  const std::string gap(valueColumn - indent - menu::columns(name), ' ');
  return {name, value.empty() ? "" : gap + value};
}

class Screen {
 public:
  Screen(const std::vector<Item>& items, bool keys)
      : keys_(keys), terminal_(outputTerminal()), valueColumn_(nameColumns(items) + kGap) {
    addItems(items, 0);
  }

  const std::string& text() const { return text_; }

 private:
  void addItems(const std::vector<Item>& items, std::size_t indent) {
    for (const Item& item : items) {
      addLine(item, indent);
      if (keys_) addWrapped(Style::kDim, visibleLine(item.key), indent + kIndent);
      if (!item.help.empty()) addWrapped(Style::kDim, visibleText(item.help), indent + kIndent);
      if (item.kind != ItemKind::kSavedNetwork) addChoices(item, indent + kIndent);
      if (item.box) {
        const std::string asks = menu::translated("asks:") + " " + boxText(*item.box);
        addWrapped(Style::kDim, asks, indent + kIndent);
      }
      addItems(item.items, indent + kIndent);
    }
  }

  void addLine(const Item& item, std::size_t indent) {
    const auto [name, value] = lineOf(item, indent, valueColumn_);
    const bool usable = item.enabled && item.visible;
    text_ += std::string(indent, ' ') +
             terminal_.styled(usable ? Style::kBold : Style::kDim, name) + value + "\n";
  }

  void addChoices(const Item& item, std::size_t indent) {
    for (const menu::Provider::ListEntry& entry : item.list) {
      const bool isCurrent = item.position == entry.value;
      addWrapped(isCurrent ? Style::kBold : Style::kPlain,
                 (isCurrent ? "* " : "  ") + entryText(entry), indent);
    }
  }

  void addWrapped(Style style, const std::string& text, std::size_t indent) {
    const std::size_t room = std::max(terminal_.width, indent + kNarrowest) - indent;
    for (const std::string& line : wrapped(text, room)) {
      text_ += std::string(indent, ' ') + terminal_.styled(style, line) + "\n";
    }
  }

  bool keys_;
  Terminal terminal_;
  std::size_t valueColumn_;
  std::string text_;
};

void addLines(const std::vector<Item>& items, const std::set<std::string>& marked,
              std::size_t indent, std::size_t valueColumn, std::vector<std::string>& lines) {
  const Terminal terminal = outputTerminal();
  for (const Item& item : items) {
    const bool isMarked = marked.contains(item.key);
    const auto [name, value] = lineOf(item, indent, valueColumn);
    std::string line = isMarked ? "* " : "  ";
    line.append(indent, ' ').append(name + value);
    lines.push_back(
        terminal.styled(isMarked ? Style::kBold : Style::kPlain, cutTo(line, terminal.width)));
    addLines(item.items, marked, indent + kIndent, valueColumn, lines);
  }
}

}  // namespace

std::vector<std::string> screenLines(const std::vector<Item>& items,
                                     const std::set<std::string>& marked) {
  std::vector<std::string> lines;
  addLines(items, marked, 0, nameColumns(items) + kGap, lines);
  return lines;
}

std::string screenText(const std::vector<Item>& items, bool keys) {
  return Screen(items, keys).text();
}

}  // namespace cli
