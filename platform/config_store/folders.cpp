#include "folders.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>

#include "platform/host/config_store.h"

namespace platform {

namespace {

// A variable that is empty counts as not set.
std::filesystem::path fromEnvironment(const char* variable) {
  const char* value = std::getenv(variable);
  return value != nullptr ? value : "";
}

std::filesystem::path homeFolder() {
  if (const auto home = fromEnvironment("HOME"); !home.empty()) return home;
  const passwd* user = getpwuid(getuid());
  return user != nullptr ? user->pw_dir : "/";
}

// Others can write to /tmp as well, so what stands there under our name must be ours.
std::filesystem::path privateTemporaryFolder() {
  const std::filesystem::path folder = "/tmp/ventaro-" + std::to_string(getuid());
  struct stat info {};
  constexpr mode_t kOthers = 077;
  if (mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) {
    throw host::StoreError(host::StoreCode::kUnavailable, "cannot make " + folder.string());
  }
  if (lstat(folder.c_str(), &info) != 0 || !S_ISDIR(info.st_mode) || info.st_uid != getuid() ||
      (info.st_mode & kOthers) != 0) {
    throw host::StoreError(host::StoreCode::kUnavailable,
                           folder.string() +
                               " is not a folder of this user alone (mode 0700); "
                               "set VENTARO_RUNTIME_DIR to another folder");
  }
  return folder;
}

}  // namespace

std::filesystem::path stateFolder() {
  if (const auto folder = fromEnvironment("VENTARO_STATE_DIR"); !folder.empty()) return folder;
  if (const auto base = fromEnvironment("XDG_STATE_HOME"); !base.empty()) return base / "ventaro";
  return homeFolder() / ".local/state/ventaro";
}

std::filesystem::path runtimeFolder() {
  if (const auto folder = fromEnvironment("VENTARO_RUNTIME_DIR"); !folder.empty()) return folder;
  if (const auto base = fromEnvironment("XDG_RUNTIME_DIR"); !base.empty()) return base / "ventaro";
  return privateTemporaryFolder();
}

}  // namespace platform
