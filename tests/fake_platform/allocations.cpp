// malloc and calloc of the whole process. They behave like libc's; the provider's calls are
// remembered and can be made to fail.
#include <atomic>
#include <cstdlib>
#include <unordered_map>

#include "call.h"
#include "caller.h"
#include "failing_allocations.h"
#include "platform/export.h"

extern "C" void* __libc_malloc(std::size_t size);
extern "C" void* __libc_calloc(std::size_t count, std::size_t size);

namespace fake_platform {
namespace {

struct State {
  int made = 0;
  int failing = 0;  // the number of the one that fails
  std::unordered_map<const void*, std::size_t> sizes;
};

State& state() {
  static State& instance = *new State;
  return instance;
}

// Counts an allocation of the provider; whether it is to fail.
bool countAllocation() {
  const StateLock lock(stateMutex());
  return ++state().made == state().failing;
}

void* remembered(void* block, std::size_t size) {
  const StateLock lock(stateMutex());
  state().sizes[block] = size;
  return block;
}

}  // namespace

void resetAllocations() {
  state() = State();
}

void failAllocation(int n) {
  const StateLock lock(stateMutex());
  state().failing = state().made + n;
}

int allocations() {
  const StateLock lock(stateMutex());
  return state().made;
}

std::size_t requestedSize(const void* block) {
  const StateLock lock(stateMutex());
  const auto found = state().sizes.find(block);
  return found != state().sizes.end() ? found->second : 0;
}

}  // namespace fake_platform

using namespace fake_platform;

PLATFORM_API void* malloc(std::size_t size) noexcept {
  if (!isProviderCode(__builtin_return_address(0))) return __libc_malloc(size);
  return countAllocation() ? nullptr : remembered(__libc_malloc(size), size);
}

PLATFORM_API void* calloc(std::size_t count, std::size_t size) noexcept {
  if (!isProviderCode(__builtin_return_address(0))) return __libc_calloc(count, size);
  return countAllocation() ? nullptr : remembered(__libc_calloc(count, size), count * size);
}
