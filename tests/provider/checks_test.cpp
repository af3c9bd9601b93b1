// The exported checks: which items are shown, and which may be used.
#include <json/value.h>

#include <cerrno>
#include <latch>
#include <system_error>
#include <thread>
#include <vector>

#include "provider_test.h"

namespace {

constexpr char kB2bOption[] = "com.norvane/featureconf/product.b2b_option_support";
constexpr char kNetworkSupport[] = "com.norvane/featureconf/network.network_support";
constexpr char kHotelMode[] = "memory/ephotel/hotelmenu/hotelfactorymode";
constexpr char kMultiView[] = "memory/multiscreen/state";
constexpr char kSavedNetworks[] = "db/menu/network/TopSavedAP";

constexpr char kFirstNetwork[] = "menu/network/SavedAP1";
constexpr char kSecondNetwork[] = "menu/network/SavedAP2";
constexpr char kDeviceName[] = "menu/network/devicename";

constexpr char kSplitScreen[] = R"({"end": {"style": "PAM_NF"}, "status": "PostCondition"})";

const std::vector<const char*> kKeys = {"menu/general/network",
                                        "menu/network/WiFiOnOff",
                                        kFirstNetwork,
                                        kSecondNetwork,
                                        kDeviceName,
                                        "menu/network/devicename/selectdevicename",
                                        "SAVEDAP1_NAME_KEY",
                                        "no/such/key",
                                        ""};

class Checks : public ProviderTest {
 protected:
  void SetUp() override {
    ProviderTest::SetUp();
    create();
  }

  bool isVisible(const char* key = "menu/network/WiFiOnOff", int value = 0) const {
    clearJournal();
    return entries().check_visibility_int(key, value);
  }

  bool isEnabled(const char* key, int value = 0) const {
    clearJournal();
    return entries().check_enable_int(key, value);
  }

  static void makeBusinessProduct() { flags().setBool("product.b2b_option_support", true); }

  // ---- Pieces of journals ----

  static Journal::Piece readsBusinessOption() {
    return call("system_info_get_custom_bool", kB2bOption);
  }
  static Journal::Piece readsNetworkSupport() {
    return call("system_info_get_custom_int", kNetworkSupport);
  }
  static Journal::Piece readsHotelMode() { return call("vconf_get_bool", kHotelMode); }
  static Journal::Piece readsNetworks() { return call("vconf_get_str", kSavedNetworks); }

  static Journal noBusinessProduct() {
    return {readsBusinessOption(),
            mainLog("system info get fail: com.norvane/featureconf/product.b2b_option_support"),
            mainLog("supported = false")};
  }
  static Journal businessProduct() { return {readsBusinessOption(), mainLog("supported = true")}; }
  static Journal noMultiView() {
    return {call("vconf_get_str", kMultiView), mainLog("No value in VCONF")};
  }

  // The whole journal of a check of the device name.
  static Journal ofDeviceName(const Journal& lines) {
    return {locks(), mainLog("key = menu/network/devicename"), lines, unlocks()};
  }
};

// ---- The checks that always say yes ----

TEST_F(Checks, ItemsOfOtherTypesAreAlwaysVisibleWithoutLockOrLog) {
  makeBusinessProduct();
  flags().set("network.network_support", 0);
  for (const char* key : kKeys) {
    EXPECT_TRUE(entries().check_visibility_string(key, "text")) << key;
    EXPECT_TRUE(entries().check_visibility_string(key, nullptr)) << key;
    EXPECT_TRUE(entries().check_visibility_double(key, -1.5)) << key;
    EXPECT_TRUE(entries().check_visibility_bool(key, false)) << key;
    EXPECT_TRUE(entries().check_visibility_bool(key, true)) << key;
  }
  EXPECT_EQ(journal(), Journal());
}

TEST_F(Checks, ItemsOfOtherTypesAreAlwaysEnabledWithoutTheLock) {
  store().set(kMultiView, kSplitScreen);
  for (const char* key : kKeys) {
    clearJournal();
    EXPECT_TRUE(entries().check_enable_string(key, "text")) << key;
    EXPECT_EQ(journal(), Journal{mainLog("check_enable_string")}) << key;
    clearJournal();
    EXPECT_TRUE(entries().check_enable_double(key, -1.5)) << key;
    EXPECT_EQ(journal(), Journal{mainLog("check_enable_double")}) << key;
    clearJournal();
    EXPECT_TRUE(entries().check_enable_bool(key, false)) << key;
    EXPECT_EQ(journal(), Journal{mainLog("check_enable_bool")}) << key;
  }
}

TEST_F(Checks, TheValueIsNotExamined) {
  EXPECT_TRUE(entries().check_enable_string("any", nullptr));
  EXPECT_TRUE(entries().check_enable_bool("any", true));
  makeBusinessProduct();
  flags().set("network.network_support", 0);
  for (const int value : {-1, 0, 1, 100002}) {
    EXPECT_FALSE(isVisible(kDeviceName, value)) << value;
    EXPECT_FALSE(isEnabled(kDeviceName, value)) << value;
    EXPECT_TRUE(isEnabled("menu/network/WiFiOnOff", value)) << value;
  }
}

TEST_F(Checks, TheSevenThatTakeNoLockDoNotWaitForACallbackThatHoldsIt) {
  std::latch inside(1);
  std::latch checked(1);
  onCall("vconf_set_str", [&] {
    inside.count_down();
    checked.wait();
  });
  std::thread setter([&] { table().set_string("any", "TV Two"); });
  inside.wait();
  EXPECT_TRUE(entries().check_enable_bool(kDeviceName, false));
  EXPECT_TRUE(entries().check_enable_double(kDeviceName, 0));
  EXPECT_TRUE(entries().check_enable_string(kDeviceName, ""));
  EXPECT_TRUE(entries().check_visibility_bool(kDeviceName, false));
  EXPECT_TRUE(entries().check_visibility_double(kDeviceName, 0));
  EXPECT_TRUE(entries().check_visibility_string(kDeviceName, ""));
  EXPECT_EQ(lockActions(), Journal{locks()});
  checked.count_down();
  setter.join();
}

// ---- check_visibility_int ----

TEST_F(Checks, OnAProductWithoutTheBusinessOptionEveryItemIsVisible) {
  flags().setBool("product.b2b_option_support", false);
  flags().set("network.network_support", 0);
  for (const char* key : kKeys) {
    EXPECT_TRUE(isVisible(key)) << key;
    EXPECT_EQ(journal(),
              (Journal{locks(), readsBusinessOption(), mainLog("supported = false"), unlocks()}));
  }
}

TEST_F(Checks, AnUnreadableBusinessOptionCountsAsNone) {
  flags().set("network.network_support", 0);
  EXPECT_TRUE(isVisible());
  EXPECT_EQ(journal(), (Journal{locks(), noBusinessProduct(), unlocks()}));
}

TEST_F(Checks, ABusinessOptionWhoseReadingFailedCountsAsItStands) {
  makeBusinessProduct();
  flags().set("network.network_support", 0);
  failWith("system_info_get_custom_bool", "product.b2b_option_support", -5, Effect::kAsSuccess);
  EXPECT_FALSE(isVisible());
  EXPECT_EQ(journal(), (Journal{locks(), readsBusinessOption(),
                                mainLog("system info get fail: "
                                        "com.norvane/featureconf/product.b2b_option_support"),
                                mainLog("supported = true"), readsNetworkSupport(),
                                mainLog("Network is not supported."), unlocks()}));
}

TEST_F(Checks, ABusinessProductWithoutNetworkSupportShowsNoItem) {
  makeBusinessProduct();
  flags().set("network.network_support", 0);
  for (const char* key : kKeys) {
    EXPECT_FALSE(isVisible(key)) << key;
    EXPECT_EQ(journal(), (Journal{locks(), businessProduct(), readsNetworkSupport(),
                                  mainLog("Network is not supported."), unlocks()}));
  }
}

TEST_F(Checks, ABusinessProductWithAnyNetworkSupportShowsEveryItem) {
  makeBusinessProduct();
  for (const int support : {1, 2, -1}) {
    flags().set("network.network_support", support);
    EXPECT_TRUE(isVisible()) << support;
    EXPECT_EQ(journal(), (Journal{locks(), businessProduct(), readsNetworkSupport(), unlocks()}));
  }
}

TEST_F(Checks, ABusinessProductWhoseNetworkSupportIsUnreadableShowsEveryItem) {
  makeBusinessProduct();
  EXPECT_TRUE(isVisible());
  EXPECT_EQ(journal(), (Journal{locks(), businessProduct(), readsNetworkSupport(), unlocks()}));
  // Also when the failed reading left a 0.
  flags().set("network.network_support", 0);
  failWith("system_info_get_custom_int", "network.network_support", -5, Effect::kAsSuccess);
  EXPECT_TRUE(isVisible());
}

TEST_F(Checks, TheFlagsAreReadAnewAtEveryCheck) {
  EXPECT_TRUE(isVisible());
  makeBusinessProduct();
  flags().set("network.network_support", 0);
  EXPECT_FALSE(isVisible());
  flags().set("network.network_support", 1);
  EXPECT_TRUE(isVisible());
}

// ---- check_enable_int: saved networks ----

struct NetworkCount {
  const char* document;
  int count;
};

constexpr NetworkCount kNetworkCounts[] = {
    {R"({"count": 0, "values": [{"SSID": "a", "SIGNAL_STRENGTH": -60}]})", 0},
    {R"({"count": 1, "values": [{"SSID": "a", "SIGNAL_STRENGTH": -60},
                                {"SSID": "b", "SIGNAL_STRENGTH": -60}]})",
     1},
    {R"({"count": 2, "values": [{"SSID": "a", "SIGNAL_STRENGTH": -60},
                                {"SSID": "b", "SIGNAL_STRENGTH": -60}]})",
     2},
    {R"({"count": 3, "values": [{"SSID": "a", "SIGNAL_STRENGTH": -60},
                                {"SSID": "b", "SIGNAL_STRENGTH": -60},
                                {"SSID": "c", "SIGNAL_STRENGTH": -60}]})",
     3},
};

TEST_F(Checks, ASavedNetworkIsEnabledWhenThereIsOneAtItsPosition) {
  for (const NetworkCount& each : kNetworkCounts) {
    store().set(kSavedNetworks, each.document);
    const Journal counted = {mainLog("Saved AP Count " + std::to_string(each.count)), unlocks()};
    EXPECT_EQ(isEnabled(kFirstNetwork), each.count > 0) << each.count;
    EXPECT_TRUE(journal().contains(counted)) << each.count;
    EXPECT_EQ(isEnabled(kSecondNetwork), each.count > 1) << each.count;
    EXPECT_TRUE(journal().contains(counted)) << each.count;
  }
}

TEST_F(Checks, TheFirstCheckOfASavedNetworkSubscribesToTheDocument) {
  EXPECT_FALSE(isEnabled(kFirstNetwork));
  EXPECT_EQ(journal(), (Journal{locks(), mainLog("key = menu/network/SavedAP1"),
                                call("vconf_notify_key_changed", kSavedNetworks), readsNetworks(),
                                mainLog("Saved AP Count 0"), unlocks()}));
  EXPECT_FALSE(isEnabled(kSecondNetwork));
  EXPECT_EQ(journal(), (Journal{locks(), mainLog("key = menu/network/SavedAP2"), readsNetworks(),
                                mainLog("Saved AP Count 0"), unlocks()}));
}

TEST_F(Checks, TheSavedNetworksAreReadUnderTheLockAndLogged) {
  store().set(kSavedNetworks,
              R"({"count": 2, "values": [
                   {"SSID": "One", "SIGNAL_STRENGTH": -60, "STATUS": "Connected"},
                   {"SSID": "Two", "SIGNAL_STRENGTH": -70}]})");
  isEnabled(kFirstNetwork);
  EXPECT_TRUE(isEnabled(kSecondNetwork));
  EXPECT_EQ(journal(), (Journal{locks(), mainLog("key = menu/network/SavedAP2"), readsNetworks(),
                                mainLog(" AP Name = One status = Connected "),
                                mainLog(" AP Name = Two status =  "), mainLog("Saved AP Count 2"),
                                unlocks()}));
}

TEST_F(Checks, TheSavedNetworksAreCountedAnewAtEveryCheck) {
  store().set(kSavedNetworks, kNetworkCounts[2].document);
  EXPECT_TRUE(isEnabled(kSecondNetwork));
  store().set(kSavedNetworks, kNetworkCounts[1].document);
  EXPECT_FALSE(isEnabled(kSecondNetwork));
  EXPECT_TRUE(isEnabled(kFirstNetwork));
  store().erase(kSavedNetworks);
  EXPECT_FALSE(isEnabled(kFirstNetwork));
}

TEST_F(Checks, ASavedNetworkDoesNotDependOnTheProductOrTheScreen) {
  makeBusinessProduct();
  store().set(kMultiView, kSplitScreen);
  store().set(kSavedNetworks, kNetworkCounts[2].document);
  EXPECT_TRUE(isEnabled(kFirstNetwork));
  EXPECT_TRUE(isEnabled(kSecondNetwork));
}

TEST_F(Checks, DocumentsWithoutNetworksDisableBothItems) {
  const std::string deep(2000, '[');
  const std::string documents[] = {"",
                                   "no json",
                                   deep,
                                   deep + std::string(2000, ']'),
                                   R"({"count": 2, "values": []})",
                                   R"({"count": 2})"};
  for (const std::string& document : documents) {
    store().set(kSavedNetworks, document);
    EXPECT_FALSE(isEnabled(kFirstNetwork)) << document.substr(0, 30);
    EXPECT_FALSE(isEnabled(kSecondNetwork)) << document.substr(0, 30);
  }
}

TEST_F(Checks, ASavedNetworksDocumentOfAWrongShapeRaisesAndLeavesTheLockFree) {
  isEnabled(kFirstNetwork);
  for (const char* document :
       {"[]", R"({"values": []})", R"({"count": "two", "values": []})",
        R"({"count": 1, "values": [{"SSID": "a"}]})", R"({"count": 1, "values": [[1]]})"}) {
    store().set(kSavedNetworks, document);
    for (const char* key : {kFirstNetwork, kSecondNetwork}) {
      clearJournal();
      EXPECT_THROW(entries().check_enable_int(key, 0), Json::LogicError) << document;
      EXPECT_EQ(journal(), (Journal{locks(), mainLog(std::string("key = ") + key), readsNetworks(),
                                    unlocks()}))
          << document;
    }
  }
  store().set(kSavedNetworks, kNetworkCounts[1].document);
  EXPECT_TRUE(isEnabled(kFirstNetwork));
  EXPECT_FALSE(isEnabled(kSecondNetwork));
}

TEST_F(Checks, ASavedNetworksDocumentOfAMebibyteIsRead) {
  store().set(kSavedNetworks, R"({"other": ")" + std::string(1U << 20U, 'x') +
                                  R"(", "count": 1, "values": [{"SIGNAL_STRENGTH": 0}]})");
  EXPECT_TRUE(isEnabled(kFirstNetwork));
  EXPECT_FALSE(isEnabled(kSecondNetwork));
}

// ---- check_enable_int: other items ----

TEST_F(Checks, AnyOtherItemIsAlwaysEnabled) {
  makeBusinessProduct();
  store().set(kMultiView, kSplitScreen);
  for (const std::string key :
       {"menu/general/network", "menu/network/WiFiOnOff", "menu/network/WiredEAP",
        "menu/network/devicename/selectdevicename", "menu/network/devicename/",
        "menu/network/devicename2", "menu/network/devicenam", "menu/network/DeviceName",
        "menu/network/SavedAP", "menu/network/SavedAP11", "menu/network/savedap1",
        "SAVEDAP1_NAME_KEY", "no/such/key", ""}) {
    EXPECT_TRUE(isEnabled(key.c_str())) << key;
    EXPECT_EQ(journal(), (Journal{locks(), mainLog("key = " + key), unlocks()})) << key;
  }
}

// ---- check_enable_int: the device name ----

TEST_F(Checks, TheDeviceNameIsEnabledOnAProductWithoutTheBusinessOption) {
  EXPECT_TRUE(isEnabled(kDeviceName));
  EXPECT_EQ(journal(), ofDeviceName({noMultiView(), noBusinessProduct()}));
}

TEST_F(Checks, TheDeviceNameOfABusinessProductIsDisabledOutsideTheAdministratorsMenu) {
  makeBusinessProduct();
  store().setBool(kHotelMode, false);
  EXPECT_FALSE(isEnabled(kDeviceName));
  EXPECT_EQ(journal(), ofDeviceName({noMultiView(), businessProduct(), readsHotelMode()}));
}

TEST_F(Checks, TheDeviceNameOfABusinessProductIsEnabledInTheAdministratorsMenu) {
  makeBusinessProduct();
  store().setBool(kHotelMode, true);
  EXPECT_TRUE(isEnabled(kDeviceName));
  EXPECT_EQ(journal(), ofDeviceName({noMultiView(), businessProduct(), readsHotelMode(),
                                     mainLog("User Admin")}));
}

TEST_F(Checks, AnyHotelModeButZeroIsTheAdministratorsMenu) {
  makeBusinessProduct();
  for (const int mode : {2, -1, 256}) {
    store().setRawBool(kHotelMode, mode);
    EXPECT_TRUE(isEnabled(kDeviceName)) << mode;
  }
}

TEST_F(Checks, AnUnreadableHotelModeCountsAsOff) {
  makeBusinessProduct();
  EXPECT_FALSE(isEnabled(kDeviceName));
  EXPECT_EQ(journal(),
            ofDeviceName({noMultiView(), businessProduct(), readsHotelMode(),
                          systemLog("memory/ephotel/hotelmenu/hotelfactorymode failed")}));
}

TEST_F(Checks, AHotelModeWhoseReadingFailedCountsAsItStands) {
  makeBusinessProduct();
  store().setBool(kHotelMode, true);
  failWith("vconf_get_bool", kHotelMode, -5, Effect::kAsSuccess);
  EXPECT_TRUE(isEnabled(kDeviceName));
  EXPECT_EQ(journal(), ofDeviceName({noMultiView(), businessProduct(), readsHotelMode(),
                                     systemLog("memory/ephotel/hotelmenu/hotelfactorymode failed"),
                                     mainLog("User Admin")}));
}

TEST_F(Checks, ASplitScreenDisablesTheDeviceNameEvenForTheAdministrator) {
  makeBusinessProduct();
  store().setBool(kHotelMode, true);
  store().set(kMultiView, kSplitScreen);
  EXPECT_FALSE(isEnabled(kDeviceName));
  EXPECT_FALSE(calls().contains(readsBusinessOption()));
  EXPECT_FALSE(calls().contains(readsHotelMode()));
}

TEST_F(Checks, TheScreenAndTheHotelModeAreReadAnewAtEveryCheck) {
  EXPECT_TRUE(isEnabled(kDeviceName));
  store().set(kMultiView, kSplitScreen);
  EXPECT_FALSE(isEnabled(kDeviceName));
  store().erase(kMultiView);
  EXPECT_TRUE(isEnabled(kDeviceName));
  makeBusinessProduct();
  EXPECT_FALSE(isEnabled(kDeviceName));
  store().setBool(kHotelMode, true);
  EXPECT_TRUE(isEnabled(kDeviceName));
}

// ---- The multi-view document ----

// The document, and how far it is read.
struct MultiView {
  std::string document;
  bool parsed;
  const char* style;   // null: none
  const char* status;  // null: none, or not looked at
  bool split = false;
};

class MultiViewDocument : public Checks {
 protected:
  // Checks the device name of a product without the business option, and the whole journal.
  void expectRead(const MultiView& view) {
    const std::string name = view.document.substr(0, 70);
    store().set(kMultiView, view.document);
    bool enabled = false;
    ASSERT_NO_THROW(enabled = isEnabled(kDeviceName)) << name;
    EXPECT_EQ(enabled, !view.split) << name;
    EXPECT_TRUE(journal() == ofDeviceName(lines(view)))
        << name << "\n"
        << testing::PrintToString(journal()).substr(0, 4000);
  }

 private:
  static Journal lines(const MultiView& view) {
    const std::string parsed = view.parsed ? "true" : "false";
    Journal start = {call("vconf_get_str", kMultiView),
                     mainLog("Vconf for Multiview: [" + view.document + "]"),
                     mainLog("parsingSuccessful[" + parsed + "]  root [" + view.document + "] ")};
    if (!view.parsed) return {start, noBusinessProduct()};
    if (view.style == nullptr) {
      return {start, mainLog("EndStyleValue is null"), noBusinessProduct()};
    }
    start = {start, mainLog(std::string("EndStyle=") + view.style)};
    if (view.status == nullptr) {
      return {start, mainLog("StatusValue is null"), noBusinessProduct()};
    }
    start = {start, mainLog(std::string("Status=") + view.status)};
    if (!view.split) return {start, noBusinessProduct()};
    return {start, mainLog("Method Name matched to MobileDetection")};
  }
};

TEST_F(MultiViewDocument, MissingIsNotMultiView) {
  EXPECT_TRUE(isEnabled(kDeviceName));
  EXPECT_EQ(journal(), ofDeviceName({noMultiView(), noBusinessProduct()}));
}

TEST_F(MultiViewDocument, FourStylesInTheirPostConditionSplitTheScreen) {
  for (const char* style : {"PAP_FN", "PAM_FN", "PAP_NF", "PAM_NF"}) {
    expectRead({R"({"end": {"style": ")" + std::string(style) + R"("}, "status": "PostCondition"})",
                true, style, "PostCondition", true});
  }
}

TEST_F(MultiViewDocument, NoOtherStyleSplitsTheScreen) {
  for (const char* style : {"", "PAP", "PAP_F", "PAP_FNX", "pap_fn", "PAP_FF", "PAM_NN", " PAP_FN",
                            "PAP_FN ", "FULL"}) {
    expectRead({R"({"end": {"style": ")" + std::string(style) + R"("}, "status": "PostCondition"})",
                true, style, "PostCondition"});
  }
}

TEST_F(MultiViewDocument, NoOtherStatusSplitsTheScreen) {
  for (const char* style : {"PAP_FN", "PAM_FN", "PAP_NF", "PAM_NF"}) {
    for (const char* status : {"", "PreCondition", "postcondition", "PostConditio",
                               "PostCondition2", " PostCondition"}) {
      expectRead(
          {R"({"end": {"style": ")" + std::string(style) + R"("}, "status": ")" + status + R"("})",
           true, style, status});
    }
  }
}

TEST_F(MultiViewDocument, WithoutAStyleItsStatusIsNotLookedAt) {
  for (const char* document :
       {R"({})", R"({"status": "PostCondition"})", R"({"end": {}, "status": "PostCondition"})",
        R"({"end": {"Style": "PAP_FN"}, "status": "PostCondition"})",
        R"({"style": "PAP_FN", "status": "PostCondition"})",
        R"({"end": {"style": null}, "status": "PostCondition"})"}) {
    expectRead({document, true, nullptr, nullptr});
  }
}

TEST_F(MultiViewDocument, WithoutAStatusIsNotMultiView) {
  for (const char* document :
       {R"({"end": {"style": "PAP_FN"}})", R"({"end": {"style": "PAP_FN"}, "status": null})",
        R"({"end": {"style": "PAP_FN", "status": "PostCondition"}})"}) {
    expectRead({document, true, "PAP_FN", nullptr});
  }
}

TEST_F(MultiViewDocument, OfAnotherShapeThanAnObjectHasNoStyle) {
  for (const char* document : {"[]", "[1, 2]", R"([{"end": {"style": "PAP_FN"}}])", "null", "true",
                               "0", "-12.5", R"("end")", R"(["end", "style", "status"])"}) {
    expectRead({document, true, nullptr, nullptr});
  }
}

TEST_F(MultiViewDocument, WhoseEndIsNoObjectHasNoStyle) {
  for (const char* end : {"null", "true", "false", "1", "1.5", R"("style")", R"("PAP_FN")", "[]",
                          R"(["style"])", R"([{"style": "PAP_FN"}])"}) {
    expectRead({R"({"end": )" + std::string(end) + R"(, "status": "PostCondition"})", true, nullptr,
                nullptr});
  }
}

TEST_F(MultiViewDocument, WhoseStyleIsAnArrayOrObjectHasNoStyle) {
  for (const char* style : {"[]", R"(["PAP_FN"])", "{}", R"({"PAP_FN": 1})"}) {
    expectRead({R"({"end": {"style": )" + std::string(style) + R"(}, "status": "PostCondition"})",
                true, nullptr, nullptr});
  }
}

TEST_F(MultiViewDocument, WhoseStatusIsAnArrayOrObjectHasNoStatus) {
  for (const char* status : {"[]", R"(["PostCondition"])", "{}", R"({"PostCondition": 1})"}) {
    expectRead({R"({"end": {"style": "PAP_FN"}, "status": )" + std::string(status) + "}", true,
                "PAP_FN", nullptr});
  }
}

TEST_F(MultiViewDocument, ANumberOrTruthValueIsTakenAsItsText) {
  struct Scalar {
    const char* json;
    const char* text;
  };
  for (const Scalar& each : {Scalar{"5", "5"}, Scalar{"-7", "-7"}, Scalar{"true", "true"},
                             Scalar{"false", "false"}, Scalar{"4294967296", "4294967296"}}) {
    expectRead(
        {R"({"end": {"style": )" + std::string(each.json) + R"(}, "status": "PostCondition"})",
         true, each.text, "PostCondition"});
    expectRead({R"({"end": {"style": "PAP_FN"}, "status": )" + std::string(each.json) + "}", true,
                "PAP_FN", each.text});
  }
}

TEST_F(MultiViewDocument, ThatIsNoJsonIsNotMultiView) {
  for (const char* document : {"", " ", "PAP_FN", "{", R"({"end": )", R"({"end" "style"})", "]",
                               R"({'end': 1})", R"({"end": {"style": "PAP_FN)", "\xff\xfe"}) {
    expectRead({document, false, nullptr, nullptr});
  }
}

// The reader's default settings, unlike those for the saved networks.
TEST_F(MultiViewDocument, MayHoldCommentsAndTrailingText) {
  for (const char* document :
       {R"(/* state */ {"end": {"style": "PAP_FN"}, "status": "PostCondition"})",
        R"({"end": {"style": "PAP_FN"}, // split
            "status": "PostCondition"})",
        R"({"end": {"style": "PAP_FN"}, "status": "PostCondition"} and more)",
        R"({"status": "Pre", "end": {"style": "PAP_FN"}, "status": "PostCondition"})",
        R"({"a": 1, "end": {"x": [], "style": "PAP_FN"}, "b": {}, "status": "PostCondition"})"}) {
    expectRead({document, true, "PAP_FN", "PostCondition", true});
  }
}

TEST_F(MultiViewDocument, NestedTooDeeplyCountsAsNotParsed) {
  constexpr int kDepth = 2000;
  std::string objects;
  for (int i = 0; i < kDepth; ++i) objects += R"({"end":)";
  std::string ends(kDepth, '}');
  const std::string arrays = std::string(kDepth, '[') + std::string(kDepth, ']');
  expectRead({std::string(kDepth, '['), false, nullptr, nullptr});
  expectRead({arrays, false, nullptr, nullptr});
  expectRead({objects + "1" + ends, false, nullptr, nullptr});
  expectRead({R"({"end": {"style": "PAP_FN"}, "status": "PostCondition", "x": )" + arrays + "}",
              false, nullptr, nullptr});
}

TEST_F(MultiViewDocument, OfAMebibyteIsReadToItsEnd) {
  const std::string mebibyte(1U << 20U, 'x');
  expectRead(
      {R"({"x": ")" + mebibyte + R"(", "end": {"style": "PAP_FN"}, "status": "PostCondition"})",
       true, "PAP_FN", "PostCondition", true});
  expectRead({R"({"end": {"style": ")" + mebibyte + R"("}, "status": "PostCondition"})", true,
              mebibyte.c_str(), "PostCondition"});
  expectRead({mebibyte, false, nullptr, nullptr});
}

TEST_F(MultiViewDocument, IsNoFormat) {
  expectRead({R"({"end": {"style": "%s%n"}, "status": "100 %d"})", true, "%s%n", "100 %d"});
}

TEST_F(MultiViewDocument, AStyleWithAZeroByteIsAnotherStyle) {
  // The log ends at the byte, the comparison does not.
  expectRead({R"({"end": {"style": "PAP_FN\u0000"}, "status": "PostCondition"})", true, "PAP_FN",
              "PostCondition"});
  expectRead({R"({"end": {"style": "PAP_FN"}, "status": "PostCondition\u0000"})", true, "PAP_FN",
              "PostCondition"});
}

TEST_F(MultiViewDocument, ThatTheStoreCannotGiveIsNotMultiView) {
  store().set(kMultiView, kSplitScreen);
  failWith("vconf_get_str", kMultiView, -1);
  EXPECT_TRUE(isEnabled(kDeviceName));
  EXPECT_EQ(journal(), ofDeviceName({noMultiView(), noBusinessProduct()}));
}

// ---- The lock ----

TEST_F(Checks, ALockThatCannotBeTakenRaisesItsErrorAndNothingIsRead) {
  clearJournal();
  failNextLock(EDEADLK);
  EXPECT_THROW(entries().check_visibility_int(kDeviceName, 0), std::system_error);
  EXPECT_EQ(journal(), Journal{lockFails(EDEADLK)});
  clearJournal();
  failNextLock(EINVAL);
  EXPECT_THROW(entries().check_enable_int(kFirstNetwork, 0), std::system_error);
  EXPECT_EQ(journal(), Journal{lockFails(EINVAL)});
  EXPECT_TRUE(isVisible());
}

}  // namespace
