#include "platform_test.h"

#include <glib.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace platform_tests {

namespace {

constexpr guint kDeadlineSeconds = 60;

// In memory, if available and no folder was chosen: files outlive a process there too, and tens of
// thousands of synced writes are fast.
std::filesystem::path temporaryFolder() {
  const std::filesystem::path memory = "/dev/shm";
  const bool chosen = std::getenv("TMPDIR") != nullptr;
  return !chosen && access(memory.c_str(), W_OK) == 0 ? memory
                                                      : std::filesystem::temp_directory_path();
}

std::filesystem::path makeFolder() {
  std::string name = temporaryFolder() / "ventaro-platform-XXXXXX";
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("cannot make " + name);
  // For the processes of a test that are another user.
  std::filesystem::permissions(name, std::filesystem::perms(0755));
  return name;
}

}  // namespace

StoreCode codeRaisedBy(const std::function<void()>& action) {
  try {
    action();
    return StoreCode::kOk;
  } catch (const StoreError& error) {
    return error.code();
  }
}

std::string errorRaisedBy(const std::function<void()>& action) {
  try {
    action();
    return "";
  } catch (const std::runtime_error& error) {
    return error.what();
  }
}

std::string readFile(const std::filesystem::path& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::vector<std::string> linesOf(const std::filesystem::path& path) {
  std::ifstream stream(path, std::ios::binary);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

bool iterateUntil(const std::function<bool()>& condition) {
  bool late = false;
  const auto giveUp = [](void* flag) {
    *static_cast<bool*>(flag) = true;
    return gboolean{G_SOURCE_CONTINUE};
  };
  const guint deadline = g_timeout_add_seconds(kDeadlineSeconds, giveUp, &late);
  while (!condition() && !late) g_main_context_iteration(nullptr, TRUE);
  g_source_remove(deadline);
  return !late;
}

PlatformTest::PlatformTest() : folder_(makeFolder()) {
  for (const char* variable :
       {"VENTARO_PRODUCT", "VENTARO_SCENARIO", "VENTARO_NETWORK", "VENTARO_LOG",
        "VENTARO_RESOURCE_ROOT", "XDG_STATE_HOME", "XDG_RUNTIME_DIR"}) {
    unsetenv(variable);
  }
  setenv("VENTARO_STATE_DIR", stateFolder().c_str(), 1);
  setenv("VENTARO_RUNTIME_DIR", runtimeFolder().c_str(), 1);
}

PlatformTest::~PlatformTest() {
  std::filesystem::remove_all(folder_);
}

std::string PlatformTest::write(const std::string& name, const std::string& content) const {
  const auto path = folder_ / name;
  std::filesystem::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << content;
  return path;
}

testing::AssertionResult PlatformTest::logged(const std::string& ending) const {
  const std::vector<std::string> lines = linesOf(logFile());
  const bool found =
      std::ranges::any_of(lines, [&](const std::string& line) { return line.ends_with(ending); });
  if (found) return testing::AssertionSuccess() << "logged: " << ending;
  auto failure = testing::AssertionFailure() << "no line ends with: " << ending << "\nlogged:";
  for (const std::string& line : lines) failure << "\n  " << line.substr(0, 300);
  return failure;
}

}  // namespace platform_tests
