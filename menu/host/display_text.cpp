#include "display_text.h"

#include <glib.h>

#include <cstdlib>

namespace menu {

namespace {

struct Entity {
  std::string_view markup;
  std::string_view text;
};

constexpr Entity kEntities[] = {
    {"&amp;", "&"},  {"&lt;", "<"},    {"&gt;", ">"},   {"&quot;", "\""},
    {"<br/>", "\n"}, {"<tab/>", "\t"}, {"<ps/>", "\n"},
};

std::string encode(gunichar character) {
  char bytes[6];
  const int size = g_unichar_to_utf8(character, bytes);
  return {bytes, static_cast<std::size_t>(size)};
}

// U+202A to U+202E and U+2066 to U+2069 fix the writing direction. On a terminal they would also
// turn what follows the text.
bool isDirectionMark(gunichar character) {
  return (character >= 0x202A && character <= 0x202E) ||
         (character >= 0x2066 && character <= 0x2069);
}

// An entity such as "&#x202d;" or "&#8237;" at the beginning of markup: its character, and its
// length in bytes, which is 0 when there is none.
struct NumericEntity {
  gunichar character = 0;
  std::size_t length = 0;
};

NumericEntity numericEntity(std::string_view markup) {
  constexpr std::size_t kLongest = 12;
  if (!markup.starts_with("&#")) return {};
  const auto end = markup.substr(0, kLongest).find(';');
  if (end == std::string_view::npos) return {};
  std::string digits(markup.substr(2, end - 2));
  const bool hex = digits.starts_with('x') || digits.starts_with('X');
  if (hex) digits.erase(0, 1);
  char* rest = nullptr;
  const unsigned long number = std::strtoul(digits.c_str(), &rest, hex ? 16 : 10);
  const auto character = static_cast<gunichar>(number);
  if (digits.empty() || *rest != '\0' || character == 0 || !g_unichar_validate(character)) {
    return {};
  }
  return {character, end + 1};
}

}  // namespace

std::string markupToText(std::string_view markup) {
  std::string text;
  while (!markup.empty()) {
    std::string_view found = markup.substr(0, 1);
    std::string replacement(found);
    for (const Entity& entity : kEntities) {
      if (!markup.starts_with(entity.markup)) continue;
      found = entity.markup;
      replacement = entity.text;
    }
    if (const NumericEntity entity = numericEntity(markup); entity.length > 0) {
      found = markup.substr(0, entity.length);
      replacement = isDirectionMark(entity.character) ? "" : encode(entity.character);
    }
    text += replacement;
    markup.remove_prefix(found.size());
  }
  return text;
}

std::size_t columns(const std::string& text) {
  std::size_t total = 0;
  for (const char* at = text.c_str(); *at != '\0'; at = g_utf8_next_char(at)) {
    const gunichar character = g_utf8_get_char(at);
    if (g_unichar_iszerowidth(character)) continue;
    total += g_unichar_iswide(character) ? 2 : 1;
  }
  return total;
}

bool isPlainText(const std::string& text) {
  if (g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr) == FALSE)
    return false;
  for (const char* at = text.c_str(); *at != '\0'; at = g_utf8_next_char(at)) {
    if (g_unichar_iscntrl(g_utf8_get_char(at)) != FALSE) return false;
  }
  return text.find_first_not_of(' ') != std::string::npos;
}

}  // namespace menu
