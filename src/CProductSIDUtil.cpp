#include "CProductSIDUtil.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "log.h"
#include "platform/system_info.h"
#include "translation.h"

namespace {

constexpr char kDefaultDeviceSid[] = "REP.DEVICE.TV";
constexpr int kFirstGeneration = 1;
constexpr int kSecondGeneration = 2;

// Replacing may never end when the replacement itself brings the token back. It is taken to be
// endless after this many replacements, or after growing by this many bytes. Real texts stay far
// below both.
constexpr int kManyReplacements = 10'000;
constexpr std::size_t kMuchGrowth = std::size_t{64} << 10;

// Replaces the first token until none is left. If that is endless, only the first `limit` bytes
// matter: the text is cut to what can still change them, and the loop stops once they hold no token
// or a replacement no longer changes them.
void replaceUntilGone(std::string& text, std::string_view token, std::string_view replacement,
                      std::size_t limit) {
  if (token.empty()) return;
  const bool mayNotEnd = replacement.size() >= token.size();  // a shorter one shrinks the text
  const std::size_t large = text.size() + kMuchGrowth;
  std::string before;
  int replacements = 0;
  // A token before the last position can only be one that ends in the replacement text.
  const auto next = [&](std::size_t last) {
    return text.find(token, last - std::min(last, token.size() - 1));
  };
  for (std::size_t at = text.find(token); at != std::string::npos; at = next(at)) {
    const bool endless = mayNotEnd && (++replacements > kManyReplacements || text.size() > large);
    if (endless && (at >= limit || text == before)) return;
    if (endless) before = text;
    text.replace(at, token.size(), replacement);
    if (endless) text.resize(std::min(text.size(), limit + token.size() - 1));
  }
}

// Replaces token after token, searching on from the second byte of the filled-in value. That would
// never end if the value holds the token after its first byte; so it stops after the first `limit`
// bytes, and the text is cut to what can still change them.
void fillToken(std::string& text, std::string_view token, std::string_view value,
               std::size_t limit) {
  const bool endless = value.find(token, 1) != std::string_view::npos;
  for (std::size_t at = text.find(token); at != std::string::npos; at = text.find(token, at + 1)) {
    if (endless && at >= limit) return;
    text.replace(at, token.size(), value);
    if (endless) text.resize(std::min(text.size(), limit + token.size() - 1));
  }
}

constexpr char kProductToken[] = "<<A>>";

void askProduct(std::string& name) {
  const int type = CProductUtil::GetProductType(name);
  LOG_MAIN("Product type =>%d", type);
}

void fillTokens(std::string& text, const std::string& productName) {
  struct Token {
    std::string_view token;
    std::string_view value;
    bool alsoWhenEmpty;
  };
  // The product name is filled in even when it is empty, the other two words only when not empty.
  const Token tokens[] = {
      {kProductToken, productName, true}, {"<<B>>", "", false}, {"<<C>>", "", false}};
  for (const Token& entry : tokens) {
    if (entry.alsoWhenEmpty || !entry.value.empty()) {
      fillToken(text, entry.token, entry.value, CProductUtil::kTextSize - 1);
    }
  }
}

}  // namespace

bool CProductUtil::IsProductTunerless() {
  bool tunerless = false;
  if (system_info_get_custom_bool("com.norvane/featureconf/broadcast.removable_rf_tuner_support",
                                  &tunerless) != 0) {
    LOG_SYSTEM("get com.norvane/featureconf/broadcast.removable_rf_tuner_support failed");
    tunerless = false;
  }
  LOG_MAIN("Tunerless support = %d", static_cast<int>(tunerless));
  return tunerless;
}

int CProductUtil::GetProductType(std::string& productName) {
  if (IsProductTunerless()) {
    productName = translate("REP.DEVICE.SCREEN");
    return PRODUCT_TYPE_SCREEN;
  }
  int generation = 0;
  if (system_info_get_custom_int("com.norvane/featureconf/orlex_version", &generation) != 0) {
    LOG_SYSTEM("fail to get com.norvane/featureconf/orlex_version");
    generation = 0;
  }
  if (generation == kFirstGeneration) {
    productName = translate("COM_SID_ORLEX");
    return PRODUCT_TYPE_ORLEX;
  }
  if (generation == kSecondGeneration) {
    productName = translate("COM_TV_SID_MLED_CAOCT_NON_MICRO_LED");
    return PRODUCT_TYPE_NON_MICRO_LED;
  }
  bool flag = false;
  // The result of the read is not checked: after a failure, the flag keeps its initial value.
  system_info_get_custom_bool("com.norvane/featureconf/projector_feature_support", &flag);
  if (flag) {
    productName = translate("PJT_SID_TV");
    return PRODUCT_TYPE_PROJECTOR;
  }
  if (system_info_get_custom_bool("com.norvane/featureconf/product.smart_monitor_feature_support",
                                  &flag) != 0) {
    LOG_SYSTEM("fail to get com.norvane/featureconf/product.smart_monitor_feature_support");
  }
  if (flag) {
    productName = translate("COM_SID_SMNT_CAAUG_MNT");
    return PRODUCT_TYPE_SMART_MONITOR;
  }
  productName = translate("COM_SID_TV");
  return PRODUCT_TYPE_TV;
}

void CProductUtil::AddProductNameInSID(std::string& text) {
  std::string productName;
  askProduct(productName);
  fillTokens(text, productName);
}

const char* CProductUtil::WithProductName(const char* text, std::string& filled) {
  std::string productName;
  askProduct(productName);
  if (std::strstr(text, kProductToken) == nullptr) return text;
  filled = text;
  fillTokens(filled, productName);
  return filled.c_str();
}

std::string CProductUtil::GetDeviceNameString() {
  // Not freed, because a platform may hand out a string that it owns itself.
  char* sid = nullptr;
  if (system_info_get_custom_string("com.norvane/featureconf/product.device_sid", &sid) != 0 ||
      sid == nullptr) {
    LOG_SYSTEM("get product device sid failed.");
    return kDefaultDeviceSid;
  }
  LOG_MAIN("product device SID [%s]", sid);
  if (std::strcmp(sid, "NOT_READY") == 0) {
    LOG_MAIN("get product device sid NOT_READY.");
    return kDefaultDeviceSid;
  }
  LOG_MAIN("product device name [%s]", sid);
  return sid;
}

void CProductUtil::ReplaceText(char* buffer, const char* text, const char* token,
                               const char* replacement, std::size_t size) {
  std::string working = text;
  LOG_MAIN("original text:%s", working.c_str());
  replaceUntilGone(working, token, replacement, size - 1);
  LOG_MAIN("replaced text:%s", working.c_str());
  std::strncpy(buffer, working.c_str(), size - 1);
  LOG_MAIN("result text:%s", buffer);
}
