#include "shell_words.h"

#include <glib.h>

#include <memory>
#include <optional>

#include "../host/menu_model.h"
#include "line_reader.h"

namespace cli {

namespace {

constexpr char kPlain[] =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-./:,+@%=";

struct Free {
  void operator()(char** words) const { g_strfreev(words); }
  void operator()(GError* error) const { g_error_free(error); }
  void operator()(char* text) const { g_free(text); }
};

Words parse(const std::string& line) {
  GError* problem = nullptr;
  char** parsed = nullptr;
  int count = 0;
  if (g_shell_parse_argv(line.c_str(), &count, &parsed, &problem)) {
    const std::unique_ptr<char*, Free> words(parsed);
    return {parsed, parsed + count};
  }
  const std::unique_ptr<GError, Free> error(problem);
  if (g_error_matches(problem, G_SHELL_ERROR, G_SHELL_ERROR_EMPTY_STRING)) return {};
  throw menu::UnknownError(std::string("cannot read the line: ") + problem->message);
}

std::optional<Words> tryToParse(const std::string& line) {
  try {
    return parse(line);
  } catch (const menu::UnknownError&) {
    return std::nullopt;
  }
}

}  // namespace

Words splitLine(std::string line) {
  if (line.size() > kLongestLine) {
    throw menu::UnknownError("cannot read the line: it has more than " +
                             std::to_string(kLongestLine) + " bytes");
  }
  // What stands behind it would be left out.
  if (line.find('\0') != std::string::npos) {
    throw menu::UnknownError("cannot read the line: there is a NUL in it");
  }
  if (line.ends_with('\r')) line.pop_back();
  const auto first = line.find_first_not_of(" \t");
  if (first == std::string::npos || line[first] == '#') return {};
  return parse(line);
}

UnfinishedLine splitUnfinished(const std::string& line) {
  // The last word begins at the last place where a further letter would be a word of its own.
  std::size_t begin = line.size();
  std::optional<Words> words;
  for (;; --begin) {
    words = tryToParse(line.substr(0, begin) + "x");
    if (begin == 0 || (words && !words->empty() && words->back() == "x")) break;
  }
  words->pop_back();
  UnfinishedLine unfinished{*words, line.substr(0, begin), ""};
  for (const char* end : {"x", "x\"", "x'"}) {
    const auto last = tryToParse(line.substr(begin) + end);
    if (!last || last->size() != 1) continue;
    unfinished.typed = last->front();
    unfinished.typed.pop_back();
    break;
  }
  return unfinished;
}

std::string quoted(const std::string& word, bool isFinished) {
  if (!word.empty() && word.find_first_not_of(kPlain) == std::string::npos) return word;
  if (word.empty() && !isFinished) return word;
  const std::unique_ptr<char, Free> whole(g_shell_quote(word.c_str()));
  std::string text = whole.get();
  if (!isFinished) text.pop_back();
  return text;
}

}  // namespace cli
