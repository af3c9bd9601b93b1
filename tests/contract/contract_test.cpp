// contract/ notices every broken promise: the real provider over the fake platform, with one
// callback broken at a time.
#include <gtest/gtest.h>
#include <json/value.h>
#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>
#include <optional>
#include <string>
#include <vector>

#include "contract/calls.h"
#include "contract/own_provider.h"
#include "fake_platform.h"

namespace {

using contract::Calls;

constexpr char kKey[] = VENTARO_KEY_WIFI;

contract::Exports sound;  // the provider's own functions
const data_provider_cbs* own = nullptr;

// Another block of that size with the same text.
char* inBlockOf(char* text, std::size_t size) {
  auto* block = static_cast<char*>(std::calloc(1, size));
  std::strncpy(block, text, size - 1);
  std::free(text);
  return block;
}

struct Spoilt {
  const char* sentence;  // the broken promise
  void (*spoil)(contract::Exports& exports, data_provider_cbs& table);
  void (*ask)(Calls& calls);
};

void PrintTo(const Spoilt& spoilt, std::ostream* out) {
  *out << spoilt.sentence;
}

const Spoilt kSpoilt[] = {
    {"no other exception leaves it",
     [](auto&, auto& t) { t.set_string = [](auto, auto) -> int { throw Json::LogicError(""); }; },
     [](Calls& calls) { calls.setString(kKey, "TV"); }},
    {"no other exception leaves it",
     [](auto&, auto& t) { t.get_int = [](auto, auto) -> int { throw 1; }; },
     [](Calls& calls) { calls.getInt(kKey); }},
    {"no other exception leaves it",
     [](auto&, auto& t) { t.get_module_info = [](auto, auto) -> int { throw std::bad_alloc(); }; },
     [](Calls& calls) { calls.moduleInfo(kKey); }},
    {"an exception leaves the outputs untouched",
     [](auto&, auto& t) {
       t.get_int = [](auto, int* value) -> int {
         *value = 1;
         throw Json::LogicError("");
       };
     },
     [](Calls& calls) { calls.getInt(kKey); }},
    {"the result is 0",
     [](auto&, auto& t) {
       t.get_display_name = [](auto key, auto value) {
         return own->get_display_name(key, value) + 1;
       };
     },
     [](Calls& calls) { calls.displayName(kKey); }},
    {"a text is handed out", [](auto&, auto& t) { t.get_help_text = [](auto, auto) { return 0; }; },
     [](Calls& calls) { calls.helpText(kKey); }},
    {"a text ends within its block",
     [](auto&, auto& t) {
       t.get_display_name = [](auto key, char** value) {
         const int result = own->get_display_name(key, value);
         std::memset(*value, 'x', malloc_usable_size(*value));
         return result;
       };
     },
     [](Calls& calls) { calls.displayName(kKey); }},
    {"a block has the size that is promised",
     [](auto&, auto& t) {
       t.get_help_text = [](auto key, char** value) {
         const int result = own->get_help_text(key, value);
         *value = inBlockOf(*value, VENTARO_TEXT_SIZE / 2);
         return result;
       };
     },
     [](Calls& calls) { calls.helpText(kKey); }},
    {"its three keys are answered, any other leaves the output untouched",
     [](auto&, auto& t) {
       t.get_module_info = [](auto, char** value) {
         return own->get_module_info(VENTARO_KEY_OWNER, value);
       };
     },
     [](Calls& calls) { calls.moduleInfo(kKey); }},
    {"its three keys are answered, any other leaves the output untouched",
     [](auto&, auto& t) {
       t.get_module_info = [](auto, char** value) {
         *value = nullptr;
         return 0;
       };
     },
     [](Calls& calls) { calls.moduleInfo("no/such/key"); }},
    {"a string that is taken back gives 0, null gives 1",
     [](auto&, auto& t) {
       t.release_string = [](char* text) { return 1 - own->release_string(text); };
     },
     [](Calls& calls) { calls.displayName(kKey); }},
    {"a Wi-Fi switch gives 1, or -1 when the radio did not switch",
     [](auto&, auto& t) { t.set_int = [](auto, auto) { return 0; }; },
     [](Calls& calls) { calls.setInt(kKey, 1); }},
    {"a value that cannot be read leaves the output untouched",
     [](auto&, auto& t) {
       t.get_int = [](auto, int* value) {
         *value = 1;
         return -1;
       };
     },
     [](Calls& calls) { calls.getInt(VENTARO_KEY_POWER_ON_WITH_MOBILE_US); }},
    {"a value as text gives 1, or -1 with the output untouched",
     [](auto&, auto& t) { t.get_string = [](auto, auto) { return 0; }; },
     [](Calls& calls) { calls.getString("no/such/key"); }},
    {"the text ends within the buffer",
     [](auto&, auto& t) {
       t.get_current_value_sid = [](auto, char** value) {
         std::memset(*value, 'x', VENTARO_CURRENT_VALUE_SIZE);
         (*value)[VENTARO_CURRENT_VALUE_SIZE] = '\0';
         return 0;
       };
     },
     [](Calls& calls) { calls.currentValue(kKey); }},
    {"the caller's buffer stays the caller's",
     [](auto&, auto& t) {
       t.get_current_value_sid = [](auto, char** value) {
         static char other[] = "other";
         *value = other;
         return 0;
       };
     },
     [](Calls& calls) { calls.currentValue(kKey); }},
    {"a box gives 0 and is of type 2",
     [](auto&, auto& t) {
       t.get_messagebox_info = [](auto key, auto text, auto first, auto second, int* type) {
         const int result = own->get_messagebox_info(key, text, first, second, type);
         *type = 1;
         return result;
       };
     },
     [](Calls& calls) { calls.messageBox(kKey); }},
    {"a box is appended to what the buffers hold",
     [](auto&, auto& t) {
       t.get_messagebox_info = [](auto key, char* text, auto first, auto second, auto type) {
         text[0] = '\0';
         return own->get_messagebox_info(key, text, first, second, type);
       };
     },
     [](Calls& calls) { calls.messageBox(kKey); }},
    {"what is appended is not too long",
     [](auto&, auto& t) {
       t.get_messagebox_info = [](auto key, auto text, char* first, auto second, auto type) {
         const int result = own->get_messagebox_info(key, text, first, second, type);
         std::memset(first + 1, 'x', VENTARO_MESSAGE_BUTTON_SIZE);
         first[VENTARO_MESSAGE_BUTTON_SIZE + 1] = '\0';
         return result;
       };
     },
     [](Calls& calls) { calls.messageBox(kKey); }},
    {"a list has entries",
     [](auto&, auto& t) { t.get_list_items = [](auto, auto) -> const void** { return nullptr; }; },
     [](Calls& calls) { calls.listItems(kKey); }},
    {"a list is taken back",
     [](auto&, auto& t) {
       t.free_list_items = [](auto items, auto count) {
         return own->free_list_items(items, count) + 1;
       };
     },
     [](Calls& calls) { calls.listItems(kKey); }},
    {"an item is answered, a null item leaves the output untouched",
     [](auto&, auto& t) {
       t.get_list_item_int_value = [](auto, int* value) { return *value = 0; };
     },
     [](Calls& calls) { calls.itemIntValue({}); }},
    {"an entry within the count has a text",
     [](auto&, auto& t) {
       t.get_list_item_display_value = [](auto, char** value) {
         *value = nullptr;
         return 0;
       };
     },
     [](Calls& calls) { calls.entries(calls.listItems(kKey)); }},
    {"what follows an entry is one of the three",
     [](auto&, auto& t) {
       t.get_list_item_following_action_type = [](auto, ITEM_FOLLOWING_ACTION_TYPE* type) {
         const int other = -1;
         std::memcpy(type, &other, sizeof(other));
         return 0;
       };
     },
     [](Calls& calls) { calls.entries(calls.listItems(kKey)); }},
    {"an entry's value is its position",
     [](auto&, auto& t) {
       t.get_list_item_int_value = [](auto, int* value) {
         *value = 1;
         return 0;
       };
     },
     [](Calls& calls) { calls.entries(calls.listItems(kKey)); }},
    {"a title icon is an image path",
     [](auto&, auto& t) { t.get_title_icon_path = own->get_display_name; },
     [](Calls& calls) { calls.titleIcon(kKey); }},
    {"everything but a saved network and the device name may be used",
     [](auto& e, auto&) { e.check_enable_int = [](auto, auto) { return false; }; },
     [](Calls& calls) { calls.isEnabledInt(kKey); }},
    {"a check of another kind of value is true",
     [](auto& e, auto&) { e.check_visibility_double = [](auto, auto) { return false; }; },
     [](Calls& calls) { calls.otherChecks(kKey); }},
    {"every table has the same functions",
     [](auto& e, auto&) {
       e.create_provider = [](data_provider_cbs** table) {
         const int result = sound.create_provider(table);
         (*table)->get_int = nullptr;
         return result;
       };
     },
     [](Calls& calls) { calls.createProvider(); }},
    {"the pointer to a table that is taken back keeps its value",
     [](auto& e, auto&) {
       e.delete_provider = [](data_provider_cbs** table) {
         const int result = sound.delete_provider(table);
         *table = nullptr;
         return result;
       };
     },
     [](Calls& calls) { calls.createProvider(); }},
};

// Remembers which sentences were broken.
class Remembers : public contract::Observer {
 public:
  void broken(const contract::Breach& breach) override { sentences.push_back(breach.sentence); }
  std::vector<std::string> sentences;
};

class Contract : public testing::TestWithParam<Spoilt> {
 protected:
  Contract() {
    fake_platform::reset();
    fake_platform::store().set("db/menu/network/devicename/default_tv_name", "TV One");
    fake_platform::store().set("db/menu/network/devicename/tv_name", "TV One");
    fake_platform::store().set("db/menu_widget/language", "en");
    provider_.emplace(VENTARO_PROVIDER);
    sound = provider_->exports();
    own = &provider_->table();
  }
  ~Contract() noexcept override = default;  // that of the library may throw

  std::vector<std::string> broken(const Spoilt& spoilt) {
    contract::Exports exports = sound;
    data_provider_cbs table = *own;
    if (spoilt.spoil != nullptr) spoilt.spoil(exports, table);
    Remembers observer;
    Calls calls(exports, &table, observer, {}, &contract::ownPromises());
    spoilt.ask(calls);
    return observer.sentences;
  }

 private:
  std::optional<contract::Provider> provider_;
};

TEST_P(Contract, NoticesTheBrokenPromiseOfASpoiltProviderAndNoneOfASoundOne) {
  EXPECT_EQ(broken({"", nullptr, GetParam().ask}), std::vector<std::string>());
  const std::vector<std::string> sentences = broken(GetParam());
  EXPECT_NE(std::ranges::find(sentences, GetParam().sentence), sentences.end())
      << testing::PrintToString(sentences);
}

INSTANTIATE_TEST_SUITE_P(EverySentence, Contract, testing::ValuesIn(kSpoilt));

}  // namespace
