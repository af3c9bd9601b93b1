// What the tests of the host platform have in common.
#ifndef TESTS_PLATFORM_PLATFORM_TEST_H
#define TESTS_PLATFORM_PLATFORM_TEST_H

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "platform/host/config_store.h"

namespace platform_tests {

using platform::host::ConfigStore;
using platform::host::StoreCode;
using platform::host::StoreError;
using platform::host::StoreValue;

inline ConfigStore& store() {
  return ConfigStore::instance();
}

constexpr int codeOf(StoreCode code) {
  return static_cast<int>(code);
}

// The code of the StoreError that the action raises; kOk when it raises none.
StoreCode codeRaisedBy(const std::function<void()>& action);

// The message of the error that the action raises; empty when it raises none.
std::string errorRaisedBy(const std::function<void()>& action);

std::string readFile(const std::filesystem::path& path);
std::vector<std::string> linesOf(const std::filesystem::path& path);

// Iterates the default main context until the condition holds. False if it does not hold after a
// very long time.
[[nodiscard]] bool iterateUntil(const std::function<bool()>& condition);

// A separate TV: new folders, and a clean environment.
class PlatformTest : public testing::Test {
 protected:
  PlatformTest();
  ~PlatformTest() override;

  const std::filesystem::path& folder() const { return folder_; }
  std::filesystem::path stateFolder() const { return folder_ / "state"; }
  std::filesystem::path runtimeFolder() const { return folder_ / "runtime"; }
  std::filesystem::path logFile() const { return stateFolder() / "log/platform.log"; }

  // Writes a file below the test's folder, and returns its path.
  std::string write(const std::string& name, const std::string& content) const;

  // Whether a line of the platform log ends with that text.
  testing::AssertionResult logged(const std::string& ending) const;

 private:
  std::filesystem::path folder_;
};

}  // namespace platform_tests

#endif  // TESTS_PLATFORM_PLATFORM_TEST_H
