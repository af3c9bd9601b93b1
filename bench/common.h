// Shared by the benchmarks' programs.
#ifndef BENCH_COMMON_H
#define BENCH_COMMON_H

#include <glib.h>
#include <json/json.h>
#include <malloc.h>

#include <cstdint>
#include <cstdio>
#include <ctime>
#include <exception>
#include <functional>
#include <initializer_list>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace bench {

// In nanoseconds, on a clock that all processes share.
inline std::int64_t now() {
  timespec time{};
  clock_gettime(CLOCK_MONOTONIC, &time);
  return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

template <typename Action>
Json::Int64 nanoseconds(const Action& action) {
  const std::int64_t start = now();
  action();
  return now() - start;
}

// What a menu host does between callbacks: deliver notifications, fire timers, run the network
// service.
inline void turnTheMainLoop() {
  while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
  }
}

// In bytes.
inline std::int64_t heapInUse() {
  const struct mallinfo2 heap = mallinfo2();
  return static_cast<std::int64_t>(heap.uordblks + heap.hblkhd);
}

// Raises std::runtime_error with the parts joined as its message.
[[noreturn]] inline void fail(std::initializer_list<std::string_view> parts) {
  std::string message;
  for (const std::string_view part : parts) message += part;
  throw std::runtime_error(message);
}

// Some checks are timed, so the message is built only when one fails.
template <typename... Parts>
void require(bool condition, const Parts&... parts) {
  if (!condition) fail({parts...});
}

// Runs a program's `body`; an exception becomes a message and the result 1.
inline int guarded(const std::function<void()>& body) {
  try {
    body();
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}

// The same for a program that prints its figures as JSON.
inline int printed(const std::function<Json::Value()>& measure) {
  return guarded([&] { std::cout << measure() << '\n'; });
}

}  // namespace bench

#endif  // BENCH_COMMON_H
