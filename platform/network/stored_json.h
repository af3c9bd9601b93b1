// JSON as values of the store, where a person may have changed it.
#ifndef PLATFORM_NETWORK_STORED_JSON_H
#define PLATFORM_NETWORK_STORED_JSON_H

#include <json/value.h>

#include <string>

namespace platform {

// What the key's text holds; null when it holds no JSON, or there is none. Raises StoreError.
Json::Value readStoredJson(const std::string& key);

// The value on one line.
std::string jsonLine(const Json::Value& value);

}  // namespace platform

#endif  // PLATFORM_NETWORK_STORED_JSON_H
