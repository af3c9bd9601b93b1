#include "platform/host/nearest.h"

#include <glib.h>

#include <algorithm>
#include <numeric>
#include <utility>

namespace platform::host {

namespace {

bool isSameLetter(char one, char other) {
  return g_ascii_tolower(one) == g_ascii_tolower(other);
}

// The number of letters left out, added, mistyped or swapped with their neighbour.
std::size_t mistakes(const std::string& typed, const std::string& meant) {
  using Row = std::vector<std::size_t>;
  Row beforeLast;
  Row last(meant.size() + 1);
  std::iota(last.begin(), last.end(), 0);
  for (std::size_t i = 1; i <= typed.size(); ++i) {
    Row row(meant.size() + 1, i);
    for (std::size_t j = 1; j <= meant.size(); ++j) {
      const std::size_t other = isSameLetter(typed[i - 1], meant[j - 1]) ? 0 : 1;
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + other});
      const bool swapped = i > 1 && j > 1 && isSameLetter(typed[i - 1], meant[j - 2]) &&
                           isSameLetter(typed[i - 2], meant[j - 1]);
      if (swapped) row[j] = std::min(row[j], beforeLast[j - 2] + 1);
    }
    beforeLast = std::exchange(last, std::move(row));
  }
  return last.back();
}

}  // namespace

std::string nearest(const std::string& typed, const std::vector<std::string>& names) {
  std::string found;
  std::size_t fewest = std::max<std::size_t>(1, typed.size() / 3) + 1;
  for (const std::string& name : names) {
    // At least as many as one is longer than the other; what is very long is near to nothing.
    const std::size_t atLeast =
        std::max(typed.size(), name.size()) - std::min(typed.size(), name.size());
    const std::size_t limit = std::min(fewest, typed.size());
    const std::size_t here = atLeast < limit ? mistakes(typed, name) : limit;
    if (here >= limit) continue;
    fewest = here;
    found = name;
  }
  return found;
}

std::string joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ", ") + name;
  return text;
}

std::string suggestion(const std::string& typed, const std::vector<std::string>& names) {
  const std::string name = nearest(typed, names);
  return name.empty() ? "; there are: " + joined(names) : "; did you mean \"" + name + "\"?";
}

}  // namespace platform::host
