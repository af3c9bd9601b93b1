// Measures gets and sets of several stores side by side:
//   store operations DISK MEMORY KEYS ROUNDS MILLISECONDS SETS STORE...
// DISK and MEMORY are the folders for durable and volatile values. In each of ROUNDS, each store in
// turn gets its values and sets its volatile ones for MILLISECONDS; then all make SETS durable
// sets, also in turn. Prints the nanoseconds per operation, by operation, store and round.

#include <algorithm>
#include <array>
#include <cstring>
#include <map>
#include <numeric>
#include <random>

#include "contents.h"
#include "programs.h"

namespace {

using namespace bench;

// One store with its keys.
struct Candidate {
  Candidate(const std::string& storeName, const std::filesystem::path& folder,
            Durability durability, int count)
      : name(storeName),
        store(open(name, folder, durability, count)),
        prefixSize(store->prefix().size()) {
    store->fill(count);
    reader = store->reader();
    for (const Kind kind : {Kind::kNumber, Kind::kShortText, Kind::kLongText}) {
      entries[static_cast<int>(kind)] = sample(kind, count, store->prefix());
    }
  }

  const std::vector<Entry>& of(Kind kind) const { return entries[static_cast<int>(kind)]; }
  const Entry& next(Kind kind) { return of(kind)[place++ % kSampleSize]; }

  std::string name;
  std::unique_ptr<Store> store;
  std::size_t prefixSize;
  std::unique_ptr<Reader> reader;
  std::array<std::vector<Entry>, 3> entries;  // by kind
  std::size_t place = 0;
  int cycle = 0;
};

using Candidates = std::vector<std::unique_ptr<Candidate>>;

void getNumber(Candidate& candidate) {
  const Entry& entry = candidate.next(Kind::kNumber);
  require(isNumberOf(entry.index, candidate.reader->number(entry.key)), candidate.name,
          ": another value for ", entry.key);
}

// In timed code, only the name at the beginning of the text is compared.
void getText(Candidate& candidate, Kind kind) {
  const Entry& entry = candidate.next(kind);
  char* const text = candidate.reader->text(entry.key);
  const bool same = std::memcmp(text, entry.key.data() + candidate.prefixSize, kNameSize) == 0;
  std::free(text);
  require(same, candidate.name, ": another value for ", entry.key);
}

void setNumber(Candidate& candidate) {
  const Entry& entry = candidate.next(Kind::kNumber);
  candidate.store->setNumber(entry.key, numberOf(entry.index, ++candidate.cycle));
}

void checkTexts(Candidate& candidate) {
  for (const Kind kind : {Kind::kShortText, Kind::kLongText}) {
    for (const Entry& entry : candidate.of(kind)) {
      char* const text = candidate.reader->text(entry.key);
      const bool same = textOf(entry.index) == text;
      std::free(text);
      require(same, candidate.name, ": another text for ", entry.key);
    }
  }
}

// The value of the last set, read again.
void checkSet(Candidate& candidate) {
  const Entry& entry = candidate.of(Kind::kNumber)[(candidate.place - 1) % kSampleSize];
  require(candidate.store->reader()->number(entry.key) == numberOf(entry.index, candidate.cycle),
          candidate.name, ": does not hold what was set for ", entry.key);
}

double timeFor(std::int64_t nanoseconds, Candidate& candidate, void (*operation)(Candidate&)) {
  constexpr int kChunk = 16;  // operations between two reads of the clock
  const std::int64_t start = now();
  std::int64_t count = 0;
  std::int64_t end = start;
  for (; end - start < nanoseconds; end = now(), count += kChunk) {
    for (int i = 0; i < kChunk; ++i) operation(candidate);
  }
  return static_cast<double>(end - start) / static_cast<double>(count);
}

// The median set of each candidate over that many turns. The order changes, so that none always
// runs after the same one and pays for its pending disk writes.
std::vector<double> timeInTurns(int turns, Candidates& candidates, std::minstd_rand& random) {
  std::vector<std::vector<double>> times(candidates.size());
  std::vector<std::size_t> order(candidates.size());
  std::iota(order.begin(), order.end(), 0);
  for (int turn = 0; turn < turns; ++turn) {
    std::shuffle(order.begin(), order.end(), random);
    for (const std::size_t place : order) {
      const std::int64_t start = now();
      setNumber(*candidates[place]);
      times[place].push_back(static_cast<double>(now() - start));
    }
  }
  std::vector<double> medians;
  for (std::vector<double>& of : times) {
    std::nth_element(of.begin(), of.begin() + turns / 2, of.end());
    medians.push_back(of[turns / 2]);
  }
  return medians;
}

struct Operation {
  const char* name;
  Durability durability;
  void (*run)(Candidate&);
};

constexpr Operation kOperations[] = {
    {"get an integer", Durability::kDurable, getNumber},
    {"get 32 bytes", Durability::kDurable, [](Candidate& c) { getText(c, Kind::kShortText); }},
    {"get 4 KiB", Durability::kDurable, [](Candidate& c) { getText(c, Kind::kLongText); }},
    {"set, volatile", Durability::kVolatile, setNumber},
};

struct Options {
  std::filesystem::path disk;
  std::filesystem::path memory;
  int keys;
  int rounds;
  int milliseconds;
  int sets;
  std::vector<std::string> stores;
};

std::map<Durability, Candidates> fill(const Options& options) {
  std::map<Durability, Candidates> all;
  for (const std::string& name : options.stores) {
    for (const auto& [durability, folder] :
         {std::pair{Durability::kDurable, options.disk}, {Durability::kVolatile, options.memory}}) {
      all[durability].push_back(
          std::make_unique<Candidate>(name, folder, durability, options.keys));
      checkTexts(*all[durability].back());
    }
  }
  return all;
}

void runRound(const Options& options, std::map<Durability, Candidates>& all, int round,
              Json::Value& times) {
  std::minstd_rand random(round + 1);
  for (const Operation& operation : kOperations) {
    Candidates& candidates = all[operation.durability];
    for (std::size_t i = 0; i < candidates.size(); ++i) {
      Candidate& candidate = *candidates[(i + round) % candidates.size()];
      times[operation.name][candidate.name].append(
          timeFor(options.milliseconds * std::int64_t{1'000'000}, candidate, operation.run));
      candidate.store->rest();
    }
  }
  Candidates& durable = all[Durability::kDurable];
  const std::vector<double> medians = timeInTurns(options.sets, durable, random);
  for (std::size_t i = 0; i < durable.size(); ++i) {
    times["set, durable"][durable[i]->name].append(medians[i]);
  }
  for (auto& [durability, candidates] : all) {
    for (const auto& candidate : candidates) {
      checkSet(*candidate);
      candidate->store->rest();
    }
  }
}

Json::Value measure(const Options& options) {
  auto all = fill(options);
  Json::Value times;
  for (int round = 0; round < options.rounds; ++round) runRound(options, all, round, times);
  return times;
}

}  // namespace

Json::Value bench::operations(int count, char** words) {
  require(count > 6 && std::stoi(words[5]) > 0,
          "usage: store operations DISK MEMORY KEYS ROUNDS MILLISECONDS SETS STORE...");
  return measure({words[0],
                  words[1],
                  std::stoi(words[2]),
                  std::stoi(words[3]),
                  std::stoi(words[4]),
                  std::stoi(words[5]),
                  {words + 6, words + count}});
}
