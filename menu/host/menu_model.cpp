#include "menu_model.h"

#include <algorithm>
#include <functional>

#include "display_text.h"
#include "typed_name.h"

namespace menu {

namespace {

NetworkState stateOfIcon(const std::string& icon) {
  if (icon.empty()) return NetworkState::kNone;
  return icon == VENTARO_ICON_BUSY ? NetworkState::kConnecting : NetworkState::kConnected;
}

bool hasValue(ItemKind kind) {
  return kind == ItemKind::kChoice || kind == ItemKind::kDeviceName;
}

std::string inQuotes(const std::string& text) {
  return "\"" + text + "\"";
}

bool asksFirst(const Provider::ListEntry& entry) {
  return entry.action == ITEM_FOLLOWING_ACTION_MESSAGE_BOX;
}

std::string positions(std::size_t count) {
  std::string text;
  for (std::size_t i = 1; i <= count; ++i) text += (i == 1 ? "" : ", ") + std::to_string(i);
  return text;
}

// What a callback answered that is needed here.
template <typename Answer>
Answer needed(const std::optional<Answer>& answer, const char* callback) {
  if (!answer) throw RefusedError(std::string("the provider does not offer ") + callback);
  return *answer;
}

std::string listed(const std::vector<Provider::ListEntry>& entries) {
  std::string text;
  for (const Provider::ListEntry& entry : entries) {
    text += (text.empty() ? "" : ", ") + std::to_string(entry.value) + " (" + entry.text + ")";
  }
  return text;
}

std::vector<std::string> textsOf(const std::vector<Provider::ListEntry>& entries) {
  std::vector<std::string> texts;
  std::ranges::transform(entries, std::back_inserter(texts), &Provider::ListEntry::text);
  return texts;
}

// The entry with that value or text, else with that text in another letter case.
auto entryOf(const std::vector<Provider::ListEntry>& entries, const std::string& choice) {
  const auto exact = std::ranges::find_if(entries, [&](const Provider::ListEntry& entry) {
    return choice == std::to_string(entry.value) || choice == entry.text;
  });
  if (exact != entries.end()) return exact;
  return std::ranges::find_if(
      entries, [&](const Provider::ListEntry& entry) { return isSameName(choice, entry.text); });
}

}  // namespace

MenuModel::MenuModel(Provider& provider, std::vector<MenuNode> tree)
    : provider_(provider), tree_(std::move(tree)) {}

std::vector<std::string> MenuModel::keys() const {
  return keysOf([](const MenuNode&) { return true; });
}

std::vector<Item> MenuModel::readAll() {
  const std::function<std::vector<Item>(const std::vector<MenuNode>&)> readNodes =
      [&](const std::vector<MenuNode>& nodes) {
        std::vector<Item> items;
        for (const MenuNode& node : nodes) {
          items.push_back(readItem(node));
          items.back().items = readNodes(node.items);
        }
        return items;
      };
  return readNodes(tree_);
}

Item MenuModel::read(const std::string& key) {
  return readItem(find(key));
}

const MenuNode& MenuModel::find(const std::string& key) const {
  std::vector<const MenuNode*> ending;
  for (const MenuNode* node : flatten(tree_)) {
    if (node->key == key) return *node;
    if (endsPath(key, node->key)) ending.push_back(node);
  }
  if (ending.size() == 1) return *ending.front();
  if (!ending.empty()) {
    throw UnknownError("several items end in " + inQuotes(key) + ":",
                       keysOf([&](const MenuNode& node) { return endsPath(key, node.key); }));
  }
  const std::string suggestion = didYouMean(key, keys());
  const std::string problem = "the menu has no item " + inQuotes(key);
  if (suggestion.empty()) throw UnknownError(problem + "; it has:", keys());
  throw UnknownError(problem + suggestion);
}

std::vector<std::string> MenuModel::keysOf(
    const std::function<bool(const MenuNode&)>& wanted) const {
  std::vector<std::string> keys;
  for (const MenuNode* node : flatten(tree_)) {
    if (wanted(*node)) keys.push_back(node->key);
  }
  return keys;
}

bool MenuModel::asks(const MenuNode& node) const {
  return !node.listKey.empty() && std::ranges::any_of(provider_.list(node.listKey), asksFirst);
}

Item MenuModel::readItem(const MenuNode& node) {
  Item item;
  item.key = node.key;
  item.kind = node.kind;
  readParts(node, item);
  return item;
}

// Reads each part by itself: a callback that fails costs its own part and no other.
void MenuModel::readParts(const MenuNode& node, Item& item) {
  const auto part = [&item](const auto& readPart) {
    try {
      readPart();
    } catch (const CallbackError& error) {
      item.problems.emplace_back(error.what());
    }
  };
  part([&] { item.visible = provider_.isVisible(node.key); });
  part([&] { item.enabled = provider_.isEnabled(node.key); });
  part([&] { item.name = provider_.displayName(node.key); });
  if (hasValue(node.kind)) {
    part([&] { item.value = provider_.stringValue(node.key); });
    part([&] { item.position = provider_.intValue(node.key); });
  }
  part([&] { item.help = provider_.helpText(node.key); });
  part([&] { item.titleIcon = provider_.titleIcon(node.key); });
  // The provider answers with the second saved network's icon for every item but the first.
  part([&] { item.statusIcon = provider_.statusIcon(node.key); });
  if (node.kind == ItemKind::kSavedNetwork) {
    if (item.problems.empty()) shownNetworks_[node.key] = item.name;
    item.state = stateOfIcon(item.statusIcon);
  }
  if (!node.listKey.empty()) part([&] { item.list = provider_.list(node.listKey); });
  if (std::ranges::any_of(item.list, asksFirst)) {
    part([&] { item.box = provider_.messageBox(node.key); });
  }
}

std::vector<Provider::ListEntry> MenuModel::list(const std::string& key) {
  const MenuNode& node = find(key);
  if (node.listKey.empty()) {
    throw UnknownError(inQuotes(node.key) + " has no option list; these have one:",
                       keysOf([](const MenuNode& other) { return !other.listKey.empty(); }));
  }
  return provider_.list(node.listKey);
}

Provider::MessageBox MenuModel::box(const std::string& key) {
  const MenuNode& node = find(key);
  Provider::MessageBox box = needed(provider_.messageBox(node.key), "get_messagebox_info");
  if (asks(node)) return box;  // a provider may answer for any key
  std::vector<std::string> asking = keysOf([this](const MenuNode& other) { return asks(other); });
  const char* const others = asking.empty() ? "" : "; these ask:";
  throw UnknownError(inQuotes(node.key) + " asks nothing before it is changed" + others,
                     std::move(asking));
}

Provider::ListEntry MenuModel::findChoice(const std::string& key, const std::string& choice) {
  const MenuNode& node = find(key);
  if (!hasValue(node.kind)) {
    throw UnknownError(inQuotes(node.key) + " has no value to set; these have one:",
                       keysOf([](const MenuNode& other) { return hasValue(other.kind); }));
  }
  const std::vector<Provider::ListEntry> entries = provider_.list(node.listKey);
  if (entries.empty()) {
    throw RefusedError("the provider gave no choices for " + inQuotes(node.key) +
                       " by get_list_items");
  }
  const auto found = entryOf(entries, choice);
  if (found == entries.end()) {
    throw UnknownError(inQuotes(node.key) + " has no choice " + inQuotes(choice) + "; it has " +
                       listed(entries) + didYouMean(choice, textsOf(entries)));
  }
  if (node.kind == ItemKind::kDeviceName && found == entries.end() - 1) {
    throw UnknownError("choice " + std::to_string(found->value) +
                       " is the name that a person types; use: name TEXT");
  }
  return *found;
}

void MenuModel::set(const std::string& key, int value) {
  const MenuNode& node = find(key);
  requireEnabled(node.key);
  const int result = needed(provider_.setInt(node.key, value), "set_int");
  if (result < 0) {
    throw RefusedError("the TV did not set " + inQuotes(node.key) + ": set_int gave " +
                       std::to_string(result) + "; VENTARO_LOG=stderr shows why");
  }
}

void MenuModel::requireEnabled(const std::string& key) const {
  if (!provider_.isEnabled(key)) throw RefusedError(inQuotes(key) + " is disabled at the moment");
}

std::vector<const MenuNode*> MenuModel::nodesOf(ItemKind kind) const {
  std::vector<const MenuNode*> nodes = flatten(tree_);
  std::erase_if(nodes, [kind](const MenuNode* node) { return node->kind != kind; });
  return nodes;
}

std::string MenuModel::rename(const std::string& name) {
  if (name.empty()) throw UnknownError("the name is empty; a name has at least one character");
  if (!isPlainText(name)) {
    throw UnknownError("the name must be one line of UTF-8 text without control characters");
  }
  if (name.size() >= VENTARO_CURRENT_VALUE_SIZE) {
    throw UnknownError("the name has " + std::to_string(name.size()) +
                       " bytes; a name has at most " +
                       std::to_string(VENTARO_CURRENT_VALUE_SIZE - 1));
  }
  const auto nodes = nodesOf(ItemKind::kDeviceName);
  if (nodes.empty()) throw UnknownError("the menu has no item of kind \"device-name\"");
  const std::string key = nodes.front()->key;
  requireEnabled(key);
  const int result = needed(provider_.setString(key, name), "set_string");
  if (result != 0) {
    throw RefusedError("the TV did not store the name: set_string gave " + std::to_string(result) +
                       "; VENTARO_LOG=stderr shows why");
  }
  return key;
}

Item MenuModel::connect(int position) {
  const auto nodes = nodesOf(ItemKind::kSavedNetwork);
  if (nodes.empty()) throw UnknownError("the menu has no item of kind \"saved-network\"");
  if (position < 1 || position > std::ssize(nodes)) {
    throw UnknownError("there is no saved network " + std::to_string(position) + "; there are " +
                       positions(nodes.size()));
  }
  const std::string key = nodes[static_cast<std::size_t>(position) - 1]->key;
  if (!provider_.isEnabled(key)) {
    throw RefusedError("there is no saved network at position " + std::to_string(position));
  }
  const std::string name = provider_.displayName(key);
  const auto shown = shownNetworks_.find(key);
  if (shown != shownNetworks_.end() && shown->second != name) {
    throw RefusedError("the saved networks changed: position " + std::to_string(position) +
                       " was " + inQuotes(shown->second) + " and is now " + inQuotes(name) +
                       "; look at the menu again");
  }
  // The result says nothing: the network service answers through the network's state.
  needed(provider_.setInt(key, 1), "set_int");
  Item asked;
  asked.key = key;
  asked.kind = ItemKind::kSavedNetwork;
  asked.name = name;
  return asked;
}

NetworkState MenuModel::stateOf(const Item& asked) const {
  if (provider_.displayName(asked.key) != asked.name) return NetworkState::kNone;
  return stateOfIcon(provider_.statusIcon(asked.key));
}

}  // namespace menu
