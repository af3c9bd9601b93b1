// A library that subscribes while it is being loaded, and a thread that does so at the same time.
#include <dlfcn.h>

#include <latch>
#include <thread>

#include "platform/config_store.h"
#include "platform/export.h"
#include "platform_test.h"

namespace {

std::latch threadAsksTheLoader(1);
std::thread thread;
thread_local bool announcesItself = false;

void ignore(keynode_t* /*node*/, void* /*data*/) {}

void subscribe() {
  announcesItself = true;
  vconf_notify_key_changed("db/of/the/thread", ignore, nullptr);
}

}  // namespace

// Called by the library's constructor, so the loader is locked. Returns when the thread is about to
// wait for it.
extern "C" PLATFORM_API void while_a_library_is_loaded() {
  thread = std::thread(subscribe);
  threadAsksTheLoader.wait();
}

// The loader's own, for the whole process.
extern "C" PLATFORM_API int dladdr(const void* address, Dl_info* info) noexcept {
  // Found at the first call, which the platform's library makes before there are threads.
  static decltype(&dladdr) own = nullptr;
  if (own == nullptr) own = reinterpret_cast<decltype(&dladdr)>(dlsym(RTLD_NEXT, "dladdr"));
  if (announcesItself) {
    announcesItself = false;
    threadAsksTheLoader.count_down();
  }
  return own(address, info);
}

namespace platform_tests {
namespace {

class ALibraryBeingLoaded : public PlatformTest {};

TEST_F(ALibraryBeingLoaded, AndAThreadMayBothSubscribe) {
  void* library = dlopen(SUBSCRIBES_WHEN_LOADED, RTLD_NOW | RTLD_LOCAL);
  ASSERT_NE(library, nullptr) << dlerror();
  thread.join();
  dlclose(library);
}

}  // namespace
}  // namespace platform_tests
