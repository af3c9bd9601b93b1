#include "json_text.h"

#include <json/reader.h>
#include <json/writer.h>

#include <sstream>

#include "platform/host/config_store.h"

namespace platform {

Json::Value readStoredJson(const std::string& key, Json::ValueType type) {
  const auto value = host::ConfigStore::instance().get(key);
  const auto* text = value ? std::get_if<std::string>(&*value) : nullptr;
  if (text == nullptr) return type;
  Json::Value root;
  try {
    std::istringstream(*text) >> root;
  } catch (const Json::Exception&) {
    return type;
  }
  return root.type() == type ? root : type;
}

std::string jsonLine(const Json::Value& value) {
  Json::StreamWriterBuilder writer;
  writer["indentation"] = "";
  writer["emitUTF8"] = true;
  return Json::writeString(writer, value);
}

}  // namespace platform
