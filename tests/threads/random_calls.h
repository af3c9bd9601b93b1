// Random calls of a provider, as a menu framework makes them: every callback and every check with
// every key, and all that is handed out given back.
#ifndef TESTS_THREADS_RANDOM_CALLS_H
#define TESTS_THREADS_RANDOM_CALLS_H

#include <cstdint>
#include <map>
#include <random>
#include <stdexcept>
#include <string>

#include "provider.h"

namespace provider_calls {

// An answer that the provider must not give, whatever happens beside the call.
class WrongAnswer : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// What no call and no change of the store alters: names and help texts that are translations.
class FixedTexts {
 public:
  explicit FixedTexts(const Provider& provider);

  std::map<std::string, std::string> names;
  std::map<std::string, std::string> helps;
};

// Whether the saved-network document may have a wrong shape, so that the functions that read it
// raise Json::LogicError.
enum class Documents { kRightShape, kAnyShape };

// For one thread.
class RandomCalls {
 public:
  RandomCalls(const Provider& provider, const FixedTexts& texts, Documents documents,
              std::uint64_t seed);

  // Calls one function that is chosen at random, with those that belong to it: an option list with
  // its entries, a text with its release. Raises WrongAnswer.
  void callOne();

  // How often each function was called, by its name.
  const std::map<std::string, std::uint64_t>& calls() const { return calls_; }
  std::uint64_t count() const { return count_; }

 private:
  using TextCallback = int (*)(const char* key, char** value);

  int pick(int choices);
  const char* key();
  void called(const char* function);
  bool mayRaise() const;
  static void require(bool holds, const char* function, const std::string& what);
  // The text that the callback hands out, released.
  std::string text(const char* function, TextCallback callback, const char* key, int result);

  void setInt();
  void setString();
  void getInt();
  void getString();
  void getDisplayName();
  void getHelpText();
  void getIcons();
  void getModuleInfo();
  void getCurrentValue();
  void getMessageBox();
  void useList();
  void useListItem(void* item, int index);
  void makeTable();
  void check();
  void checkOfAnotherType();
  void releaseNothing();

  const Provider& provider_;
  const FixedTexts& texts_;
  Documents documents_;
  std::mt19937_64 random_;
  const char* lastCalled_ = "";
  std::map<std::string, std::uint64_t> calls_;
  std::uint64_t count_ = 0;
};

// The names of all 27 functions across the boundary.
extern const char* const kFunctions[27];

}  // namespace provider_calls

#endif  // TESTS_THREADS_RANDOM_CALLS_H
