#include "tv.h"

#include <cstring>
#include <list>
#include <vector>

#include "callbacks/callbacks.h"
#include "platform_functions.h"
#include "require.h"

namespace fuzz {

namespace {

constexpr char kLock[] = "pthread_mutex_lock";

enum class Lock { kAny, kHeld, kFree };

struct State {
  Translations translations;
  std::list<std::string> kept;  // translations that were handed out
  Faults faults;
  int lockError = 0;
  Lock rule = Lock::kAny;
};

// Never destroyed, and made at its first use: the provider's objects are constructed before main()
// and destroyed after it.
State& state() {
  static State& instance = *new State;
  return instance;
}

const std::vector<std::string>& failingFunctions() {
  static const std::vector<std::string>& functions = *new std::vector<std::string>([] {
    std::vector<std::string> names;
    for (const auto& [name, failure] : platform::kPlatformFunctions) {
      if (failure != platform::Failure::kNever) names.emplace_back(name);
    }
    return names;
  }());
  return functions;
}

void requireLock() {
  require(state().rule != Lock::kHeld || fake_platform::holdsLock(),
          "the platform is asked with the lock held");
}

bool isLog(const std::string& function) {
  return function == "__dlog_print" || function == "ht::TSLoggerHelper::Log";
}

void watch() {
  fake_platform::record(false);
  fake_platform::watchLock(ProviderMutex.native_handle());
  for (const auto& [name, failure] : platform::kPlatformFunctions) {
    if (!isLog(name)) fake_platform::onCall(name, requireLock);
  }
  for (const char* timers : {"g_timeout_add_seconds", "g_source_remove"}) {
    fake_platform::onCall(timers, requireLock);
  }
  fake_platform::onCall(kLock, [] {
    require(state().rule != Lock::kFree, "a lock-free function does not take the lock");
  });
}

}  // namespace

void newTv() {
  [[maybe_unused]] static const bool isWatched = (watch(), true);
  fake_platform::resetValues();
  state().translations = {};
  state().kept.clear();
  state().faults = {};
  state().lockError = 0;
}

Translations& translations() {
  return state().translations;
}

void setFaults(const Faults& faults) {
  state().faults = faults;
  for (const std::string& function : failingFunctions()) {
    // A handle is freed even when returning it fails.
    const bool works = faults.afterWork || function.ends_with("_destroy");
    const int result = resultOf(function);
    fake_platform::succeedAgain(function);
    if (result == 0) continue;
    fake_platform::failWith(
        function, result, works ? fake_platform::Effect::kAsSuccess : fake_platform::Effect::kNone);
  }
}

const Faults& faults() {
  return state().faults;
}

int resultOf(const std::string& function) {
  std::uint32_t bits = state().faults.functions;
  for (const std::string& each : failingFunctions()) {
    if (each == function) return (bits & 1U) != 0 ? state().faults.result : 0;
    bits >>= 1U;
  }
  require(false, "there is such a function");
  return 0;
}

std::optional<std::string> readableText(const std::string& key) {
  if (resultOf("vconf_get_str") != 0) return std::nullopt;
  return fake_platform::store().stringAt(key);
}

void setLockError(int error) {
  state().lockError = error;
  fake_platform::succeedAgain(kLock);
  if (error != 0) fake_platform::failWith(kLock, error);
}

int lockError() {
  return state().lockError;
}

LockRule::LockRule(bool held) {
  state().rule = held ? Lock::kHeld : Lock::kFree;
}

LockRule::~LockRule() {
  state().rule = Lock::kAny;
  requireNoMisuse();
}

void requireNoMisuse() {
  for (const std::string& rule : fake_platform::misuses()) require(false, rule.c_str());
  require(fake_platform::wrongRemovals().empty(), "a timer is removed while it runs");
}

void fireTimers() {
  const LockRule rule(false);
  fake_platform::advanceTimers();
}

}  // namespace fuzz

// The linker redirects the provider's calls here (--wrap).
extern "C" char* __wrap_dgettext(const char* domain, const char* sid);

char* __wrap_dgettext(const char* domain, const char* sid) {
  using namespace fuzz;
  requireLock();
  require(std::strcmp(domain, "ventaro") == 0, "texts are of the provider's domain");
  const auto found = translations().texts.find(sid);
  const std::string text =
      found != translations().texts.end() ? found->second : translations().others.value_or(sid);
  return state().kept.emplace_back(text).data();
}
