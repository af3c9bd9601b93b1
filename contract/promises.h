// What the functions of a provider must answer, as a table.
#ifndef CONTRACT_PROMISES_H
#define CONTRACT_PROMISES_H

#include <string_view>
#include <vector>

#include "answer.h"

namespace contract {

// Holds for every answer of the function to one of the keys, unless an exception left it.
struct Promise {
  const Function* function;
  std::vector<std::string_view> keys;  // none: every key
  bool (*holds)(const Answer& answer);
  const char* sentence;
};
using Promises = std::vector<Promise>;

// The promises that ventaro/data_provider.h makes for its keys. Calls checks them for every
// provider, together with those that do not depend on the key.
const Promises& headersPromises();

// Whether it is the key of one of the four settings with two choices.
bool isSetting(std::string_view key);

// Whether it is the key of a saved network's option list.
bool isStates(std::string_view key);

}  // namespace contract

#endif  // CONTRACT_PROMISES_H
