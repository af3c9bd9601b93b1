// What the provider calls in the platform, counted and timed between the two. For one thread.
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

// The platform's functions, then the C library's that reads files of its own, dgettext(), and
// nothing().
extern std::array<CountedFunction, platform::kPlatformFunctions.size() + 2> countedFunctions;

// Goes the same way to a function that does nothing: what the counting itself costs.
void nothing();

#endif  // BENCH_PAGE_PLATFORM_CALLS_H
