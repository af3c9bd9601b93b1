// When the device name may be changed: the product, the administrator's menu, and the multi-view
// document that says whether the screen is split.
#include "checks_test.h"

namespace {

constexpr char kHotelMode[] = "memory/ephotel/hotelmenu/hotelfactorymode";

class DeviceNameCheck : public Checks {
 protected:
  bool isEnabled() const { return Checks::isEnabled(VENTARO_KEY_DEVICE_NAME); }

  static Journal::Piece readsHotelMode() { return call("vconf_get_bool", kHotelMode); }
  static Journal noMultiView() {
    return {call("vconf_get_str", kMultiView), mainLog("No value in VCONF")};
  }

  // The whole journal of a check of the device name.
  static Journal ofDeviceName(const Journal& lines) {
    return {locks(), mainLog("key = menu/network/devicename"), lines, unlocks()};
  }
};

// ---- The product, the hotel mode and the screen ----

TEST_F(DeviceNameCheck, IsYesOnAProductWithoutTheBusinessOption) {
  EXPECT_TRUE(isEnabled());
  EXPECT_EQ(journal(), ofDeviceName({noMultiView(), noBusinessProduct()}));
}

TEST_F(DeviceNameCheck, OfABusinessProductIsNoOutsideTheAdministratorsMenu) {
  makeBusinessProduct();
  store().setBool(kHotelMode, false);
  EXPECT_FALSE(isEnabled());
  EXPECT_EQ(journal(), ofDeviceName({noMultiView(), businessProduct(), readsHotelMode()}));
}

TEST_F(DeviceNameCheck, OfABusinessProductIsYesInTheAdministratorsMenu) {
  makeBusinessProduct();
  store().setBool(kHotelMode, true);
  EXPECT_TRUE(isEnabled());
  EXPECT_EQ(journal(), ofDeviceName({noMultiView(), businessProduct(), readsHotelMode(),
                                     mainLog("User Admin")}));
}

TEST_F(DeviceNameCheck, AnyHotelModeButZeroIsTheAdministratorsMenu) {
  makeBusinessProduct();
  for (const int mode : {2, -1, 256}) {
    store().setRawBool(kHotelMode, mode);
    EXPECT_TRUE(isEnabled()) << mode;
  }
}

TEST_F(DeviceNameCheck, AnUnreadableHotelModeCountsAsOff) {
  makeBusinessProduct();
  EXPECT_FALSE(isEnabled());
  EXPECT_EQ(journal(),
            ofDeviceName({noMultiView(), businessProduct(), readsHotelMode(),
                          systemLog("memory/ephotel/hotelmenu/hotelfactorymode failed")}));
}

TEST_F(DeviceNameCheck, AHotelModeWhoseReadingFailedCountsAsItStands) {
  makeBusinessProduct();
  store().setBool(kHotelMode, true);
  failWith("vconf_get_bool", kHotelMode, -5, Effect::kAsSuccess);
  EXPECT_TRUE(isEnabled());
  EXPECT_EQ(journal(), ofDeviceName({noMultiView(), businessProduct(), readsHotelMode(),
                                     systemLog("memory/ephotel/hotelmenu/hotelfactorymode failed"),
                                     mainLog("User Admin")}));
}

TEST_F(DeviceNameCheck, IsNoOnASplitScreenEvenForTheAdministrator) {
  makeBusinessProduct();
  store().setBool(kHotelMode, true);
  store().set(kMultiView, kSplitScreen);
  EXPECT_FALSE(isEnabled());
  EXPECT_FALSE(calls().contains(readsBusinessOption()));
  EXPECT_FALSE(calls().contains(readsHotelMode()));
}

TEST_F(DeviceNameCheck, TheScreenAndTheHotelModeAreReadAgainAtEveryCheck) {
  EXPECT_TRUE(isEnabled());
  store().set(kMultiView, kSplitScreen);
  EXPECT_FALSE(isEnabled());
  store().erase(kMultiView);
  EXPECT_TRUE(isEnabled());
  makeBusinessProduct();
  EXPECT_FALSE(isEnabled());
  store().setBool(kHotelMode, true);
  EXPECT_TRUE(isEnabled());
}

// ---- The multi-view document ----

// The document, and how much of it is read.
struct MultiView {
  std::string document;
  bool parsed;
  const char* style;   // null: none
  const char* status;  // null: none, or not looked at
  bool split = false;
};

class MultiViewDocument : public DeviceNameCheck {
 protected:
  // Checks the device name of a product without the business option, and the whole journal.
  void expectRead(const MultiView& view) {
    const std::string name = view.document.substr(0, 70);
    store().set(kMultiView, view.document);
    bool enabled = false;
    ASSERT_NO_THROW(enabled = isEnabled()) << name;
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
  EXPECT_TRUE(isEnabled());
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
  EXPECT_TRUE(isEnabled());
  EXPECT_EQ(journal(), ofDeviceName({noMultiView(), noBusinessProduct()}));
}

}  // namespace
