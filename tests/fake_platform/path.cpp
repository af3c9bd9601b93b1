#include "platform/path.h"

#include "call.h"

namespace fake_platform {
namespace {

std::string& resourceRoot() {
  static std::string& instance = *new std::string(FAKE_RESOURCE_ROOT);
  return instance;
}

}  // namespace

void resetPath() {
  resourceRoot() = FAKE_RESOURCE_ROOT;
}

void setResourceRoot(const std::string& directory) {
  const StateLock lock(stateMutex());
  resourceRoot() = directory;
}

}  // namespace fake_platform

using namespace fake_platform;

const char* platform_mkpath(int root, const char* relative) {
  demand(root == PLATFORM_ROOT_RESOURCES, "the resources' root is asked for");
  thread_local std::string path;
  const int result = Call("platform_mkpath", root, relative).answer([&] {
    if (root != PLATFORM_ROOT_RESOURCES || relative == nullptr) return kError;
    path = resourceRoot() + "/" + relative;
    return 0;
  });
  return result == 0 ? path.c_str() : nullptr;
}
