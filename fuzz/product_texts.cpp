// The substitution of tokens in texts. The input's first line is a text, the second what replaces
// the token in it, the third the product's name; further lines belong to the name.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "CProductSIDUtil.h"
#include "framework.h"
#include "require.h"
#include "tv.h"

using namespace fuzz;
using fake_platform::flags;
using fake_platform::store;

namespace {

constexpr std::size_t kSize = CProductUtil::kTextSize;
constexpr std::string_view kToken = "<<A>>";
// Real texts end far below both.
constexpr int kMostReplacements = 1000;
constexpr std::size_t kMostGrowth = std::size_t{32} << 10;

enum class GoOn { kAtStart, kBehindStart };

struct Replaced {
  std::string text;
  std::size_t settled;  // this many bytes of the text are final
};

// The replacement as documented, token by token, within the limits.
Replaced replaced(std::string text, const std::string& replacement, GoOn where) {
  const std::size_t most = text.size() + kMostGrowth;
  std::size_t at = text.find(kToken);
  for (int i = 0; at != std::string::npos; ++i) {
    // A later token may be completed by up to four bytes before it.
    if (i == kMostReplacements || text.size() > most) return {text, at < 4 ? 0 : at - 4};
    text.replace(at, kToken.size(), replacement);
    at = text.find(kToken, where == GoOn::kAtStart ? 0 : at + 1);
  }
  return {text, std::string::npos};
}

// Whether the final bytes are equal, up to a limit.
bool agree(const std::string& text, const Replaced& expected, std::size_t limit) {
  const std::size_t size = std::min(expected.settled, limit);
  return text.substr(0, size) == expected.text.substr(0, size);
}

std::string replaceText(const std::string& text, const std::string& replacement) {
  const auto buffer = std::make_unique<char[]>(kSize);
  CProductUtil::ReplaceText(buffer.get(), text.c_str(), kToken.data(), replacement.c_str(), kSize);
  require(buffer[kSize - 1] == '\0', "the last byte stays the caller's zero");
  const std::string result = buffer.get();
  const Replaced expected = replaced(text, replacement, GoOn::kAtStart);
  require(agree(result, expected, kSize - 1), "every token is replaced");
  return result;
}

std::string addProductName(std::string text, const std::string& productName) {
  const Replaced expected = replaced(text, productName, GoOn::kBehindStart);
  CProductUtil::AddProductNameInSID(text);
  // An endless one is compared only as far as the text is handed out.
  const bool ends = expected.settled == std::string::npos;
  require(agree(text, expected, ends ? std::string::npos : kSize - 1), "the name is filled in");
  return text;
}

// The same in the help text of an item, with the product's feature flags.
void requireHelp(const std::string& text, const std::string& deviceName, bool isScreen,
                 const std::string& expected) {
  store().set(kLanguageKey, "en_US");
  flags().set("product.device_sid", "DEVICE");
  flags().setBool("broadcast.removable_rf_tuner_support", isScreen);
  translations().texts["DEVICE"] = deviceName;
  translations().texts["PJT_SID_MENU_TEMP_SET_TV_WIFI_MOBILE_CONNECT"] = text;
  Framework framework;
  const contract::Answer help = framework.calls().helpText(VENTARO_KEY_EASY_CONNECTION);
  require(help.text == cut(expected, kSize), "a help text goes through both substitutions");
}

// Takes the first line off.
std::string takeLine(std::string_view& rest) {
  const auto end = rest.find('\n');
  const std::string_view line = rest.substr(0, end);
  rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
  return untilNul(line);
}

// An endless replacement keeps the sanitizer's memmove() busy for up to a second, so only some of
// them are checked.
bool isOneInSixteen(const std::string& input) {
  unsigned sum = 0;
  for (const char c : input) sum += static_cast<unsigned char>(c);
  return sum % 16 == 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  newTv();
  const std::string input(data, data + size);
  std::string_view rest = input;
  const std::string text = takeLine(rest);
  const std::string replacement = takeLine(rest);
  const std::string productName = untilNul(rest);
  translations().texts["COM_SID_TV"] = productName;
  translations().texts["REP.DEVICE.SCREEN"] = productName;
  const bool ends = replaced(text, replacement, GoOn::kAtStart).settled == std::string::npos;
  if (!ends && !isOneInSixteen(input)) return -1;
  const std::string help = addProductName(replaceText(text, replacement), productName);
  addProductName(text, productName);
  if (!ends) return 0;
  requireHelp(text, replacement, size % 2 == 1, help);
  return 0;
}
