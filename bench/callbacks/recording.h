// Writes down what a call does, as C++ that does just that: the calls of the platform with their
// arguments, the locks, the log lines, the blocks that it hands out or gives back, and the texts
// that the JSON library reads and writes. The floor is made of it.
#ifndef BENCH_CALLBACKS_RECORDING_H
#define BENCH_CALLBACKS_RECORDING_H

#include <cstdarg>
#include <cstddef>
#include <string>

#include "cases.h"

namespace recording {

// What is asked for, while nobody records, by everything that is measured.
extern bool isOn;

// The body of a function, a statement in a line, of what the call does when it is not the first.
std::string of(const Case& each, Function side);
std::string literal(const std::string& text);

// ---- What is recorded. For use while it is on ----

constexpr char kUnwritten = '?';  // each byte of a new block, but of a zeroed one

void taken(const void* block, std::size_t size, bool isZeroed);
void freed(const void* block);

void statement(const std::string& text);

// A text that the platform gives; returns it.
char* given(char* text);
// The same for a block, which becomes the caller's. It must be the last statement's result.
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

// A call; `rest` are the arguments after a format. Out of line, and by value: what is measured pays
// for nothing but the question whether it is on.
template <typename... Arguments>
[[gnu::noinline, gnu::cold]] void call(const char* function, Arguments... arguments) {
  statement(function + ("(" + shownAll(arguments...)) + ");");
}
template <typename... Arguments>
[[gnu::noinline, gnu::cold]] void logLine(const char* function, const char* format,
                                          std::va_list& rest, Arguments... arguments) {
  statement(function + ("(" + shownAll(arguments...)) + ", " + shownFormat(format, rest) + ");");
}
// A call that begins with a buffer, into which it writes the text.
template <typename... Arguments>
[[gnu::noinline, gnu::cold]] void writingCall(const char* function, const char* text, char* buffer,
                                              Arguments... arguments) {
  statement(function + ("(" + shownBuffer(buffer, text)) + ", " + shownAll(arguments...) + ");");
}

}  // namespace recording

// The arguments are evaluated only while it is on.
#define RECORD(...)                   \
  do {                                \
    if (recording::isOn) [[unlikely]] \
      recording::call(__VA_ARGS__);   \
  } while (false)

#endif  // BENCH_CALLBACKS_RECORDING_H
