// The device name as text: what the user types, and what is shown.
#include <climits>

#include "setting_test.h"

namespace {

constexpr char kNameKey[] = "db/menu/network/devicename/tv_name";

const std::string kNames[] = {"",           "Tom & <Jerry>",       "테레비",
                              "SID_ON",     "<<A>> of %s",         "100%s %n",
                              "two\nlines", std::string(3000, 'x')};

class DeviceNameText : public SettingTest {
 protected:
  DeviceNameText() : SettingTest(VENTARO_KEY_DEVICE_NAME) {}

  void SetUp() override {
    SettingTest::SetUp();
    create();
    store().set(kNameKey, "TV One");
    clearJournal();
  }

  int type(const std::string& name) const {
    clearJournal();
    return table().set_string(key(), name.c_str());
  }

  static Journal storing(const std::string& name, const Journal::Piece& outcome) {
    return {locks(), mainLog("START"), call("vconf_set_str", kNameKey, name), outcome, unlocks()};
  }
};

// ---- set_string ----

TEST_F(DeviceNameText, ATypedNameIsStoredAsItIs) {
  for (const std::string& name : kNames) {
    EXPECT_EQ(type(name), 0);
    EXPECT_EQ(store().stringAt(kNameKey), name);
    EXPECT_EQ(journal(), storing(name, mainLog("Device Name set to " + name)));
  }
}

TEST_F(DeviceNameText, ATypedNameThatCannotBeStoredGivesTheStoresResultAndTheOldNameStays) {
  failWith("vconf_set_str", -3);
  EXPECT_EQ(type("TV Two"), -3);
  EXPECT_EQ(store().stringAt(kNameKey), "TV One");
  EXPECT_EQ(journal(),
            storing("TV Two", systemLog("wifi_direct_set_device_name::status [0xfffffffd]")));
}

TEST_F(DeviceNameText, APositiveResultOfTheStoreIsAFailureAsWell) {
  failWith("vconf_set_str", 5, Effect::kAsSuccess);
  EXPECT_EQ(type("TV Two"), 5);
  EXPECT_EQ(journal(),
            storing("TV Two", systemLog("wifi_direct_set_device_name::status [0x0005]")));
}

// ---- get_string ----

TEST_F(DeviceNameText, IsGivenAsItIsStored) {
  for (const std::string& name : kNames) {
    store().set(kNameKey, name);
    EXPECT_EQ(text(), name);
    EXPECT_EQ(journal(), (Journal{locks(), mainLog("START"), call("vconf_get_str", kNameKey),
                                  mainLog("wifi_direct_get_device_name::status [0x0000]"),
                                  mainLog("END"), unlocks()}));
  }
}

TEST_F(DeviceNameText, ThatIsMissingIsMinusOneWithoutAnEndAndTheOutputUntouched) {
  char preset[] = "preset";
  char* text = preset;
  store().erase(kNameKey);
  clearJournal();
  EXPECT_EQ(table().get_string(key(), &text), -1);
  EXPECT_EQ(text, preset);
  EXPECT_EQ(journal(),
            (Journal{locks(), mainLog("START"), call("vconf_get_str", kNameKey),
                     mainLog("wifi_direct_get_device_name::status [0xffffffff]"), unlocks()}));
}

TEST_F(DeviceNameText, IsAStringOfItsOwnForEveryCall) {
  const OwnedText first = text();
  const OwnedText second = text();
  EXPECT_NE(static_cast<const void*>(first.get()), second.get());
}

// ---- get_int, of what the caller's output holds beforehand ----

TEST_F(DeviceNameText, ThePresetOfThePositionsOutputIsAlwaysLogged) {
  for (const int preset : {0, -1, INT_MAX, INT_MIN}) {
    get(preset);
    EXPECT_TRUE(logLines().contains(systemLog("Key ---->menu/network/devicename::Value------>" +
                                              std::to_string(preset) + "\n")));
  }
}

// ---- get_current_value_sid ----

// The caller's buffer, a few bytes larger than required: the text, its end, then padding.
std::string bufferWith(const std::string& text) {
  std::string buffer(VENTARO_CURRENT_VALUE_SIZE + 16, '-');
  return buffer.replace(0, text.size() + 1, text.c_str(), text.size() + 1);
}

// The same buffer after a text and its end were written to its start, and nothing else.
std::string overwritten(std::string buffer, const std::string& text) {
  return buffer.replace(0, text.size() + 1, text.c_str(), text.size() + 1);
}

class CurrentValue : public DeviceNameText {
 protected:
  // The callback's result, the caller's pointer unchanged.
  int askInto(std::string& buffer) const {
    char* const start = buffer.data();
    char* value = start;
    clearJournal();
    const int result = table().get_current_value_sid(key(), &value);
    EXPECT_EQ(static_cast<const void*>(value), start);
    return result;
  }

  static Journal showing(const Journal& reading, const std::string& value) {
    return {mainLog("START"), call("vconf_get_str", kNameKey), reading,
            mainLog("********* Value: " + value + " **********"), mainLog("END")};
  }
};

TEST_F(CurrentValue, IsTheDeviceNameInTheCallersBufferCutTo2047Bytes) {
  for (const std::size_t size : {0U, 6U, 2046U, 2047U, 2048U, 3000U}) {
    const std::string cut(size < 2047 ? size : 2047, 'x');
    store().set(kNameKey, std::string(size, 'x'));
    std::string buffer = bufferWith("old");
    EXPECT_EQ(askInto(buffer), 0) << size;
    EXPECT_EQ(buffer, overwritten(bufferWith("old"), cut)) << size;
    EXPECT_EQ(journal(), showing({}, cut)) << size;
  }
}

TEST_F(CurrentValue, IsTheNameAsItIsStored) {
  for (const std::string& name : kNames) {
    if (name.size() >= VENTARO_CURRENT_VALUE_SIZE) continue;
    store().set(kNameKey, name);
    std::string buffer = bufferWith("old");
    EXPECT_EQ(askInto(buffer), 0);
    EXPECT_EQ(buffer, overwritten(bufferWith("old"), name));
  }
}

TEST_F(CurrentValue, LeavesTheBufferAloneWithoutAName) {
  store().erase(kNameKey);
  std::string buffer = bufferWith("the old value");
  EXPECT_EQ(askInto(buffer), -1);
  EXPECT_EQ(buffer, bufferWith("the old value"));
  EXPECT_EQ(journal(), showing({systemLog("get_device_name::Failed")}, "the old value"));
}

}  // namespace
