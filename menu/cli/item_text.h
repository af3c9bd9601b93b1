// What is said of an item wherever people read it, in the menu's language: text that can be shown,
// whatever the provider gave. Only the question may have several lines.
#ifndef MENU_CLI_ITEM_TEXT_H
#define MENU_CLI_ITEM_TEXT_H

#include <string>

#include "../host/menu_model.h"

namespace cli {

// Its name; what stands for it where it has none.
std::string nameText(const menu::Item& item);

// Its value or state, as the provider gave it.
std::string shownValue(const menu::Item& item);

// The same for its line, and whether it is hidden or disabled.
std::string valueText(const menu::Item& item);

// "0 Off  (asks first)"
std::string entryText(const menu::Provider::ListEntry& entry);

// "[Yes] [No]"
std::string buttonsText(const menu::Provider::MessageBox& box);

// The question and its buttons.
std::string boxText(const menu::Provider::MessageBox& box);

}  // namespace cli

#endif  // MENU_CLI_ITEM_TEXT_H
