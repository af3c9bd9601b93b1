#include "shell_input.h"

#include <glib.h>
#include <unistd.h>

#include <algorithm>
#include <iostream>

#include "../host/notifications.h"
#include "../host/typed_name.h"
#include "completion.h"
#include "environment.h"
#include "line_editor.h"
#include "menu_changes.h"
#include "output.h"
#include "platform/host/folders.h"
#include "platform/host/visible_text.h"
#include "session.h"
#include "shell_words.h"

namespace cli {

namespace {

using menu::Interruption;
using platform::host::visibleLine;

constexpr char kPrompt[] = "ventaro> ";

// Shows what changes in the menu while it lives.
class LaterChanges {
 public:
  using Show = std::function<void(const std::string& lines)>;

  LaterChanges(menu::MenuModel& menu, const Show& show)
      : changes_([](const menu::Item& item) { return toText(item); }),
        refresh_(menu::onRefreshRequest(menu::Refresh::kWholeMenu,
                                        [show] { show("The menu is asked to refresh.\n"); })) {
    changes_.since(menu.readAll());
    sets_ = menu::onAnySet([this, &menu, show] {
      std::string lines;
      for (const menu::Item& item : changes_.since(menu.readAll())) lines += toText(item);
      if (!lines.empty()) show(lines);
    });
  }

 private:
  MenuChanges changes_;
  menu::Subscription refresh_;
  std::vector<menu::Subscription> sets_;
};

// The beginning that all of them have.
std::string commonBeginning(const Words& words) {
  std::string common = words.front();
  for (const std::string& word : words) {
    const auto difference = std::ranges::mismatch(common, word).in1;
    common.erase(difference, common.end());
  }
  while (g_utf8_validate(common.c_str(), -1, nullptr) == FALSE) common.pop_back();
  return common;
}

// Those of the words that the typed one may become. Options are only for who types a hyphen, and
// what cannot be shown cannot be offered.
Words matching(const std::string& typed, Words words) {
  std::erase_if(words, [&typed](const std::string& word) {
    const bool isUnwantedOption = word.starts_with("-") && !typed.starts_with("-");
    return isUnwantedOption || word != visibleLine(word) || !menu::beginsPath(typed, word);
  });
  return words;
}

LineEditor::Completion completed(Session& session, std::span<const Command> table,
                                 const std::string& text) {
  UnfinishedLine line = splitUnfinished(text);
  const bool isFirst = line.words.empty();
  if (!isFirst && line.words.front() == "help") line.words.erase(line.words.begin());
  Words words = whatMayFollow(table, session, line.words);
  if (isFirst) words.insert(words.end(), {"help", "exit", "quit"});
  words = matching(line.typed, words);
  if (words.empty()) return {text, {}};
  const bool isOne = words.size() == 1;
  const std::string common = commonBeginning(words);
  // What was typed may stand inside the words, and then all that they have in common says less.
  if (!menu::beginsPath(line.typed, common)) return {text, words};
  return {line.begin + quoted(common, isOne) + (isOne ? " " : ""), isOne ? Words{} : words};
}

// A script, and a terminal that cannot be more than a prompt.
class PlainInput : public ShellInput {
 public:
  PlainInput(Session& session, const char* prompt) : session_(session), prompt_(prompt) {}

  std::optional<std::string> next(const Interruption& interruption) override {
    std::cerr << prompt_ << std::flush;
    return session_.readLine(interruption);
  }

 private:
  Session& session_;
  const char* prompt_;
};

class EditedInput : public ShellInput {
 public:
  EditedInput(Session& session, std::span<const Command> table)
      : session_(session),
        editor_(
            kPrompt, [this] { return session_.readByte(*interruption_); },
            [this, table](const std::string& text) { return complete(table, text); },
            platform::host::stateFolder() / "shell-history") {
    std::cerr << "\"help\" shows the commands, Tab completes a word, Ctrl-D ends.\n";
  }

  std::optional<std::string> next(const Interruption& interruption) override {
    interruption_ = &interruption;
    const LaterChanges changes(session_.menu(),
                               [this](const std::string& lines) { editor_.showAbove(lines); });
    auto line = editor_.next();
    if (!line) std::cerr << (interruption.isAsked() ? "^C\n" : "\n");
    return line;
  }

 private:
  // Without what cannot be found out: the command itself will say why.
  LineEditor::Completion complete(std::span<const Command> table, const std::string& text) {
    try {
      return completed(session_, table, text);
    } catch (const std::exception&) {
      return {text, {}};
    }
  }

  Session& session_;
  const Interruption* interruption_ = nullptr;  // of the line that is being edited
  LineEditor editor_;
};

bool canEdit() {
  const std::string terminal = variable("TERM");
  return isatty(STDIN_FILENO) != 0 && isatty(STDERR_FILENO) != 0 && !terminal.empty() &&
         terminal != "dumb";
}

}  // namespace

std::unique_ptr<ShellInput> shellInput(Session& session, std::span<const Command> table) {
  if (canEdit()) return std::make_unique<EditedInput>(session, table);
  return std::make_unique<PlainInput>(session, isatty(STDIN_FILENO) != 0 ? kPrompt : "");
}

}  // namespace cli
