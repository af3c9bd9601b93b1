// The TV that the provider runs on in a fuzz target: every platform symbol, and of libc and GLib
// the lock, the timers and the translations. What it answers is a target's to choose. It ends the
// process when the provider misuses it: a handle that is none, or no longer; an iterator moved
// beyond its end; a timer removed that does not run; the lock taken twice; the platform asked
// without the lock where it is promised. One thread.
#ifndef FUZZ_STAND_IN_TV_H
#define FUZZ_STAND_IN_TV_H

#include <cstdint>
#include <list>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace fuzz {

// The platform's functions that can fail.
enum class Function : unsigned {
  kVconfGetInt,
  kVconfSetInt,
  kVconfGetStr,
  kVconfSetStr,
  kVconfGetBool,
  kSystemInfoBool,
  kSystemInfoInt,
  kSystemInfoString,
  kWifiInitialize,
  kWifiGetConnectedAp,
  kWifiApGetFrequency,
  kWifiApDestroy,
  kWifiGetEnable,
  kWifiSetEnable,
  kConnectionCreate,
  kConnectionDestroy,
  kGetProfileIterator,
  kIteratorHasNext,
  kIteratorNext,
  kProfileGetType,
  kEnableEthernetEap,
  kGetWakeOnMobile,
  kSetWakeOnMobile,
  kTextToMarkup,
  kMkpath,
};

inline constexpr char kLanguageKey[] = "db/menu_widget/language";
inline constexpr char kSavedNetworksKey[] = "db/menu/network/TopSavedAP";
inline constexpr char kConnectCommandKey[] = "memory/NW-Daemon/Command";
inline constexpr char kDeviceNameStoreKey[] = "db/menu/network/devicename/tv_name";
inline constexpr char kDefaultNameStoreKey[] = "db/menu/network/devicename/default_tv_name";

// What the TV holds and how it behaves; a target changes it as it likes.
struct Answers {
  std::map<std::string, std::variant<int, std::string>> store;
  // By their names without the domain.
  std::map<std::string, std::variant<bool, int, std::string>> flags;
  int radio = 0;
  std::optional<int> connectedMhz;
  std::vector<int> profileTypes;
  bool wakeOnMobile = false;

  std::uint32_t failing = 0;    // a bit for each Function
  int failure = -1;             // what the failing ones return; not 0
  bool failsAfterWork = false;  // they do their work all the same, outputs included
  int lockError = 0;            // with which the next taking of the lock fails

  // What the string IDs are in the TV's language; one that is not here is its own translation,
  // unless there is one for all others.
  std::map<std::string, std::string> translations;
  std::optional<std::string> otherTranslation;
};

Answers& answers();

// Makes the answers those of a TV that holds no values; handles and timers stay.
void resetAnswers();

// What a function gives that does its work unless it is to fail: 0, or the code of the failure.
int resultOf(Function function);

// Whether a string can be read from the store at this moment.
std::optional<std::string> readableText(const std::string& key);

// Whether the provider's lock is taken.
bool isLockHeld();

// While it lives, the platform must be asked with the lock held, or must not be, see the tags in
// ventaro/data_provider.h.
class LockRule {
 public:
  explicit LockRule(bool held);
  ~LockRule();
  LockRule(const LockRule&) = delete;
  LockRule& operator=(const LockRule&) = delete;
};

// Lets every timer fire once.
void fireTimers();
std::size_t runningTimers();

// Tells the subscribers that the key changed.
void notify(const std::string& key);

std::size_t openConnections();
std::size_t openAccessPoints();

// ---- For the stand-in's own files ----

// Called first by every function of the platform; for one that can fail: 0, or the code with which
// it is to.
void enter();
int enter(Function function);

// Called when the provider takes its lock.
void takeLock();

// Keeps a text for as long as the answers, for functions that hand out what stays theirs.
char* keep(const std::string& text);

// A value that no handle had before.
void* newHandle();

}  // namespace fuzz

#endif  // FUZZ_STAND_IN_TV_H
