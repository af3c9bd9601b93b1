// The menu's own description, a file as docs/menu-file.md tells: which items there are, under which
// parent, in which order.
#ifndef MENU_HOST_MENU_TREE_H
#define MENU_HOST_MENU_TREE_H

#include <filesystem>
#include <string>
#include <vector>

namespace menu {

enum class ItemKind {
  kPage,          // opens a page of further items
  kAction,        // opens something that is not part of this menu
  kChoice,        // has a value that is one of an option list
  kDeviceName,    // as kChoice, and the name can be typed, for which the last entry stands
  kSavedNetwork,  // connects
};

// The word for a kind in the tree's file and in JSON.
const char* kindName(ItemKind kind);

struct MenuNode {
  std::string key;
  ItemKind kind;
  std::string listKey;  // under which its option list is asked for; empty when it has none
  std::vector<MenuNode> items;
};

struct MenuTree {
  std::string textDomain;  // where string IDs are looked up; empty when they are shown as they are
  std::vector<MenuNode> items;
};

// Reads the tree from a file, without the items of other regions than `region` ("us" or "other").
// Raises platform::host::ConfigurationError.
MenuTree readMenuTree(const std::filesystem::path& path, const std::string& region);

// All nodes, parents before their items.
std::vector<const MenuNode*> flatten(const std::vector<MenuNode>& nodes);

}  // namespace menu

#endif  // MENU_HOST_MENU_TREE_H
