// Makes millions of random callbacks over the host platform, in one process, and watches its
// memory. Usage: soak PROVIDER CALLBACKS [SEED]
//
// Every 20th part of the way it prints a line: callbacks done, resident memory, the heap in use,
// and of that what the provider keeps on purpose (each text of the device's string ID that it is
// given). The rule: from the fifth line on, the largest heap in use, without what is kept on
// purpose, is less than 64 KiB above the fifth line's, and the resident memory less than 1 MiB plus
// what is kept on purpose. Exit codes: 0 flat, 1 not flat or a wrong answer, 2 wrong arguments.
#include <dlfcn.h>
#include <glib.h>
#include <malloc.h>
#include <unistd.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "contract/own_provider.h"
#include "contract/random_calls.h"
#include "platform/host/network_service.h"
#include "platform/system_info.h"

namespace {

std::uint64_t keptOnPurpose = 0;  // bytes

}  // namespace

int system_info_get_custom_string(const char* key, char** value) {
  static const auto hosts = reinterpret_cast<decltype(&system_info_get_custom_string)>(
      dlsym(RTLD_NEXT, "system_info_get_custom_string"));
  const int result = hosts(key, value);
  constexpr std::size_t kHeader = sizeof(std::size_t);  // of the heap, before each block
  if (result == 0) keptOnPurpose += malloc_usable_size(*value) + kHeader;
  return result;
}

namespace {

constexpr int kLines = 20;
constexpr int kWarmUpLines = 5;
constexpr std::uint64_t kHeapSlack = 64 * 1024;  // bytes
constexpr std::uint64_t kResidentSlack = 1024 * 1024;
constexpr int kCallsPerTurn = 100;  // of the main loop

struct Memory {
  std::uint64_t resident;
  std::uint64_t heap;  // without what is kept on purpose
  std::uint64_t kept;
};

Memory memoryNow() {
  std::ifstream statm("/proc/self/statm");
  std::uint64_t size = 0;
  std::uint64_t resident = 0;
  statm >> size >> resident;
  const struct mallinfo2 heap = mallinfo2();
  return {resident * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE)),
          heap.uordblks + heap.hblkhd - keptOnPurpose, keptOnPurpose};
}

// What a menu host does between the callbacks: deliver, fire, and let the network service work.
void turnTheMainLoop() {
  while (g_main_context_iteration(nullptr, FALSE)) {
  }
}

void printLine(std::uint64_t callbacks, const Memory& memory) {
  std::printf("%12llu %12llu %12llu %12llu\n", static_cast<unsigned long long>(callbacks),
              static_cast<unsigned long long>(memory.resident / 1024),
              static_cast<unsigned long long>(memory.heap / 1024),
              static_cast<unsigned long long>(memory.kept / 1024));
  std::fflush(stdout);
}

bool isFlat(const std::vector<Memory>& series) {
  const Memory& start = series.at(kWarmUpLines - 1);
  bool flat = true;
  for (std::size_t i = kWarmUpLines; i < series.size(); ++i) {
    const Memory& now = series[i];
    flat = flat && now.heap < start.heap + kHeapSlack &&
           now.resident < start.resident + kResidentSlack + now.kept - start.kept;
  }
  return flat;
}

class EndsTheProgram : public contract::Observer {
 public:
  void broken(const contract::Breach& breach) override {
    std::fprintf(stderr, "soak: %s\n", contract::toString(breach).c_str());
    std::exit(1);
  }
};

bool run(const std::string& file, std::uint64_t callbacks, std::uint64_t seed) {
  std::setlocale(LC_ALL, "C.UTF-8");
  setenv("LANGUAGE", "en", 1);
  const auto service = platform::host::NetworkService::start();
  const contract::Provider provider(file);
  EndsTheProgram observer;
  contract::Calls calls(provider, observer, {}, &contract::ownPromisesInEnglish());
  const contract::KeyChoice keys = contract::headersKeys();
  const contract::FixedTexts texts = contract::fixedTexts(calls, keys);
  contract::RandomCalls random(calls, keys, texts, seed);
  std::printf("seed %llu\n%12s %12s %12s %12s\n", static_cast<unsigned long long>(seed),
              "callbacks", "RSS KiB", "heap KiB", "kept KiB");
  std::vector<Memory> series;
  series.reserve(kLines);
  for (int line = 1; line <= kLines; ++line) {
    const std::uint64_t goal = callbacks * static_cast<std::uint64_t>(line) / kLines;
    while (calls.made() < goal) {
      for (int i = 0; i < kCallsPerTurn; ++i) random.callOne();
      turnTheMainLoop();
    }
    series.push_back(memoryNow());
    printLine(calls.made(), series.back());
  }
  for (const contract::Function& function : contract::kFunctions) {
    if (calls.made(function) > 0) continue;
    throw std::runtime_error(std::string(function.name) + " not called");
  }
  return isFlat(series);
}

}  // namespace

int main(int argc, char** argv) {
  const std::uint64_t callbacks = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 0;
  const std::uint64_t seed = argc > 3 ? std::strtoull(argv[3], nullptr, 10) : 1;
  if (callbacks == 0) {
    std::fputs("usage: soak PROVIDER CALLBACKS [SEED]\n", stderr);
    return 2;
  }
  try {
    const bool flat = run(argv[1], callbacks, seed);
    std::puts(flat ? "flat" : "NOT FLAT");
    return flat ? 0 : 1;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "soak: %s\n", error.what());
    return 1;
  }
}
