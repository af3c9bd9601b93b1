// The platform as tests script and observe it. There is one platform per process; reset() renews
// it. All functions may be called from any thread.
#ifndef FAKE_PLATFORM_H
#define FAKE_PLATFORM_H

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "journal.h"
#include "platform/structured_log.h"

#pragma GCC visibility push(default)

namespace fake_platform {

// A new platform: an empty store, no flags, the radio off, nothing scripted, an empty journal. The
// provider must not be loaded. Frees what the provider never returns, see flags().
void reset();

// For a provider that stays loaded: resets the store, the flags, the networks and paths, cancels
// all failures and empties the journal. The provider's handles, subscriptions and timers stay. So
// do hooks, and the settings of what is recorded and watched.
void resetValues();

// ---- What happened ----

// Whether calls, log statements and the lock are entered in the journal, and mistakes in the log
// detected; on after reset(). The arguments of log statements are read in any case.
void record(bool on);

Journal journal();      // everything
Journal calls();        // only the platform calls
Journal logLines();     // only the log statements
Journal lockActions();  // only taking and releasing the lock
void clearJournal();

// One log statement as both channels got it.
struct LogStatement {
  // The platform log's line, its prefix "FILE: FUNCTION(LINE) > " taken apart.
  int buffer;
  int priority;
  std::string tag;
  std::string file;
  std::string function;
  int line;
  std::string message;
  // The structured logger's record of it.
  const ht::TSCodeLocation* location;  // an address; valid as long as the provider is loaded
  std::string path;
  int recordedLine;
  std::string signature;
  std::string recordedMessage;
};

// The statements since the last clearJournal().
std::vector<LogStatement> logStatements();

// What is wrong with the log since reset(): a line without the prefix, of another priority or tag,
// without a record directly after it, or whose record differs in text or place. Empty when all is
// well.
std::vector<std::string> logMistakes();

// The rules of the platform that the provider broke, even while nothing is recorded: invalid or
// released handles, iterators moved beyond their end, a lock taken twice, null texts.
std::vector<std::string> misuses();

// ---- The lock ----

// Treats only this mutex as the provider's lock; null restores the default, any mutex that
// libventaro.so locks. For a provider that is part of the test program.
void watchLock(const void* mutex);

// Whether this thread holds the provider's lock.
bool holdsLock();

// ---- What goes wrong ----

// What happens to a failing function's outputs and effects.
enum class Effect {
  kNone,       // as a failure should: outputs untouched, nothing stored
  kAsSuccess,  // the work is done anyway
};

// Makes a function fail with this result from now on: all calls, or those with this first argument.
// A function that returns a pointer returns null, has_next false, whatever the result. The name is
// as the journal shows it, or "pthread_mutex_lock" for the provider's lock; a wrong one raises
// std::invalid_argument.
void failWith(const std::string& function, int result, Effect effect = Effect::kNone);
void failWith(const std::string& function, const std::string& firstArgument, int result,
              Effect effect = Effect::kNone);

// Makes only the n-th call from now on fail, 1 being the next.
void failCall(const std::string& function, int n, int result, Effect effect = Effect::kNone);

// Cancels all of these for a function.
void succeedAgain(const std::string& function);

// Runs `hook` inside every call of the function, after the call was entered in the journal and
// before it takes effect. The hook may block: the fake holds no lock then. Null removes it.
void onCall(const std::string& function, std::function<void()> hook);

// Removes all hooks.
void clearHooks();

// Makes the provider's next attempt to lock fail with this error number, without locking.
void failNextLock(int error);

// ---- Configuration store ----

class Store {
 public:
  void set(const std::string& key, int value);
  void set(const std::string& key, const std::string& text);
  void setBool(const std::string& key, bool value);
  // What vconf_get_bool writes, for values that are neither 0 nor 1.
  void setRawBool(const std::string& key, int value);
  void erase(const std::string& key);

  std::optional<int> intAt(const std::string& key) const;
  std::optional<std::string> stringAt(const std::string& key) const;

  // The keys that were subscribed to, in order.
  std::vector<std::string> subscriptions() const;
  // Notifies all subscribers of the key, on this thread. A set alone notifies nobody.
  void notify(const std::string& key) const;
};
Store store();

// ---- Feature flags ----

// A flag that was not set fails to be read. A name without a domain is of
// "com.norvane/featureconf/", here and in failWith(). The fake frees the texts that it handed out
// at reset(): the provider keeps them.
class Flags {
 public:
  void setBool(const std::string& name, bool value);
  void set(const std::string& name, int value);
  void set(const std::string& name, const std::string& text);
  // A text flag that is read successfully as a null pointer.
  void setNullText(const std::string& name);
  void erase(const std::string& name);
};
Flags flags();

// ---- Networks ----

void setRadio(int state);
int radio();

// The connected access point's frequency in MHz, or that there is none. Its handle is shown as
// "ap 1", "ap 2", ... in the order of handing out.
void setConnectedAp(std::optional<int> frequencyMhz);
// Makes the frequency of a null handle readable, which normally is an error.
void setFrequencyOfNullAp(int frequencyMhz);
int openAps();  // handed out and not destroyed

// The registered profiles by type; shown as "profile 1", "profile 2", ... in this order. To be set
// before the provider is loaded.
inline constexpr int kWifiProfile = 1;
inline constexpr int kEthernetProfile = 2;
void setProfiles(std::vector<int> types);
int openConnections();  // created and not destroyed; shown as "connection 1", "connection 2", ...

void setWakeOnMobile(bool enabled);
bool wakeOnMobile();

// ---- Paths, texts ----

// The path of root 44. After reset(), the build tree's resources.
void setResourceRoot(const std::string& directory);

// ---- Timers ----

// Advances the fake clock by two seconds, `times` times: every due timer fires, on this thread.
void advanceTimers(int times = 1);
int runningTimers();
// The ids given to g_source_remove that belonged to no running timer.
std::vector<unsigned> wrongRemovals();

// ---- Heap ----

// How many bytes the provider asked for when it allocated this block with malloc or calloc; 0 for
// any other block. Under a sanitizer: of any block.
std::size_t requestedSize(const void* block);

}  // namespace fake_platform

#pragma GCC visibility pop

#endif  // FAKE_PLATFORM_H
