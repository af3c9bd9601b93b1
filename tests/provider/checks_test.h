// The fixture of the tests of the exported checks.
#ifndef CHECKS_TEST_H
#define CHECKS_TEST_H

#include "provider_test.h"

inline constexpr char kB2bOption[] = "com.norvane/featureconf/product.b2b_option_support";
inline constexpr char kMultiView[] = "memory/multiscreen/state";
inline constexpr char kSplitScreen[] = R"({"end": {"style": "PAM_NF"}, "status": "PostCondition"})";

class Checks : public ProviderTest {
 protected:
  void SetUp() override {
    ProviderTest::SetUp();
    create();
  }

  bool isVisible(const char* key = VENTARO_KEY_WIFI, int value = 0) const {
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

  static Journal noBusinessProduct() {
    return {readsBusinessOption(),
            mainLog("system info get fail: com.norvane/featureconf/product.b2b_option_support"),
            mainLog("supported = false")};
  }
  static Journal businessProduct() { return {readsBusinessOption(), mainLog("supported = true")}; }
};

#endif  // CHECKS_TEST_H
