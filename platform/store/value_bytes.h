// The bytes that are stored for a value: a letter for its type, followed by its text.
#ifndef PLATFORM_STORE_VALUE_BYTES_H
#define PLATFORM_STORE_VALUE_BYTES_H

#include <string>
#include <string_view>

#include "platform/host/config_store.h"

namespace platform {

std::string encode(const host::StoreValue& value);

// The value stored under the key; a text points into the bytes. Raises StoreError when encode()
// does not make such bytes.
host::StoreView decode(std::string_view key, std::string_view bytes);

}  // namespace platform

#endif  // PLATFORM_STORE_VALUE_BYTES_H
