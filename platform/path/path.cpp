#include "platform/path.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <system_error>

#include "../config_store/host_switches.h"
#include "platform/host/errors.h"
#include "platform/host/resources.h"
#include "platform/log.h"

namespace platform::host {

namespace {

bool isPath(const std::string& nameOrPath) {
  return nameOrPath.find('/') != std::string::npos || nameOrPath.ends_with(".json");
}

std::string joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ", ") + name;
  return text;
}

}  // namespace

std::filesystem::path libraryFolder() {
  Dl_info info{};
  dladdr(reinterpret_cast<const void*>(&platform_mkpath), &info);
  std::error_code error;
  const auto file = std::filesystem::canonical(info.dli_fname, error);
  return error ? std::filesystem::path(info.dli_fname).parent_path() : file.parent_path();
}

std::filesystem::path resourceRoot() {
  if (const char* root = std::getenv("VENTARO_RESOURCE_ROOT"); root != nullptr && *root != '\0') {
    return root;
  }
  const std::filesystem::path start = libraryFolder();
  for (auto folder = start; folder != folder.root_path(); folder = folder.parent_path()) {
    const auto candidate = folder / "share/ventaro";
    std::error_code error;
    if (std::filesystem::is_directory(candidate, error)) return candidate;
  }
  return start.parent_path() / "share/ventaro";
}

std::filesystem::path findResource(const std::string& folder, const std::string& nameOrPath) {
  if (isPath(nameOrPath)) return nameOrPath;
  const auto file = resourceRoot() / folder / (nameOrPath + ".json");
  if (std::filesystem::exists(file)) return file;
  throw ConfigurationError("there is no \"" + nameOrPath + "\" in " +
                           (resourceRoot() / folder).string() +
                           "; there are: " + joined(resourceNames(folder)));
}

std::vector<std::string> resourceNames(const std::string& folder) {
  std::vector<std::string> names;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(resourceRoot() / folder, error)) {
    if (entry.path().extension() == ".json") names.push_back(entry.path().stem().string());
  }
  std::ranges::sort(names);
  return names;
}

}  // namespace platform::host

const char* platform_mkpath(int root, const char* relative) {
  if (platform::injectedFault("platform_mkpath") != 0) return nullptr;
  if (root != PLATFORM_ROOT_RESOURCES || relative == nullptr || *relative == '/') {
    __dlog_print(PLATFORM_LOG_SYSTEM, PLATFORM_LOG_INFO, "PATH",
                 "platform_mkpath: there is no root %d, or no relative path", root);
    return nullptr;
  }
  thread_local std::string path;
  path = platform::host::resourceRoot() / relative;
  // NOLINTNEXTLINE(clang-analyzer-cplusplus.InnerPointer): it lives as long as the thread.
  return path.c_str();
}
