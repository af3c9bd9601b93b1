// Runs every test in its own process: the store, the logs and the network exist once per process,
// and each test needs fresh ones.
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

namespace {

std::filesystem::path thisProgram() {
  return std::filesystem::read_symlink("/proc/self/exe");
}

// A name, not a pattern.
bool namesOneTest(const std::string& filter) {
  return filter.find_first_of("*?:-") == std::string::npos;
}

// The full names of the tests that the filter selects, from the list that the program prints:
// "Suite." in one line, and below it "  Test" or "  Test/parameter  # GetParam() = ...".
std::vector<std::string> selectedTests(const std::string& filter) {
  const std::string command =
      "'" + thisProgram().string() + "' --gtest_list_tests --gtest_filter='" + filter + "'";
  std::FILE* list = popen(command.c_str(), "r");
  std::vector<std::string> tests;
  std::string suite;
  char* buffer = nullptr;
  std::size_t capacity = 0;
  while (getline(&buffer, &capacity, list) >= 0) {
    const std::string line(buffer);
    const auto begin = line.find_first_not_of(' ');
    const std::string name = line.substr(begin, line.find_first_of(" \n", begin) - begin);
    if (begin == 0) {
      suite = name;
    } else {
      tests.push_back(suite + name);
    }
  }
  std::free(buffer);
  pclose(list);
  return tests;
}

// Runs one test with its output in `output`.
bool passesAlone(const std::string& test, std::vector<std::string> arguments, int output) {
  arguments.push_back("--gtest_filter=" + test);
  std::vector<char*> argv;
  for (std::string& argument : arguments) argv.push_back(argument.data());
  argv.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, output, STDERR_FILENO);
  pid_t process = 0;
  int status =
      posix_spawn(&process, thisProgram().c_str(), &actions, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  return status == 0 && waitpid(process, &status, 0) == process && status == 0;
}

void show(int output) {
  std::array<char, 4096> bytes{};
  lseek(output, 0, SEEK_SET);
  for (ssize_t size = 0; (size = read(output, bytes.data(), bytes.size())) > 0;) {
    std::cout.write(bytes.data(), size);
  }
}

int runEachAlone(const std::string& filter, const std::vector<std::string>& arguments) {
  std::vector<std::string> failed;
  const std::vector<std::string> tests = selectedTests(filter);
  for (const std::string& test : tests) {
    const int output = memfd_create("output", MFD_CLOEXEC);
    if (!passesAlone(test, arguments, output)) {
      failed.push_back(test);
      show(output);
    }
    close(output);
  }
  std::cout << tests.size() - failed.size() << " of " << tests.size() << " tests passed\n";
  for (const std::string& test : failed) std::cout << "failed: " << test << "\n";
  return failed.empty() && !tests.empty() ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv, argv + argc);
  testing::InitGoogleTest(&argc, argv);
  const std::string filter = GTEST_FLAG_GET(filter);
  if (GTEST_FLAG_GET(list_tests) || namesOneTest(filter)) return RUN_ALL_TESTS();
  return runEachAlone(filter, arguments);
}
