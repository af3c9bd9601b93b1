#include "json_document.h"

#include <cstring>
#include <memory>

bool isOutOfMemory(const Json::Exception& error) {
  return std::strstr(error.what(), "Failed to allocate") != nullptr;
}

bool parseJson(const std::string& text, JsonRules rules, Json::Value& root, std::string& errors) {
  try {
    Json::CharReaderBuilder builder;
    if (rules == JsonRules::kStrict) Json::CharReaderBuilder::strictMode(&builder.settings_);
    const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
    return reader->parse(text.data(), text.data() + text.size(), &root, &errors);
  } catch (const Json::Exception& error) {
    if (isOutOfMemory(error)) throw std::bad_alloc();
    errors = error.what();
    return false;
  }
}
