#include "next_steps.h"

#include <algorithm>
#include <iostream>
#include <utility>

#include "platform/host/visible_text.h"
#include "terminal.h"

namespace cli {

namespace {

using menu::Item;
using platform::host::visibleLine;

// The words that choose something else than there is, of the first item that can be chosen from.
std::string exampleChoice(const std::vector<Item>& items) {
  for (const Item& item : items) {
    if (item.kind == menu::ItemKind::kChoice && item.enabled && item.visible) {
      const auto other = std::ranges::find_if(
          item.list, [&](const auto& entry) { return item.position != entry.value; });
      const std::string key = item.key.substr(item.key.rfind('/') + 1);
      if (other != item.list.end()) return key + " " + std::to_string(other->value);
    }
    const std::string below = exampleChoice(item.items);
    if (!below.empty()) return below;
  }
  return "";
}

}  // namespace

void suggestNextSteps(Session& session, const std::string& program) {
  if (!outputTerminal().isThere) return;
  const std::string choice = exampleChoice(session.menu().readAll());
  const std::pair<std::string, const char*> steps[] = {
      {"show --keys", "the menu, with the keys that commands take"},
      {"choose " + (choice.empty() ? "KEY ENTRY" : choice), "choose as a person does"},
      {"--help", "all commands"},
  };
  std::size_t width = 0;
  for (const auto& [words, meaning] : steps) width = std::max(width, words.size());
  std::cerr << '\n';
  for (const auto& [words, meaning] : steps) {
    const std::string gap(width - words.size() + 3, ' ');
    std::cerr << visibleLine(std::string(program).append(" ").append(words)) << gap << meaning
              << '\n';
  }
}

}  // namespace cli
