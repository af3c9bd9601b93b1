// Texts for display: placeholders and markup.
#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <string_view>

#include "../host/switches.h"
#include "platform/app_util.h"
#include "platform/markup.h"

namespace {

struct Escape {
  std::string_view text;
  std::string_view markup;
};

constexpr std::array kEscapes = {
    Escape{"&", "&amp;"},         Escape{"<", "&lt;"},    Escape{">", "&gt;"},
    Escape{"\n", "<br/>"},        Escape{"\t", "<tab/>"}, Escape{"\u2029", "<ps/>"},
    Escape{"\uFFFC", "&#xfffc;"},
};

std::string toMarkup(std::string_view text) {
  std::string markup;
  while (!text.empty()) {
    const auto* escape = std::ranges::find_if(
        kEscapes, [&](const Escape& entry) { return text.starts_with(entry.text); });
    const bool found = escape != kEscapes.end();
    markup += found ? escape->markup : text.substr(0, 1);
    text.remove_prefix(found ? escape->text.size() : 1);
  }
  return markup;
}

constexpr std::string_view kOpen = "<<";
constexpr std::string_view kPlaceholder = "<<A>>";
constexpr std::string_view kLetters = "ABCD";

// The index of the placeholder with which the text begins, or npos.
std::size_t placeholderAt(std::string_view text) {
  if (text.size() < kPlaceholder.size() || !text.starts_with(kOpen) ||
      text.substr(3, 2) != kPlaceholder.substr(3)) {
    return std::string_view::npos;
  }
  return kLetters.find(text[kOpen.size()]);
}

std::string fill(std::string_view text, const std::array<const char*, kLetters.size()>& arguments) {
  std::string filled;
  while (!text.empty()) {
    const std::size_t index = placeholderAt(text);
    if (index == std::string_view::npos) {
      filled += text.front();
      text.remove_prefix(1);
    } else {
      filled += arguments.at(index) != nullptr ? arguments.at(index) : "";
      text.remove_prefix(kPlaceholder.size());
    }
  }
  return filled;
}

}  // namespace

char* evas_textblock_text_utf8_to_markup(const void* /*object*/, const char* utf8) {
  if (utf8 == nullptr) return nullptr;
  if (platform::injectedFault(__func__) != 0) return nullptr;
  return strdup(toMarkup(utf8).c_str());
}

void CStringUtil::CombinateStrings(char* buffer, std::size_t capacity, const char* text,
                                   const char* first, const char* second, const char* third,
                                   const char* fourth) {
  if (buffer == nullptr || capacity == 0) return;
  const std::string filled = text != nullptr ? fill(text, {first, second, third, fourth}) : "";
  const std::size_t size = filled.copy(buffer, capacity - 1);
  buffer[size] = '\0';
}
