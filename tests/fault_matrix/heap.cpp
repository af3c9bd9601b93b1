// The allocator's functions of the whole process. They behave like libc's, and remember the blocks
// that the provider's own code allocates, and the copies of texts that it or the platform makes.
#include "heap.h"

#include <dlfcn.h>
#include <link.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cstdlib>
#include <cstring>
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

bool isCodeOf(const void* address, const char* library) {
  dl_find_object object;
  if (_dl_find_object(const_cast<void*>(address), &object) != 0) return false;
  const char* path = object.dlfo_link_map->l_name;
  const char* slash = std::strrchr(path, '/');
  return std::strcmp(slash != nullptr ? slash + 1 : path, library) == 0;
}

bool isProviders(const void* caller) {
  return isCodeOf(caller, "libventaro.so");
}

}  // namespace

bool countsBlocks() {
  return true;
}

int liveBlocks() {
  return live.count();
}

HEAP_API void* malloc(std::size_t size) noexcept {
  void* block = __libc_malloc(size);
  if (isProviders(__builtin_return_address(0))) live.add(block);
  return block;
}

HEAP_API void* calloc(std::size_t count, std::size_t size) noexcept {
  void* block = __libc_calloc(count, size);
  if (isProviders(__builtin_return_address(0))) live.add(block);
  return block;
}

HEAP_API char* strdup(const char* text) noexcept {
  const void* caller = __builtin_return_address(0);
  const std::size_t size = std::strlen(text) + 1;
  auto* copy = static_cast<char*>(__libc_malloc(size));
  if (copy != nullptr) std::memcpy(copy, text, size);
  if (isProviders(caller) || isCodeOf(caller, "libfake_platform.so")) live.add(copy);
  return copy;
}

HEAP_API void free(void* block) noexcept {
  if (block != nullptr) live.remove(block);
  __libc_free(block);
}
