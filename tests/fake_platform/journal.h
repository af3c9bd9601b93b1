// What happened, in order, as lines of text, and the functions with which a test writes what should
// happen.
//
//   EXPECT_EQ(journal(), (Journal{locks(), mainLog("START"),
//                                 call("vconf_set_int", "db/menu/network/wifidirect", 1),
//                                 unlocks()}));
//
// A difference is printed line by line; a line feed inside a text shows as "␊".
#ifndef FAKE_PLATFORM_JOURNAL_H
#define FAKE_PLATFORM_JOURNAL_H

#include <cstddef>
#include <initializer_list>
#include <iosfwd>
#include <string>
#include <vector>

#pragma GCC visibility push(default)

namespace fake_platform {

class Journal {
 public:
  // One or several lines that belong together.
  struct Piece {
    std::vector<std::string> lines;
  };

  Journal() = default;
  Journal(std::initializer_list<Piece> pieces);

  // A journal may be part of a longer one.
  operator Piece() const { return {lines_}; }  // NOLINT(google-explicit-constructor)

  void add(std::string line) { lines_.push_back(std::move(line)); }
  const std::vector<std::string>& lines() const { return lines_; }
  bool empty() const { return lines_.empty(); }

  // How often the piece's lines appear in the journal, directly one after another.
  std::size_t count(const Piece& piece) const;
  bool contains(const Piece& piece) const { return count(piece) > 0; }

  bool operator==(const Journal&) const = default;

 private:
  std::vector<std::string> lines_;
};

// How gtest prints a journal.
void PrintTo(const Journal& journal, std::ostream* out);

// An argument as the journal shows it: text as it is, a null pointer as "null", a truth value as a
// word, a handle by its name ("connection 1").
std::string shown(const char* text);
std::string shown(const std::string& text);
std::string shown(bool value);
std::string shown(int value);
std::string shown(unsigned value);
std::string shown(unsigned long value);

// Implementation of call().
std::string callLine(const std::string& function, const std::vector<std::string>& arguments);

// A platform function was called with these arguments. Outputs do not count as arguments.
template <typename... Arguments>
Journal::Piece call(const char* function, const Arguments&... arguments) {
  return {{callLine(function, {shown(arguments)...})}};
}

// The provider took or released its lock.
Journal::Piece locks();
Journal::Piece unlocks();

// The provider failed to take its lock, with this error number.
Journal::Piece lockFails(int error);

// A log statement: the line in the main or the system buffer of the platform log, without its
// prefix, and then the structured logger's record.
Journal::Piece mainLog(const std::string& message);
Journal::Piece systemLog(const std::string& message);

}  // namespace fake_platform

#pragma GCC visibility pop

#endif  // FAKE_PLATFORM_JOURNAL_H
