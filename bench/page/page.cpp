// Draws the branch and prints JSON: the answers of a drawing, or the time of each.
//
//   page PROVIDER            what the items answer: a list of [key, callback, answer]
//   page PROVIDER DRAWINGS   the number of calls, and the nanoseconds of the first drawing and of
//                            those that follow
//
// Under callgrind, only the drawings but the first are counted.
#include <json/value.h>
#include <json/writer.h>
#include <valgrind/callgrind.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <vector>

#include "drawing.h"

namespace {

using contract::Provider;
using Clock = std::chrono::steady_clock;

Json::Value answers(const Provider& provider) {
  Json::Value list(Json::arrayValue);
  draw(provider, [&](const char* key, const char* callback, const std::string& answer) {
    Json::Value& row = list.append(Json::arrayValue);
    for (const std::string& cell : {std::string(key), std::string(callback), answer}) {
      row.append(cell);
    }
  });
  return list;
}

Json::Int64 timedDrawing(const Provider& provider) {
  const auto start = Clock::now();
  draw(provider);
  return std::chrono::nanoseconds(Clock::now() - start).count();
}

Json::Value times(const Provider& provider, int drawings) {
  std::vector<Json::Int64> warm(static_cast<std::size_t>(drawings));
  Json::Value result;
  result["first"] = timedDrawing(provider);
  result["calls"] = draw(provider);
  CALLGRIND_START_INSTRUMENTATION;
  for (Json::Int64& time : warm) time = timedDrawing(provider);
  CALLGRIND_STOP_INSTRUMENTATION;
  result["warm"] = Json::arrayValue;
  for (const Json::Int64 time : warm) result["warm"].append(time);
  return result;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fputs("usage: page PROVIDER [DRAWINGS]\n", stderr);
    return 2;
  }
  const auto provider = loadProvider(argv[1]);
  const Json::Value result = argc > 2 ? times(*provider, std::atoi(argv[2])) : answers(*provider);
  Json::StreamWriterBuilder writer;
  writer["emitUTF8"] = true;
  std::cout << Json::writeString(writer, result) << '\n';
}
