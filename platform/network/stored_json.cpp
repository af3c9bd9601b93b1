#include "stored_json.h"

#include <json/reader.h>
#include <json/writer.h>

#include <memory>

#include "platform/host/config_store.h"

namespace platform {

Json::Value readStoredJson(const std::string& key) {
  const auto value = host::ConfigStore::instance().get(key);
  const auto* text = value ? std::get_if<std::string>(&*value) : nullptr;
  if (text == nullptr) return {};
  Json::Value root;
  std::string errors;
  const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
  try {
    const bool parsed = reader->parse(text->data(), text->data() + text->size(), &root, &errors);
    return parsed ? root : Json::Value();
  } catch (const Json::Exception&) {
    return {};  // nested too deep
  }
}

std::string jsonLine(const Json::Value& value) {
  Json::StreamWriterBuilder writer;
  writer["indentation"] = "";
  writer["emitUTF8"] = true;
  return Json::writeString(writer, value);
}

}  // namespace platform
