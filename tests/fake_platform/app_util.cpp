#include "platform/app_util.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "call.h"

namespace fake_platform {
namespace {

bool wakes = false;

// The text with the placeholders "<<A>>" to "<<D>>" filled in.
std::string combined(std::string_view text, const char* const (&values)[4]) {
  constexpr std::size_t kPlaceholderSize = 5;
  std::string result;
  while (!text.empty()) {
    const bool isPlaceholder = text.size() >= kPlaceholderSize && text.starts_with("<<") &&
                               text[2] >= 'A' && text[2] <= 'D' && text.substr(3, 2) == ">>";
    if (isPlaceholder) {
      const char* value = values[text[2] - 'A'];
      result += value != nullptr ? value : "";
    } else {
      result += text.front();
    }
    text.remove_prefix(isPlaceholder ? kPlaceholderSize : 1);
  }
  return result;
}

}  // namespace

void resetAppUtil() {
  wakes = false;
}

void setWakeOnMobile(bool enabled) {
  const StateLock lock(stateMutex());
  wakes = enabled;
}

bool wakeOnMobile() {
  const StateLock lock(stateMutex());
  return wakes;
}

}  // namespace fake_platform

using namespace fake_platform;

int util_get_wakeOnMobile_mode(bool* enabled) {
  return Call("util_get_wakeOnMobile_mode").answer([&] {
    *enabled = wakes;
    return 0;
  });
}

int util_set_wakeOnMobile_mode(bool enable) {
  return Call("util_set_wakeOnMobile_mode", enable).answer([&] {
    wakes = enable;
    return 0;
  });
}

void CStringUtil::CombinateStrings(char* buffer, std::size_t capacity, const char* text,
                                   const char* first, const char* second, const char* third,
                                   const char* fourth) {
  demand(buffer != nullptr && capacity > 0 && text != nullptr, "there is a buffer and a text");
  Call("CStringUtil::CombinateStrings", capacity, text, first, second, third, fourth).answer([&] {
    if (buffer == nullptr || capacity == 0) return kError;
    const std::string result =
        combined(text != nullptr ? text : "", {first, second, third, fourth});
    const std::size_t size = std::min(result.size(), capacity - 1);
    std::memcpy(buffer, result.data(), size);
    buffer[size] = '\0';
    return 0;
  });
}
