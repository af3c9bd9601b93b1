// A JSON file written by people (a product, the factory settings, a scenario, the menu tree). Every
// mistake in it is reported with its file, line and member.
#ifndef PLATFORM_HOST_JSON_FILE_H
#define PLATFORM_HOST_JSON_FILE_H

#include <json/value.h>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "platform/export.h"
#include "platform/host/config_store.h"

namespace platform::host {

// All functions raise ConfigurationError, with a message like "scenarios/home.json:7: member
// \"signal_dbm\": expected an integer, found \"strong\"".
class PLATFORM_API JsonFile {
 public:
  // Reads the file: a regular one of at most 1 MiB, whose root must be an object.
  explicit JsonFile(std::filesystem::path path);

  const std::filesystem::path& path() const { return path_; }
  const Json::Value& root() const { return root_; }

  // A member of `object`, which is the root or lies below it. A missing member is an error too.
  std::string text(const Json::Value& object, const char* member) const;
  int integer(const Json::Value& object, const char* member) const;
  bool flag(const Json::Value& object, const char* member) const;
  const Json::Value& array(const Json::Value& object, const char* member) const;
  const Json::Value& dictionary(const Json::Value& object, const char* member) const;

  // All members of `object`, each of which is true, false, an integer or a string.
  std::map<std::string, StoreValue> values(const Json::Value& object) const;

  // Raises an error for any member of `object` that is not in the list, suggesting the nearest
  // name.
  void allowOnly(const Json::Value& object, const std::vector<std::string>& members) const;

  // Raises an error about `value`.
  [[noreturn]] void fail(const Json::Value& value, const std::string& reason) const;

  // Raises an error saying that `value`, at that member, should be something else.
  [[noreturn]] void expected(const char* what, const std::string& member,
                             const Json::Value& value) const;

 private:
  const Json::Value& get(const Json::Value& object, const char* member, const char* what,
                         bool (Json::Value::*isOne)() const) const;

  std::filesystem::path path_;
  std::string content_;
  Json::Value root_;
};

}  // namespace platform::host

#endif  // PLATFORM_HOST_JSON_FILE_H
