#include "typed_name.h"

#include <glib.h>

#include <algorithm>
#include <map>
#include <memory>

#include "platform/host/nearest.h"
#include "platform/host/visible_text.h"

namespace menu {

namespace {

constexpr std::size_t kMostSuggestions = 3;
constexpr std::size_t kShortestPart = 3;  // letters that say something inside a name

// Without letter case.
std::string folded(const std::string& text) {
  const std::unique_ptr<char, decltype(&g_free)> result(
      g_utf8_casefold(platform::host::validText(text).c_str(), -1), g_free);
  return result.get();
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

// The name that is nearest, whole or by its last parts; empty when none is near.
std::string nearest(const std::string& typed, const std::vector<std::string>& names) {
  std::map<std::string, std::string> nameOfEnding;
  for (const std::string& name : names) {
    nameOfEnding.emplace(name, name);
    for (auto at = name.find('/'); at != std::string::npos; at = name.find('/', at + 1)) {
      nameOfEnding.emplace(name.substr(at + 1), name);
    }
  }
  std::vector<std::string> endings;
  endings.reserve(nameOfEnding.size());
  for (const auto& [ending, name] : nameOfEnding) endings.push_back(ending);
  const std::string found = platform::host::nearest(typed, endings);
  return found.empty() ? "" : nameOfEnding.at(found);
}

}  // namespace

bool isSameName(const std::string& typed, const std::string& name) {
  return folded(typed) == folded(name);
}

bool endsPath(const std::string& typed, const std::string& path) {
  return !typed.empty() && ("/" + folded(path)).ends_with("/" + folded(typed));
}

bool beginsPath(const std::string& typed, const std::string& path) {
  return ("/" + folded(path)).find("/" + folded(typed)) != std::string::npos;
}

std::string didYouMean(const std::string& typed, const std::vector<std::string>& names) {
  if (typed.empty()) return "";
  std::vector<std::string> found = containing(folded(typed), names);
  if (found.empty()) found = {nearest(typed, names)};
  if (found.front().empty() || found.size() > kMostSuggestions) return "";
  std::string text = "; did you mean ";
  for (std::size_t i = 0; i < found.size(); ++i) {
    const char* separator = i + 1 == found.size() ? " or " : ", ";
    text += (i == 0 ? "" : separator) + ("\"" + found[i] + "\"");
  }
  return text + "?";
}

}  // namespace menu
