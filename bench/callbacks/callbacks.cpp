// Measures every callback of the provider beside its floor, over a platform that costs nothing.
//
//   callbacks PROVIDER --check           that both do the same: calls, locks, log lines, results
//   callbacks PROVIDER --counts          the allocations of each, as CSV; under callgrind with
//                                        --collect-atstart=no also the instructions: each count is
//                                        made by a process of its own, whose dump has them
//   callbacks PROVIDER --benchmark_...   the times, by Google Benchmark
#include <benchmark/benchmark.h>
#include <sys/wait.h>
#include <unistd.h>
#include <valgrind/callgrind.h>

#include <cstdio>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string_view>

#include "allocations.h"
#include "cases.h"

namespace {

constexpr int kWarmUps = 20;
constexpr int kCountedCalls = 10;

// What measuring itself costs is measured with this.
const Call kNothing = [](Outputs&) {};

void prepare(const Case& each, Outputs& outputs) {
  if (each.prepare) each.prepare(outputs);
}

void callOnce(const Case& each, const Call& call, Outputs& outputs) {
  prepare(each, outputs);
  call(outputs);
  outputs.giveBack();
}

// What the platform was asked, and what came of it.
std::string deeds(const Case& each, const Call& call) {
  Outputs outputs;
  stand_in::answers = each.answers;
  callOnce(each, call, outputs);  // what is said once only
  outputs.fillBuffers();
  prepare(each, outputs);
  std::string all = stand_in::traceOf([&] { call(outputs); });
  all += "= " + outputs.shown() + "\n";
  outputs.giveBack();
  return all;
}

bool areEqual(const std::vector<Case>& cases) {
  watchBlocks();
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

// Allocations of the counted calls; their instructions go into the process's dump.
long count(const Case& each, const Call& call) {
  Outputs outputs;
  stand_in::answers = each.answers;
  for (int i = 0; i < kWarmUps; ++i) callOnce(each, call, outputs);
  long allocations = 0;
  for (int i = 0; i < kCountedCalls; ++i) {
    prepare(each, outputs);
    const long before = allocationCount();
    CALLGRIND_TOGGLE_COLLECT;
    call(outputs);
    CALLGRIND_TOGGLE_COLLECT;
    allocations += allocationCount() - before;
    outputs.giveBack();
  }
  return allocations;
}

// In a process of its own: what a block costs depends on the heap, and so all find the same. The
// parent must not use it in between.
void printCount(const Case& each, const char* side, const Call& call) {
  const pid_t child = fork();
  if (child == 0) {
    const long allocations = count(each, call);
    std::printf("%s,%s,%s,%d,%d,%ld,%d\n", each.function.c_str(), each.key.c_str(), side,
                each.callsPerPage, kCountedCalls, allocations, static_cast<int>(getpid()));
    std::fflush(stdout);
    _exit(0);
  }
  int status = 0;
  if (child < 0 || waitpid(child, &status, 0) != child || status != 0) {
    throw std::runtime_error("a count failed: " + each.function + " " + each.key);
  }
}

void printCounts(const std::vector<Case>& cases) {
  const Case nothing;
  std::puts("function,key,side,calls_per_page,calls,allocations,process");
  std::fflush(stdout);
  printCount(nothing, "harness", kNothing);
  for (const Case& each : cases) {
    printCount(each, "provider", each.provider);
    printCount(each, "floor", each.floor);
  }
}

void addBenchmark(const Case& each, const char* side, const Call& call) {
  const std::string name = each.function + " " + each.key + " " + side;
  benchmark::RegisterBenchmark(name.c_str(), [&each, &call](benchmark::State& state) {
    Outputs outputs;
    stand_in::answers = each.answers;
    for ([[maybe_unused]] auto _ : state) callOnce(each, call, outputs);
  });
}

void benchmarkAll(const std::vector<Case>& cases, int argc, char** argv) {
  const Case nothing;
  addBenchmark(nothing, "harness", kNothing);
  for (const Case& each : cases) {
    addBenchmark(each, "provider", each.provider);
    addBenchmark(each, "floor", each.floor);
    if (each.prepare) addBenchmark(each, "harness", kNothing);
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
    fillHeap();
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
