// Records a call as C++ code that does the same: the platform calls with their arguments, the
// locks, the log lines, the blocks that it hands out or takes back, and the texts that the JSON
// library reads and writes. The floor is made of this code.
#ifndef BENCH_CALLBACKS_RECORDING_H
#define BENCH_CALLBACKS_RECORDING_H

#include <cstdarg>
#include <cstddef>
#include <string>

#include "cases.h"

namespace recording {

// Checked by everything that is measured, also while nothing is recorded.
extern bool isOn;

// A function body, one statement per line, that does what the call does when it is not the first.
std::string of(const Case& each, Function side);
std::string literal(const std::string& text);

// ---- What is recorded. Only while recording is on ----

constexpr char kUnwritten = '?';  // each byte of a new block, unless it is zeroed

void taken(const void* block, std::size_t size, bool isZeroed);
void freed(const void* block);

void statement(const std::string& text);

// A text that the platform returns; returns it.
char* given(char* text);
// The same for a block that the caller will own. It must be the last statement's result.
char* handedOver(char* block);

struct Code {
  const char* text;
};
inline std::string shown(Code code) {
  return code.text;
}
inline std::string shown(int number) {
  return std::to_string(number);
}
std::string shown(const char* text);
std::string shown(const void* handle);
// Results that the function writes.
inline std::string shown(int* /*result*/) {
  return "&number_";
}
inline std::string shown(bool* /*result*/) {
  return "&flag_";
}
inline std::string shown(char** /*result*/) {
  return "&word_";
}
std::string shown(void** result);
std::string shownBuffer(char* buffer, const char* text);
std::string shownFormat(const char* format, std::va_list& arguments);

template <typename... Arguments>
std::string shownAll(const Arguments&... arguments) {
  std::string all;
  ((all += (all.empty() ? "" : ", ") + shown(arguments)), ...);
  return all;
}

// A call; `rest` are the arguments after a format. Out of line and by value, so that measured code
// only pays for checking whether recording is on.
template <typename... Arguments>
[[gnu::noinline, gnu::cold]] void call(const char* function, Arguments... arguments) {
  statement(function + ("(" + shownAll(arguments...)) + ");");
}
template <typename... Arguments>
[[gnu::noinline, gnu::cold]] void logLine(const char* function, const char* format,
                                          std::va_list& rest, Arguments... arguments) {
  statement(function + ("(" + shownAll(arguments...)) + ", " + shownFormat(format, rest) + ");");
}
// A call whose first argument is a buffer, into which it writes the text.
template <typename... Arguments>
[[gnu::noinline, gnu::cold]] void writingCall(const char* function, const char* text, char* buffer,
                                              Arguments... arguments) {
  statement(function + ("(" + shownBuffer(buffer, text)) + ", " + shownAll(arguments...) + ");");
}

}  // namespace recording

// The arguments are evaluated only while recording is on.
#define RECORD(...)                   \
  do {                                \
    if (recording::isOn) [[unlikely]] \
      recording::call(__VA_ARGS__);   \
  } while (false)

#endif  // BENCH_CALLBACKS_RECORDING_H
