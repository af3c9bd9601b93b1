#include "value_bytes.h"

#include <charconv>

#include "platform/host/visible_text.h"

namespace platform {

using host::StoreCode;
using host::StoreError;
using host::StoreValue;
using host::StoreView;

namespace {

constexpr char kNumber = 'i';
constexpr char kFlag = 'b';
constexpr char kText = 's';

[[noreturn]] void failAsDamaged(std::string_view key) {
  throw StoreError(StoreCode::kUnavailable, "the value stored under \"" + host::visibleLine(key) +
                                                "\" is damaged; set it anew, or unset it");
}

int numberOf(std::string_view key, std::string_view text) {
  int number = 0;
  const char* const textEnd = text.data() + text.size();
  const auto [end, error] = std::from_chars(text.data(), textEnd, number);
  if (error != std::errc{} || end != textEnd) failAsDamaged(key);
  return number;
}

bool flagOf(std::string_view key, std::string_view text) {
  if (text != "0" && text != "1") failAsDamaged(key);
  return text == "1";
}

}  // namespace

std::string encode(const StoreValue& value) {
  if (const int* number = std::get_if<int>(&value)) return kNumber + std::to_string(*number);
  if (const bool* flag = std::get_if<bool>(&value)) return {kFlag, *flag ? '1' : '0'};
  return kText + std::get<std::string>(value);
}

StoreView decode(std::string_view key, std::string_view bytes) {
  // LMDB believes the size that it finds in the file.
  if (bytes.empty() || bytes.size() > 1 + host::kMaxValueSize) failAsDamaged(key);
  const std::string_view text = bytes.substr(1);
  switch (bytes.front()) {
    case kNumber:
      return numberOf(key, text);
    case kFlag:
      return flagOf(key, text);
    case kText:
      return text;
    default:
      failAsDamaged(key);
  }
}

}  // namespace platform
