// ventaro: the menu host program. It loads a provider and is the menu.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <string>
#include <vector>

#include "commands.h"
#include "documentation.h"
#include "environment.h"
#include "exit_codes.h"
#include "next_steps.h"
#include "output.h"
#include "platform/host/resources.h"
#include "session.h"
#include "stream.h"

namespace {

// Without a command the menu is shown: "ventaro", "ventaro --brief".
bool wantsShow(const std::vector<std::string>& words) {
  constexpr const char* kOfTheProgram[] = {"-h", "--help", "--version"};
  return words.empty() ||
         (words.front().starts_with("-") &&
          std::ranges::find(kOfTheProgram, words.front()) == std::end(kOfTheProgram));
}

std::string providerFile() {
  const std::string file = cli::variable("VENTARO_PROVIDER");
  return !file.empty() ? file : (platform::host::libraryFolder() / "libventaro.so").string();
}

bool isWritable(int file) {
  const int flags = fcntl(file, F_GETFL);
  return flags >= 0 && (flags & O_ACCMODE) != O_RDONLY;
}

// Opens the standard streams that are closed. Otherwise a file that is opened later would become
// one of them, and the program would print into it.
void openStandardStreams() {
  for (const int file : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(file, F_GETFD) < 0) open("/dev/null", O_RDWR);
  }
}

int failToPrint(int result) {
  cli::complain("cannot write to standard output");
  return result == cli::kDone ? cli::kFailed : result;
}

int run(std::vector<std::string> words, const std::string& program) {
  if (!cli::takeProgramOptions(words)) return cli::kUnknown;
  if (words == std::vector<std::string>{"--documentation"}) {
    cli::print(cli::jsonText(cli::documentation(), ""));
    return cli::kDone;
  }
  const bool saysNothing = words.empty();
  if (wantsShow(words)) words.insert(words.begin(), "show");
  cli::Session session(providerFile());
  const int result = cli::runCommand(session, words);
  if (saysNothing && result == cli::kDone) cli::suggestNextSteps(session, program);
  return result;
}

}  // namespace

int main(int argc, char** argv) {
  const bool canPrint = isWritable(STDOUT_FILENO);
  openStandardStreams();
  // Before anything is changed that nobody is told of.
  if (!canPrint) return failToPrint(cli::kDone);
  std::signal(SIGXFSZ, SIG_IGN);  // writing a file that may not grow fails instead
  cli::claimStandardOutput();
  const int result = run({argv + 1, argv + argc}, *argv);
  return cli::standardOutputIsWritten() ? result : failToPrint(result);
}
