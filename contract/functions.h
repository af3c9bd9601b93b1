// The functions of the ABI, with what ventaro/data_provider.h says of each as data: its lock tag,
// and which exceptions may leave it.
#ifndef CONTRACT_FUNCTIONS_H
#define CONTRACT_FUNCTIONS_H

#include <array>
#include <cstddef>
#include <string_view>

#include "ventaro/data_provider.h"

namespace contract {

// Every key of ventaro/data_provider.h.
inline constexpr std::array kKeys = {
    VENTARO_KEY_NETWORK,
    VENTARO_KEY_NETWORK_STATUS,
    VENTARO_KEY_NETWORK_SETTINGS,
    VENTARO_KEY_RESET_NETWORK,
    VENTARO_KEY_WIFI,
    VENTARO_KEY_SAVED_NETWORK_1,
    VENTARO_KEY_SAVED_NETWORK_2,
    VENTARO_KEY_SAVED_NETWORK_1_STATES,
    VENTARO_KEY_SAVED_NETWORK_2_STATES,
    VENTARO_KEY_EXPERT_SETTINGS,
    VENTARO_KEY_WIFI_DIRECT,
    VENTARO_KEY_EASY_CONNECTION,
    VENTARO_KEY_WIRED_EAP,
    VENTARO_KEY_POWER_ON_WITH_MOBILE_US,
    VENTARO_KEY_POWER_ON_WITH_MOBILE_NOT_US,
    VENTARO_KEY_DEVICE_NAME,
    VENTARO_KEY_SELECT_DEVICE_NAME,
    VENTARO_KEY_INSTALL_CERTIFICATE,
    VENTARO_KEY_CERTIFICATE_LIST,
    VENTARO_KEY_CERTIFICATE_MANAGER,
    VENTARO_KEY_OWNER,
    VENTARO_KEY_MAIN_COMPONENT,
    VENTARO_KEY_SUB_COMPONENT,
};

// The keys to which something applies.
enum class Keys {
  kNone,
  kAny,
  kSavedNetworks,
  // Those named after a saved network: its key, or a prefix of it.
  kNamedAfterSavedNetworks,
};
bool covers(Keys keys, std::string_view key);

// The exceptions that may leave a function, by their exact types.
inline constexpr char kLockError[] = "std::system_error";     // followed by the error's number
inline constexpr char kDocumentError[] = "Json::LogicError";  // the saved networks' document
inline constexpr char kLanguageError[] = "std::logic_error";  // there is no menu language
inline constexpr char kMemoryError[] = "std::bad_alloc";      // of any function

struct Function {
  const char* name;
  bool isLocked = true;  // its tag; such a function raises kLockError
  Keys raisesDocumentError = Keys::kNone;
  Keys raisesLanguageError = Keys::kNone;
};

inline constexpr std::array<Function, 27> kFunctions = {{
    {"create_provider"},
    {"delete_provider"},
    {"check_visibility_int"},
    {"check_visibility_string", false},
    {"check_visibility_double", false},
    {"check_visibility_bool", false},
    {"check_enable_int", true, Keys::kSavedNetworks},
    {"check_enable_string", false},
    {"check_enable_double", false},
    {"check_enable_bool", false},
    {"set_int", true, Keys::kSavedNetworks},
    {"set_string"},
    {"get_int"},
    {"get_string"},
    {"release_string", false},
    {"get_display_name", true, Keys::kNamedAfterSavedNetworks},
    {"get_help_text", true, Keys::kNone, Keys::kAny},
    {"get_list_items"},
    {"get_list_item_display_value"},
    {"get_list_item_int_value"},
    {"get_list_item_following_action_type"},
    {"free_list_items"},
    {"get_current_value_sid", false},
    {"get_messagebox_info"},
    {"get_module_info"},
    {"get_title_icon_path", true, Keys::kSavedNetworks},
    {"get_second_icon_path", true, Keys::kAny},
}};

// Does not compile for an unknown name.
consteval const Function& function(std::string_view name) {
  for (const Function& each : kFunctions) {
    if (name == each.name) return each;
  }
  throw "no such function";
}

inline std::size_t indexOf(const Function& function) {
  return static_cast<std::size_t>(&function - kFunctions.data());
}

// Whether an exception of that type may leave the function when called with that key.
bool mayRaise(const Function& function, std::string_view key, std::string_view type);

}  // namespace contract

#endif  // CONTRACT_FUNCTIONS_H
