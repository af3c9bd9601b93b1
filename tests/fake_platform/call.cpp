#include "call.h"

#include <array>
#include <atomic>
#include <map>
#include <stdexcept>
#include <utility>
#include <vector>

namespace fake_platform {
namespace {

struct Entry {
  Kind kind;
  std::string line;
};

struct Script {
  std::optional<Failure> always;
  std::map<std::string, Failure> byFirstArgument;
  std::map<int, Failure> byCall;  // the number of calls to go, the failing one included
  std::function<void()> hook;

  void takeBackFailures() {
    always.reset();
    byFirstArgument.clear();
    byCall.clear();
  }
};

struct State {
  std::vector<Entry> entries;
  std::vector<std::string> misuses;
  std::array<Script, kFunctionCount> scripts;
};

// Never destroyed, because the provider's objects may call it until the end of the process.
State& state() {
  static State& instance = *new State;
  return instance;
}

std::atomic<bool> recording = true;
std::atomic<bool> anyFailsByArgument = false;

Script& scriptOf(const std::string& function) {
  const std::optional<std::size_t> position = positionOfFunction(function);
  if (!position) throw std::invalid_argument("no platform function " + function);
  return state().scripts[*position];
}

// Counts the call; returns the failure if this call is to fail.
std::optional<Failure> failureOfThisCall(Script& script) {
  std::optional<Failure> failure;
  std::map<int, Failure> later;
  for (const auto& [callsToGo, each] : script.byCall) {
    if (callsToGo == 1) {
      failure = each;
    } else {
      later[callsToGo - 1] = each;
    }
  }
  script.byCall = std::move(later);
  return failure;
}

std::optional<Failure> failureOf(Script& script, const std::string& firstArgument) {
  if (!script.byCall.empty()) {
    const std::optional<Failure> ofThisCall = failureOfThisCall(script);
    if (ofThisCall) return ofThisCall;
  }
  if (script.byFirstArgument.empty()) return script.always;
  const auto found = script.byFirstArgument.find(firstArgument);
  return found != script.byFirstArgument.end() ? found->second : script.always;
}

Journal linesOf(std::optional<Kind> kind) {
  const StateLock lock(stateMutex());
  Journal found;
  for (const Entry& entry : state().entries) {
    if (!kind || entry.kind == *kind) found.add(entry.line);
  }
  return found;
}

}  // namespace

std::mutex& stateMutex() {
  static constinit std::mutex mutex;
  return mutex;
}

bool isRecording() {
  return recording;
}

void record(bool on) {
  recording = on;
}

void enter(Kind kind, std::string line) {
  const StateLock lock(stateMutex());
  state().entries.push_back({kind, std::move(line)});
}

void demand(bool holds, const char* rule) {
  if (holds) return;
  const StateLock lock(stateMutex());
  state().misuses.emplace_back(rule);
}

std::vector<std::string> misuses() {
  const StateLock lock(stateMutex());
  return state().misuses;
}

bool Call::argumentsMatter() {
  return recording || anyFailsByArgument;
}

Call::Call(FunctionName function, const Shown& arguments)
    : Call(function, Kind::kCall,
           recording ? std::optional(callLine(function.text(), arguments)) : std::nullopt,
           arguments.empty() ? "" : arguments.front()) {}

Call::Call(FunctionName function, Kind kind, const Line& line, const std::string& firstArgument) {
  std::function<void()> hook;
  {
    const StateLock lock(stateMutex());
    if (line) state().entries.push_back({kind, *line});
    Script& script = state().scripts[function.position()];
    failure_ = failureOf(script, firstArgument);
    hook = script.hook;
  }
  if (hook) hook();
}

void resetCalls(Extent extent) {
  state().entries.clear();
  state().misuses.clear();
  for (Script& script : state().scripts) {
    script.takeBackFailures();
    if (extent == Extent::kAll) script.hook = nullptr;
  }
  anyFailsByArgument = false;
  if (extent == Extent::kAll) recording = true;
}

Journal journal() {
  return linesOf(std::nullopt);
}

Journal calls() {
  return linesOf(Kind::kCall);
}

Journal logLines() {
  return linesOf(Kind::kLog);
}

Journal lockActions() {
  return linesOf(Kind::kLock);
}

void clearJournal() {
  const StateLock lock(stateMutex());
  state().entries.clear();
  clearLogStatements();
}

void failWith(const std::string& function, int result, Effect effect) {
  const StateLock lock(stateMutex());
  scriptOf(function).always = Failure{result, effect};
}

void failWith(const std::string& function, const std::string& firstArgument, int result,
              Effect effect) {
  const bool isFlag = function.starts_with("system_info_");
  const StateLock lock(stateMutex());
  scriptOf(function).byFirstArgument[isFlag ? flagKey(firstArgument) : firstArgument] =
      Failure{result, effect};
  anyFailsByArgument = true;
}

void failCall(const std::string& function, int n, int result, Effect effect) {
  const StateLock lock(stateMutex());
  scriptOf(function).byCall[n] = Failure{result, effect};
}

void succeedAgain(const std::string& function) {
  const StateLock lock(stateMutex());
  scriptOf(function).takeBackFailures();
}

void onCall(const std::string& function, std::function<void()> hook) {
  const StateLock lock(stateMutex());
  scriptOf(function).hook = std::move(hook);
}

void clearHooks() {
  const StateLock lock(stateMutex());
  for (Script& script : state().scripts) script.hook = nullptr;
}

void failNextLock(int error) {
  succeedAgain("pthread_mutex_lock");
  if (error != 0) failCall("pthread_mutex_lock", 1, error);
}

}  // namespace fake_platform
