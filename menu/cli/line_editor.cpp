#include "line_editor.h"

#include <glib-unix.h>
#include <histedit.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <utility>

#include "../host/display_text.h"
#include "stream.h"

namespace cli {

namespace {

constexpr int kHistoryLines = 1000;

// Side by side, as many as the width has room for.
std::string inColumns(const std::vector<std::string>& texts, std::size_t width) {
  std::size_t widest = 0;
  for (const std::string& text : texts) widest = std::max(widest, menu::columns(text) + 2);
  const std::size_t inRow = std::max<std::size_t>(1, width / widest);
  std::string lines;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const bool endsRow = (i + 1) % inRow == 0 || i + 1 == texts.size();
    lines += texts[i];
    lines += endsRow ? "\n" : std::string(widest - menu::columns(texts[i]), ' ');
  }
  return lines;
}

// The library would follow a link, and wait for the other end of a pipe.
bool isFileOrNone(const std::filesystem::path& path) {
  std::error_code error;
  const auto type = std::filesystem::symlink_status(path, error).type();
  return type == std::filesystem::file_type::regular ||
         type == std::filesystem::file_type::not_found;
}

}  // namespace

void LineEditor::Closer::operator()(std::FILE* file) const {
  std::fclose(file);
}

void LineEditor::Closer::operator()(editline* library) const {
  el_end(library);
}

void LineEditor::Closer::operator()(struct history* lines) const {
  history_end(lines);
}

LineEditor::LineEditor(std::string prompt, NextByte nextByte, Complete complete,
                       std::filesystem::path historyFile)
    : prompt_(std::move(prompt)),
      nextByte_(std::move(nextByte)),
      complete_(std::move(complete)),
      historyFile_(std::move(historyFile)),
      // With a buffer, which standard error has not.
      terminal_(fdopen(dup(STDERR_FILENO), "w")),
      history_(history_init()),
      library_(el_init("ventaro", stdin, terminal_.get(), terminal_.get())) {
  EditLine* library = library_.get();
  el_set(library, EL_CLIENTDATA, this);
  el_set(library, EL_EDITOR, "emacs");
  el_set(
      library, EL_PROMPT, +[](EditLine* self) { return of(self).prompt_.data(); });
  el_set(
      library, EL_GETCFN,
      +[](EditLine* self, wchar_t* character) { return of(self).readCharacter(*character); });
  // In wide characters, which the library does not copy: it would never free the copies.
  el_wset(
      library, EL_ADDFN, L"complete", L"Complete the word",
      +[](EditLine* self, std::wint_t /*key*/) { return of(self).complete(); });
  el_set(library, EL_BIND, "^I", "complete", nullptr);
  el_set(library, EL_BIND, "^R", "em-inc-search-prev", nullptr);
  el_set(library, EL_HIST, history, history_.get());
  HistEvent event{};
  history(history_.get(), &event, H_SETSIZE, kHistoryLines);
  history(history_.get(), &event, H_SETUNIQUE, 1);
  // There is none at the first time.
  if (isFileOrNone(historyFile_)) history(history_.get(), &event, H_LOAD, historyFile_.c_str());
  resizes_ = g_unix_signal_add(
      SIGWINCH,
      [](void* self) {
        static_cast<LineEditor*>(self)->resize();
        return gboolean{G_SOURCE_CONTINUE};
      },
      this);
}

LineEditor::~LineEditor() {
  g_source_remove(resizes_);
}

LineEditor& LineEditor::of(editline* library) {
  void* self = nullptr;
  el_get(library, EL_CLIENTDATA, &self);
  return *static_cast<LineEditor*>(self);
}

std::optional<std::string> LineEditor::next() {
  int size = 0;
  isEditing_ = true;
  // Before the prompt, not after it: what is typed at once would be echoed twice.
  el_set(library_.get(), EL_PREP_TERM, 1);
  const char* typed = el_gets(library_.get(), &size);
  isEditing_ = false;
  if (typed == nullptr || size <= 0) return std::nullopt;
  std::string line(typed, static_cast<std::size_t>(size));
  while (line.ends_with('\n') || line.ends_with('\r')) line.pop_back();
  remember(line);
  return line;
}

void LineEditor::remember(const std::string& line) {
  if (line.find_first_not_of(' ') == std::string::npos) return;
  HistEvent event{};
  history(history_.get(), &event, H_ENTER, line.c_str());
  if (historyFile_.empty()) return;
  const bool isFile = isFileOrNone(historyFile_);
  // The library makes the file its owner's alone.
  if (isFile && history(history_.get(), &event, H_SAVE, historyFile_.c_str()) >= 0) return;
  complain("cannot keep the history in " + historyFile_.string() + ": " +
           (isFile ? std::strerror(errno) : "it is not a file"));
  historyFile_.clear();
}

// As the library wants it: 1 for a character, 0 at the end.
int LineEditor::readCharacter(wchar_t& character) {
  std::mbstate_t state{};
  while (const auto byte = nextByte_()) {
    const std::size_t read = std::mbrtowc(&character, &*byte, 1, &state);
    if (read <= 1) return 1;
    if (read == static_cast<std::size_t>(-1)) state = {};  // no text: left out
  }
  return 0;
}

std::string LineEditor::textBeforeCursor() const {
  const LineInfo* line = el_line(library_.get());
  return {line->buffer, line->cursor};
}

std::size_t LineEditor::width() const {
  int columns = 0;
  el_get(library_.get(), EL_GETTC, "co", &columns);
  return columns > 0 ? static_cast<std::size_t>(columns) : 80;
}

unsigned char LineEditor::complete() {
  const std::string before = textBeforeCursor();
  const Completion completion = complete_(before);
  if (!completion.choices.empty()) showAbove(inColumns(completion.choices, width()));
  if (completion.text == before) return completion.choices.empty() ? CC_REFRESH_BEEP : CC_NORM;
  el_deletestr(library_.get(), static_cast<int>(g_utf8_strlen(before.c_str(), -1)));
  el_insertstr(library_.get(), completion.text.c_str());
  return CC_REFRESH;
}

void LineEditor::resize() {
  el_resize(library_.get());
  if (isEditing_) showAbove("");
}

void LineEditor::showAbove(const std::string& lines) {
  // Where the line that is being edited begins.
  const std::size_t row = menu::columns(prompt_ + textBeforeCursor()) / width();
  const std::string up = row > 0 ? "\033[" + std::to_string(row) + "A" : "";
  std::fputs((up + "\r\033[J" + lines).c_str(), terminal_.get());
  el_set(library_.get(), EL_REFRESH);
}

}  // namespace cli
