#include "tv.h"

#include "../require.h"

namespace fuzz {

namespace {

enum class Lock { kAny, kHeld, kFree };

struct State {
  Answers answers;
  std::list<std::string> kept;
  Lock rule = Lock::kAny;
  std::uintptr_t lastHandle = 0x1000;
};

// Never destroyed, and made at its first use: the provider's objects are constructed before main()
// and destroyed after it.
State& state() {
  static State& instance = *new State;
  return instance;
}

}  // namespace

Answers& answers() {
  return state().answers;
}

void resetAnswers() {
  state().answers = Answers();
  state().kept.clear();
}

int resultOf(Function function) {
  const bool fails = (answers().failing >> static_cast<unsigned>(function) & 1U) != 0;
  return fails ? answers().failure : 0;
}

std::optional<std::string> readableText(const std::string& key) {
  const auto found = answers().store.find(key);
  if (resultOf(Function::kVconfGetStr) != 0 || found == answers().store.end()) return std::nullopt;
  const auto* text = std::get_if<std::string>(&found->second);
  return text != nullptr ? std::optional(*text) : std::nullopt;
}

LockRule::LockRule(bool held) {
  state().rule = held ? Lock::kHeld : Lock::kFree;
}

LockRule::~LockRule() {
  state().rule = Lock::kAny;
}

void takeLock() {
  require(state().rule != Lock::kFree, "a lock-free function does not take the lock");
}

void enter() {
  require(state().rule != Lock::kHeld || isLockHeld(), "the platform is asked with the lock held");
}

int enter(Function function) {
  enter();
  return resultOf(function);
}

char* keep(const std::string& text) {
  return state().kept.emplace_back(text).data();
}

void* newHandle() {
  state().lastHandle += 0x10;
  return reinterpret_cast<void*>(state().lastHandle);
}

}  // namespace fuzz
