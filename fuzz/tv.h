// The TV that the provider runs on in a fuzz target: the tests' fake platform, without its journal,
// and translations of a target's choosing. A target sets what it holds through fake_platform.h. One
// thread.
#ifndef FUZZ_TV_H
#define FUZZ_TV_H

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "fake_platform.h"

namespace fuzz {

inline constexpr char kLanguageKey[] = "db/menu_widget/language";
inline constexpr char kSavedNetworksKey[] = "db/menu/network/TopSavedAP";
inline constexpr char kConnectCommandKey[] = "memory/NW-Daemon/Command";
inline constexpr char kDeviceNameStoreKey[] = "db/menu/network/devicename/tv_name";
inline constexpr char kDefaultNameStoreKey[] = "db/menu/network/devicename/default_tv_name";

// Resets the TV: it holds no values and nothing fails; handles and timers stay. Called before
// anything else.
void newTv();

// The translations of the string IDs; one without a translation stays as it is, unless there is a
// translation for all others.
struct Translations {
  std::map<std::string, std::string> texts;
  std::optional<std::string> others;
};
Translations& translations();

// Which of the platform's functions fail, and how.
struct Faults {
  std::uint32_t functions = 0;  // a bit for each that can, in the order of platform_functions.def
  int result = -1;              // not 0
  bool afterWork = false;       // they fail only after doing their work, outputs included
};
void setFaults(const Faults& faults);
const Faults& faults();

// The result of a function that does its work: 0, or the faults' result if it is to fail.
int resultOf(const std::string& function);

// Whether a string can currently be read from the store.
std::optional<std::string> readableText(const std::string& key);

// The error with which taking the lock fails; 0 if it succeeds.
void setLockError(int error);
int lockError();

// While it lives, platform calls require the lock to be held, or not held, as the tags in
// ventaro/data_provider.h say. Its destructor requires that the platform was not misused.
class LockRule {
 public:
  explicit LockRule(bool held);
  ~LockRule();
  LockRule(const LockRule&) = delete;
  LockRule& operator=(const LockRule&) = delete;
};

// Ends the process when the provider has broken a rule of the platform.
void requireNoMisuse();

// Lets every timer fire once.
void fireTimers();

}  // namespace fuzz

#endif  // FUZZ_TV_H
