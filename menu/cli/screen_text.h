// The menu as a person at a terminal reads it: names and values, help texts wrapped to the width,
// choices with the current one marked, and no icons.
#ifndef MENU_CLI_SCREEN_TEXT_H
#define MENU_CLI_SCREEN_TEXT_H

#include <set>
#include <string>
#include <vector>

#include "../host/menu_model.h"

namespace cli {

// With each item's key where `keys` is set.
std::string screenText(const std::vector<menu::Item>& items, bool keys);

// A line with name and value for each item, cut to the width; those with keys in `marked` begin
// with a mark and are bold.
std::vector<std::string> screenLines(const std::vector<menu::Item>& items,
                                     const std::set<std::string>& marked);

}  // namespace cli

#endif  // MENU_CLI_SCREEN_TEXT_H
