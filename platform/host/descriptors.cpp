#include "platform/host/descriptors.h"

#include <fcntl.h>
#include <sys/resource.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <vector>

#include "../store/files.h"
#include "platform/host/config_store.h"

namespace platform::host {

namespace {

std::string limitOfThisProcess() {
  rlimit limit{};
  if (getrlimit(RLIMIT_NOFILE, &limit) != 0) return "";
  return "; this process may have " + std::to_string(limit.rlim_cur) + " files open (ulimit -n)";
}

}  // namespace

void requireDescriptors(int count) {
  std::vector<File> files;
  while (count-- > 0) {
    files.emplace_back(open("/", O_PATH | O_CLOEXEC));
    if (files.back()) continue;
    const int error = errno;
    throw StoreError(StoreCode::kUnavailable,
                     std::strerror(error) + (error == EMFILE ? limitOfThisProcess() : ""));
  }
}

}  // namespace platform::host
