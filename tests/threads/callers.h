// Eight threads that call a provider at random.
#ifndef TESTS_THREADS_CALLERS_H
#define TESTS_THREADS_CALLERS_H

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <list>
#include <string>
#include <thread>
#include <vector>

#include "../broken_promises.h"
#include "contract/own_provider.h"
#include "contract/random_calls.h"

namespace threads_tests {

inline constexpr int kCallers = 8;

// Over a platform whose functions do not fail, and whose saved-network document may be misshapen.
class Callers {
 public:
  Callers(const contract::Provider& provider, std::uint64_t seed) {
    contract::Calls first(provider, observer_, kAnyShape, kPromises);
    texts_ = contract::fixedTexts(first, keys_);
    for (int i = 0; i < kCallers; ++i) {
      contract::Calls& calls = calls_.emplace_back(provider, observer_, kAnyShape, kPromises);
      random_.emplace_back(calls, keys_, texts_, seed + static_cast<std::uint64_t>(i));
    }
  }

  // Returns when every thread has made that many steps or got a wrong answer; `isRunning()` until
  // then.
  void run(int stepsOfEach) {
    std::vector<std::thread> threads;
    for (contract::RandomCalls& random : random_) {
      threads.emplace_back([&random, stepsOfEach] {
        for (int i = 0; i < stepsOfEach && random.calls().breaches() == 0; ++i) random.callOne();
      });
    }
    for (std::thread& thread : threads) thread.join();
    running_ = false;
  }

  bool isRunning() const { return running_; }

  // The functions of the ABI that no thread has called.
  std::vector<std::string> notCalled() const {
    std::vector<std::string> missing;
    for (const contract::Function& function : contract::kFunctions) {
      const auto called = [&](const contract::Calls& calls) { return calls.made(function) > 0; };
      if (std::ranges::none_of(calls_, called)) missing.emplace_back(function.name);
    }
    return missing;
  }

 private:
  static constexpr contract::Conditions kAnyShape{.documentMayBeMisshapen = true};
  const contract::Promises* const kPromises = &contract::ownPromisesInEnglish();

  FailsTheTest observer_;
  const contract::KeyChoice keys_ = contract::headersKeys();
  contract::FixedTexts texts_;
  std::list<contract::Calls> calls_;
  std::list<contract::RandomCalls> random_;
  std::atomic<bool> running_ = true;
};

}  // namespace threads_tests

#endif  // TESTS_THREADS_CALLERS_H
