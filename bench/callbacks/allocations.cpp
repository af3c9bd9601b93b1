#include "allocations.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <vector>

// What the C library calls them beneath.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
}

namespace {

struct Block {
  const void* start;
  std::size_t size;
};

constexpr long kRemembered = 4096;
constexpr std::size_t kBlocksOfEachSize = 16;  // the C library keeps 7 of each size aside
constexpr std::size_t kSizeStep = 16;
constexpr std::size_t kLargestSize = 4096;

long count = 0;
bool isWatching = false;
std::array<Block, kRemembered> lastBlocks{};

void* counted(void* block, std::size_t size) {
  if (isWatching) [[unlikely]]
    lastBlocks[count % kRemembered] = {block, size};
  ++count;
  return block;
}

}  // namespace

long allocationCount() {
  return count;
}

void watchBlocks() {
  isWatching = true;
}

// The newest first: an address is used again.
std::size_t blockSize(const void* block) {
  for (long age = 1; age <= kRemembered && age <= count; ++age) {
    const Block& candidate = lastBlocks[(count - age) % kRemembered];
    if (candidate.start == block) return candidate.size;
  }
  throw std::logic_error("a block that was handed out is not from the heap");
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
  void* block = __libc_malloc(size);
  if (isWatching && block != nullptr) [[unlikely]]
    std::memset(block, '?', size);
  return counted(block, size);
}

void* calloc(std::size_t number, std::size_t size) {
  return counted(__libc_calloc(number, size), number * size);
}

void* realloc(void* block, std::size_t size) {
  return counted(__libc_realloc(block, size), size);
}

}  // extern "C"
