// A caller's buffer that a provider writes into.
#ifndef CONTRACT_BUFFER_H
#define CONTRACT_BUFFER_H

#include <cstddef>
#include <string>

namespace contract {

// Holds a text. A guard after its end detects a provider that writes too much.
class Buffer {
 public:
  Buffer(const std::string& text, std::size_t size) : size_(size), before_(size + kGuard, 'Z') {
    before_.replace(0, text.size() + 1, text.c_str(), text.size() + 1);
    bytes_ = before_;
  }

  char* data() { return bytes_.data(); }
  bool isUntouched() const { return bytes_ == before_; }
  // Whether a text ends within the size, and nothing was written beyond it.
  bool isKept() const {
    return bytes_.find('\0') < size_ && bytes_.compare(size_, kGuard, before_, size_, kGuard) == 0;
  }
  std::string text() const { return bytes_.substr(0, bytes_.find('\0')); }

 private:
  static constexpr std::size_t kGuard = 64;

  std::size_t size_;
  std::string before_;
  std::string bytes_;
};

}  // namespace contract

#endif  // CONTRACT_BUFFER_H
