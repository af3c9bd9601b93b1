#include "world.h"

#include <cstdlib>
#include <map>

#include "fake_platform.h"
#include "language.h"
#include "platform/path.h"
#include "texts.h"

using namespace fake_platform;  // NOLINT(google-build-using-namespace): the tests' vocabulary

namespace {

const std::map<std::string, std::string> kTexts = {
    {"TV_SID_SYSTEM_42683_CONFIGURE_TV_NETWORK", "network for <<A>>"},
    {"PJT_SID_SYSTEM_42683_CONFIGURE_TV_NETWORK", "network of <<A>>"},
    {"PJT_SID_SYSTEM_ALLOW_MOBILE_SMARTPHONE_TABLET_TV", "mobile of <<A>>"},
    {"PJT_SID_CHANGE_TV_DEVICE_NAME_MOBILE_NETWORK", "name of <<A>>"},
    {"PJT_SID_MENU_TEMP_SET_TV_WIFI_MOBILE_CONNECT", "connect to <<A>>"},
    {"DEVICE_SID", "the device"},
    {"REP.DEVICE.TV", "the TV"},
    {"TV_SID_SETTINGS_MIX_CBOCT_USE_SOME_SERVICE_WIFI_DIRECT_TURN_ON", "turn on for <<A>>"},
    {"TV_SID_SETTINGS_MIX_CASEP_SOME_FEATURES_NOT_AVAIL_GO_AHEAD", "without <<A>>"},
};

std::string networksDocument(Networks networks) {
  switch (networks) {
    case Networks::kFirstConnected:
      return R"({"count": 2, "values": [)"
             R"({"SSID": "Net One", "SIGNAL_STRENGTH": -70, "STATUS": "Connected"},)"
             R"({"SSID": "Net Two", "SIGNAL_STRENGTH": -80, "STATUS": "Connecting"}]})";
    case Networks::kSecondConnected:
      return R"({"count": 2, "values": [)"
             R"({"SSID": "Net One", "SIGNAL_STRENGTH": -70, "STATUS": "Connecting"},)"
             R"({"SSID": "Net Two", "SIGNAL_STRENGTH": -80, "STATUS": "Connected"}]})";
    case Networks::kMisshapen:  // without a strength
      return R"({"count": 1, "values": [{"SSID": "Net One", "STATUS": "Connected"}]})";
  }
  return "";
}

void setFlags(const World& world) {
  flags().setBool("product.b2b_option_support", world.businessOption);
  flags().set("network.network_support", 0);
  flags().setBool("setting.eu_energy_regulation", world.energyRegulation);
  flags().setBool("broadcast.removable_rf_tuner_support", world.product == Product::kScreen);
  int generation = 0;
  if (world.product == Product::kFirstModular) generation = 1;
  if (world.product == Product::kSecondModular) generation = 2;
  flags().set("orlex_version", generation);
  flags().setBool("projector_feature_support", world.product == Product::kProjector);
  flags().setBool("product.smart_monitor_feature_support", world.product == Product::kSmartMonitor);
  flags().set("product.device_sid", "DEVICE_SID");
}

}  // namespace

std::string screenDocument(Screen screen) {
  const std::string style = screen == Screen::kSplit ? "PAP_FN" : "FULL";
  return R"({"end": {"style": ")" + style + R"("}, "status": "PostCondition"})";
}

void apply(const World& world) {
  setFlags(world);
  setProfiles({kWifiProfile, kEthernetProfile});
  setConnectedAp(world.frequencyMhz);
  store().set(kDefaultNameKey, kTvName);
  store().set(kLanguageKey, "en");
  store().set(kHighContrastKey, 1);
  store().set(kScreenKey, screenDocument(world.screen));
  store().setBool(kHotelKey, true);
  publishNetworks(world);
  restore(world);
}

void publishNetworks(const World& world) {
  store().set(kNetworksKey, networksDocument(world.networks));
}

void restore(const World& world) {
  setRadio(world.radio);
  setWakeOnMobile(true);
  store().set(kNameKey, kTvName);
  store().set(kWiredKey, 1);
  store().set(kDirectKey, 1);
}

void useWorldTexts() {
  struct Place {
    std::string language;
    std::string root;
  };
  // Written once: a catalogue is a file.
  static const Place place = [] {
    useTexts(kTexts);
    std::string root = platform_mkpath(PLATFORM_ROOT_RESOURCES, "");
    return Place{std::getenv("LANGUAGE"), root};
  }();
  setResourceRoot(place.root);
  useLanguage(place.language);
}
