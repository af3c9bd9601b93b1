// The allocator's functions of the whole process. They behave like libc's, remember the blocks that
// the provider's own code allocates, and the copies of texts that it or the platform makes, and can
// fail for the provider.
#include "heap.h"

#include <dlfcn.h>
#include <link.h>
#include <unistd.h>
#include <unwind.h>

#include <array>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string_view>

#define HEAP_API extern "C" __attribute__((visibility("default")))

extern "C" void* __libc_malloc(std::size_t size);
extern "C" void* __libc_calloc(std::size_t count, std::size_t size);
extern "C" void __libc_free(void* block);

namespace {

// Allocates nothing itself.
class LiveBlocks {
 public:
  void add(void* block) {
    const Guard guard(busy_);
    if (block == nullptr) return;
    if (size_ == blocks_.size()) giveUp();
    blocks_[size_++] = block;
  }

  void remove(void* block) {
    const Guard guard(busy_);
    for (std::size_t i = size_; i > 0; --i) {
      if (blocks_[i - 1] != block) continue;
      blocks_[i - 1] = blocks_[--size_];
      return;
    }
  }

  int count() {
    const Guard guard(busy_);
    return static_cast<int>(size_);
  }

 private:
  class Guard {
   public:
    explicit Guard(std::atomic_flag& busy) : busy_(busy) {
      while (busy_.test_and_set()) {
      }
    }
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;
    ~Guard() { busy_.clear(); }

   private:
    std::atomic_flag& busy_;
  };

  // A block that is not remembered could leak unnoticed.
  [[noreturn]] static void giveUp() {
    static constexpr std::string_view kMessage =
        "More blocks are live than tests/fault_matrix/heap.cpp has room for.\n";
    if (write(STDERR_FILENO, kMessage.data(), kMessage.size()) < 0) std::abort();
    std::abort();
  }

  std::array<void*, 4096> blocks_{};
  std::size_t size_ = 0;
  std::atomic_flag busy_;
};

constinit LiveBlocks live;
constinit LiveBlocks objects;
constinit std::atomic<bool> countsObjects = false;
constinit std::atomic<int> untilFailure = 0;  // 1: the next allocation fails
constinit std::atomic<bool> hasFailed = false;

bool isCodeOf(const void* address, std::string_view library) {
  dl_find_object object;
  if (_dl_find_object(const_cast<void*>(address), &object) != 0) return false;
  const char* path = object.dlfo_link_map->l_name;
  const char* slash = std::strrchr(path, '/');
  return std::string_view(slash != nullptr ? slash + 1 : path).starts_with(library);
}

bool isProviders(const void* caller) {
  return isCodeOf(caller, "libventaro.so");
}

bool isOfProvider(const void* caller) {
  return isProviders(caller) || isCodeOf(caller, "libjsoncpp.so");
}

// Looks for the caller that the C++ library allocates for.
struct Search {
  const void* caller;
  bool isReached = false;
  bool isFound = false;
};

_Unwind_Reason_Code visit(_Unwind_Context* frame, void* data) {
  auto& search = *static_cast<Search*>(data);
  // NOLINTNEXTLINE(performance-no-int-to-ptr): the unwinder gives addresses as numbers.
  const auto* address = reinterpret_cast<const void*>(_Unwind_GetIP(frame));
  search.isReached = search.isReached || address == search.caller;
  if (!search.isReached || isCodeOf(address, "libstdc++.so")) return _URC_NO_REASON;
  search.isFound = isOfProvider(address);
  return _URC_END_OF_STACK;
}

bool isForProvider(const void* caller) {
  if (!isCodeOf(caller, "libstdc++.so")) return isOfProvider(caller);
  Search search{.caller = caller};
  _Unwind_Backtrace(visit, &search);
  return search.isFound;
}

bool mustFail() {
  if (untilFailure == 0 || --untilFailure != 0) return false;
  hasFailed = true;
  return true;
}

// The provider's own allocation of the C heap, or jsoncpp's for it.
template <typename Allocate>
void* allocateFor(const void* caller, const Allocate& allocate) {
  const bool own = isProviders(caller);
  const bool jsons = !own && countsObjects && isCodeOf(caller, "libjsoncpp.so");
  if ((own || jsons) && mustFail()) return nullptr;
  void* block = allocate();
  if (own) live.add(block);
  if (jsons) objects.add(block);
  return block;
}

}  // namespace

bool countsBlocks() {
  return true;
}

int liveBlocks() {
  return live.count();
}

void countObjects() {
  countsObjects = true;
}

int liveObjects() {
  return objects.count();
}

void failAllocation(int n) {
  if (n != 0) hasFailed = false;
  untilFailure = n;
}

bool hasAllocationFailed() {
  return hasFailed;
}

HEAP_API void* malloc(std::size_t size) noexcept {
  return allocateFor(__builtin_return_address(0), [size] { return __libc_malloc(size); });
}

HEAP_API void* calloc(std::size_t count, std::size_t size) noexcept {
  return allocateFor(__builtin_return_address(0),
                     [count, size] { return __libc_calloc(count, size); });
}

HEAP_API char* strdup(const char* text) noexcept {
  const void* caller = __builtin_return_address(0);
  const std::size_t size = std::strlen(text) + 1;
  auto* copy = static_cast<char*>(allocateFor(caller, [size] { return __libc_malloc(size); }));
  if (copy == nullptr) return nullptr;
  if (isCodeOf(caller, "libfake_platform.so")) live.add(copy);
  return static_cast<char*>(std::memcpy(copy, text, size));
}

HEAP_API void free(void* block) noexcept {
  if (block != nullptr) {
    live.remove(block);
    if (countsObjects) objects.remove(block);
  }
  __libc_free(block);
}

// The library's operator delete calls free() above.
// NOLINTNEXTLINE(misc-new-delete-overloads)
__attribute__((visibility("default"))) void* operator new(std::size_t size) {
  const bool isProviders = countsObjects && isForProvider(__builtin_return_address(0));
  void* block = isProviders && mustFail() ? nullptr : __libc_malloc(size);
  if (block == nullptr) throw std::bad_alloc();
  if (isProviders) objects.add(block);
  return block;
}
