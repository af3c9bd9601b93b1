// Measures the saved networks' callbacks with a document of that many networks. Prints JSON: the
// nanoseconds of each call and of each notification, the answers, the heap bytes that the provider
// holds, and the peak bytes while it read the document.
//
//   entries PROVIDER ENTRIES CALLS
//
// Under callgrind, only the calls are counted.
#include <malloc.h>
#include <valgrind/callgrind.h>

#include <cstdlib>
#include <fstream>
#include <string>

#include "common.h"
#include "drawing.h"
#include "platform/host/config_store.h"

namespace {

using contract::Provider;
using platform::host::ConfigStore;
using platform::host::StoreValue;

constexpr char kFirstNetwork[] = "menu/network/SavedAP1";
constexpr char kDocumentKey[] = "db/menu/network/TopSavedAP";
constexpr char kRefreshKey[] = "db/menu/refresh_menu";
constexpr int kNetworkBranch = 100002;

Json::Value network(int number) {
  constexpr int kStrongest = -50;  // dBm
  constexpr int kStrengths = 50;
  Json::Value entry;
  entry["SSID"] = "Network " + std::to_string(number);
  entry["SIGNAL_STRENGTH"] = kStrongest - number % kStrengths;
  entry["STATUS"] = number == 0 ? "Connected" : "Disconnected";
  return entry;
}

// The document as the network service publishes it: that many networks, connected to the first.
std::string document(int entries) {
  Json::Value root;
  root["count"] = entries;
  root["values"] = Json::arrayValue;
  for (int i = 0; i < entries; ++i) root["values"].append(network(i));
  Json::StreamWriterBuilder writer;
  writer["indentation"] = "";
  return Json::writeString(writer, root);
}

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

// From the notification to the provider's request to refresh; storing the document is not counted.
Json::Int64 notification(const std::string& text) {
  ConfigStore& store = ConfigStore::instance();
  store.set({{kDocumentKey, text}, {kRefreshKey, 0}});
  const Json::Int64 time = bench::nanoseconds(bench::turnTheMainLoop);
  bench::require(store.get(kRefreshKey) == StoreValue(kNetworkBranch), "no refresh was asked for");
  return time;
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
  bench::turnTheMainLoop();
  provider.exports().check_enable_int(kFirstNetwork, 0);
}

void measureMemory(const Provider& provider, const std::string& text, Json::Value& result) {
  read(provider, document(0));
  const Json::Int64 before = bench::heapInUse();
  malloc_trim(0);
  const Json::Int64 resident = processMemory("VmRSS:");
  std::ofstream("/proc/self/clear_refs") << 5;  // resets the peak resident memory
  read(provider, text);
  result["held"] = bench::heapInUse() - before;
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
      result["times"][call.name].append(bench::nanoseconds([&] { call.answer(provider); }));
    }
  }
  CALLGRIND_STOP_INSTRUMENTATION;
  for (int i = 0; i < calls; ++i) result["times"]["notification"].append(notification(text));
  return result;
}

}  // namespace

int main(int count, char** words) {
  return bench::printed([&] {
    bench::require(count == 4, "usage: entries PROVIDER ENTRIES CALLS");
    return measure(*loadProvider(words[1]), std::atoi(words[2]), std::atoi(words[3]));
  });
}
