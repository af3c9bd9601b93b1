#include "call.h"

#include <algorithm>
#include <array>
#include <map>
#include <stdexcept>
#include <utility>
#include <vector>

namespace fake_platform {
namespace {

constexpr const char* kFunctions[] = {
    "__dlog_print",
    "CStringUtil::CombinateStrings",
    "connection_create",
    "connection_destroy",
    "connection_get_profile_iterator",
    "connection_profile_enable_ethernet_eap",
    "connection_profile_get_type",
    "connection_profile_iterator_has_next",
    "connection_profile_iterator_next",
    "evas_textblock_text_utf8_to_markup",
    "g_source_remove",
    "g_timeout_add_seconds",
    "platform_mkpath",
    "system_info_get_custom_bool",
    "system_info_get_custom_int",
    "system_info_get_custom_string",
    "util_get_wakeOnMobile_mode",
    "util_set_wakeOnMobile_mode",
    "vconf_get_bool",
    "vconf_get_int",
    "vconf_get_str",
    "vconf_notify_key_changed",
    "vconf_set_int",
    "vconf_set_str",
    "wifi_ap_destroy",
    "wifi_ap_get_frequency",
    "wifi_get_connected_ap",
    "wifi_get_enable_qx",
    "wifi_initialize",
    "wifi_set_enable_qx",
};

struct Entry {
  Kind kind;
  std::string line;
};

struct Script {
  std::optional<Failure> always;
  std::map<std::string, Failure> byFirstArgument;
  std::map<int, Failure> byCall;  // the number of calls to go, the failing one included
  std::function<void()> hook;
};

struct State {
  std::vector<Entry> entries;
  std::map<std::string, Script> scripts;
  std::map<const void*, std::string> handles;
  int lockError = 0;
};

// Never destroyed: the provider's objects may call until the very end of the process.
State& state() {
  static State& instance = *new State;
  return instance;
}

Script& scriptOf(const std::string& function) {
  if (std::ranges::find(kFunctions, function) == std::end(kFunctions)) {
    throw std::invalid_argument("no platform function " + function);
  }
  return state().scripts[function];
}

// Counts the call; the failure when this is the one.
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
  const std::optional<Failure> ofThisCall = failureOfThisCall(script);
  if (ofThisCall) return ofThisCall;
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

void enter(Kind kind, std::string line) {
  const StateLock lock(stateMutex());
  state().entries.push_back({kind, std::move(line)});
}

void enter(Kind kind, const Journal::Piece& piece) {
  for (const std::string& line : piece.lines) enter(kind, line);
}

int takeLockError() {
  const StateLock lock(stateMutex());
  return std::exchange(state().lockError, 0);
}

Call::Call(const char* function, std::initializer_list<std::string> arguments)
    : Call(function, Kind::kCall, callLine(function, arguments),
           arguments.size() > 0 ? *arguments.begin() : "") {}

Call::Call(const char* function, Kind kind, std::string line, const std::string& firstArgument) {
  std::function<void()> hook;
  {
    const StateLock lock(stateMutex());
    state().entries.push_back({kind, std::move(line)});
    Script& script = scriptOf(function);
    failure_ = failureOf(script, firstArgument);
    hook = script.hook;
  }
  if (hook) hook();
}

void* newHandle(const std::string& name) {
  static std::array<char, 1U << 16U> addresses;
  static std::size_t next = 0;
  void* handle = &addresses[next++ % addresses.size()];
  state().handles[handle] = name;
  return handle;
}

std::string handleName(const void* handle) {
  if (handle == nullptr) return "null";
  const StateLock lock(stateMutex());
  const auto found = state().handles.find(handle);
  return found != state().handles.end() ? found->second : "unknown";
}

void resetCalls() {
  state() = State();
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
}

void failCall(const std::string& function, int n, int result, Effect effect) {
  const StateLock lock(stateMutex());
  scriptOf(function).byCall[n] = Failure{result, effect};
}

void succeedAgain(const std::string& function) {
  const StateLock lock(stateMutex());
  Script& script = scriptOf(function);
  script.always.reset();
  script.byFirstArgument.clear();
  script.byCall.clear();
}

void onCall(const std::string& function, std::function<void()> hook) {
  const StateLock lock(stateMutex());
  scriptOf(function).hook = std::move(hook);
}

void clearHooks() {
  const StateLock lock(stateMutex());
  for (auto& [function, script] : state().scripts) script.hook = nullptr;
}

void failNextLock(int error) {
  const StateLock lock(stateMutex());
  state().lockError = error;
}

}  // namespace fake_platform
