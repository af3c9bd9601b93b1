// Eight threads that call a provider at random.
#ifndef TESTS_THREADS_CALLERS_H
#define TESTS_THREADS_CALLERS_H

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <exception>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "random_calls.h"

namespace threads_tests {

inline constexpr int kCallers = 8;

class Callers {
 public:
  Callers(const provider_calls::Provider& provider, provider_calls::Documents documents,
          std::uint64_t seed)
      : texts_(provider) {
    for (int i = 0; i < kCallers; ++i) {
      calls_.emplace_back(provider, texts_, documents, seed + static_cast<std::uint64_t>(i));
    }
  }

  // Returns when every thread has made that many calls; meanwhile `isRunning()`.
  void run(int callsOfEach) {
    std::vector<std::thread> threads;
    threads.reserve(calls_.size());
    for (provider_calls::RandomCalls& calls : calls_) {
      threads.emplace_back([&calls, callsOfEach] { callAll(calls, callsOfEach); });
    }
    for (std::thread& thread : threads) thread.join();
    running_ = false;
  }

  bool isRunning() const { return running_; }

  // The functions across the boundary that no thread has called.
  std::vector<std::string> notCalled() const {
    std::vector<std::string> missing;
    for (const char* function : provider_calls::kFunctions) {
      bool found = false;
      for (const provider_calls::RandomCalls& calls : calls_) {
        found = found || calls.calls().contains(function);
      }
      if (!found) missing.emplace_back(function);
    }
    return missing;
  }

 private:
  static void callAll(provider_calls::RandomCalls& calls, int count) {
    try {
      for (int i = 0; i < count; ++i) calls.callOne();
    } catch (const std::exception& error) {
      ADD_FAILURE() << error.what();
    }
  }

  provider_calls::FixedTexts texts_;
  std::vector<provider_calls::RandomCalls> calls_;
  std::atomic<bool> running_ = true;
};

}  // namespace threads_tests

#endif  // TESTS_THREADS_CALLERS_H
