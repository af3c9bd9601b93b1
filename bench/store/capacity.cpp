// Sets new keys of the host platform's store, each by itself, in random order, until it is full:
//   store_capacity MOST
// Prints how many keys there were room for, at most MOST, what a set returned then, and whether the
// keys that were there could still be set and read.
#include <json/json.h>

#include <algorithm>
#include <iostream>
#include <numeric>
#include <random>

#include "contents.h"
#include "platform/config_store.h"
#include "store.h"

namespace {

using namespace bench;

constexpr int kTries = 1000;  // sets of keys of the full store

std::string keyOf(int index) {
  return "memory/store/" + nameOf(index);
}

int setEntry(int index) {
  return kindOf(index) == Kind::kNumber
             ? vconf_set_int(keyOf(index).c_str(), numberOf(index))
             : vconf_set_str(keyOf(index).c_str(), textOf(index).c_str());
}

std::vector<int> inRandomOrder(int count) {
  std::vector<int> indices(count);
  std::iota(indices.begin(), indices.end(), 0);
  std::shuffle(indices.begin(), indices.end(), std::minstd_rand(1));
  return indices;
}

Json::Value fill(int most) {
  Json::Value result;
  std::vector<int> indices = inRandomOrder(most);
  int keys = 0;
  int code = 0;
  while (keys < most && (code = setEntry(indices[keys])) == 0) ++keys;
  result["keys"] = keys;
  result["code"] = code;
  indices.resize(keys);
  int tried = 0;
  int failed = 0;
  int wrong = 0;
  for (const int index : indices) {
    if (kindOf(index) != Kind::kNumber || tried == kTries) continue;
    ++tried;
    int value = -1;
    if (vconf_set_int(keyOf(index).c_str(), numberOf(index, 1)) != 0) ++failed;
    vconf_get_int(keyOf(index).c_str(), &value);
    if (!isNumberOf(index, value)) ++wrong;
  }
  result["sets tried"] = tried;
  result["sets refused"] = failed;
  result["wrong"] = wrong;
  return result;
}

}  // namespace

int main(int count, char** words) {
  return guarded([&] {
    require(count == 2, "usage: store_capacity MOST");
    std::cout << fill(std::stoi(words[1])) << '\n';
  });
}
