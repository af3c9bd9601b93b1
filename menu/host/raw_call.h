// One call of a provider's function, and exactly what it did: for those who write a provider or a
// framework.
#ifndef MENU_HOST_RAW_CALL_H
#define MENU_HOST_RAW_CALL_H

#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "provider.h"

namespace menu {

struct Untouched {};  // the output is as it was before the call
struct Null {};
struct Pointer {};  // to something that is not a text

// What is in an output after the call. A text has its bytes as they came.
using RawValue = std::variant<Untouched, Null, Pointer, int, bool, std::string>;

struct RawResult {
  RawValue result;  // what the function returned
  std::vector<std::pair<std::string, RawValue>> outputs;
};

// The functions that can be called so, by their names.
std::vector<std::string> rawFunctions();

// Calls a function of the provider, a callback of the table or an exported check, with any key.
// Functions that set need a `value`, what to set, and those that look at an entry of a list, its
// number there, or "null" for a null pointer; release_string may have "null", a check what to
// check. What the provider hands out is given back to it. Raises UnknownError for a function that
// there is not or a wrong value, RefusedError for one that the provider does not offer, and
// CallbackError.
RawResult callRaw(const Provider& provider, const std::string& function, const std::string& key,
                  const std::optional<std::string>& value);

}  // namespace menu

#endif  // MENU_HOST_RAW_CALL_H
