// Blocks of the C heap. Memory that crosses the provider's boundary comes from it: the platform
// hands such blocks in, and the framework frees them with free().
#ifndef VENTARO_C_HEAP_H
#define VENTARO_C_HEAP_H

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>

struct FreeDeleter {
  void operator()(void* block) const { std::free(block); }
};

// Owns a block until it is handed out with release().
using CText = std::unique_ptr<char, FreeDeleter>;

// A block of zeroes; null when memory runs out.
inline CText zeroedBlock(std::size_t size) {
  return CText(static_cast<char*>(std::calloc(1, size)));
}

// Puts a text, cut to `size` - 1 bytes, and a NUL into a buffer of `size` bytes.
[[gnu::noinline]] inline void copyText(char* buffer, std::size_t size, std::string_view text) {
  const std::size_t length = std::min(text.size(), size - 1);
  std::memcpy(buffer, text.data(), length);
  buffer[length] = '\0';
}

// Gives the caller a copy of `source` in `*target`; null when memory runs out.
inline void copyToHeap(const char* source, char** target) {
  const std::size_t size = std::strlen(source) + 1;
  *target = static_cast<char*>(std::malloc(size));
  if (*target != nullptr) std::memcpy(*target, source, size);
}

#endif  // VENTARO_C_HEAP_H
