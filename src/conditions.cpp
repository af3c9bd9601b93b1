#include "conditions.h"

#include <json/reader.h>
#include <json/value.h>

#include <algorithm>
#include <string>

#include "c_heap.h"
#include "json_document.h"
#include "log.h"
#include "platform/config_store.h"
#include "platform/system_info.h"

namespace {

constexpr char kB2bOption[] = "com.norvane/featureconf/product.b2b_option_support";
constexpr char kEnergyRegulation[] = "com.norvane/featureconf/setting.eu_energy_regulation";

const char* trueOrFalse(bool value) {
  return value ? "true" : "false";
}

const Json::Value& memberOf(const Json::Value& object, const char* name) {
  return object.isObject() ? object[name] : Json::Value::nullSingleton();
}

// A member as text or number; null when the document has a different structure.
const Json::Value& scalarMember(const Json::Value& object, const char* name) {
  const Json::Value& member = memberOf(object, name);
  return member.isArray() || member.isObject() ? Json::Value::nullSingleton() : member;
}

bool isSplitStyle(const std::string& style) {
  constexpr const char* kStyles[] = {"PAP_FN", "PAM_FN", "PAP_NF", "PAM_NF"};
  return std::ranges::any_of(kStyles, [&](const char* split) { return style == split; });
}

// On a business product, only the administrator may change the name.
bool isAdministratorMode() {
  int enabled = 0;
  if (vconf_get_bool("memory/ephotel/hotelmenu/hotelfactorymode", &enabled) != 0) {
    LOG_SYSTEM("memory/ephotel/hotelmenu/hotelfactorymode failed");
  }
  if (enabled != 0) LOG_MAIN("User Admin");
  return enabled != 0;
}

}  // namespace

bool IsB2BOptionSupported() {
  bool supported = false;
  if (system_info_get_custom_bool(kB2bOption, &supported) != 0) {
    LOG_MAIN("system info get fail: com.norvane/featureconf/product.b2b_option_support");
  }
  LOG_MAIN("supported = %s", trueOrFalse(supported));
  return supported;
}

bool IsWiFiON() {
  LOG_MAIN("START");
  bool regulated = true;
  if (system_info_get_custom_bool(kEnergyRegulation, &regulated) != 0) {
    LOG_MAIN(" Error: Fail to get com.norvane/featureconf/setting.eu_energy_regulation value");
    regulated = true;
  }
  LOG_MAIN("[WifiOFFON => %d]", static_cast<int>(regulated));
  return regulated;
}

bool IsMultiViewControlMode() {
  CText stored(vconf_get_str("memory/multiscreen/state"));
  if (stored == nullptr) {
    LOG_MAIN("No value in VCONF");
    return false;
  }
  LOG_MAIN("Vconf for Multiview: [%s]", stored.get());
  const std::string text = stored.get();
  stored.reset();

  Json::Value root;
  std::string errors;
  const bool parsed = parseJson(text, JsonRules::kDefault, root, errors);
  LOG_MAIN("parsingSuccessful[%s]  root [%s] ", trueOrFalse(parsed), text.c_str());
  if (!parsed) return false;

  const Json::Value& endStyle = scalarMember(memberOf(root, "end"), "style");
  if (endStyle.isNull()) {
    LOG_MAIN("EndStyleValue is null");
    return false;
  }
  const std::string style = endStyle.asString();
  LOG_MAIN("EndStyle=%s", style.c_str());

  const Json::Value& statusValue = scalarMember(root, "status");
  if (statusValue.isNull()) {
    LOG_MAIN("StatusValue is null");
    return false;
  }
  const std::string status = statusValue.asString();
  LOG_MAIN("Status=%s", status.c_str());

  if (!isSplitStyle(style) || status != "PostCondition") return false;
  LOG_MAIN("Method Name matched to MobileDetection");
  return true;
}

bool mayChangeDeviceName() {
  if (IsMultiViewControlMode()) return false;
  return !IsB2BOptionSupported() || isAdministratorMode();
}
