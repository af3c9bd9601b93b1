// Parsing of the JSON documents that other components leave in the configuration store.
#ifndef VENTARO_JSON_DOCUMENT_H
#define VENTARO_JSON_DOCUMENT_H

#include <json/reader.h>
#include <json/value.h>

#include <new>
#include <string>

// Whether jsoncpp raised this error because memory ran out. It has no type for that, only a text.
bool isOutOfMemory(const Json::Exception& error);

// Returns what `action` returns, and raises std::bad_alloc where jsoncpp says in its own way that
// memory ran out.
template <typename Action>
auto usingJson(const Action& action) {
  try {
    return action();
  } catch (const Json::Exception& error) {
    if (isOutOfMemory(error)) throw std::bad_alloc();
    throw;
  }
}

enum class JsonRules { kDefault, kStrict };  // jsoncpp's own

// Parses `text` by those rules into `root`. Returns false, with the reason in `errors`, for text
// that is not JSON, and for text that makes the library throw (nested deeper than its limit): the
// documents come from outside, so parsing must never throw. It raises only std::bad_alloc.
bool parseJson(const std::string& text, JsonRules rules, Json::Value& root, std::string& errors);

#endif  // VENTARO_JSON_DOCUMENT_H
