// get_help_text: the texts, what the product's kind depends on, and what the device is called.
#include <functional>

#include "tables.h"

namespace {

enum Type {
  kScreenType = 0,
  kTvType = 1,
  kOrlexType = 3,
  kProjectorType = 6,
  kMledType = 7,
  kMonitorType = 8
};

using AfterType = std::function<Steps(Type)>;

std::string flag(const std::string& name) {
  return "com.norvane/featureconf/" + name;
}

// The product's kind is found out: flag after flag, in this order, until one decides.
//
//   flag                                   decides when  a failed reading  what a failure logs
//   broadcast.removable_rf_tuner_support   set           counts as unset   "get ... failed"
//   orlex_version                          1 or 2        counts as 0       "fail to get ..."
//   projector_feature_support              set           as it stands      nothing
//   product.smart_monitor_feature_support  set           as it stands      "fail to get ..."
Steps typeIsFound(Product product, const AfterType& then) {
  const auto decidesFor = [&](Product decided, Type type, const Steps& otherwise) {
    return product == decided ? then(type) : otherwise;
  };
  const std::string monitor = flag("product.smart_monitor_feature_support");
  const Steps monitorIsKnown = decidesFor(Product::kSmartMonitor, kMonitorType, then(kTvType));
  const Step monitorFailed = systemLog("fail to get " + monitor);
  const Steps monitorIsRead = {ask("system_info_get_custom_bool", monitor)
                                   .works(monitorIsKnown)
                                   .fails({monitorFailed, then(kTvType)})
                                   .failsWithOutput({monitorFailed, monitorIsKnown})};

  const Steps projectorIsKnown = decidesFor(Product::kProjector, kProjectorType, monitorIsRead);
  const Steps projectorIsRead = {
      ask("system_info_get_custom_bool", flag("projector_feature_support"))
          .works(projectorIsKnown)
          .fails(monitorIsRead)
          .failsWithOutput(projectorIsKnown)};

  const std::string version = flag("orlex_version");
  const Steps versionIsRead = {
      ask("system_info_get_custom_int", version)
          .works(decidesFor(Product::kFirstModular, kOrlexType,
                            decidesFor(Product::kSecondModular, kMledType, projectorIsRead)))
          .fails({systemLog("fail to get " + version), projectorIsRead})};

  const std::string tuner = flag("broadcast.removable_rf_tuner_support");
  const Steps hasTuner = {mainLog("Tunerless support = 0"), versionIsRead};
  const Steps tunerless = {mainLog("Tunerless support = 1"), then(kScreenType)};
  return {ask("system_info_get_custom_bool", tuner)
              .works(product == Product::kScreen ? tunerless : hasTuner)
              .fails({systemLog("get " + tuner + " failed"), hasTuner})};
}

const char* productName(Type type) {
  switch (type) {
    case kScreenType:
      return "REP.DEVICE.SCREEN";
    case kTvType:
      return "COM_SID_TV";
    case kOrlexType:
      return "COM_SID_ORLEX";
    case kProjectorType:
      return "PJT_SID_TV";
    case kMledType:
      return "COM_TV_SID_MLED_CAOCT_NON_MICRO_LED";
    case kMonitorType:
      return "COM_SID_SMNT_CAAUG_MNT";
  }
  return "";
}

// The product's name goes into the text's "<<A>>": the kind is found out for it, once more.
Steps productNameIsFilledIn(Product product, const std::string& text) {
  return typeIsFound(product, [&](Type type) -> Steps {
    std::string filled = text;
    const std::size_t at = filled.find("<<A>>");
    if (at != std::string::npos) filled.replace(at, 5, productName(type));
    return {mainLog("Product type =>" + std::to_string(type)), gives("0", filled)};
  });
}

// A text of the device: its string ID is a flag as well, "the TV" where it cannot be read.
Steps deviceNameIsFilledIn(Product product, const std::string& text) {
  const auto with = [&](const std::string& device) -> Steps {
    return {mainLog("original text:" + text + "<<A>>"), mainLog("replaced text:" + text + device),
            mainLog("result text:" + text + device), productNameIsFilledIn(product, text + device)};
  };
  return {ask("system_info_get_custom_string", flag("product.device_sid"))
              .works({mainLog("product device SID [DEVICE_SID]"),
                      mainLog("product device name [DEVICE_SID]"), with("the device")})
              .fails({systemLog("get product device sid failed."), with("the TV")})};
}

Steps networkHelp(Product product) {
  return typeIsFound(product, [&](Type type) {
    return type == kTvType ? productNameIsFilledIn(product, "network for <<A>>")
                           : deviceNameIsFilledIn(product, "network of ");
  });
}

Steps mobileHelp(Product product) {
  return typeIsFound(product, [&](Type type) {
    return type == kScreenType
               ? productNameIsFilledIn(
                     product, "REP.DEVICE.SCREEN_SID_SYSTEM_CCDEC_ALLOW_MOBILE_SMARTPHONE_TABLET")
               : deviceNameIsFilledIn(product, "mobile of ");
  });
}

Steps nameHelp(Product product) {
  return typeIsFound(product, [&](Type type) {
    if (type == kTvType) {
      return productNameIsFilledIn(product, "COM_SID_CHANGE_TV_DEVICE_NAME_MOBILE_NETWORK");
    }
    if (type == kScreenType) {
      return productNameIsFilledIn(product,
                                   "REP.DEVICE.SCREEN_SID_CCDEC_CHANGE_DEVICE_NAME_MOBILE_NETWORK");
    }
    return deviceNameIsFilledIn(product, "name of ");
  });
}

Row help(std::vector<std::string> keys, Steps text) {
  return {
      std::move(keys),
      {mainLog("START"), takesLock(),
       // No text without a menu language, although none depends on it.
       ask("vconf_get_str", kLanguageKey).fails({raises("std::logic_error"), unlocks(), ends()}),
       std::move(text), mainLog("END"), unlocks()}};
}

}  // namespace

Table helpTextTable(const World& world) {
  const Product product = world.product;
  const auto fixed = [](const char* key, const char* sid) {
    return help({key}, {gives("0", sid)});
  };
  return {
      help({VENTARO_KEY_NETWORK, ""}, networkHelp(product)),
      fixed(VENTARO_KEY_NETWORK_STATUS, "COM_SID_VIEW_CURRENT_NETWORK_INTERNET_STATUS"),
      fixed(VENTARO_KEY_NETWORK_SETTINGS, "TV_SID_CONFIGURE_NETWORK_SETTINGS_CONNECT_AVAIL"),
      help({kMobileKey, VENTARO_KEY_POWER_ON_WITH_MOBILE_NOT_US}, mobileHelp(product)),
      help({VENTARO_KEY_DEVICE_NAME, VENTARO_KEY_SELECT_DEVICE_NAME}, nameHelp(product)),
      fixed(VENTARO_KEY_RESET_NETWORK, "TV_SID_SYSTEM_RESTORE_NETWORK_SETTINGS_DEFAULT"),
      fixed(VENTARO_KEY_EXPERT_SETTINGS, "TV_SID_CONFIGURE_ADVANCED_NETWORK_SETTINGS"),
      fixed(VENTARO_KEY_INSTALL_CERTIFICATE, "COM_SID_NETWORK_CONNECT_USB_CERTI_DEVICE"),
      fixed(VENTARO_KEY_CERTIFICATE_LIST,
            "COM_SID_SIGNAGE_CDFEB_VIEW_AND_MANAGE_NW_CERTIFICATE_DEVICE\n"
            "COM_SID_NETWORK_CONNECT_USB_CERTI_DEVICE"),
      fixed(VENTARO_KEY_CERTIFICATE_MANAGER, "COM_SID_NETWORK_MANGE_CERTI_INSTALLED_DEVICE"),
      help({VENTARO_KEY_EASY_CONNECTION}, deviceNameIsFilledIn(product, "connect to ")),
      fixed(kWifiItemKey, "TV_SID_SETTINGS_CANOV_ENABLE_DISABLE_WIFI_OPTION"),
      help({kDirectItemKey},
           {ask("CStringUtil::CombinateStrings", 2048, "turn on for <<A>>",
                "COM_SCREEN_SHARING, TV_SID_CONNECT_KELVO", "null", "", "")
                .works({gives("0", "turn on for COM_SCREEN_SHARING, TV_SID_CONNECT_KELVO")})
                .fails({gives("0", "\"\"")})
                .failsWithOutput(
                    {gives("0", "turn on for COM_SCREEN_SHARING, TV_SID_CONNECT_KELVO")})}),
      fixed(kWiredItemKey, "COM_SID_CM_CADEC_ENALBE_OPTION_WIRED802"),
      help({}, {mainLog("Key does not Match"), gives("0", "\"\"")}),
  };
}
