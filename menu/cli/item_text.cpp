#include "item_text.h"

#include "../host/language.h"
#include "platform/host/visible_text.h"

namespace cli {

using menu::Item;
using menu::ItemKind;
using menu::NetworkState;
using menu::translated;
using platform::host::visibleLine;
using platform::host::visibleText;

std::string nameText(const Item& item) {
  if (!item.name.empty()) return visibleLine(item.name);
  const bool none = item.kind == ItemKind::kSavedNetwork && item.problems.empty();
  return none ? translated("(no saved network)") : "(" + visibleLine(item.key) + ")";
}

std::string shownValue(const Item& item) {
  if (item.state == NetworkState::kConnecting) return translated("Connecting");
  if (item.state == NetworkState::kConnected) return translated("Connected");
  return item.value.value_or("");
}

std::string valueText(const Item& item) {
  std::string text = visibleLine(shownValue(item));
  const auto add = [&text](const std::string& word) { text += (text.empty() ? "" : " ") + word; };
  if (item.kind == ItemKind::kPage && item.items.empty()) text = ">";
  if (!item.enabled) add(translated("(disabled)"));
  if (!item.visible) add(translated("(hidden)"));
  return text;
}

std::string entryText(const menu::Provider::ListEntry& entry) {
  const std::string text = std::to_string(entry.value) + " " + visibleLine(entry.text);
  switch (entry.action) {
    case ITEM_FOLLOWING_ACTION_NONE:
      return text;
    case ITEM_FOLLOWING_ACTION_REFRESH:
      return text + "  " + translated("(then refreshes)");
    case ITEM_FOLLOWING_ACTION_MESSAGE_BOX:
      return text + "  " + translated("(asks first)");
  }
  return text;
}

std::string buttonsText(const menu::Provider::MessageBox& box) {
  return "[" + visibleLine(box.yes) + "] [" + visibleLine(box.no) + "]";
}

std::string boxText(const menu::Provider::MessageBox& box) {
  return visibleText(box.text) + "  " + buttonsText(box);
}

}  // namespace cli
