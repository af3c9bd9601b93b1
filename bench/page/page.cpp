// Draws the branch and prints JSON: the number of calls, and the nanoseconds of the first drawing
// and of the following ones.
//
//   page PROVIDER DRAWINGS
//
// Under callgrind, all drawings but the first are counted.
#include <valgrind/callgrind.h>

#include <cstdlib>
#include <vector>

#include "common.h"
#include "drawing.h"

namespace {

Json::Value times(const contract::Provider& provider, int drawings) {
  const auto timedDrawing = [&] { return bench::nanoseconds([&] { draw(provider); }); };
  std::vector<Json::Int64> warm(static_cast<std::size_t>(drawings));
  Json::Value result;
  result["first"] = timedDrawing();
  result["calls"] = draw(provider);
  CALLGRIND_START_INSTRUMENTATION;
  for (Json::Int64& time : warm) time = timedDrawing();
  CALLGRIND_STOP_INSTRUMENTATION;
  for (const Json::Int64 time : warm) result["warm"].append(time);
  return result;
}

}  // namespace

int main(int count, char** words) {
  return bench::printed([&] {
    bench::require(count == 3, "usage: page PROVIDER DRAWINGS");
    return times(*loadProvider(words[1]), std::atoi(words[2]));
  });
}
