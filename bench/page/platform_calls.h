// Counts and times the provider's calls to the platform. For one thread.
#ifndef BENCH_PAGE_PLATFORM_CALLS_H
#define BENCH_PAGE_PLATFORM_CALLS_H

#include <array>

#include "platform_functions.h"

struct CountedFunction {
  const char* name;
  void* real = nullptr;
  long calls = 0;
  long nanoseconds = 0;
};

// The platform's functions, then dgettext() of the C library, because it reads files, and
// nothing().
extern std::array<CountedFunction, platform::kPlatformFunctions.size() + 2> countedFunctions;

// Calls a function that does nothing in the same way, to measure the cost of counting.
void nothing();

#endif  // BENCH_PAGE_PLATFORM_CALLS_H
