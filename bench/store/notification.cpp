// Measures the time from the start of a set in one process to the call in another, which subscribed
// to the key and waits in its main loop:
//   store notification DISK MEMORY SETS PAUSE STORE...
// The stores take turns, with a PAUSE in milliseconds before each set, so that everything is idle.
// Prints the nanoseconds to the call and to the return of each set, by store and durability.
#include <glib.h>
#include <poll.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <thread>

#include "contents.h"
#include "programs.h"

namespace {

using namespace bench;

constexpr int kKeys = 100;
constexpr int kWatched = kLongTexts;  // the first number

// What the other process reports about a call. The first report has no call: it says "ready".
struct News {
  std::int64_t time;
  int value;
};

[[noreturn]] void watchUntilKilled(Store& store, int pipeEnd) {
  const std::unique_ptr<Reader> reader = store.reader();
  const std::string key = store.prefix() + nameOf(kWatched);
  const auto tell = [&](std::int64_t time) {
    const News news{time, reader->number(key)};
    require(write(pipeEnd, &news, sizeof news) == sizeof news, "nobody listens");
  };
  store.watch(key, [&] { tell(now()); });
  tell(0);
  while (true) g_main_context_iteration(nullptr, TRUE);
}

// Another process that watches a store. It opens the store itself, because none may be used after a
// fork.
class Watcher {
 public:
  explicit Watcher(const std::function<std::unique_ptr<Store>()>& openStore) {
    std::array<int, 2> ends{};
    require(pipe(ends.data()) == 0, "cannot make a pipe");
    const pid_t child = fork();
    require(child >= 0, "cannot fork");
    if (child == 0) {
      prctl(PR_SET_PDEATHSIG, SIGKILL);
      _exit(guarded([&] { watchUntilKilled(*openStore(), ends[1]); }));
    }
    close(ends[1]);
    news_ = ends[0];
  }
  Watcher(const Watcher&) = delete;
  Watcher& operator=(const Watcher&) = delete;

  // The time when it first saw the value. A store may call more than once per set.
  std::int64_t saw(int value) const {
    constexpr int kPatience = 10'000;  // milliseconds
    pollfd ready{news_, POLLIN, 0};
    News news{};
    do {
      require(poll(&ready, 1, kPatience) == 1, "a watcher was not called");
      require(read(news_, &news, sizeof news) == sizeof news, "a watcher is gone");
    } while (news.value != value);
    return news.time;
  }

 private:
  int news_ = -1;
};

struct Options {
  std::array<std::filesystem::path, 2> folders;
  int sets;
  std::chrono::milliseconds pause;
  std::vector<std::string> stores;
};

struct Pair {
  std::string name;
  Durability durability;
  std::unique_ptr<Watcher> watcher;
  std::unique_ptr<Store> store;
};

constexpr Durability kDurabilities[] = {Durability::kDurable, Durability::kVolatile};
constexpr const char* kWords[] = {"durable", "volatile"};

std::unique_ptr<Store> openStore(const Options& options, const std::string& name,
                                 Durability durability) {
  return open(name, options.folders[static_cast<int>(durability)], durability, kKeys);
}

// All watchers are started first, because they are forked.
std::vector<Pair> start(const Options& options) {
  std::vector<Pair> pairs;
  for (const std::string& name : options.stores) {
    for (const Durability durability : kDurabilities) {
      const auto openFilled = [&] {
        auto store = openStore(options, name, durability);
        store->fill(kKeys);
        return store;
      };
      pairs.push_back({name, durability, std::make_unique<Watcher>(openFilled), nullptr});
      pairs.back().watcher->saw(numberOf(kWatched));
    }
  }
  for (Pair& pair : pairs) pair.store = openStore(options, pair.name, pair.durability);
  return pairs;
}  // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): it loses track of what was moved

// The times to the call and to the set's return.
Json::Value timeOne(const Pair& pair, int cycle) {
  const int value = numberOf(kWatched, cycle);
  const std::string key = pair.store->prefix() + nameOf(kWatched);
  pair.store->rest();
  const std::int64_t begin = now();
  pair.store->setNumber(key, value);
  const std::int64_t end = now();
  Json::Value times;
  times.append(static_cast<Json::Int64>(pair.watcher->saw(value) - begin));
  times.append(static_cast<Json::Int64>(end - begin));
  return times;
}

Json::Value measure(const Options& options) {
  const std::vector<Pair> pairs = start(options);
  Json::Value times;
  for (int set = 1; set <= options.sets; ++set) {
    for (const Pair& pair : pairs) {
      std::this_thread::sleep_for(options.pause);
      times[kWords[static_cast<int>(pair.durability)]][pair.name].append(timeOne(pair, set));
    }
  }
  return times;
}

}  // namespace

Json::Value bench::notification(int count, char** words) {
  require(count > 4, "usage: store notification DISK MEMORY SETS PAUSE STORE...");
  return measure({{words[0], words[1]},
                  std::stoi(words[2]),
                  std::chrono::milliseconds(std::stoi(words[3])),
                  {words + 4, words + count}});
}
