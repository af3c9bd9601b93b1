// Random calls to a provider, as a menu framework makes them: every callback and every check with
// every key; everything handed out is returned.
#ifndef CONTRACT_RANDOM_CALLS_H
#define CONTRACT_RANDOM_CALLS_H

#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "calls.h"

namespace contract {

// The keys that are passed.
struct KeyChoice {
  std::vector<std::string> all;
  std::vector<std::string> often;  // one of these every second time
};

// Every key of ventaro/data_provider.h and some unknown ones; often those with a value.
KeyChoice headersKeys();

// What no call and no change of the platform alters: translated names and help texts, without the
// names of saved networks.
struct FixedTexts {
  std::map<std::string, std::string> names;
  std::map<std::string, std::string> helps;
};
FixedTexts fixedTexts(Calls& calls, const KeyChoice& keys);

// For one thread.
class RandomCalls {
 public:
  // The caller keeps owning all but the seed.
  RandomCalls(Calls& calls, const KeyChoice& keys, const FixedTexts& texts, std::uint64_t seed)
      : calls_(calls), keys_(keys), texts_(texts), random_(seed) {}

  // Calls one randomly chosen function, and those that belong to it: an option list with its
  // entries, a text with its release.
  void callOne();

  const Calls& calls() const { return calls_; }

 private:
  std::size_t pick(std::size_t choices);
  const std::string& key();
  void requireFixed(const Answer& answer, const std::map<std::string, std::string>& texts);

  void setInt();
  void setString();

  Calls& calls_;
  const KeyChoice& keys_;
  const FixedTexts& texts_;
  std::mt19937_64 random_;
};

}  // namespace contract

#endif  // CONTRACT_RANDOM_CALLS_H
