// Parsing of the JSON documents that other components leave in the configuration store.
#ifndef VENTARO_JSON_DOCUMENT_H
#define VENTARO_JSON_DOCUMENT_H

#include <json/reader.h>
#include <json/value.h>

#include <string>

// Parses `text` with the builder's settings into `root`. Returns false, with the reason in
// `errors`, for text that is not JSON, and for text that makes the library throw (nested deeper
// than its limit): the documents come from outside, so parsing must never throw.
bool parseJson(const Json::CharReaderBuilder& builder, const std::string& text, Json::Value& root,
               std::string& errors);

#endif  // VENTARO_JSON_DOCUMENT_H
