// What kind of product this is.
#include "product_test.h"

#include "globals.h"
#include "texts.h"

namespace {

constexpr char kDeviceSid[] = "com.norvane/featureconf/product.device_sid";

TEST_F(Product, HasNamesOfTwoProjectorFeatures) {
  EXPECT_EQ(PROJECTOR_FMS, "com.norvane/featureconf/projector_feature_support");
  EXPECT_EQ(SOLVENA_FMS, "com.norvane/featureconf/projector.engine_type");
}

// ---- IsProductTunerless ----

TEST_F(Product, IsTunerlessWhenItsTunerCanBeRemoved) {
  for (const bool flag : {true, false}) {
    flags().setBool(kTunerless, flag);
    clearJournal();
    EXPECT_EQ(CProductUtil::IsProductTunerless(), flag);
    EXPECT_EQ(journal(), tunerlessIs(flag));
  }
}

TEST_F(Product, IsNotTunerlessWhenTheFlagCannotBeReadWhateverTheReadLeft) {
  EXPECT_FALSE(CProductUtil::IsProductTunerless());
  EXPECT_EQ(journal(), tunerlessIsUnreadable());
  clearJournal();
  flags().setBool(kTunerless, true);
  failWith("system_info_get_custom_bool", kTunerless, -5, Effect::kAsSuccess);
  EXPECT_FALSE(CProductUtil::IsProductTunerless());
  EXPECT_EQ(journal(), tunerlessIsUnreadable());
}

// ---- GetProductType ----

class ProductType : public Product {
 protected:
  // The code and the product's name; the name's old text must be gone.
  static void expectType(const ProductFlags& product, int code, const char* nameSid,
                         const Journal& expected) {
    setFlags(product);
    expectType(code, nameSid, expected);
  }

  static void expectType(int code, const char* nameSid, const Journal& expected) {
    clearJournal();
    std::string name = "what was there before, and longer than every name";
    EXPECT_EQ(CProductUtil::GetProductType(name), code) << nameSid;
    EXPECT_EQ(name, tr(nameSid)) << nameSid;
    EXPECT_EQ(journal(), expected) << nameSid;
  }

  static void expectScreen(const ProductFlags& product) {
    expectType(product, 0, "REP.DEVICE.SCREEN", tunerlessIs(true));
  }
};

TEST_F(ProductType, WithoutATunerIsAScreenWhateverTheOtherFlagsSay) {
  expectScreen({true, 1, true, true});
  expectScreen({true, 2, true, true});
  expectScreen({true, 0, false, false});
  expectScreen({true, std::nullopt, std::nullopt, std::nullopt});
}

TEST_F(ProductType, OfTheFirstModularGenerationBeatsTheProjectorAndTheMonitor) {
  for (const bool others : {false, true}) {
    expectType({false, 1, others, others}, 3, "COM_SID_ORLEX",
               {tunerlessIs(false), readsGeneration()});
  }
}

TEST_F(ProductType, OfTheSecondModularGenerationBeatsTheProjectorAndTheMonitor) {
  for (const bool others : {false, true}) {
    expectType({false, 2, others, others}, 7, "COM_TV_SID_MLED_CAOCT_NON_MICRO_LED",
               {tunerlessIs(false), readsGeneration()});
  }
}

TEST_F(ProductType, OfAnyOtherGenerationIsNotModular) {
  for (const int generation : {0, 3, 4, -1, 257, 2147483647}) {
    expectType({false, generation, false, false}, 1, "COM_SID_TV", findsTv());
    expectType({false, generation, true, false}, 6, "PJT_SID_TV",
               {tunerlessIs(false), readsGeneration(), readsProjector()});
  }
}

TEST_F(ProductType, WithTheProjectorsFlagIsAProjectorAlsoWithTheMonitorsFlag) {
  for (const bool monitor : {false, true}) {
    expectType({false, 0, true, monitor}, 6, "PJT_SID_TV",
               {tunerlessIs(false), readsGeneration(), readsProjector()});
  }
}

TEST_F(ProductType, WithTheMonitorsFlagIsASmartMonitor) {
  expectType({false, 0, false, true}, 8, "COM_SID_SMNT_CAAUG_MNT", findsTv());
}

TEST_F(ProductType, WithNoneOfThemIsATelevision) {
  expectType(kTv, 1, "COM_SID_TV", findsTv());
}

TEST_F(ProductType, WithEveryFlagUnreadableIsATelevisionAfterThreeFailures) {
  expectType({}, 1, "COM_SID_TV",
             {tunerlessIsUnreadable(), generationIsUnreadable(), readsProjector(),
              smartMonitorIsUnreadable()});
}

TEST_F(ProductType, AnUnreadableFlagLetsTheLaterOnesDecide) {
  expectType({std::nullopt, 1, false, false}, 3, "COM_SID_ORLEX",
             {tunerlessIsUnreadable(), readsGeneration()});
  expectType({false, std::nullopt, true, false}, 6, "PJT_SID_TV",
             {tunerlessIs(false), generationIsUnreadable(), readsProjector()});
  expectType({false, 0, std::nullopt, true}, 8, "COM_SID_SMNT_CAAUG_MNT", findsTv());
  expectType({false, 0, false, std::nullopt}, 1, "COM_SID_TV",
             {tunerlessIs(false), readsGeneration(), readsProjector(), smartMonitorIsUnreadable()});
}

TEST_F(ProductType, AGenerationThatCannotBeReadIsNoneWhateverTheReadLeft) {
  for (const int generation : {1, 2}) {
    setFlags({false, generation, false, false});
    failWith("system_info_get_custom_int", kGeneration, -5, Effect::kAsSuccess);
    expectType(
        1, "COM_SID_TV",
        {tunerlessIs(false), generationIsUnreadable(), readsProjector(), readsSmartMonitor()});
  }
}

TEST_F(ProductType, TheProjectorsAndTheMonitorsFlagCountAsTheyStandAfterAFailure) {
  setFlags({false, 0, true, false});
  failWith("system_info_get_custom_bool", kProjector, -5, Effect::kAsSuccess);
  expectType(6, "PJT_SID_TV", {tunerlessIs(false), readsGeneration(), readsProjector()});
  setFlags({false, 0, false, true});
  failWith("system_info_get_custom_bool", kSmartMonitor, -5, Effect::kAsSuccess);
  expectType(8, "COM_SID_SMNT_CAAUG_MNT",
             {tunerlessIs(false), readsGeneration(), readsProjector(), smartMonitorIsUnreadable()});
}

TEST_F(ProductType, IsDeterminedAgainAtEveryCall) {
  expectType(kTv, 1, "COM_SID_TV", findsTv());
  expectScreen({true, 0, false, false});
  expectType(kTv, 1, "COM_SID_TV", findsTv());
}

TEST_F(ProductType, HasANameInTheUsersLanguage) {
  useTexts({{"COM_SID_TV", "Fernseher"}});
  bindCatalogues();
  setFlags(kTv);
  std::string name;
  CProductUtil::GetProductType(name);
  EXPECT_EQ(name, "Fernseher");
}

TEST_F(ProductType, WithoutACatalogueHasItsNamesId) {
  useLanguage("none");
  expectType(kTv, 1, "COM_SID_TV", findsTv());
  expectScreen({true, 0, false, false});
  std::string name;
  CProductUtil::GetProductType(name);
  EXPECT_EQ(name, "REP.DEVICE.SCREEN");
}

// ---- GetDeviceNameString ----

class DeviceSid : public Product {
 protected:
  static void expectSid(const std::string& sid, const Journal& lines) {
    clearJournal();
    EXPECT_EQ(CProductUtil::GetDeviceNameString(), sid);
    EXPECT_EQ(journal(), (Journal{call("system_info_get_custom_string", kDeviceSid), lines}));
  }

  static Journal failed() { return {systemLog("get product device sid failed.")}; }
};

TEST_F(DeviceSid, IsTheFlagAsItStandsUntranslated) {
  for (const std::string sid : {"REP.DEVICE.PROJECTOR", "REP.DEVICE.TV", "no such id", "not_ready",
                                "Not_Ready", "NOT_READY ", "NOT_READ", "%s%n", ""}) {
    flags().set(kDeviceSid, sid);
    expectSid(sid, {mainLog("product device SID [" + sid + "]"),
                    mainLog("product device name [" + sid + "]")});
  }
}

TEST_F(DeviceSid, ThatIsNotReadyIsTheTelevisions) {
  flags().set(kDeviceSid, "NOT_READY");
  expectSid("REP.DEVICE.TV", {mainLog("product device SID [NOT_READY]"),
                              mainLog("get product device sid NOT_READY.")});
}

TEST_F(DeviceSid, ThatCannotBeReadIsTheTelevisions) {
  expectSid("REP.DEVICE.TV", failed());
  flags().setNullText(kDeviceSid);
  expectSid("REP.DEVICE.TV", failed());
  flags().set(kDeviceSid, "REP.DEVICE.PROJECTOR");
  failWith("system_info_get_custom_string", kDeviceSid, -5, Effect::kAsSuccess);
  expectSid("REP.DEVICE.TV", failed());
}

TEST_F(DeviceSid, IsReadAgainAtEveryCall) {
  flags().set(kDeviceSid, "REP.DEVICE.PROJECTOR");
  EXPECT_EQ(CProductUtil::GetDeviceNameString(), "REP.DEVICE.PROJECTOR");
  flags().set(kDeviceSid, "REP.DEVICE.MONITOR");
  EXPECT_EQ(CProductUtil::GetDeviceNameString(), "REP.DEVICE.MONITOR");
}

}  // namespace
