// What the saved networks' callbacks cost with a document of so many networks. Prints JSON: the
// nanoseconds of each call and of each notification, the answers, the bytes of the heap that the
// provider holds, and the most bytes that it took to read the document.
//
//   entries PROVIDER ENTRIES CALLS
//
// Under callgrind, only the calls are counted.
#include <glib.h>
#include <json/value.h>
#include <json/writer.h>
#include <malloc.h>
#include <valgrind/callgrind.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>

#include "documents.h"
#include "drawing.h"
#include "platform/host/config_store.h"

namespace {

using contract::Provider;
using platform::host::ConfigStore;
using platform::host::StoreValue;
using Clock = std::chrono::steady_clock;

constexpr char kRefreshKey[] = "db/menu/refresh_menu";
constexpr int kNetworkBranch = 100002;

std::string text(const Provider& provider, int (*callback)(const char*, char**)) {
  char* block = nullptr;
  callback(kFirstNetwork, &block);
  std::string copy = block;
  provider.table().release_string(block);
  return copy;
}

struct Call {
  const char* name;
  std::string (*answer)(const Provider& provider);
};

constexpr Call kCalls[] = {
    {"name", [](const Provider& p) { return text(p, p.table().get_display_name); }},
    {"title icon", [](const Provider& p) { return text(p, p.table().get_title_icon_path); }},
    {"second icon", [](const Provider& p) { return text(p, p.table().get_second_icon_path); }},
    {"enable",
     [](const Provider& p) {
       return std::to_string(p.exports().check_enable_int(kFirstNetwork, 0));
     }},
};

template <typename Action>
Json::Int64 nanoseconds(const Action& action) {
  const auto start = Clock::now();
  action();
  return std::chrono::nanoseconds(Clock::now() - start).count();
}

void turnTheMainLoop() {
  while (g_main_context_iteration(nullptr, FALSE)) {
  }
}

// From the news to the refresh that the provider asks for; how the document got into the store does
// not count.
Json::Int64 notification(const std::string& text) {
  ConfigStore& store = ConfigStore::instance();
  store.set({{kDocumentKey, text}, {kRefreshKey, 0}});
  const Json::Int64 time = nanoseconds(turnTheMainLoop);
  if (store.get(kRefreshKey) == StoreValue(kNetworkBranch)) return time;
  std::fputs("entries: the provider asked for no refresh\n", stderr);
  std::exit(1);
}

Json::Int64 heapInUse() {
  const struct mallinfo2 heap = mallinfo2();
  return static_cast<Json::Int64>(heap.uordblks + heap.hblkhd);
}

// A line of /proc/self/status, in bytes.
Json::Int64 processMemory(const std::string& name) {
  std::ifstream status("/proc/self/status");
  std::string word;
  while (status >> word && word != name) {
  }
  Json::Int64 kibibytes = 0;
  status >> kibibytes;
  return kibibytes * 1024;
}

void read(const Provider& provider, const std::string& text) {
  ConfigStore::instance().set(kDocumentKey, text);
  turnTheMainLoop();
  provider.exports().check_enable_int(kFirstNetwork, 0);
}

void measureMemory(const Provider& provider, const std::string& text, Json::Value& result) {
  read(provider, document(0));
  const Json::Int64 before = heapInUse();
  malloc_trim(0);
  const Json::Int64 resident = processMemory("VmRSS:");
  std::ofstream("/proc/self/clear_refs") << 5;  // the highest resident memory counts from now on
  read(provider, text);
  result["held"] = heapInUse() - before;
  result["peak"] = processMemory("VmHWM:") - resident;
}

Json::Value measure(const Provider& provider, int entries, int calls) {
  const std::string text = document(entries);
  Json::Value result;
  result["bytes"] = static_cast<Json::Int64>(text.size());
  measureMemory(provider, text, result);
  for (const Call& call : kCalls) result["answers"][call.name] = call.answer(provider);
  CALLGRIND_START_INSTRUMENTATION;
  for (int i = 0; i < calls; ++i) {
    for (const Call& call : kCalls) {
      result["times"][call.name].append(nanoseconds([&] { call.answer(provider); }));
    }
  }
  CALLGRIND_STOP_INSTRUMENTATION;
  for (int i = 0; i < calls; ++i) result["times"]["notification"].append(notification(text));
  return result;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fputs("usage: entries PROVIDER ENTRIES CALLS\n", stderr);
    return 2;
  }
  const auto provider = loadProvider(argv[1]);
  std::cout << Json::writeString(Json::StreamWriterBuilder(),
                                 measure(*provider, std::atoi(argv[2]), std::atoi(argv[3])))
            << '\n';
}
