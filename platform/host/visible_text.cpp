#include "platform/host/visible_text.h"

#include <glib.h>

#include <algorithm>
#include <iterator>

namespace platform::host {

namespace {

constexpr std::string_view kReplacement = "\uFFFD";

struct Range {
  gunichar first;
  gunichar last;
};

// Control characters, which a terminal obeys; the separators of lines and paragraphs; and the marks
// of the writing direction, which change how the text around them is seen.
constexpr Range kUnseen[] = {
    {0x0000, 0x001F}, {0x007F, 0x009F}, {0x061C, 0x061C}, {0x200E, 0x200F},
    {0x2028, 0x2029}, {0x202A, 0x202E}, {0x2066, 0x2069},
};

bool isUnseen(gunichar character) {
  return std::ranges::any_of(kUnseen, [character](const Range& range) {
    return character >= range.first && character <= range.last;
  });
}

std::string escaped(gunichar character) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text = "\\u";
  for (unsigned shift = 16; shift > 0; shift -= 4) {
    text += kDigits[(character >> (shift - 4)) & 0xFU];
  }
  return text;
}

bool none(gunichar /*character*/) {
  return false;
}

bool isUnseenInText(gunichar character) {
  return character != '\n' && isUnseen(character);
}

// The character at the beginning of `bytes` and its length; its length is 0 when there is none.
struct Character {
  gunichar value;
  std::size_t length;
};

Character firstOf(std::string_view bytes) {
  if (static_cast<unsigned char>(bytes.front()) < 0x80) {
    return {static_cast<unsigned char>(bytes.front()), 1};
  }
  const gunichar value = g_utf8_get_char_validated(bytes.data(), static_cast<gssize>(bytes.size()));
  constexpr gunichar kNone = 0xFFFFFFFE;  // and what is above
  if (value >= kNone) return {0, 0};
  return {value, static_cast<std::size_t>(g_unichar_to_utf8(value, nullptr))};
}

std::string rewritten(std::string_view bytes, bool (*isEscaped)(gunichar)) {
  std::string text;
  text.reserve(bytes.size());
  std::size_t kept = 0;  // bytes before these are written
  for (std::size_t at = 0; at < bytes.size();) {
    const auto [value, length] = firstOf(bytes.substr(at));
    const std::size_t next = at + std::max<std::size_t>(length, 1);
    if (length == 0 || isEscaped(value)) {
      text.append(bytes, kept, at - kept);
      text += length == 0 ? std::string(kReplacement) : escaped(value);
      kept = next;
    }
    at = next;
  }
  return text.append(bytes, kept);
}

}  // namespace

std::string validText(std::string_view bytes) {
  return rewritten(bytes, none);
}

std::string visibleText(std::string_view bytes) {
  return rewritten(bytes, isUnseenInText);
}

std::string visibleLine(std::string_view bytes) {
  return rewritten(bytes, isUnseen);
}

}  // namespace platform::host
