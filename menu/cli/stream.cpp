#include "stream.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <iostream>

#include "platform/host/visible_text.h"

namespace cli {

namespace {

using platform::host::visibleLine;

constexpr std::size_t kLongestComplaint = 4096;  // bytes

std::FILE* standardOutput = nullptr;
std::string inputLine;  // as "line 3: "; empty where complaints are about no line

// Without the middle of what nobody would read. The beginning says what is wrong, and the end what
// there is.
std::string shortened(const std::string& message) {
  if (message.size() <= kLongestComplaint) return message;
  constexpr std::size_t kHalf = kLongestComplaint / 2;
  return message.substr(0, kHalf) + " ... " + message.substr(message.size() - kHalf);
}

}  // namespace

void claimStandardOutput() {
  standardOutput = fdopen(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3), "w");
  dup2(STDERR_FILENO, STDOUT_FILENO);
}

int standardOutputFile() {
  return standardOutput != nullptr ? fileno(standardOutput) : STDOUT_FILENO;
}

bool standardOutputIsWritten() {
  return standardOutput == nullptr ||
         (std::fflush(standardOutput) == 0 && std::ferror(standardOutput) == 0);
}

void print(const std::string& text) {
  std::FILE* stream = standardOutput != nullptr ? standardOutput : stdout;
  std::fwrite(text.data(), 1, text.size(), stream);
  std::fflush(stream);
}

void printLine(const std::string& line) {
  print(line + "\n");
}

void complain(const std::string& message, const std::string& who,
              const std::vector<std::string>& list) {
  std::cerr << who << ": " << inputLine << visibleLine(shortened(message)) << '\n';
  for (const std::string& each : list) std::cerr << "  " << visibleLine(shortened(each)) << '\n';
}

InputLine::InputLine(int number) {
  inputLine = "line " + std::to_string(number) + ": ";
}

InputLine::~InputLine() {
  inputLine.clear();
}

}  // namespace cli
