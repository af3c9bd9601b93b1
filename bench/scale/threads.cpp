// Several threads draw the branch with one provider. Prints JSON: the callbacks of all threads, and
// the nanoseconds that they took.
//
//   threads PROVIDER THREADS MILLISECONDS
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <thread>
#include <vector>

#include "common.h"
#include "drawing.h"

namespace {

Json::Value drawTogether(const contract::Provider& provider, int count,
                         std::chrono::milliseconds time) {
  std::atomic<long> callbacks = 0;
  const auto drawUntilStopped = [&](const std::stop_token& stop) {
    while (!stop.stop_requested()) callbacks += draw(provider);
  };
  const std::int64_t start = bench::now();
  std::vector<std::jthread> threads;
  threads.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) threads.emplace_back(drawUntilStopped);
  std::this_thread::sleep_for(time);
  Json::Value result;
  result["callbacks"] = static_cast<Json::Int64>(callbacks);
  result["nanoseconds"] = bench::now() - start;
  return result;
}

}  // namespace

int main(int count, char** words) {
  return bench::printed([&] {
    bench::require(count == 4, "usage: threads PROVIDER THREADS MILLISECONDS");
    return drawTogether(*loadProvider(words[1]), std::atoi(words[2]),
                        std::chrono::milliseconds(std::atoi(words[3])));
  });
}
