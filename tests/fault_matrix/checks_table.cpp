// The exported checks, create_provider and delete_provider, get_module_info and release_string.
#include "tables.h"

namespace {

Row visible(Steps answer) {
  return {{}, {takesLock(), std::move(answer), unlocks()}};
}

Row enabled(std::vector<std::string> keys, Steps answer) {
  return {std::move(keys), {takesLock(), mainLog("key = {key}"), std::move(answer), unlocks()}};
}

// A flag that cannot be read keeps its value: false, unless the platform wrote to it.
Steps businessOptionIsRead(const World& world, Steps has, Steps hasNot) {
  const Steps yes = {mainLog("supported = true"), std::move(has)};
  const Steps no = {mainLog("supported = false"), std::move(hasNot)};
  const Steps known = world.businessOption ? yes : no;
  const Step failed =
      mainLog("system info get fail: com.norvane/featureconf/product.b2b_option_support");
  return {ask("system_info_get_custom_bool", "com.norvane/featureconf/product.b2b_option_support")
              .works(known)
              .fails({failed, no})
              .failsWithOutput({failed, known})};
}

Steps networksAreCounted(const World& world, int more) {
  return networksAreRead(world, {mainLog("Saved AP Count 2"), gives(2 > more ? "true" : "false")},
                         {mainLog("Saved AP Count 0"), gives("false")});
}

// The name cannot be changed on a split screen, and on business products only in the
// administrator's hotel mode. If a failing read has still written the hotel mode, it could count as
// off or as written; we chose "as written".
Steps nameMayChange(const World& world) {
  const Steps administrator = {mainLog("User Admin"), gives("true")};
  const Step hotelFailed = systemLog("memory/ephotel/hotelmenu/hotelfactorymode failed");
  const Steps hotel = {ask("vconf_get_bool", kHotelKey)
                           .works(administrator)
                           .fails({hotelFailed, gives("false")})
                           .failsWithOutput({hotelFailed, administrator})};
  const Steps business = businessOptionIsRead(world, hotel, {gives("true")});

  const std::string document = screenDocument(world.screen);
  const Steps split = {mainLog("EndStyle=PAP_FN"), mainLog("Status=PostCondition"),
                       mainLog("Method Name matched to MobileDetection"), gives("false")};
  const Steps whole = {mainLog("EndStyle=FULL"), mainLog("Status=PostCondition"), business};
  return {ask("vconf_get_str", kScreenKey)
              .works({mainLog("Vconf for Multiview: [" + document + "]"),
                      mainLog("parsingSuccessful[true]  root [" + document + "] "),
                      world.screen == Screen::kSplit ? split : whole})
              .fails({mainLog("No value in VCONF"), business})};
}

Row moduleInfo(std::vector<std::string> keys, const std::string& info) {
  return {std::move(keys), {takesLock(), gives("0", info), unlocks()}};
}

}  // namespace

// Hidden only on a business product whose network support reads as 0.
Table visibilityIntTable(const World& world) {
  const Steps support = {
      ask("system_info_get_custom_int", "com.norvane/featureconf/network.network_support")
          .works({mainLog("Network is not supported."), gives("false")})
          .fails({gives("true")})};
  return {visible(businessOptionIsRead(world, support, {gives("true")}))};
}

Table enableIntTable(const World& world) {
  return {
      enabled({kFirstNetworkKey}, networksAreCounted(world, 0)),
      enabled({kSecondNetworkKey}, networksAreCounted(world, 1)),
      enabled({VENTARO_KEY_DEVICE_NAME}, nameMayChange(world)),
      enabled({}, {gives("true")}),
  };
}

Table alwaysVisibleTable(const World& /*world*/) {
  return {{{}, {gives("true")}}};
}

Table enableStringTable(const World& /*world*/) {
  return {{{}, {mainLog("check_enable_string"), gives("true")}}};
}

Table enableDoubleTable(const World& /*world*/) {
  return {{{}, {mainLog("check_enable_double"), gives("true")}}};
}

Table enableBoolTable(const World& /*world*/) {
  return {{{}, {mainLog("check_enable_bool"), gives("true")}}};
}

// Of a second provider: the device names are there already. Without the path the texts stay where
// they are bound to.
Table createProviderTable(const World& /*world*/) {
  return {
      {{},
       {takesLock(), mainLog("START"), ask("platform_mkpath", 44, "res/locale"), mainLog("END"),
        gives("0", "a table"), unlocks()}},
  };
}

Table deleteProviderTable(const World& /*world*/) {
  return {{{}, {takesLock(), mainLog("START"), mainLog("END"), gives("0"), unlocks()}}};
}

Table moduleInfoTable(const World& /*world*/) {
  return {
      moduleInfo({VENTARO_KEY_OWNER}, "ventarodevs"),
      moduleInfo({VENTARO_KEY_MAIN_COMPONENT}, "TP_ConnectivityApp"),
      moduleInfo({VENTARO_KEY_SUB_COMPONENT}, "TP_NetworkSettings"),
      moduleInfo({}, kUntouched),
  };
}

// Of a text that says "text".
Table releaseStringTable(const World& /*world*/) {
  return {{{}, {mainLog("START"), mainLog("******* Value[text]"), mainLog("END"), gives("0")}}};
}
