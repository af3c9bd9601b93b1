// How a target reports a broken rule.
#ifndef FUZZ_REQUIRE_H
#define FUZZ_REQUIRE_H

#include <cstdio>
#include <cstdlib>

namespace fuzz {

// Ends the process, which makes the input a finding, unless the rule holds.
inline void require(bool holds, const char* rule) {
  if (holds) return;
  std::fprintf(stderr, "broken rule: %s\n", rule);
  std::abort();
}

}  // namespace fuzz

#endif  // FUZZ_REQUIRE_H
