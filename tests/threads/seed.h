// The seed of a test's random numbers.
#ifndef TESTS_THREADS_SEED_H
#define TESTS_THREADS_SEED_H

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <random>

namespace threads_tests {

// $VENTARO_TEST_SEED if set, otherwise a different one each time; printed, so that it can be set
// again.
inline std::uint64_t testSeed() {
  const char* chosen = std::getenv("VENTARO_TEST_SEED");
  const std::uint64_t seed =
      chosen != nullptr ? std::strtoull(chosen, nullptr, 10) : std::random_device()();
  std::cout << "VENTARO_TEST_SEED=" << seed << std::endl;
  return seed;
}

}  // namespace threads_tests

#endif  // TESTS_THREADS_SEED_H
