// The menu framework in a fuzz target: contract/ calls the provider, and ends the process when a
// promise is broken. This class adds what only the fake TV knows about a call: the lock, the cause
// of an exception, the sizes of blocks.
#ifndef FUZZ_FRAMEWORK_H
#define FUZZ_FRAMEWORK_H

#include <optional>
#include <string>
#include <string_view>

#include "contract/calls.h"
#include "tv.h"

namespace fuzz {

// The text as C sees it: up to its first NUL.
std::string untilNul(std::string_view text);

// The same, cut to fit into a block of that size, NUL included.
std::string cut(std::string_view text, std::size_t blockSize);

class Framework : private contract::Observer {
 public:
  Framework();
  ~Framework() noexcept override;  // a table that is not taken back is a finding

  contract::Calls& calls() { return calls_; }

  // Requires that the device name in the caller's buffer equals the store's.
  void requireCurrentValue(const std::string& key);

  // Returns only the array of a list, as with a count below 1, and frees the entries.
  void giveBackArrayAlone(contract::Answer& list);

 private:
  void broken(const contract::Breach& breach) override;
  void before(const contract::Function& function) override;
  void after(const contract::Answer& answer) override;
  std::optional<std::size_t> sizeOf(const void* block) override;
  void givesBack(void** items, int count) override;

  contract::Provider provider_;
  contract::Calls calls_;
  std::optional<LockRule> rule_;  // of the current call
};

}  // namespace fuzz

#endif  // FUZZ_FRAMEWORK_H
