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

// Makes the TV one that holds no values and in which nothing fails; handles and timers stay. Called
// before anything else.
void newTv();

// What the string IDs are in the TV's language; one that is not here is its own translation, unless
// there is one for all others.
struct Translations {
  std::map<std::string, std::string> texts;
  std::optional<std::string> others;
};
Translations& translations();

// Which of the platform's functions fail, and how.
struct Faults {
  std::uint32_t functions = 0;  // a bit for each that can, in the order of platform_functions.def
  int result = -1;              // not 0
  bool afterWork = false;       // they do their work all the same, outputs included
};
void setFaults(const Faults& faults);
const Faults& faults();

// What the function gives when it does its work unless it is to fail: 0, or the faults' result.
int resultOf(const std::string& function);

// Whether a string can be read from the store at this moment.
std::optional<std::string> readableText(const std::string& key);

// With which error the lock cannot be taken; 0: it can.
void setLockError(int error);
int lockError();

// While it lives, the platform must be asked with the lock held, or must not be, see the tags in
// ventaro/data_provider.h. At its end, the platform must not have been misused.
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
