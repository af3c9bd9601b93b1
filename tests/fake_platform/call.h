// Shared by the functions of the fake: the journal, scripted failures, handles.
#ifndef FAKE_PLATFORM_CALL_H
#define FAKE_PLATFORM_CALL_H

#include <pthread.h>

#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "fake_platform.h"
#include "function_name.h"
#include "platform/export.h"

namespace fake_platform {

// Guards all state of the fake. Never held while a hook, a timer or a subscriber runs.
std::mutex& stateMutex();
using StateLock = std::lock_guard<std::mutex>;

enum class Kind { kCall, kLog, kLock };

// Whether there is a journal.
bool isRecording();
// Enters a line. The caller does not hold stateMutex().
void enter(Kind kind, std::string line);

// Remembers what the provider did wrong, unless the condition holds. The caller does not hold
// stateMutex().
void demand(bool holds, const char* rule);

struct Failure {
  int result;
  Effect effect;
};

// One call of a platform function: enters it in the journal, runs the hook, and knows whether it
// is to fail.
class Call {
 public:
  template <typename... Arguments>
  explicit Call(FunctionName function, const Arguments&... arguments)
      : Call(function, shownIfTheyMatter(arguments...)) {}

  // A call that the journal shows as something else, or not at all: a log statement, a lock.
  using Line = std::optional<std::string>;
  Call(FunctionName function, Kind kind, const Line& line)
      : Call(function, kind, line, std::string()) {}

  // The function's result: 0 or an error from `work`, or the scripted failure. `work` runs under
  // stateMutex().
  template <typename Work>
  int answer(Work work) const {
    const StateLock lock(stateMutex());
    if (!failure_) return work();
    if (failure_->effect == Effect::kAsSuccess) work();
    return failure_->result;
  }

  // For functions without an error result.
  bool fails() const { return failure_.has_value(); }

 private:
  using Shown = std::vector<std::string>;

  // For the journal, or because the function fails for one of them.
  static bool argumentsMatter();

  template <typename... Arguments>
  static Shown shownIfTheyMatter(const Arguments&... arguments) {
    if (!argumentsMatter()) return {};
    return {shown(arguments)...};
  }

  Call(FunctionName function, const Shown& arguments);
  Call(FunctionName function, Kind kind, const Line& line, const std::string& firstArgument);

  std::optional<Failure> failure_;
};

// The result for a caller's mistake, or for something that does not exist.
inline constexpr int kError = -1;

// A new opaque handle, never to be dereferenced; shown by its kind, and its number if that is not
// 0. Called under stateMutex().
void* newHandle(const char* kind, int number);

// A handle as an argument of a call: shown by its name, "null" and "unknown" included. Called
// without stateMutex().
struct Handle {
  const void* value;
};
std::string shown(Handle handle);

// The full name of a feature flag.
std::string flagKey(const std::string& name);

// pthread_mutex_lock() and pthread_mutex_unlock() for the provider; `real` is libc's.
using MutexFunction = int (*)(pthread_mutex_t*);
PLATFORM_API bool isProvidersLock(const pthread_mutex_t* mutex, const void* caller);
PLATFORM_API int takeLock(pthread_mutex_t* mutex, MutexFunction real);
PLATFORM_API int giveLockBack(pthread_mutex_t* mutex, MutexFunction real);

// One for each subject with state; they run under stateMutex(). kValues keeps what a loaded
// provider still holds.
enum class Extent { kValues, kAll };
void resetCalls(Extent extent);
void resetStore(Extent extent);
void resetFlags();
void resetHandles();
void resetWifi(Extent extent);
void resetConnections(Extent extent);
void resetAppUtil();
void resetPath();
void resetLock();
void resetLog();
void resetTimers();
void resetAllocations();
void clearLogStatements();

}  // namespace fake_platform

#endif  // FAKE_PLATFORM_CALL_H
