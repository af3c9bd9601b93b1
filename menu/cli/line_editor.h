// A line that a person types at a terminal, with what makes typing easy: editing, a history and
// completion.
#ifndef MENU_CLI_LINE_EDITOR_H
#define MENU_CLI_LINE_EDITOR_H

#include <cstdio>
#include <cwchar>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

struct editline;
struct history;

namespace cli {

// The terminal is standard input and standard error. All functions belong to one thread.
class LineEditor {
 public:
  // The next byte that was typed; nothing ends the line that is being edited. May call showAbove().
  using NextByte = std::function<std::optional<char>()>;

  // What the text before the cursor becomes, and what it may become when that is not certain.
  struct Completion {
    std::string text;
    std::vector<std::string> choices;
  };
  using Complete = std::function<Completion(const std::string& text)>;

  // The history is kept in that file, which only its owner may read. An error with the file is told
  // on standard error; the history then lasts as long as the object.
  LineEditor(std::string prompt, NextByte nextByte, Complete complete,
             std::filesystem::path historyFile);
  ~LineEditor();
  LineEditor(const LineEditor&) = delete;
  LineEditor& operator=(const LineEditor&) = delete;

  // Lets a line be edited, and adds it to the history. Returns it without its line feed; nothing
  // after Ctrl-D, and when there is no next byte.
  std::optional<std::string> next();

  // Shows lines, each with its line feed, above the line that is being edited.
  void showAbove(const std::string& lines);

 private:
  static LineEditor& of(editline* library);
  int readCharacter(wchar_t& character);
  unsigned char complete();
  void resize();
  void remember(const std::string& line);
  std::string textBeforeCursor() const;
  std::size_t width() const;

  struct Closer {
    void operator()(std::FILE* file) const;
    void operator()(editline* library) const;
    void operator()(struct history* lines) const;
  };

  std::string prompt_;
  NextByte nextByte_;
  Complete complete_;
  std::filesystem::path historyFile_;
  std::unique_ptr<std::FILE, Closer> terminal_;
  std::unique_ptr<history, Closer> history_;
  std::unique_ptr<editline, Closer> library_;
  bool isEditing_ = false;
  unsigned resizes_ = 0;
};

}  // namespace cli

#endif  // MENU_CLI_LINE_EDITOR_H
