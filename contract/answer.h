// What a call of a provider's function came to.
#ifndef CONTRACT_ANSWER_H
#define CONTRACT_ANSWER_H

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "functions.h"

namespace contract {

// Something that was handed out; it goes back to the provider when this goes.
class Held {
 public:
  Held() = default;
  explicit Held(std::function<void()> giveBack) : giveBack_(std::move(giveBack)) {}
  Held(Held&& other) noexcept : giveBack_(std::exchange(other.giveBack_, nullptr)) {}
  Held& operator=(Held&& other) noexcept {
    std::swap(giveBack_, other.giveBack_);
    return *this;
  }
  Held(const Held&) = delete;
  Held& operator=(const Held&) = delete;
  ~Held() {
    if (giveBack_) giveBack_();
  }

  // The caller gives it back.
  void release() { giveBack_ = nullptr; }

 private:
  std::function<void()> giveBack_;
};

// An entry of an option list.
struct Item {
  std::string key;  // of the list
  void* handle = nullptr;
  int position = -1;
};

struct Answer {
  const Function* function = nullptr;
  std::string key;

  // The exact type of the exception that left, of a std::system_error with its number; empty when
  // none did. Then nothing else counts but `untouched`.
  std::string raised;

  int result = 0;  // of a check 1 for true, of get_list_items() the count

  // All outputs are as they were before the call, or there are none.
  bool untouched = true;
  int value = 0;                    // the int output: value, count, type of a box, following action
  std::optional<std::string> text;  // the text output; nothing for null, and where it is untouched
  std::string first;                // a box's buttons; of a box only what was appended
  std::string second;
  void** items = nullptr;
  data_provider_cbs* table = nullptr;
  int position = -1;                     // of the entry that was asked about
  std::optional<std::size_t> blockSize;  // of what was handed out, where the observer knows it

  Held held = {};  // what was handed out

  bool hasRaised() const { return !raised.empty(); }
  Item item(int position_) const { return {key, items[position_], position_}; }
};

}  // namespace contract

#endif  // CONTRACT_ANSWER_H
