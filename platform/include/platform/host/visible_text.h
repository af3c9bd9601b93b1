// Text on its way to a person, a log or another program, whatever bytes it has: it is shown, and
// never commands a terminal. For every byte string, also one with a NUL in it.
#ifndef PLATFORM_HOST_VISIBLE_TEXT_H
#define PLATFORM_HOST_VISIBLE_TEXT_H

#include <string>
#include <string_view>

#include "platform/export.h"

namespace platform::host {

// The bytes as UTF-8, with U+FFFD for each that is none.
PLATFORM_API std::string validText(std::string_view bytes);

// As validText(), and what cannot be seen is shown as JSON writes it, "\u001b": control characters,
// marks of the writing direction, and the separators of lines and paragraphs. Line feeds stay. JSON
// stays the same JSON.
PLATFORM_API std::string visibleText(std::string_view bytes);

// As visibleText(), in one line: a line feed is shown as "\u000a".
PLATFORM_API std::string visibleLine(std::string_view bytes);

}  // namespace platform::host

#endif  // PLATFORM_HOST_VISIBLE_TEXT_H
