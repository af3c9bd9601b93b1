// Text on its way from a provider to a person.
#ifndef MENU_HOST_DISPLAY_TEXT_H
#define MENU_HOST_DISPLAY_TEXT_H

#include <cstddef>
#include <string>
#include <string_view>

namespace menu {

// What may be shown on a screen: bytes that are no UTF-8, as those of a character that was cut, and
// control characters but the line feed become U+FFFD.
std::string displayText(std::string_view bytes);

// The bytes as UTF-8: those that are none become U+FFFD.
std::string validText(std::string_view bytes);

// The text that markup stands for: entities and line breaks become characters, and the marks that
// fix the writing direction go.
std::string markupToText(std::string_view markup);

// How many columns of a terminal the text takes.
std::size_t columns(const std::string& text);

// Whether the bytes are UTF-8 without control characters, and not all blanks, as a name should be.
bool isPlainText(const std::string& text);

}  // namespace menu

#endif  // MENU_HOST_DISPLAY_TEXT_H
