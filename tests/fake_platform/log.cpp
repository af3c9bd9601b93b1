#include "platform/log.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string_view>
#include <utility>

#include "call.h"
#include "platform/structured_log.h"

namespace fake_platform {
namespace {

struct State {
  std::vector<LogStatement> statements;
  std::vector<std::string> mistakes;
};

State& state() {
  static State& instance = *new State;
  return instance;
}

// The platform log's line of this thread that waits for its record.
thread_local std::optional<LogStatement> openStatement;

__attribute__((format(printf, 1, 0))) std::string formatted(const char* format, va_list arguments) {
  va_list again;
  va_copy(again, arguments);
  const int size = std::vsnprintf(nullptr, 0, format, arguments);
  std::string text(static_cast<std::size_t>(size) + 1, '\0');
  std::vsnprintf(text.data(), text.size(), format, again);
  va_end(again);
  text.pop_back();
  return text;
}

// Reads everything that the arguments point to, to detect unterminated texts.
__attribute__((format(printf, 1, 0))) void readThrough(const char* format, va_list arguments) {
  std::array<char, 256> line;
  std::vsnprintf(line.data(), line.size(), format, arguments);
}

void mistake(const std::string& what) {
  const StateLock lock(stateMutex());
  state().mistakes.push_back(what);
}

bool isNumber(std::string_view text) {
  return !text.empty() && text.size() < 8 &&
         std::ranges::all_of(text, [](unsigned char c) { return std::isdigit(c) != 0; });
}

// Takes "FILE: FUNCTION(LINE) > MESSAGE" apart; false when the text has another form.
bool takeApart(const std::string& text, LogStatement& statement) {
  const std::size_t colon = text.find(": ");
  const std::size_t end = text.find(") > ");
  if (colon == std::string::npos || end == std::string::npos) return false;
  const std::size_t parenthesis = text.rfind('(', end);
  if (parenthesis == std::string::npos || parenthesis <= colon + 2) return false;
  const std::string number = text.substr(parenthesis + 1, end - parenthesis - 1);
  if (colon == 0 || !isNumber(number)) return false;
  statement.file = text.substr(0, colon);
  statement.function = text.substr(colon + 2, parenthesis - colon - 2);
  statement.line = std::stoi(number);
  statement.message = text.substr(end + 4);
  return true;
}

std::string bufferName(int buffer) {
  if (buffer == PLATFORM_LOG_MAIN) return "main";
  if (buffer == PLATFORM_LOG_SYSTEM) return "system";
  return std::to_string(buffer);
}

std::string baseName(const std::string& path) {
  return path.substr(path.rfind('/') + 1);
}

void checkLine(const LogStatement& statement) {
  if (statement.priority != PLATFORM_LOG_INFO) mistake("priority of \"" + statement.message + "\"");
  if (statement.tag != "VENTARO") mistake("tag of \"" + statement.message + "\"");
}

// Both channels must say the same about the same place.
void checkRecord(const LogStatement& statement) {
  if (statement.message != statement.recordedMessage) {
    mistake("the log says \"" + statement.message + "\", its record \"" +
            statement.recordedMessage + "\"");
  }
  // A signature spells a lambda differently.
  const bool sameFunction = statement.function == "operator()" ||
                            statement.signature.find(statement.function) != std::string::npos;
  if (statement.file != baseName(statement.path) || statement.line != statement.recordedLine ||
      !sameFunction) {
    mistake("the places of \"" + statement.message + "\" differ");
  }
}

// A line without a record is a mistake of the statement before.
void demandNoOpenStatement() {
  if (!openStatement) return;
  mistake("no record of \"" + openStatement->message + "\"");
  openStatement.reset();
}

// Remembers the line until its record arrives; returns it as the journal shows it.
std::string openLine(int buffer, int priority, const char* tag, const std::string& text) {
  demandNoOpenStatement();
  LogStatement statement{};
  statement.buffer = buffer;
  statement.priority = priority;
  statement.tag = tag;
  if (!takeApart(text, statement)) {
    statement.message = text;
    mistake("no prefix at \"" + text + "\"");
  }
  checkLine(statement);
  openStatement = statement;
  return "log " + bufferName(buffer) + ": " + statement.message;
}

void closeLine(const ht::TSCodeLocation& location, const std::string& message) {
  if (!openStatement) return mistake("a record without a line: \"" + message + "\"");
  LogStatement statement = *std::exchange(openStatement, std::nullopt);
  statement.location = &location;
  statement.path = location.path;
  statement.recordedLine = location.line;
  statement.signature = location.signature;
  statement.recordedMessage = message;
  checkRecord(statement);
  const StateLock lock(stateMutex());
  state().statements.push_back(statement);
}

}  // namespace

void resetLog() {
  state() = State();
  openStatement.reset();
}

void clearLogStatements() {
  state().statements.clear();
}

std::vector<LogStatement> logStatements() {
  const StateLock lock(stateMutex());
  return state().statements;
}

std::vector<std::string> logMistakes() {
  demandNoOpenStatement();
  const StateLock lock(stateMutex());
  return state().mistakes;
}

}  // namespace fake_platform

using namespace fake_platform;

// In the journal, and waiting for its record, also when it is scripted to fail.
int __dlog_print(int log_id, int priority, const char* tag, const char* format, ...) {
  std::optional<std::string> line;
  va_list arguments;
  va_start(arguments, format);
  if (isRecording()) {
    line = openLine(log_id, priority, tag, formatted(format, arguments));
  } else {
    readThrough(format, arguments);
    demand(priority == PLATFORM_LOG_INFO && std::strcmp(tag, "VENTARO") == 0, "a line has its tag");
    demand(log_id == PLATFORM_LOG_MAIN || log_id == PLATFORM_LOG_SYSTEM, "a line has a buffer");
  }
  va_end(arguments);
  return Call("__dlog_print", Kind::kLog, line).answer([] { return 0; });
}

namespace ht {

TCLogger& TCLogger::Instance() {
  static TCLogger instance;
  return instance;
}

bool TCLogger::IsStorageEnabled() const {
  return true;
}

void TSLoggerHelper::Log(const TSCodeLocation& location, const char* format, ...) {
  std::optional<std::string> message;
  va_list arguments;
  va_start(arguments, format);
  if (isRecording()) {
    message = formatted(format, arguments);
  } else {
    readThrough(format, arguments);
  }
  va_end(arguments);
  const Call call("ht::TSLoggerHelper::Log", Kind::kLog,
                  message ? std::optional("record: " + *message) : std::nullopt);
  if (message) closeLine(location, *message);
}

}  // namespace ht
