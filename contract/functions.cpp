#include "functions.h"

namespace contract {

bool covers(Keys keys, std::string_view key) {
  constexpr std::string_view kFirst = VENTARO_KEY_SAVED_NETWORK_1;
  constexpr std::string_view kSecond = VENTARO_KEY_SAVED_NETWORK_2;
  switch (keys) {
    case Keys::kNone:
      return false;
    case Keys::kAny:
      return true;
    case Keys::kSavedNetworks:
      return key == kFirst || key == kSecond;
    case Keys::kNamedAfterSavedNetworks:
      return kFirst.starts_with(key) || kSecond.starts_with(key);
  }
  return false;
}

bool mayRaise(const Function& function, std::string_view key, std::string_view type) {
  if (type.starts_with(kLockError)) return function.isLocked;
  if (type == kMemoryError) return true;
  if (type == kDocumentError) return covers(function.raisesDocumentError, key);
  return type == kLanguageError && covers(function.raisesLanguageError, key);
}

}  // namespace contract
