#include "json_document.h"

#include <memory>

bool parseJson(const Json::CharReaderBuilder& builder, const std::string& text, Json::Value& root,
               std::string& errors) {
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  try {
    return reader->parse(text.data(), text.data() + text.size(), &root, &errors);
  } catch (const Json::Exception& error) {
    errors = error.what();
    return false;
  }
}
