// The fixture of tests of one setting object through the callbacks that reach it. The journal of
// such a callback is the callback's own lines around the object's.
//
//   TEST_F(WifiPower, ARadioThatIsOnIsOne) {
//     create();
//     setRadio(1);
//     EXPECT_EQ(get(), (IntAnswer{1, 1}));
//     EXPECT_EQ(journal(), aroundGetInt(1, {call("wifi_get_enable_qx"), mainLog("...")}));
//   }
#ifndef PROVIDER_TEST_SETTING_TEST_H
#define PROVIDER_TEST_SETTING_TEST_H

#include <optional>
#include <string>

#include "provider_test.h"

class SettingTest : public ProviderTest {
 protected:
  // The item's menu key, and the object's name as get_string logs it (empty if it logs none).
  explicit SettingTest(const char* key, const char* object = nullptr)
      : key_(key), object_(object) {}

  const char* key() const { return key_; }

  // The item's callbacks. Each clears the journal first.
  IntAnswer get(int preset = kPreset) const;
  int set(int value) const;
  OwnedText text() const;
  OptionList list() const;

  // The expected journal of each, around what the object does.
  Journal aroundGetInt(int result, const Journal& object) const;  // of get() with its own preset
  Journal aroundSetInt(int value, const Journal& object) const;
  Journal aroundGetString(const std::string& text, const Journal& object) const;
  Journal aroundGetListItems(const Journal& object) const;

  static constexpr int kPreset = 77;

 private:
  const char* key_;
  const char* object_;
};

// The lines from the n-th occurrence of this call on, 1 being the first. Empty if there is none.
Journal fromCall(const Journal& journal, const Journal::Piece& call, int n);

#endif  // PROVIDER_TEST_SETTING_TEST_H
