// Makes random callbacks over the host platform, in one process, and prints JSON after each
// twentieth of them: the callbacks done, the resident memory, the heap in use without the texts
// that the provider never frees (each string ID of the device that it is given), and those texts,
// in bytes.
//
//   soak PROVIDER CALLBACKS [SEED]
#include <dlfcn.h>
#include <malloc.h>
#include <unistd.h>

#include <clocale>
#include <cstdlib>
#include <fstream>
#include <string>

#include "common.h"
#include "contract/own_provider.h"
#include "contract/random_calls.h"
#include "platform/host/network_service.h"
#include "platform/system_info.h"

namespace {

std::int64_t keptOnPurpose = 0;  // bytes

}  // namespace

int system_info_get_custom_string(const char* key, char** value) {
  static const auto hosts = reinterpret_cast<decltype(&system_info_get_custom_string)>(
      dlsym(RTLD_NEXT, "system_info_get_custom_string"));
  const int result = hosts(key, value);
  constexpr std::size_t kHeader = sizeof(std::size_t);  // the heap's header before each block
  if (result == 0) keptOnPurpose += static_cast<std::int64_t>(malloc_usable_size(*value) + kHeader);
  return result;
}

namespace {

constexpr int kLines = 20;
constexpr int kCallsPerTurn = 100;  // of the main loop

std::int64_t residentMemory() {
  std::ifstream statm("/proc/self/statm");
  std::int64_t size = 0;
  std::int64_t resident = 0;
  statm >> size >> resident;
  return resident * sysconf(_SC_PAGESIZE);
}

Json::Value memoryAfter(std::uint64_t callbacks) {
  Json::Value row;
  row["callbacks"] = static_cast<Json::UInt64>(callbacks);
  row["resident"] = residentMemory();
  row["heap"] = bench::heapInUse() - keptOnPurpose;
  row["kept"] = keptOnPurpose;
  return row;
}

class EndsTheProgram : public contract::Observer {
 public:
  void broken(const contract::Breach& breach) override {
    bench::fail({contract::toString(breach)});
  }
};

Json::Value run(const std::string& file, std::uint64_t callbacks, std::uint64_t seed) {
  std::setlocale(LC_ALL, "C.UTF-8");
  setenv("LANGUAGE", "en", 1);
  const auto service = platform::host::NetworkService::start();
  const contract::Provider provider(file);
  EndsTheProgram observer;
  contract::Calls calls(provider, observer, {}, &contract::ownPromisesInEnglish());
  const contract::KeyChoice keys = contract::headersKeys();
  const contract::FixedTexts texts = contract::fixedTexts(calls, keys);
  contract::RandomCalls random(calls, keys, texts, seed);
  Json::Value series;
  for (int line = 1; line <= kLines; ++line) {
    const std::uint64_t goal = callbacks * static_cast<std::uint64_t>(line) / kLines;
    while (calls.made() < goal) {
      for (int i = 0; i < kCallsPerTurn; ++i) random.callOne();
      bench::turnTheMainLoop();
    }
    series.append(memoryAfter(calls.made()));
  }
  for (const contract::Function& function : contract::kFunctions) {
    bench::require(calls.made(function) > 0, function.name, " was not called");
  }
  return series;
}

}  // namespace

int main(int count, char** words) {
  return bench::printed([&] {
    bench::require(count > 2, "usage: soak PROVIDER CALLBACKS [SEED]");
    return run(words[1], std::stoull(words[2]), count > 3 ? std::stoull(words[3]) : 1);
  });
}
