// JSON as text: on one line, and as a value of the store, where a person may have changed it.
#ifndef PLATFORM_HOST_JSON_TEXT_H
#define PLATFORM_HOST_JSON_TEXT_H

#include <json/value.h>

#include <string>

namespace platform {

// The object or array that the key's text holds; an empty one when it holds none, or there is no
// text. Raises StoreError.
Json::Value readStoredJson(const std::string& key, Json::ValueType type);

// The value on one line.
std::string jsonLine(const Json::Value& value);

}  // namespace platform

#endif  // PLATFORM_HOST_JSON_TEXT_H
