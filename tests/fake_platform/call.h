// What the functions of the fake share: the journal, scripted failures, handles.
#ifndef FAKE_PLATFORM_CALL_H
#define FAKE_PLATFORM_CALL_H

#include <initializer_list>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

#include "fake_platform.h"
#include "platform/export.h"

namespace fake_platform {

// Guards all state of the fake. Never held while a hook, a timer or a subscriber runs.
std::mutex& stateMutex();
using StateLock = std::lock_guard<std::mutex>;

enum class Kind { kCall, kLog, kLock };

// Enters a line. The caller does not hold stateMutex().
void enter(Kind kind, std::string line);
PLATFORM_API void enter(Kind kind, const Journal::Piece& piece);

// The error that the lock's taking is to fail with, once; 0 for none.
PLATFORM_API int takeLockError();

struct Failure {
  int result;
  Effect effect;
};

// One call of a platform function: enters it in the journal, runs the hook, and knows whether it
// is to fail.
class Call {
 public:
  template <typename... Arguments>
  explicit Call(const char* function, const Arguments&... arguments)
      : Call(function, std::initializer_list<std::string>{shown(arguments)...}) {}

  // One that stands in the journal as something else: a log statement.
  Call(const char* function, Kind kind, std::string line)
      : Call(function, kind, std::move(line), std::string()) {}

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
  Call(const char* function, std::initializer_list<std::string> arguments);
  Call(const char* function, Kind kind, std::string line, const std::string& firstArgument);

  std::optional<Failure> failure_;
};

// What a function returns for a mistake of its caller, or for something that is not there.
inline constexpr int kError = -1;

// A new opaque handle, never to be dereferenced, shown by this name.
void* newHandle(const std::string& name);
// "null" and "unknown" included. Called without stateMutex().
std::string handleName(const void* handle);

// The full name of a feature flag.
std::string flagKey(const std::string& name);

// One for each subject with state; they run under stateMutex().
void resetCalls();
void resetStore();
void resetFlags();
void resetWifi();
void resetConnections();
void resetAppUtil();
void resetPath();
void resetLog();
void resetTimers();
void resetAllocations();
void clearLogStatements();

}  // namespace fake_platform

#endif  // FAKE_PLATFORM_CALL_H
