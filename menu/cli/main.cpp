// ventaro: the menu host program. It loads a provider and is the menu.
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "commands.h"
#include "exit_codes.h"

namespace {

constexpr char kProviderOption[] = "--provider";

std::string defaultProvider() {
  const char* variable = std::getenv("VENTARO_PROVIDER");
  return variable != nullptr && *variable != '\0' ? variable : "libventaro.so";
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> words(argv + 1, argv + argc);
  std::string provider = defaultProvider();
  if (!words.empty() && words.front() == kProviderOption) {
    if (words.size() < 2) {
      std::cerr << "ventaro: --provider wants the path of a provider's library\n";
      return cli::kUnknown;
    }
    provider = words[1];
    words.erase(words.begin(), words.begin() + 2);
  }
  if (words.empty()) words = {"show"};
  cli::Session session(provider);
  return cli::runCommand(session, words);
}
