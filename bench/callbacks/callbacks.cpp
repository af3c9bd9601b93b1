// Measures every callback of the provider beside its floor, over a platform that costs nothing.
//   callbacks PROVIDER --check             that both do the same: calls, log lines and results
//   callbacks PROVIDER --counts            the allocations of each as JSON; and the instructions,
//                                          when it runs under callgrind with --collect-atstart=no:
//                                          into a dump of callgrind's for each, in the same order
//   callbacks PROVIDER --benchmark_...     the times, by Google Benchmark
#include <benchmark/benchmark.h>
#include <json/writer.h>
#include <valgrind/callgrind.h>

#include <cstdio>
#include <exception>
#include <iostream>
#include <string_view>

#include "allocations.h"
#include "cases.h"

namespace {

constexpr int kWarmUps = 20;
constexpr int kCountedCalls = 10;

void callOnce(const Call& call) {
  Outputs outputs;
  call(outputs);
  outputs.giveBack();
}

// What the platform was asked, and what came of it.
std::string deeds(const Case& each, const Call& call) {
  stand_in::answers = each.answers;
  callOnce(call);  // what is said once only
  Outputs outputs;
  std::string all = stand_in::traceOf([&] { call(outputs); });
  all += "= " + outputs.shown() + "\n";
  outputs.giveBack();
  return all;
}

bool areEqual(const std::vector<Case>& cases) {
  bool equal = true;
  for (const Case& each : cases) {
    const std::string provider = deeds(each, each.provider);
    const std::string floor = deeds(each, each.floor);
    if (provider == floor) continue;
    equal = false;
    std::cout << each.function << " " << each.key << "\n-- the provider:\n"
              << provider << "-- the floor:\n"
              << floor;
  }
  return equal;
}

// Allocations of the counted calls; their instructions go into a dump.
long count(const stand_in::Answers& answers, const Call& call) {
  stand_in::answers = answers;
  for (int i = 0; i < kWarmUps; ++i) callOnce(call);
  long allocations = 0;
  for (int i = 0; i < kCountedCalls; ++i) {
    Outputs outputs;
    const long before = allocationCount();
    CALLGRIND_TOGGLE_COLLECT;
    call(outputs);
    CALLGRIND_TOGGLE_COLLECT;
    allocations += allocationCount() - before;
    outputs.giveBack();
  }
  CALLGRIND_DUMP_STATS;
  return allocations;
}

void printCounts(const std::vector<Case>& cases) {
  Json::Value result;
  result["calls"] = kCountedCalls;
  count({}, [](Outputs&) {});  // what counting itself costs
  for (const Case& each : cases) {
    Json::Value row;
    row["function"] = each.function;
    row["key"] = each.key;
    row["calls_per_page"] = each.callsPerPage;
    row["allocations"]["provider"] = static_cast<Json::Int64>(count(each.answers, each.provider));
    row["allocations"]["floor"] = static_cast<Json::Int64>(count(each.answers, each.floor));
    result["cases"].append(row);
  }
  std::cout << result << "\n";
}

void addBenchmark(const Case& each, const char* side, const Call& call) {
  const std::string name = each.function + " " + each.key + " " + side;
  benchmark::RegisterBenchmark(name.c_str(), [&each, &call](benchmark::State& state) {
    stand_in::answers = each.answers;
    for ([[maybe_unused]] auto _ : state) callOnce(call);
  });
}

void benchmarkAll(const std::vector<Case>& cases, int argc, char** argv) {
  for (const Case& each : cases) {
    addBenchmark(each, "provider", each.provider);
    addBenchmark(each, "floor", each.floor);
  }
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fputs("usage: callbacks PROVIDER --check | --counts | --benchmark_...\n", stderr);
    return 2;
  }
  try {
    const Provider provider(argv[1]);
    const std::vector<Case> cases = allCases(provider);
    const std::string_view mode = argv[2];
    if (mode == "--check") return areEqual(cases) ? 0 : 1;
    if (mode == "--counts") {
      printCounts(cases);
    } else {
      benchmarkAll(cases, argc - 1, argv + 1);
    }
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "callbacks: %s\n", error.what());
    return 1;
  }
}
