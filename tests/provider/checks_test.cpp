// The exported checks: which items are shown, and which may be used. device_name_check_test.cpp
// covers the device name.
#include "checks_test.h"

#include <vector>

#include "saved_network_document.h"

namespace {

constexpr char kNetworkSupport[] = "com.norvane/featureconf/network.network_support";

constexpr char kFirstNetwork[] = VENTARO_KEY_SAVED_NETWORK_1;
constexpr char kSecondNetwork[] = VENTARO_KEY_SAVED_NETWORK_2;
constexpr char kDeviceName[] = VENTARO_KEY_DEVICE_NAME;

const std::vector<const char*> kKeys = {VENTARO_KEY_NETWORK,
                                        VENTARO_KEY_WIFI,
                                        kFirstNetwork,
                                        kSecondNetwork,
                                        kDeviceName,
                                        "no/such/key",
                                        ""};

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
    EXPECT_TRUE(isEnabled(VENTARO_KEY_WIFI, value)) << value;
  }
}

// ---- check_visibility_int ----

const auto kReadsNetworkSupport = call("system_info_get_custom_int", kNetworkSupport);

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
                                mainLog("supported = true"), kReadsNetworkSupport,
                                mainLog("Network is not supported."), unlocks()}));
}

TEST_F(Checks, ABusinessProductWithoutNetworkSupportShowsNoItem) {
  makeBusinessProduct();
  flags().set("network.network_support", 0);
  for (const char* key : kKeys) {
    EXPECT_FALSE(isVisible(key)) << key;
    EXPECT_EQ(journal(), (Journal{locks(), businessProduct(), kReadsNetworkSupport,
                                  mainLog("Network is not supported."), unlocks()}));
  }
}

TEST_F(Checks, ABusinessProductWithAnyNetworkSupportShowsEveryItem) {
  makeBusinessProduct();
  for (const int support : {1, 2, -1}) {
    flags().set("network.network_support", support);
    EXPECT_TRUE(isVisible()) << support;
    EXPECT_EQ(journal(), (Journal{locks(), businessProduct(), kReadsNetworkSupport, unlocks()}));
  }
}

TEST_F(Checks, ABusinessProductWhoseNetworkSupportIsUnreadableShowsEveryItem) {
  makeBusinessProduct();
  EXPECT_TRUE(isVisible());
  EXPECT_EQ(journal(), (Journal{locks(), businessProduct(), kReadsNetworkSupport, unlocks()}));
  // Even if the failed read wrote a 0.
  flags().set("network.network_support", 0);
  failWith("system_info_get_custom_int", "network.network_support", -5, Effect::kAsSuccess);
  EXPECT_TRUE(isVisible());
}

TEST_F(Checks, TheFlagsAreReadAgainAtEveryCheck) {
  EXPECT_TRUE(isVisible());
  makeBusinessProduct();
  flags().set("network.network_support", 0);
  EXPECT_FALSE(isVisible());
  flags().set("network.network_support", 1);
  EXPECT_TRUE(isVisible());
}

// ---- check_enable_int: saved networks ----

void publish(int count) {
  const std::string element = network("Home", -60, "Saved");
  store().set(kSavedNetworksKey, document(count, {element, element, element}));
}

TEST_F(Checks, ASavedNetworkIsEnabledWhenThereIsOneAtItsPosition) {
  for (const int count : {0, 1, 2, 3}) {
    publish(count);
    EXPECT_EQ(isEnabled(kFirstNetwork), count > 0) << count;
    EXPECT_EQ(isEnabled(kSecondNetwork), count > 1) << count;
  }
}

TEST_F(Checks, ASavedNetworkDoesNotDependOnTheProductOrTheScreen) {
  makeBusinessProduct();
  store().set(kMultiView, kSplitScreen);
  publish(2);
  EXPECT_TRUE(isEnabled(kFirstNetwork));
  EXPECT_TRUE(isEnabled(kSecondNetwork));
}

}  // namespace
