#include "stream.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <iostream>

#include "../host/display_text.h"

namespace cli {

namespace {

std::FILE* standardOutput = nullptr;
std::string inputLine;  // as "line 3: "; empty where complaints are about no line

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

void complain(const std::string& message, const std::string& who) {
  std::cerr << who << ": " << inputLine << menu::displayText(message) << '\n';
}

InputLine::InputLine(int number) {
  inputLine = "line " + std::to_string(number) + ": ";
}

InputLine::~InputLine() {
  inputLine.clear();
}

}  // namespace cli
