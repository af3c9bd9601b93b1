// The languages that the menu's texts are translated into.
#ifndef MENU_HOST_LANGUAGES_H
#define MENU_HOST_LANGUAGES_H

#include <cstddef>
#include <string>
#include <vector>

namespace menu {

// How many bytes a list of languages may have: as many as the name of one. gettext tries each of a
// list for each text.
inline constexpr std::size_t kLongestLanguages = 255;

// The languages that come along, sorted.
std::vector<std::string> languages();

// Whether gettext finds texts for any language of a list like $LANGUAGE's, "de_AT:fr". It takes
// "de" for "de_AT". True for "C" and "POSIX", which mean no language; false for a list that is too
// long.
bool hasTexts(const std::string& list);

}  // namespace menu

#endif  // MENU_HOST_LANGUAGES_H
