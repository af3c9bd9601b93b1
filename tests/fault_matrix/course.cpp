#include "course.h"

#include <algorithm>
#include <ostream>
#include <utility>

namespace {

void replaceAll(std::string& text, const std::string& token, const std::string& value) {
  for (std::size_t at = text.find(token); at != std::string::npos;
       at = text.find(token, at + value.size())) {
    text.replace(at, token.size(), value);
  }
}

}  // namespace

Step::Step(Steps steps) : kind(Kind::kGroup), group(std::move(steps)) {}

Step Step::works(Steps steps) && {
  group = std::move(steps);
  return std::move(*this);
}

Step Step::fails(Steps steps) && {
  failing = std::move(steps);
  return std::move(*this);
}

Step Step::failsWithOutput(Steps steps) && {
  failingWithOutput = std::move(steps);
  toldApart = true;
  return std::move(*this);
}

Step takesLock() {
  return {Step::Kind::kLock, kLockFunction};
}

Step gives(const std::string& result, const std::string& outputs) {
  Step step(Step::Kind::kAnswer, result);
  step.outputs = outputs;
  return step;
}

Step raises(const std::string& exception) {
  return gives("raises " + exception, kUntouched);
}

Step prints(const std::string& line) {
  return {Step::Kind::kPrint, line + "\n"};
}

Step startsTimer() {
  return {Step::Kind::kTimerStart, ""};
}

Step endsTimer() {
  return {Step::Kind::kTimerStop, ""};
}

Step watchesNetworks() {
  return {Step::Kind::kWatch, "vconf_notify_key_changed"};
}

Step sets(const std::string& name, const std::string& value) {
  Step step(Step::Kind::kSetting, name);
  step.outputs = value;
  return step;
}

Step whenSet(const std::string& name, Steps steps) {
  Step step(Step::Kind::kWhenSet, name);
  step.group = std::move(steps);
  return step;
}

Step ends() {
  return {Step::Kind::kEnd, ""};
}

const char* nameOf(Mode mode) {
  switch (mode) {
    case Mode::kNever:
      return "never";
    case Mode::kAlways:
      return "always";
    case Mode::kFirstCall:
      return "on its first call";
    case Mode::kSecondCall:
      return "on its second call";
    case Mode::kThirdCall:
      return "on its third call";
    case Mode::kAlwaysWithOutput:
      return "always, after doing its work";
  }
  return "";
}

void PrintTo(const Outcome& run, std::ostream* out) {
  *out << "\nanswer:  " << run.answer << "\nprinted: " << run.printed << "\n";
  PrintTo(run.journal, out);
}

std::string answerOf(const std::string& result, const std::string& outputs) {
  return outputs.empty() ? result : result + ", " + outputs;
}

void Walker::arm(const Fault& fault) {
  fault_ = fault;
  calls_ = 0;
  hasFailed_ = false;
}

Outcome Walker::walk(const Steps& steps, const std::string& key) {
  run_ = Outcome();
  key_ = key;
  result_.clear();
  walkAll(steps);
  return std::exchange(run_, Outcome());
}

bool Walker::fails(int call) const {
  switch (fault_.mode) {
    case Mode::kNever:
      return false;
    case Mode::kAlways:
    case Mode::kAlwaysWithOutput:
      return true;
    case Mode::kFirstCall:
      return call == 1;
    case Mode::kSecondCall:
      return call == 2;
    case Mode::kThirdCall:
      return call == 3;
  }
  return false;
}

// False when nothing follows; below too.
bool Walker::walkAll(const Steps& steps) {
  return std::ranges::all_of(steps, [&](const Step& step) { return walkOne(step); });
}

bool Walker::walkOne(const Step& step) {
  switch (step.kind) {
    case Step::Kind::kLines:
      addLines(step.lines);
      return true;
    case Step::Kind::kGroup:
      return walkAll(step.group);
    case Step::Kind::kCall:
    case Step::Kind::kRefused:
      return walkCall(step);
    case Step::Kind::kLock:
      return walkLock();
    case Step::Kind::kAnswer:
      result_ = step.text;
      run_.answer = answerOf(step.text, filled(step.outputs));
      return true;
    case Step::Kind::kPrint:
      run_.printed += filled(step.text);
      return true;
    case Step::Kind::kTimerStart:
      walkTimerStart();
      return true;
    case Step::Kind::kTimerStop:
      addLines(call("g_source_remove", "{timer}"));
      timerRuns_ = false;
      return true;
    case Step::Kind::kWatch:
      return walkWatch();
    case Step::Kind::kSetting:
      settings_[step.text] = filled(step.outputs);
      return true;
    case Step::Kind::kWhenSet:
      return settings_[step.text] == "null" || walkAll(step.group);
    case Step::Kind::kEnd:
      return false;
  }
  return false;
}

bool Walker::walkCall(const Step& step) {
  const bool isRefused = step.kind == Step::Kind::kRefused || isOnNoConnection(step);
  const bool failsNow = step.text == fault_.function && fails(++calls_);
  hasFailed_ = hasFailed_ || failsNow;
  const bool withOutput = failsNow && fault_.mode == Mode::kAlwaysWithOutput;
  addLines(step.lines);
  if (!isRefused) follow(step.text, !failsNow || withOutput);
  if (!failsNow && !isRefused) return walkAll(step.group);
  return walkAll(withOutput && step.toldApart ? step.failingWithOutput : step.failing);
}

// The platform refuses calls for a null connection.
bool Walker::isOnNoConnection(const Step& step) const {
  return step.text.starts_with("connection_") &&
         filled(step.lines.lines.front()).find("(null") != std::string::npos;
}

// Only once, whether it works or not.
bool Walker::walkWatch() {
  if (isWatched_) return true;
  isWatched_ = true;
  return walkCall(ask("vconf_notify_key_changed", "db/menu/network/TopSavedAP"));
}

bool Walker::walkLock() {
  if (fault_.function != kLockFunction || !fails(++calls_)) {
    addLines(locks());
    return true;
  }
  hasFailed_ = true;
  addLines(lockFails(kLockFailure));
  run_.answer = answerOf("raises std::system_error " + std::to_string(kLockFailure), kUntouched);
  return false;
}

void Walker::walkTimerStart() {
  if (timerRuns_) addLines(call("g_source_remove", "{timer}"));
  addLines(call("g_timeout_add_seconds", 2));
  timerRuns_ = true;
  ++timer_;
}

// A failure of the log changes nothing.
void Walker::walkLog() {
  if (fault_.function == kLogFunction && fails(++calls_)) hasFailed_ = true;
}

void Walker::addLines(const Journal::Piece& piece) {
  for (const std::string& line : piece.lines) {
    if (line.starts_with("log ")) walkLog();
    run_.journal.add(filled(line));
  }
}

// What the platform hands out and takes back.
void Walker::follow(const std::string& function, bool isDone) {
  if (!isDone) return;
  if (function == "wifi_get_connected_ap") {
    ++accessPoint_;
    ++openAccessPoints_;
  } else if (function == "wifi_ap_destroy") {
    --openAccessPoints_;
  } else if (function == "connection_create") {
    ++connection_;
    ++openConnections_;
  } else if (function == "connection_destroy") {
    --openConnections_;
  } else if (function == "vconf_notify_key_changed") {
    ++subscriptions_;
  } else if (function == "system_info_get_custom_string") {
    ++keptTexts_;
  }
}

std::string Walker::filled(std::string text) const {
  if (text.find('{') == std::string::npos) return text;
  replaceAll(text, "{key}", key_);
  replaceAll(text, "{result}", result_);
  replaceAll(text, "{ap}", std::to_string(accessPoint_));
  replaceAll(text, "{connection}", std::to_string(connection_));
  replaceAll(text, "{timer}", std::to_string(timer_));
  for (const auto& [name, value] : settings_) replaceAll(text, "{" + name + "}", value);
  return text;
}
