#include "shell.h"

#include <fcntl.h>
#include <glib-unix.h>
#include <unistd.h>

#include <array>
#include <iostream>
#include <optional>

#include "../host/main_loop.h"
#include "commands.h"
#include "exit_codes.h"

namespace cli {

namespace {

// Standard input, read by the main loop, so that timers and notifications run while it is waited
// for.
class LineReader {
 public:
  LineReader() {
    source_ = g_unix_fd_add(
        STDIN_FILENO, static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR),
        [](int, GIOCondition, void* self) { return static_cast<LineReader*>(self)->read(); }, this);
  }
  ~LineReader() {
    if (source_ != 0) g_source_remove(source_);
  }
  LineReader(const LineReader&) = delete;
  LineReader& operator=(const LineReader&) = delete;

  // Nothing at the end.
  std::optional<std::string> next() {
    menu::runUntil([this] { return source_ == 0 || text_.find('\n') != std::string::npos; });
    if (text_.empty()) return std::nullopt;
    const auto end = text_.find('\n');
    std::string line = text_.substr(0, end);
    text_.erase(0, end == std::string::npos ? end : end + 1);
    return line;
  }

 private:
  gboolean read() {
    std::array<char, 4096> bytes{};
    const ssize_t size = ::read(STDIN_FILENO, bytes.data(), bytes.size());
    if (size > 0) {
      text_.append(bytes.data(), static_cast<std::size_t>(size));
      return G_SOURCE_CONTINUE;
    }
    source_ = 0;
    return G_SOURCE_REMOVE;
  }

  std::string text_;
  unsigned source_ = 0;
};

struct GStrvFree {
  void operator()(char** words) const { g_strfreev(words); }
};

// The words of a line, quoted as in a POSIX shell. Nothing for an empty line or a comment.
std::optional<std::vector<std::string>> split(const std::string& line) {
  GError* error = nullptr;
  char** parsed = nullptr;
  int count = 0;
  if (!g_shell_parse_argv(line.c_str(), &count, &parsed, &error)) {
    const bool empty = g_error_matches(error, G_SHELL_ERROR, G_SHELL_ERROR_EMPTY_STRING);
    const std::string message = error->message;
    g_error_free(error);
    if (empty) return std::nullopt;
    throw menu::UnknownError("cannot read the line: " + message);
  }
  const std::unique_ptr<char*, GStrvFree> words(parsed);
  return std::vector<std::string>(parsed, parsed + count);
}

int runLine(Session& session, const std::string& line) {
  try {
    const auto words = split(line);
    if (!words) return kDone;
    if (words->front() == "shell") throw menu::UnknownError("this is the shell already");
    return runCommand(session, *words);
  } catch (const menu::UnknownError& error) {
    std::cerr << "ventaro: " << error.what() << '\n';
    return kUnknown;
  }
}

int shell(Session& session) {
  session.menu();
  session.serveNetwork();
  const bool person = isatty(STDIN_FILENO) != 0;
  LineReader reader;
  int result = kDone;
  while (true) {
    if (person) std::cout << "ventaro> " << std::flush;
    const auto line = reader.next();
    if (!line || *line == "exit" || *line == "quit") break;
    const int lineResult = runLine(session, *line);
    if (result == kDone) result = lineResult;
  }
  session.stopNetwork();
  return person ? kDone : result;
}

}  // namespace

void addShellCommand(CLI::App& app, Session& session, int& result) {
  app.add_subcommand("shell", "Read commands line by line; \"exit\" ends")
      ->callback([&session, &result] { result = shell(session); });
}

}  // namespace cli
