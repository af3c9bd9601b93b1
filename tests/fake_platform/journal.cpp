#include "journal.h"

#include <algorithm>
#include <ostream>

namespace fake_platform {

Journal::Journal(std::initializer_list<Piece> pieces) {
  for (const Piece& piece : pieces) {
    lines_.insert(lines_.end(), piece.lines.begin(), piece.lines.end());
  }
}

std::size_t Journal::count(const Piece& piece) const {
  if (piece.lines.empty()) return 0;
  std::size_t found = 0;
  for (auto from = lines_.begin();; ++from, ++found) {
    from = std::search(from, lines_.end(), piece.lines.begin(), piece.lines.end());
    if (from == lines_.end()) return found;
  }
}

// One quoted text with "\n" between the lines, because gtest splits that to print a diff.
void PrintTo(const Journal& journal, std::ostream* out) {
  *out << '"';
  for (const std::string& line : journal.lines()) {
    for (const char c : line) {
      if (c == '\n') {
        *out << "␊";
      } else {
        *out << c;
      }
    }
    *out << "\\n";
  }
  *out << '"';
}

std::string shown(const char* text) {
  return text != nullptr ? text : "null";
}
std::string shown(const std::string& text) {
  return text;
}
std::string shown(bool value) {
  return value ? "true" : "false";
}
std::string shown(int value) {
  return std::to_string(value);
}
std::string shown(unsigned value) {
  return std::to_string(value);
}
std::string shown(unsigned long value) {
  return std::to_string(value);
}

std::string callLine(const std::string& function, const std::vector<std::string>& arguments) {
  std::string line = function + "(";
  const char* separator = "";
  for (const std::string& argument : arguments) {
    line += separator + argument;
    separator = ", ";
  }
  return line + ")";
}

Journal::Piece locks() {
  return {{"lock"}};
}

Journal::Piece unlocks() {
  return {{"unlock"}};
}

Journal::Piece lockFails(int error) {
  return {{"lock fails with " + std::to_string(error)}};
}

Journal::Piece mainLog(const std::string& message) {
  return {{"log main: " + message, "record: " + message}};
}

Journal::Piece systemLog(const std::string& message) {
  return {{"log system: " + message, "record: " + message}};
}

}  // namespace fake_platform
