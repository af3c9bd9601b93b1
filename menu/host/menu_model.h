// The menu: what is shown, and what a choice does.
#ifndef MENU_HOST_MENU_MODEL_H
#define MENU_HOST_MENU_MODEL_H

#include <functional>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "menu_tree.h"
#include "provider.h"

namespace menu {

// What was asked for does not exist. The message says what was wrong and what there is; where that
// is much, as a list of its own.
class UnknownError : public std::runtime_error {
 public:
  explicit UnknownError(const std::string& message, std::vector<std::string> list = {})
      : std::runtime_error(message), list_(std::move(list)) {}

  const std::vector<std::string>& list() const { return list_; }

 private:
  std::vector<std::string> list_;
};

// What was asked for exists but could not be done. The message says why.
class RefusedError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The state that a saved network's side icon shows.
enum class NetworkState { kNone, kConnecting, kConnected };

struct Item {
  std::string key;
  ItemKind kind = ItemKind::kAction;
  std::string name;
  std::optional<std::string> value;  // as text, of items that have one
  std::optional<int> position;       // of the value in the item's option list
  NetworkState state = NetworkState::kNone;
  std::string help;
  std::string titleIcon;   // an image path
  std::string statusIcon;  // an image path, "loading", or empty
  std::vector<Provider::ListEntry> list;
  std::optional<Provider::MessageBox> box;  // of items with an entry that asks first
  bool visible = true;
  bool enabled = true;
  std::vector<Item> items;
  std::vector<std::string> problems;  // callbacks that failed; their parts of the item are missing
};

// Every function asks the provider anew. A key may be given by its last parts, in any letter case
// ("volume"), where only one item of the menu ends so. They raise CallbackError, UnknownError
// and RefusedError.
class MenuModel {
 public:
  MenuModel(Provider& provider, std::vector<MenuNode> tree);

  // The keys of all items.
  std::vector<std::string> keys() const;

  // The whole menu. A callback that fails leaves a problem with its item.
  std::vector<Item> readAll();

  // One item, without those below it. UnknownError when the menu has no such key.
  Item read(const std::string& key);

  // The option list of an item that has one.
  std::vector<Provider::ListEntry> list(const std::string& key);

  // The confirmation box that an item would show. UnknownError when none of its entries asks;
  // refused when the provider has none.
  Provider::MessageBox box(const std::string& key);

  // The entry with that value or text, in any letter case. UnknownError when the item has no value,
  // or no such entry.
  Provider::ListEntry findChoice(const std::string& key, const std::string& choice);

  // Gives an item a value of its option list, without asking. Where the entry's action says so, the
  // caller asks the person first.
  void set(const std::string& key, int value);

  // Gives the TV a name. Returns the key of the item that shows it.
  std::string rename(const std::string& name);

  // Asks for a connection to the saved network at that position, the menu's first being at 1.
  // Refused when there is none, or when it is no longer the one that was last read at that
  // position. Returns its key and name.
  Item connect(int position);

  // The state of a network that was asked to connect; none when another has taken its position.
  NetworkState stateOf(const Item& asked) const;

 private:
  const MenuNode& find(const std::string& key) const;
  // The keys of the nodes that `wanted` accepts, a line each.
  std::vector<std::string> keysOf(const std::function<bool(const MenuNode&)>& wanted) const;
  // Whether an entry of its list asks first.
  bool asks(const MenuNode& node) const;
  Item readItem(const MenuNode& node);
  void readParts(const MenuNode& node, Item& item);
  std::vector<const MenuNode*> nodesOf(ItemKind kind) const;
  void requireEnabled(const std::string& key) const;

  Provider& provider_;
  std::vector<MenuNode> tree_;
  std::map<std::string, std::string> shownNetworks_;  // names of saved networks by key
};

}  // namespace menu

#endif  // MENU_HOST_MENU_MODEL_H
