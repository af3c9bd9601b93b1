#include "typed_name.h"

#include <glib.h>

#include <algorithm>
#include <memory>
#include <numeric>

#include "display_text.h"

namespace menu {

namespace {

constexpr std::size_t kMostSuggestions = 3;
constexpr std::size_t kShortestPart = 3;  // letters that say something inside a name

// Without letter case.
std::string folded(const std::string& text) {
  const std::unique_ptr<char, decltype(&g_free)> result(
      g_utf8_casefold(validText(text).c_str(), -1), g_free);
  return result.get();
}

// How many letters have to be added, removed or replaced to turn one text into the other. Two that
// changed places count as one.
std::size_t distance(const std::string& from, const std::string& to) {
  std::vector<std::vector<std::size_t>> costs(from.size() + 1,
                                              std::vector<std::size_t>(to.size() + 1));
  for (std::size_t i = 0; i <= from.size(); ++i) costs[i][0] = i;
  std::iota(costs[0].begin(), costs[0].end(), 0);
  for (std::size_t i = 1; i <= from.size(); ++i) {
    for (std::size_t j = 1; j <= to.size(); ++j) {
      const std::size_t replaced = costs[i - 1][j - 1] + (from[i - 1] == to[j - 1] ? 0 : 1);
      costs[i][j] = std::min({costs[i - 1][j] + 1, costs[i][j - 1] + 1, replaced});
      const bool swapped = i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1];
      if (swapped) costs[i][j] = std::min(costs[i][j], costs[i - 2][j - 2] + 1);
    }
  }
  return costs[from.size()][to.size()];
}

// The least distance to the name or, where it is a path, to its last parts.
std::size_t distanceToEnd(const std::string& typed, const std::string& name) {
  std::size_t least = distance(typed, name);
  for (auto slash = name.find('/'); slash != std::string::npos; slash = name.find('/', slash + 1)) {
    least = std::min(least, distance(typed, name.substr(slash + 1)));
  }
  return least;
}

std::vector<std::string> containing(const std::string& typed,
                                    const std::vector<std::string>& names) {
  const bool saysSomething = typed.size() >= kShortestPart;
  std::vector<std::string> found;
  std::ranges::copy_if(names, std::back_inserter(found), [&](const std::string& name) {
    const auto at = folded(name).find(typed);
    return at == 0 || (at != std::string::npos && saysSomething);
  });
  return found;
}

std::vector<std::string> nearest(const std::string& typed, const std::vector<std::string>& names) {
  std::vector<std::string> found;
  // A third of the letters may be wrong, and one of a very short word.
  std::size_t least = std::max<std::size_t>(1, typed.size() / 3);
  for (const std::string& name : names) {
    const std::size_t here = distanceToEnd(typed, folded(name));
    if (here > least || here >= typed.size()) continue;
    if (here < least) found.clear();
    least = here;
    found.push_back(name);
  }
  return found;
}

}  // namespace

bool isSameName(const std::string& typed, const std::string& name) {
  return folded(typed) == folded(name);
}

bool endsPath(const std::string& typed, const std::string& path) {
  return !typed.empty() && ("/" + folded(path)).ends_with("/" + folded(typed));
}

std::string didYouMean(const std::string& typed, const std::vector<std::string>& names) {
  if (typed.empty()) return "";
  const std::string word = folded(typed);
  std::vector<std::string> found = containing(word, names);
  if (found.empty()) found = nearest(word, names);
  if (found.empty() || found.size() > kMostSuggestions) return "";
  std::string text = "; did you mean ";
  for (std::size_t i = 0; i < found.size(); ++i) {
    const char* separator = i + 1 == found.size() ? " or " : ", ";
    text += (i == 0 ? "" : separator) + ("\"" + found[i] + "\"");
  }
  return text + "?";
}

}  // namespace menu
