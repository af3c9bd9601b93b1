// The menu: what is shown, and what a choice does.
#ifndef MENU_HOST_MENU_MODEL_H
#define MENU_HOST_MENU_MODEL_H

#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "menu_tree.h"
#include "provider.h"

namespace menu {

// What was asked for does not exist: the message says what was wrong and what there is.
class UnknownError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// What was asked for exists, but could not be done; the message says why.
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
  bool visible = true;
  bool enabled = true;
  std::vector<Item> items;
  std::vector<std::string> problems;  // callbacks that failed; what they would have told is missing
};

// Every function asks the provider anew. They raise CallbackError, UnknownError and RefusedError.
class MenuModel {
 public:
  MenuModel(Provider& provider, std::vector<MenuNode> tree);

  // The whole menu. A callback that fails leaves a problem with its item.
  std::vector<Item> readAll();

  // One item, without those below it. UnknownError when the menu has no such key.
  Item read(const std::string& key);

  // Chooses an entry of an item's option list, by its value or its text.
  void set(const std::string& key, const std::string& choice);

  // Gives the TV a name.
  void rename(const std::string& name);

  // Asks for a connection to the first (1) or second (2) saved network. Refused when there is none,
  // or when it is no longer the one that was last read at that position. Returns its key and name.
  Item connect(int position);

 private:
  const MenuNode& find(const std::string& key) const;
  Item readItem(const MenuNode& node);
  void readParts(const MenuNode& node, Item& item);
  int entryValue(const MenuNode& node, const std::string& choice) const;
  void requireEnabled(const std::string& key) const;

  Provider& provider_;
  std::vector<MenuNode> tree_;
  std::map<std::string, std::string> shownNetworks_;  // names of saved networks by key
};

}  // namespace menu

#endif  // MENU_HOST_MENU_MODEL_H
