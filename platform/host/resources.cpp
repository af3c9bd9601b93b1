#include "platform/host/resources.h"

#include <dlfcn.h>

#include <algorithm>
#include <string>
#include <system_error>

#include "environment.h"
#include "platform/host/errors.h"
#include "platform/host/nearest.h"

namespace platform::host {

namespace {

// This library's own. Found while it is loaded: later the loader may be waiting for a library whose
// constructor waits for one of our locks.
const char* const kLibraryFile = [] {
  Dl_info info{};
  dladdr(reinterpret_cast<const void*>(&resourceRoot), &info);
  return info.dli_fname;
}();

bool isPath(const std::string& nameOrPath) {
  return nameOrPath.find('/') != std::string::npos || nameOrPath.ends_with(".json");
}

// The resource root installed with this library.
std::filesystem::path shippedRoot() {
  const std::filesystem::path start = libraryFolder();
  for (auto folder = start; folder != folder.root_path(); folder = folder.parent_path()) {
    const auto candidate = folder / "share/ventaro";
    std::error_code error;
    if (std::filesystem::is_directory(candidate, error)) return candidate;
  }
  return start.parent_path() / "share/ventaro";
}

}  // namespace

std::filesystem::path libraryFolder() {
  std::error_code error;
  const auto file = std::filesystem::canonical(kLibraryFile, error);
  return error ? std::filesystem::path(kLibraryFile).parent_path() : file.parent_path();
}

std::filesystem::path resourceRoot() {
  const std::string root = variableOr("VENTARO_RESOURCE_ROOT");
  return root.empty() ? shippedRoot() : std::filesystem::path(root);
}

std::filesystem::path resourceFile(const std::string& name) {
  const auto own = resourceRoot() / name;
  std::error_code error;
  return std::filesystem::exists(own, error) ? own : shippedRoot() / name;
}

std::filesystem::path findResource(const std::string& folder, const std::string& nameOrPath) {
  if (isPath(nameOrPath)) return nameOrPath;
  const auto file = resourceRoot() / folder / (nameOrPath + ".json");
  std::error_code error;  // a name that is no file's, such as one that is too long
  if (std::filesystem::exists(file, error)) return file;
  throw UnknownNameError("there is no \"" + nameOrPath + "\" in " +
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
