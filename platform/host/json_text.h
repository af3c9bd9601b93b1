// JSON as text: on one line, or as a value of the store, which the user may have changed.
#ifndef PLATFORM_HOST_JSON_TEXT_H
#define PLATFORM_HOST_JSON_TEXT_H

#include <json/value.h>

#include <string>

namespace platform {

// The object or array in the key's text; an empty one when the text holds none or is missing.
// Raises StoreError.
Json::Value readStoredJson(const std::string& key, Json::ValueType type);

// The value on one line.
std::string jsonLine(const Json::Value& value);

}  // namespace platform

#endif  // PLATFORM_HOST_JSON_TEXT_H
