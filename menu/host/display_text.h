// Text on its way from a provider to a person.
#ifndef MENU_HOST_DISPLAY_TEXT_H
#define MENU_HOST_DISPLAY_TEXT_H

#include <cstddef>
#include <string>
#include <string_view>

namespace menu {

// The text of markup: entities and line breaks become characters, and the marks that fix the
// writing direction are removed.
std::string markupToText(std::string_view markup);

// How many columns of a terminal the text, which is UTF-8, takes.
std::size_t columns(const std::string& text);

// Whether the bytes can be a name: one line of UTF-8 without control characters, not only blanks.
bool isPlainText(const std::string& text);

}  // namespace menu

#endif  // MENU_HOST_DISPLAY_TEXT_H
