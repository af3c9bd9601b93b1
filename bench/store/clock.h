#ifndef BENCH_STORE_CLOCK_H
#define BENCH_STORE_CLOCK_H

#include <cstdint>
#include <ctime>

namespace bench {

// Nanoseconds, on a clock that all processes share.
inline std::int64_t now() {
  timespec time{};
  clock_gettime(CLOCK_MONOTONIC, &time);
  return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

}  // namespace bench

#endif  // BENCH_STORE_CLOCK_H
