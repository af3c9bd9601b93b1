// The outcome of a call to a provider's function.
#ifndef CONTRACT_ANSWER_H
#define CONTRACT_ANSWER_H

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "functions.h"

namespace contract {

// Something that the provider handed out; the destructor returns it.
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

  // The caller returns it.
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

  // The exact type of the exception that was raised, for a std::system_error with its number; empty
  // when there was none. After an exception, only `untouched` is meaningful.
  std::string raised;

  int result = 0;  // for a check 1 for true, for get_list_items() the count

  // All outputs are unchanged, or there are none.
  bool untouched = true;
  int value = 0;                    // the int output: value, count, type of a box, following action
  std::optional<std::string> text;  // the text output; nothing if null or untouched
  std::string first;                // a box's buttons; only what was appended
  std::string second;
  void** items = nullptr;
  data_provider_cbs* table = nullptr;
  int position = -1;                     // of the entry that was queried
  std::optional<std::size_t> blockSize;  // of what was handed out, if the observer knows it

  Held held = {};  // what was handed out

  bool hasRaised() const { return !raised.empty(); }
  Item item(int position_) const { return {key, items[position_], position_}; }
};

}  // namespace contract

#endif  // CONTRACT_ANSWER_H
