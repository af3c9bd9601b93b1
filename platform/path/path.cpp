#include "platform/path.h"

#include <string>

#include "../host/switches.h"
#include "platform/host/resources.h"
#include "platform/log.h"

const char* platform_mkpath(int root, const char* relative) {
  if (platform::injectedFault(__func__) != 0) return nullptr;
  if (root != PLATFORM_ROOT_RESOURCES || relative == nullptr || *relative == '/') {
    __dlog_print(PLATFORM_LOG_SYSTEM, PLATFORM_LOG_INFO, "PATH",
                 "platform_mkpath: there is no root %d, or no relative path", root);
    return nullptr;
  }
  thread_local std::string path;
  path = platform::host::resourceRoot() / relative;
  // NOLINTNEXTLINE(clang-analyzer-cplusplus.InnerPointer): the string lives as long as the thread.
  return path.c_str();
}
