#include "CProductSIDUtil.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "log.h"
#include "platform/system_info.h"
#include "translation.h"

namespace {

constexpr char kDefaultDeviceSid[] = "REP.DEVICE.TV";
constexpr int kFirstGeneration = 1;
constexpr int kSecondGeneration = 2;

// Replacing may never end when the replacement itself brings the token back. It is taken to be
// endless after this many bytes were read: no text that fits the caller's buffer is known to need
// as many and to end, and in the others the bytes that count have long stopped changing.
constexpr std::size_t kMostRead = std::size_t{2} << 20;

// Replaces the first token until none is left. It need not search from the start each time: what
// was read holds no token, and a replacement is put back in front of the unread rest, because it
// may complete a token on either side. If that is endless, returns the first `limit` bytes.
std::string replaceUntilGone(std::string_view text, std::string_view token,
                             std::string_view replacement, std::size_t limit) {
  if (token.empty()) return std::string(text);
  std::string read;
  read.reserve(text.size() + replacement.size());
  std::string_view next = text;
  std::vector<std::string_view> later;  // what follows `next`, the last one first
  for (std::size_t bytes = 0; bytes < kMostRead;) {
    if (next.empty()) {
      if (later.empty()) return read;
      next = later.back();
      later.pop_back();
      continue;
    }
    const std::size_t end = next.find(token.back());
    const std::string_view piece = next.substr(0, end == std::string_view::npos ? end : end + 1);
    read += piece;
    bytes += piece.size();
    next.remove_prefix(piece.size());
    if (!read.ends_with(token)) continue;
    read.resize(read.size() - token.size());
    if (!next.empty()) later.push_back(next);
    next = replacement;
  }
  for (; read.size() < limit && !later.empty(); later.pop_back()) {
    read += next;
    next = later.back();
  }
  return (read += next).substr(0, limit);
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
  if (text == nullptr || replacement == nullptr) throw std::logic_error("ReplaceText: null");
  LOG_MAIN("original text:%s", text);
  const std::string working = replaceUntilGone(text, token, replacement, size - 1);
  LOG_MAIN("replaced text:%s", working.c_str());
  std::strncpy(buffer, working.c_str(), size - 1);
  LOG_MAIN("result text:%s", buffer);
}
