// The fixture of the tests of what depends on the kind of product.
#ifndef PRODUCT_TEST_H
#define PRODUCT_TEST_H

#include <optional>

#include "CProductSIDUtil.h"
#include "object_test.h"

inline constexpr char kTunerless[] = "com.norvane/featureconf/broadcast.removable_rf_tuner_support";
inline constexpr char kGeneration[] = "com.norvane/featureconf/orlex_version";
inline constexpr char kProjector[] = "com.norvane/featureconf/projector_feature_support";
inline constexpr char kSmartMonitor[] =
    "com.norvane/featureconf/product.smart_monitor_feature_support";

// The product's flags; an empty one cannot be read.
struct ProductFlags {
  std::optional<bool> tunerless;
  std::optional<int> generation;
  std::optional<bool> projector;
  std::optional<bool> smartMonitor;
};

inline constexpr ProductFlags kTv = {false, 0, false, false};

class Product : public ObjectTest {
 protected:
  static void setFlags(const ProductFlags& product) {
    for (const char* name : {kTunerless, kGeneration, kProjector, kSmartMonitor}) {
      flags().erase(name);
    }
    if (product.tunerless) flags().setBool(kTunerless, *product.tunerless);
    if (product.generation) flags().set(kGeneration, *product.generation);
    if (product.projector) flags().setBool(kProjector, *product.projector);
    if (product.smartMonitor) flags().setBool(kSmartMonitor, *product.smartMonitor);
  }

  // ---- Pieces of journals ----

  static Journal tunerlessIs(bool value) {
    return {call("system_info_get_custom_bool", kTunerless),
            mainLog(value ? "Tunerless support = 1" : "Tunerless support = 0")};
  }
  static Journal tunerlessIsUnreadable() {
    return {call("system_info_get_custom_bool", kTunerless),
            systemLog("get com.norvane/featureconf/broadcast.removable_rf_tuner_support failed"),
            mainLog("Tunerless support = 0")};
  }
  static Journal readsGeneration() { return {call("system_info_get_custom_int", kGeneration)}; }
  static Journal generationIsUnreadable() {
    return {readsGeneration(), systemLog("fail to get com.norvane/featureconf/orlex_version")};
  }
  static Journal readsProjector() { return {call("system_info_get_custom_bool", kProjector)}; }
  static Journal readsSmartMonitor() {
    return {call("system_info_get_custom_bool", kSmartMonitor)};
  }
  static Journal smartMonitorIsUnreadable() {
    return {readsSmartMonitor(),
            systemLog("fail to get com.norvane/featureconf/product.smart_monitor_feature_support")};
  }
  // The calls that determine the kind on a television.
  static Journal findsTv() {
    return {tunerlessIs(false), readsGeneration(), readsProjector(), readsSmartMonitor()};
  }
};

#endif  // PRODUCT_TEST_H
