// The texts that a provider has for one product, in a language and beside it in English.
#ifndef MENU_HOST_TEXTS_H
#define MENU_HOST_TEXTS_H

#include <cstddef>
#include <string>
#include <vector>

#include "menu_tree.h"
#include "provider.h"

namespace menu {

// Where a text appears.
struct TextPlace {
  std::string item;   // its menu key
  std::string from;   // the callback, and which of its texts: "get_messagebox_info first"
  std::string state;  // the item that was set, "KEY = VALUE"; empty as the TV leaves the factory
  std::size_t most;   // bytes that the callback can carry; 0 when there is no limit
};

struct PlacedText {
  std::string id;       // what comes where there is no catalogue
  std::string english;  // as its bytes come, and so is the next
  std::string text;
  TextPlace place;
};

// All texts of the items, with each item that has a value set to each of its values in turn. What
// is the same in every language, as a device's name, is no text; a word that is put into a text is
// part of it. Changes the TV's settings and the language of the process. Raises CallbackError.
std::vector<PlacedText> textsOf(Provider& provider, const std::vector<MenuNode>& tree,
                                const std::string& language);

}  // namespace menu

#endif  // MENU_HOST_TEXTS_H
