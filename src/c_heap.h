// Blocks of the C heap. Memory that crosses the provider's boundary comes from it: the platform
// hands such blocks in, and the framework frees them with free().
#ifndef VENTARO_C_HEAP_H
#define VENTARO_C_HEAP_H

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>
#include <utility>

struct FreeDeleter {
  void operator()(void* block) const { std::free(block); }
};

// Owns a block until it is handed out with release().
using CText = std::unique_ptr<char, FreeDeleter>;

// A block of zeroes; null when memory runs out.
inline CText zeroedBlock(std::size_t size) {
  return CText(static_cast<char*>(std::calloc(1, size)));
}

// As calloc(), but raises std::bad_alloc when memory runs out.
[[gnu::noinline]] inline void* newZeroedBytes(std::size_t count, std::size_t size) {
  void* const block = std::calloc(count, size);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

// `count` objects of zeroes, which the caller owns. Raises std::bad_alloc when memory runs out.
template <typename T>
T* newZeroed(std::size_t count = 1) {
  return static_cast<T*>(newZeroedBytes(count, sizeof(T)));
}

// Owns an array of addresses and what they lead to, until it is handed out with release().
template <typename T, typename Deleter = FreeDeleter>
class CArray {
 public:
  // Of null pointers; raises std::bad_alloc when memory runs out.
  explicit CArray(std::size_t size)
      : elements_(static_cast<T**>(newZeroedBytes(size, sizeof(void*)))), size_(size) {}
  // The same, but is null when memory runs out.
  CArray(std::size_t size, std::nothrow_t /*tag*/)
      : elements_(static_cast<T**>(std::calloc(size, sizeof(void*)))), size_(size) {}
  CArray(const CArray&) = delete;
  CArray& operator=(const CArray&) = delete;
  ~CArray() {
    if (elements_ == nullptr) return;
    for (std::size_t i = 0; i < size_; ++i) Deleter()(elements_[i]);
    std::free(elements_);
  }

  bool isNull() const { return elements_ == nullptr; }
  std::size_t size() const { return size_; }
  T*& operator[](std::size_t index) { return elements_[index]; }
  T** release() { return std::exchange(elements_, nullptr); }

 private:
  T** elements_;
  std::size_t size_;
};

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
