// The fixture of all tests of the provider library: the real libventaro.so, loaded afresh for each
// test, over the fake platform.
//
//   TEST_F(Values, AnUnknownKeyIsTheDeviceNames) {
//     store().set("db/menu/network/devicename/default_tv_name", "TV One");  // before create()
//     create();
//     EXPECT_EQ(getInt("no/such/key"), (IntAnswer{0, 1}));
//     EXPECT_EQ(calls(), Journal{call("vconf_get_str", "...")});  // the callback's own calls only
//   }
//
// A test that looks at the loading itself uses load(), entries() and unload().
#ifndef PROVIDER_TEST_H
#define PROVIDER_TEST_H

#include <gtest/gtest.h>

#include <cstdlib>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "contract/provider.h"
#include "fake_platform.h"
#include "language.h"
#include "ventaro/data_provider.h"

using contract::Exports;
using namespace fake_platform;  // NOLINT(google-build-using-namespace): the tests' vocabulary

// A string that a callback handed out through a `char**`; freed without the provider.
class OwnedText {
 public:
  OwnedText() = default;
  OwnedText(const OwnedText&) = delete;
  OwnedText& operator=(const OwnedText&) = delete;
  OwnedText(OwnedText&& other) noexcept : text_(other.release()) {}
  ~OwnedText() { std::free(text_); }

  // The callback writes here; null before. Once per object.
  char** out() { return &text_; }
  const char* get() const { return text_; }
  // Releases the string, for the caller to free.
  char* release() { return std::exchange(text_, nullptr); }

  bool isNull() const { return text_ == nullptr; }
  // The text, "(null)" when there is none.
  std::string str() const { return text_ != nullptr ? text_ : "(null)"; }
  std::size_t length() const { return str().size(); }
  // The size of the block that the provider allocated.
  std::size_t blockSize() const { return requestedSize(text_); }

  bool operator==(std::string_view text) const { return text_ != nullptr && text == text_; }

 private:
  char* text_ = nullptr;
};
void PrintTo(const OwnedText& text, std::ostream* out);

// What a callback returned, and the value of its int output afterwards.
struct IntAnswer {
  int result;
  int value;
  bool operator==(const IntAnswer&) const = default;
};
void PrintTo(const IntAnswer& answer, std::ostream* out);

// An option list, returned through free_list_items.
class OptionList {
 public:
  OptionList(const data_provider_cbs& table, const char* key);
  OptionList(const OptionList&) = delete;
  OptionList& operator=(const OptionList&) = delete;
  ~OptionList();

  bool isNull() const { return items_ == nullptr; }
  int count() const { return count_; }
  // The item's handle, for calls by hand.
  void* item(int index) const { return items_[index]; }
  // At most the 256 bytes of its block; "(null)" when the item has no text.
  std::string text(int index) const;
  // The block itself.
  const char* rawText(int index) const;
  int value(int index) const;
  ITEM_FOLLOWING_ACTION_TYPE action(int index) const;
  // For the size of its block.
  const void* array() const { return items_; }
  // Releases the list, for the caller to free.
  void** release() { return std::exchange(items_, nullptr); }

 private:
  const data_provider_cbs& table_;
  int count_ = -1;
  void** items_ = nullptr;
};

class ProviderTest : public testing::Test {
 protected:
  ~ProviderTest() noexcept override = default;  // that of the library may throw

  // A new fake platform, the language English, the library not loaded.
  void SetUp() override;
  // Unloads; both log channels must always have logged the same.
  void TearDown() override;

  // Loads the library: its objects are constructed over the platform as currently scripted.
  void load();
  // Loads the library if necessary, creates the provider, and clears the journal.
  void create();
  // Deletes the table, unloads the library, and checks that it is unloaded and left no timer
  // behind.
  void unload();

  const Exports& entries() const { return library_->exports(); }
  const data_provider_cbs& table() const { return *table_; }

  // The callbacks with their outputs as results. An output that is left untouched shows as
  // "(null)", or as the preset.
  OwnedText displayName(const char* key) const;
  OwnedText helpText(const char* key) const;
  OwnedText stringValue(const char* key) const;
  OwnedText titleIcon(const char* key) const;
  OwnedText secondIcon(const char* key) const;
  OwnedText moduleInfo(const char* key) const;
  IntAnswer getInt(const char* key, int preset = 77) const;
  int setInt(const char* key, int value) const { return table().set_int(key, value); }
  OptionList listItems(const char* key) const { return OptionList(table(), key); }

 private:
  std::optional<contract::Library> library_;
  data_provider_cbs* table_ = nullptr;
};

#endif  // PROVIDER_TEST_H
