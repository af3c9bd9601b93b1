// What the answers of a provider's functions must be, as a table.
#ifndef CONTRACT_PROMISES_H
#define CONTRACT_PROMISES_H

#include <string_view>
#include <vector>

#include "answer.h"

namespace contract {

// Holds for every answer of the function, when no exception left it, to one of the keys.
struct Promise {
  const Function* function;
  std::vector<std::string_view> keys;  // none: every key
  bool (*holds)(const Answer& answer);
  const char* sentence;
};
using Promises = std::vector<Promise>;

// Those that ventaro/data_provider.h makes for its keys. Calls requires them of every provider,
// with all that does not depend on the key.
const Promises& headersPromises();

// A key of the four settings with two choices.
bool isSetting(std::string_view key);

// The option list of a saved network.
bool isStates(std::string_view key);

}  // namespace contract

#endif  // CONTRACT_PROMISES_H
