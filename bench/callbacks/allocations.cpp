#include "allocations.h"

#include <cstdlib>
#include <cstring>
#include <vector>

#include "recording.h"

// The C library's internal names for these functions.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void __libc_free(void* block);
}

namespace {

constexpr std::size_t kBlocksOfEachSize = 16;  // the C library caches 7 of each size
constexpr std::size_t kSizeStep = 16;
constexpr std::size_t kLargestSize = 4096;

long count = 0;

}  // namespace

long allocationCount() {
  return count;
}

void fillHeap() {
  std::vector<void*> blocks;
  blocks.reserve(2 * kBlocksOfEachSize * kLargestSize / kSizeStep);
  for (std::size_t size = kSizeStep; size <= kLargestSize; size += kSizeStep) {
    for (std::size_t i = 0; i < kBlocksOfEachSize; ++i) {
      blocks.push_back(std::malloc(size));
      blocks.push_back(std::malloc(1));
    }
  }
  for (std::size_t i = 0; i < blocks.size(); i += 2) std::free(blocks[i]);
}

extern "C" {

void* malloc(std::size_t size) {
  ++count;
  void* block = __libc_malloc(size);
  if (recording::isOn && block != nullptr) [[unlikely]] {
    std::memset(block, recording::kUnwritten, size);
    recording::taken(block, size, false);
  }
  return block;
}

void* calloc(std::size_t number, std::size_t size) {
  ++count;
  void* block = __libc_calloc(number, size);
  if (recording::isOn) [[unlikely]]
    recording::taken(block, number * size, true);
  return block;
}

void* realloc(void* block, std::size_t size) {
  ++count;
  return __libc_realloc(block, size);
}

void free(void* block) {
  if (recording::isOn) [[unlikely]]
    recording::freed(block);
  __libc_free(block);
}

}  // extern "C"
