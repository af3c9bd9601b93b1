// Measures how much several readers read from one store while a writer makes durable sets, one
// after the other:
//   store readers FOLDER STORE KEYS processes|threads READERS MILLISECONDS
// The readers and the writer are processes, or threads of one process. The first call for a store
// fills it. Prints the reads per second of all readers together, and the sets per second.
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <new>
#include <thread>

#include "contents.h"
#include "programs.h"

namespace {

using namespace bench;

// What the members share, even across processes.
struct Board {
  std::atomic<int> ready = 0;
  std::atomic<std::int64_t> reads = 0;
  std::atomic<std::int64_t> sets = 0;
};

struct Options {
  std::filesystem::path folder;
  std::string store;
  int keys;
  bool processes;
  int readers;
  int milliseconds;

  int members() const { return readers + 1; }
};

std::unique_ptr<Store> openStore(const Options& options) {
  return open(options.store, options.folder, Durability::kDurable, options.keys);
}

// Waits until all are ready; the time starts then.
class Shift {
 public:
  Shift(const Options& options, Board& board) {
    for (++board.ready; board.ready < options.members();) std::this_thread::yield();
    end_ = now() + options.milliseconds * std::int64_t{1'000'000};
  }
  bool isOver() const { return now() >= end_; }

 private:
  std::int64_t end_ = 0;
};

void read(const Options& options, Store& store, int number, Board& board) {
  constexpr int kChunk = 16;  // reads between two reads of the clock
  const std::vector<Entry> entries = sample(Kind::kNumber, options.keys, store.prefix());
  const std::unique_ptr<Reader> reader = store.reader();
  // Each starts at a different key, so that they do not read the same one at the same time.
  std::size_t place = kSampleSize / options.members() * number;
  std::int64_t count = 0;
  for (const Shift shift(options, board); !shift.isOver(); count += kChunk) {
    for (int i = 0; i < kChunk; ++i) {
      const Entry& entry = entries[place++ % kSampleSize];
      require(isNumberOf(entry.index, reader->number(entry.key)), "another value: ", entry.key);
    }
  }
  board.reads += count;
}

void write(const Options& options, Store& store, Board& board) {
  const std::vector<Entry> entries = sample(Kind::kNumber, options.keys, store.prefix());
  std::int64_t count = 0;
  for (const Shift shift(options, board); !shift.isOver(); ++count) {
    const Entry& entry = entries[count % kSampleSize];
    store.setNumber(entry.key, numberOf(entry.index, static_cast<int>(count)));
  }
  board.sets += count;
}

// Member 0 is the writer.
void work(const Options& options, Store& store, int number, Board& board) {
  if (number == 0) {
    write(options, store, board);
  } else {
    read(options, store, number, board);
  }
}

pid_t startProcess(const std::function<void()>& body) {
  constexpr unsigned kPatience = 60;  // seconds; after a failure, the others would wait for ever
  const pid_t child = fork();
  require(child >= 0, "cannot fork");
  if (child != 0) return child;
  alarm(kPatience);
  _exit(guarded(body));
}

void await(pid_t child) {
  int status = 0;
  require(waitpid(child, &status, 0) == child && status == 0, "a member failed");
}

// Each opens the store itself, because none of them may be used after a fork.
void workAsProcesses(const Options& options, Board& board) {
  std::vector<pid_t> children;
  for (int number = 0; number < options.members(); ++number) {
    children.push_back(
        startProcess([&, number] { work(options, *openStore(options), number, board); }));
  }
  for (const pid_t child : children) await(child);
}

void workAsThreads(const Options& options, Board& board) {
  const std::unique_ptr<Store> store = openStore(options);
  std::vector<std::jthread> threads;
  for (int number = 0; number < options.members(); ++number) {
    threads.emplace_back([&, number] {
      if (guarded([&] { work(options, *store, number, board); }) != 0) _exit(1);
    });
  }
}

Json::Value measure(const Options& options) {
  if (!std::filesystem::exists(options.folder / options.store)) {
    await(startProcess([&] { openStore(options)->fill(options.keys); }));
  }
  void* const shared =
      mmap(nullptr, sizeof(Board), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  require(shared != MAP_FAILED, "cannot share memory");
  auto& board = *new (shared) Board;
  (options.processes ? workAsProcesses : workAsThreads)(options, board);
  const double seconds = options.milliseconds / 1e3;
  Json::Value result;
  result["reads"] = static_cast<double>(board.reads) / seconds;
  result["sets"] = static_cast<double>(board.sets) / seconds;
  return result;
}

}  // namespace

Json::Value bench::readers(int count, char** words) {
  require(count == 6,
          "usage: store readers FOLDER STORE KEYS processes|threads READERS MILLISECONDS");
  return measure({words[0], words[1], std::stoi(words[2]), words[3] == std::string("processes"),
                  std::stoi(words[4]), std::stoi(words[5])});
}
