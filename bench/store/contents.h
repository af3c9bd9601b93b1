// The contents of a store with N keys: a few long texts; the others are half numbers, half short
// texts. Every value can be computed from its key.
#ifndef BENCH_STORE_CONTENTS_H
#define BENCH_STORE_CONTENTS_H

#include <cstddef>
#include <random>
#include <string>
#include <vector>

namespace bench {

enum class Kind { kNumber, kShortText, kLongText };

inline constexpr int kLongTexts = 16;
inline constexpr std::size_t kShortSize = 32;   // bytes
inline constexpr std::size_t kLongSize = 4096;  // bytes

// A set adds a multiple of this to a number, so that a value read back can still be checked.
inline constexpr int kCycle = 10'000'000;
inline constexpr int kCycles = 200;

inline Kind kindOf(int index) {
  if (index < kLongTexts) return Kind::kLongText;
  return index % 2 == 0 ? Kind::kNumber : Kind::kShortText;
}

inline constexpr std::size_t kNameSize = 15;

inline std::string nameOf(int index) {
  const std::string begin = "setting-";
  const std::string digits = std::to_string(index);
  return begin + std::string(kNameSize - begin.size() - digits.size(), '0') + digits;
}

inline int numberOf(int index, int cycle = 0) {
  return index + cycle % kCycles * kCycle;
}

inline bool isNumberOf(int index, int value) {
  return value % kCycle == index;
}

inline std::string textOf(int index) {
  std::string text = nameOf(index);
  text.resize(kindOf(index) == Kind::kLongText ? kLongSize : kShortSize, 'x');
  return text;
}

struct Entry {
  int index;
  std::string key;
};

// More keys would only measure how fast the keys themselves are loaded from memory.
inline constexpr std::size_t kSampleSize = 8192;

// Random keys of that kind, with a fixed seed: the same at each call, so for each store.
inline std::vector<Entry> sample(Kind kind, int count, const std::string& prefix) {
  std::minstd_rand random(1);
  std::uniform_int_distribution<int> any(0, kind == Kind::kLongText ? kLongTexts - 1 : count - 1);
  std::vector<Entry> entries;
  while (entries.size() < kSampleSize) {
    const int index = any(random);
    if (kindOf(index) == kind) entries.push_back({index, prefix + nameOf(index)});
  }
  return entries;
}

}  // namespace bench

#endif  // BENCH_STORE_CONTENTS_H
