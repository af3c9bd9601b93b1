// Measures every callback of the provider beside its floor, over a platform with almost no cost.
//
//   callbacks PROVIDER --record           the floors, as C++ for a library: what each case does
//   callbacks PROVIDER FLOORS --check     checks that both do the same
//   callbacks PROVIDER FLOORS --counts    the steps and the allocations of each, as CSV; under
//                                         callgrind with --collect-atstart=no also the
//                                         instructions: each count is made by a process of its own,
//                                         whose dump has them
#include <sys/wait.h>
#include <unistd.h>
#include <valgrind/callgrind.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "allocations.h"
#include "cases.h"
#include "recording.h"

namespace {

constexpr int kWarmUps = 20;
constexpr int kCountedCalls = 10;

// Measures the cost of measuring itself.
const Case kNothing{.call = [](Function, Outputs&) {}};

void record(const std::vector<Case>& cases) {
  std::puts("#include \"replay.h\"\n\nnamespace {");
  for (std::size_t i = 0; i < cases.size(); ++i) {
    std::string head = cases[i].prototype;
    head.replace(head.find('@'), 1, "floor" + std::to_string(i));
    std::printf("\n// %s(%s)\n%s {\n  RESULTS;\n%s}\n", cases[i].function.c_str(),
                cases[i].key.c_str(), head.c_str(),
                recording::of(cases[i], cases[i].provider).c_str());
  }
  std::puts(
      "\n}  // namespace\n\nextern \"C\" const Function floors[];\nconst Function floors[] = {");
  for (std::size_t i = 0; i < cases.size(); ++i) {
    std::printf("    reinterpret_cast<Function>(floor%zu),\n", i);
  }
  std::puts("};");
}

bool areEqual(const std::vector<Case>& cases) {
  bool equal = true;
  for (const Case& each : cases) {
    const std::string provider = recording::of(each, each.provider);
    const std::string floor = recording::of(each, each.floor);
    if (provider == floor) continue;
    equal = false;
    std::cout << each.function << " " << each.key << "\n-- the provider:\n"
              << provider << "-- the floor:\n"
              << floor;
  }
  return equal;
}

// The allocations of the counted calls; callgrind writes their instructions into the process's
// dump.
long count(const Case& each, Function side) {
  Outputs outputs;
  stand_in::answers = each.answers;
  for (int i = 0; i < kWarmUps; ++i) each.callOnce(side, outputs);
  long allocations = 0;
  for (int i = 0; i < kCountedCalls; ++i) {
    if (each.prepare) each.prepare(outputs);
    const long before = allocationCount();
    CALLGRIND_TOGGLE_COLLECT;
    each.call(side, outputs);
    CALLGRIND_TOGGLE_COLLECT;
    allocations += allocationCount() - before;
    outputs.giveBack();
  }
  return allocations;
}

// Runs in a child process: a block's cost depends on the state of the heap, and so every case finds
// the same one. The parent must not use the heap in between.
void printCount(const Case& each, const char* name, Function side) {
  const pid_t child = fork();
  if (child == 0) {
    const long allocations = count(each, side);
    const std::string steps = side != nullptr ? recording::of(each, side) : "";
    std::printf("%s,%s,%s,%d,%d,%ld,%td,%d\n", each.function.c_str(), each.key.c_str(), name,
                each.callsPerPage, kCountedCalls, allocations, std::ranges::count(steps, '\n'),
                static_cast<int>(getpid()));
    std::fflush(stdout);
    _exit(0);
  }
  int status = 0;
  if (child < 0 || waitpid(child, &status, 0) != child || status != 0) {
    throw std::runtime_error("a count failed: " + each.function + " " + each.key);
  }
}

void printCounts(const std::vector<Case>& cases) {
  std::puts("function,key,side,calls_per_page,calls,allocations,steps,process");
  std::fflush(stdout);
  printCount(kNothing, "harness", nullptr);
  for (const Case& each : cases) {
    printCount(each, "provider", each.provider);
    printCount(each, "floor", each.floor);
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fputs("usage: callbacks PROVIDER --record | callbacks PROVIDER FLOORS --check|--counts\n",
               stderr);
    return 2;
  }
  const std::string_view mode = argv[argc - 1];
  try {
    std::vector<Case> cases = loadCases(argv[1]);
    fillHeap();
    if (mode == "--record") {
      record(cases);
      return 0;
    }
    loadFloors(argv[2], cases);
    if (mode == "--check") return areEqual(cases) ? 0 : 1;
    printCounts(cases);
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "callbacks: %s\n", error.what());
    return 1;
  }
}
