// Draws the branch and prints where its time goes, as JSON: the calls and the nanoseconds of each
// platform function per drawing, and of the whole. The cost of counting is subtracted.
//
//   page_calls PROVIDER DRAWINGS
#include <cstdlib>
#include <span>

#include "common.h"
#include "drawing.h"
#include "platform_calls.h"

namespace {

constexpr int kWarmUp = 5;
constexpr long kMany = 200'000;

// The cost of a counted call that does nothing: the part included in its measured time, and the
// total.
struct Overhead {
  double inside;
  double whole;
};

Overhead measureOverhead() {
  const CountedFunction& row = countedFunctions.back();
  const auto whole = static_cast<double>(bench::nanoseconds([] {
    for (long i = 0; i < kMany; ++i) nothing();
  }));
  return {static_cast<double>(row.nanoseconds) / static_cast<double>(row.calls),
          whole / static_cast<double>(kMany)};
}

void forget() {
  for (CountedFunction& function : countedFunctions) function.calls = function.nanoseconds = 0;
}

Json::Value measure(const contract::Provider& provider, int drawings) {
  for (int i = 0; i < kWarmUp; ++i) draw(provider);
  const Overhead overhead = measureOverhead();
  forget();
  auto whole = static_cast<double>(bench::nanoseconds([&] {
    for (int i = 0; i < drawings; ++i) draw(provider);
  }));
  Json::Value result;
  for (const CountedFunction& counted :
       std::span(countedFunctions).first(countedFunctions.size() - 1)) {
    const auto calls = static_cast<double>(counted.calls);
    Json::Value& function = result["functions"][counted.name];
    function["calls"] = calls / drawings;
    function["nanoseconds"] =
        (static_cast<double>(counted.nanoseconds) - calls * overhead.inside) / drawings;
    whole -= calls * overhead.whole;
  }
  result["nanoseconds"] = whole / drawings;
  result["overhead"] = overhead.whole;
  return result;
}

}  // namespace

int main(int count, char** words) {
  return bench::printed([&] {
    bench::require(count == 3, "usage: page_calls PROVIDER DRAWINGS");
    return measure(*loadProvider(words[1]), std::atoi(words[2]));
  });
}
