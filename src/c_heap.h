// Blocks of the C heap, which is what crosses the provider's boundary: the platform hands them in,
// the framework takes them over and gives them back to free().
#ifndef VENTARO_C_HEAP_H
#define VENTARO_C_HEAP_H

#include <cstddef>
#include <cstdlib>
#include <memory>

struct FreeDeleter {
  void operator()(void* block) const { std::free(block); }
};

// Owns a block until it is handed out with release().
using CText = std::unique_ptr<char, FreeDeleter>;

// A block of zeroes, null without memory.
inline CText zeroedBlock(std::size_t size) {
  return CText(static_cast<char*>(std::calloc(1, size)));
}

#endif  // VENTARO_C_HEAP_H
