#include "allocations.h"

#include <cstddef>

// What the C library calls them beneath.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
}

namespace {

long count = 0;

}  // namespace

long allocationCount() {
  return count;
}

extern "C" {

void* malloc(std::size_t size) {
  ++count;
  return __libc_malloc(size);
}

void* calloc(std::size_t number, std::size_t size) {
  ++count;
  return __libc_calloc(number, size);
}

void* realloc(void* block, std::size_t size) {
  ++count;
  return __libc_realloc(block, size);
}

}  // extern "C"
