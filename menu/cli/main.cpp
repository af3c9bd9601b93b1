// ventaro: the menu host program. It loads a provider and is the menu.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "commands.h"
#include "exit_codes.h"
#include "output.h"
#include "platform/host/resources.h"

namespace {

// Options before the command, each the same as a variable of the environment.
struct GlobalOption {
  const char* option;
  const char* variable;
  const char* wants;
};

constexpr GlobalOption kGlobalOptions[] = {
    {"--provider", "VENTARO_PROVIDER", "the path of a provider's library"},
    {"--product", "VENTARO_PRODUCT", "the name or file of a product"},
};

// "--product=tv" is "--product tv".
void splitAtEquals(std::vector<std::string>& words) {
  if (words.empty()) return;
  const auto equals = words.front().find('=');
  if (!words.front().starts_with("--") || equals == std::string::npos) return;
  words.insert(words.begin() + 1, words.front().substr(equals + 1));
  words.front().resize(equals);
}

// Takes the options off the words. Returns false when one lacks its value.
bool takeGlobalOptions(std::vector<std::string>& words) {
  const auto find = [&words] {
    splitAtEquals(words);
    return std::ranges::find_if(kGlobalOptions, [&words](const GlobalOption& global) {
      return !words.empty() && words.front() == global.option;
    });
  };
  for (const auto* global = find(); global != std::end(kGlobalOptions); global = find()) {
    if (words.size() < 2) {
      std::cerr << "ventaro: " << global->option << " wants " << global->wants << '\n';
      return false;
    }
    setenv(global->variable, words[1].c_str(), 1);
    words.erase(words.begin(), words.begin() + 2);
  }
  return true;
}

// Without a command the menu is shown: "ventaro", "ventaro --brief".
bool wantsShow(const std::vector<std::string>& words) {
  constexpr const char* kOfTheProgram[] = {"-h", "--help", "--version"};
  return words.empty() ||
         (words.front().starts_with("-") &&
          std::ranges::find(kOfTheProgram, words.front()) == std::end(kOfTheProgram));
}

std::string providerFile() {
  const char* variable = std::getenv("VENTARO_PROVIDER");
  if (variable != nullptr && *variable != '\0') return variable;
  return platform::host::libraryFolder() / "libventaro.so";
}

// Files that the program opens must not become its standard streams, where it would write into
// them.
void openStandardStreams() {
  for (const int file : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(file, F_GETFD) < 0) open("/dev/null", O_RDWR);
  }
}

}  // namespace

int main(int argc, char** argv) {
  openStandardStreams();
  std::signal(SIGXFSZ, SIG_IGN);  // a file that may not grow is an error to tell of, not an end
  cli::claimStandardOutput();
  std::vector<std::string> words(argv + 1, argv + argc);
  if (!takeGlobalOptions(words)) return cli::kUnknown;
  if (wantsShow(words)) words.insert(words.begin(), "show");
  cli::Session session(providerFile());
  const int result = cli::runCommand(session, words);
  if (cli::standardOutputIsWritten()) return result;
  std::cerr << "ventaro: cannot write to standard output\n";
  return result == cli::kDone ? cli::kFailed : result;
}
