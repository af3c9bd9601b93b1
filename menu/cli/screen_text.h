// The menu as a person at a terminal reads it: names and values, help texts wrapped to the width,
// choices with the current one marked, and no icons.
#ifndef MENU_CLI_SCREEN_TEXT_H
#define MENU_CLI_SCREEN_TEXT_H

#include <string>
#include <vector>

#include "../host/menu_model.h"

namespace cli {

// With each item's key where `keys` is set.
std::string screenText(const std::vector<menu::Item>& items, bool keys);

}  // namespace cli

#endif  // MENU_CLI_SCREEN_TEXT_H
