#include "platform/host/folders.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include "environment.h"
#include "platform/host/config_store.h"

namespace platform::host {

namespace {

std::filesystem::path homeFolder() {
  if (const auto home = variableOr("HOME"); !home.empty()) return home;
  const passwd* user = getpwuid(getuid());
  return user != nullptr ? user->pw_dir : "/";
}

// The folder in variable `own`, else "ventaro" below the one in variable `base`, else empty.
std::filesystem::path named(const char* own, const char* base) {
  if (auto folder = variableOr(own); !folder.empty()) return folder;
  const std::filesystem::path parent = variableOr(base);
  return parent.empty() ? parent : parent / "ventaro";
}

// Others can write to /tmp too, so a folder with our name there must be checked to be ours.
std::filesystem::path privateTemporaryFolder() {
  const std::filesystem::path folder = "/tmp/ventaro-" + std::to_string(getuid());
  struct stat info {};
  constexpr mode_t kOthers = 077;
  if (mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) {
    throw StoreError(StoreCode::kUnavailable, "cannot make " + folder.string());
  }
  if (lstat(folder.c_str(), &info) != 0 || !S_ISDIR(info.st_mode) || info.st_uid != getuid() ||
      (info.st_mode & kOthers) != 0) {
    throw StoreError(StoreCode::kUnavailable,
                     folder.string() +
                         " is not a folder of this user alone (mode 0700); "
                         "set VENTARO_RUNTIME_DIR to another folder");
  }
  return folder;
}

}  // namespace

std::filesystem::path stateFolder() {
  const auto folder = named("VENTARO_STATE_DIR", "XDG_STATE_HOME");
  return folder.empty() ? homeFolder() / ".local/state/ventaro" : folder;
}

std::filesystem::path runtimeFolder() {
  const auto folder = named("VENTARO_RUNTIME_DIR", "XDG_RUNTIME_DIR");
  return folder.empty() ? privateTemporaryFolder() : folder;
}

}  // namespace platform::host
