// Several threads in one provider. Prints JSON.
//
//   threads PROVIDER draw THREADS MILLISECONDS
//       the callbacks of all threads, which draw the branch, and the nanoseconds that they took
//   threads PROVIDER wait THREADS MILLISECONDS
//       what the calls of one more thread take, lock-free ones and locked ones, while the others
//       read a long document under the lock
#include <json/value.h>
#include <json/writer.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <iostream>
#include <thread>
#include <vector>

#include "documents.h"
#include "drawing.h"
#include "platform/host/config_store.h"

namespace {

using contract::Provider;
using Clock = std::chrono::steady_clock;
using Nanoseconds = std::chrono::nanoseconds;

constexpr int kLongDocument = 1000;
constexpr std::chrono::microseconds kPause{100};

// Calls `work` on each of the threads again and again, until it goes.
class Threads {
 public:
  Threads(int count, const std::function<int()>& work) {
    for (int i = 0; i < count; ++i) {
      threads_.emplace_back([this, work](const std::stop_token& stop) {
        while (!stop.stop_requested()) done_ += work();
      });
    }
  }
  long done() const { return done_; }

 private:
  std::atomic<long> done_ = 0;
  std::vector<std::jthread> threads_;
};

Json::Int64 since(Clock::time_point start) {
  return std::chrono::duration_cast<Nanoseconds>(Clock::now() - start).count();
}

Json::Value drawTogether(const Provider& provider, int count, std::chrono::milliseconds time) {
  const auto start = Clock::now();
  const Threads threads(count, [&] { return draw(provider); });
  std::this_thread::sleep_for(time);
  Json::Value result;
  result["callbacks"] = static_cast<Json::Int64>(threads.done());
  result["nanoseconds"] = since(start);
  return result;
}

struct Call {
  const char* name;
  void (*make)(const Provider& provider);
};

void currentValue(const Provider& provider) {
  char value[VENTARO_CURRENT_VALUE_SIZE] = "";
  char* buffer = value;
  provider.table().get_current_value_sid("menu/network/devicename", &buffer);
}

constexpr Call kCalls[] = {
    {"get_current_value_sid", currentValue},
    {"release_string", [](const Provider& p) { p.table().release_string(strdup("a text")); }},
    {"check_visibility_int, locked",
     [](const Provider& p) { p.exports().check_visibility_int(kFirstNetwork, 0); }},
};

Json::Value summary(std::vector<Json::Int64> times) {
  std::ranges::sort(times);
  Json::Value result;
  result["calls"] = static_cast<Json::Int64>(times.size());
  result["median"] = times[times.size() / 2];
  result["thousandth"] = times[times.size() * 999 / 1000];
  result["worst"] = times.back();
  return result;
}

// One call at a time with a pause after it, as a person's input comes.
Json::Value waits(const Provider& provider, const Call& call, std::chrono::milliseconds time) {
  std::vector<Json::Int64> times;
  for (const auto end = Clock::now() + time; times.empty() || Clock::now() < end;) {
    const auto start = Clock::now();
    call.make(provider);
    times.push_back(since(start));
    std::this_thread::sleep_for(kPause);
  }
  return summary(times);
}

Json::Value waitForOthers(const Provider& provider, int count, std::chrono::milliseconds time) {
  platform::host::ConfigStore::instance().set(kDocumentKey, document(kLongDocument));
  provider.exports().check_enable_int(kFirstNetwork, 0);
  const auto start = Clock::now();
  provider.exports().check_enable_int(kFirstNetwork, 0);
  Json::Value result;
  result["held"] = since(start);
  // With a pause as well: the lock is not fair, and who comes back at once gets it again.
  const auto read = [&] {
    provider.exports().check_enable_int(kFirstNetwork, 0);
    std::this_thread::sleep_for(kPause);
    return 1;
  };
  const Threads others(count, read);
  for (const Call& call : kCalls) result["calls"][call.name] = waits(provider, call, time);
  return result;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 5) {
    std::fputs("usage: threads PROVIDER draw|wait THREADS MILLISECONDS\n", stderr);
    return 2;
  }
  const auto provider = loadProvider(argv[1]);
  const auto measure = std::strcmp(argv[2], "draw") == 0 ? drawTogether : waitForOthers;
  const Json::Value result =
      measure(*provider, std::atoi(argv[3]), std::chrono::milliseconds(std::atoi(argv[4])));
  std::cout << Json::writeString(Json::StreamWriterBuilder(), result) << '\n';
}
