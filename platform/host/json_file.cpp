#include "platform/host/json_file.h"

#include <fcntl.h>
#include <json/reader.h>
#include <json/writer.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <optional>

#include "../store/files.h"
#include "platform/host/errors.h"
#include "platform/host/nearest.h"

namespace platform::host {

namespace {

constexpr std::size_t kLargestFile = std::size_t{1} << 20;  // bytes
constexpr std::size_t kLongestQuote = 60;                   // bytes of a wrong value in a message

// Why the file cannot be read; empty where it can.
std::string problemOf(const File& file) {
  struct stat status {};
  if (!file || fstat(file.get(), &status) != 0) return std::strerror(errno);
  if (S_ISREG(status.st_mode)) return "";
  if (S_ISDIR(status.st_mode)) return std::strerror(EISDIR);
  return S_ISFIFO(status.st_mode) ? "it is a FIFO, not a file" : "it is a device, not a file";
}

// One byte more than a file may have, or all that it has; nothing, with an errno, when reading
// fails.
std::optional<std::string> contentOf(const File& file) {
  std::string content(kLargestFile + 1, '\0');
  std::size_t size = 0;
  ssize_t got = 1;
  while (got > 0 && size < content.size()) {
    got = read(file.get(), content.data() + size, content.size() - size);
    if (got > 0) size += static_cast<std::size_t>(got);
    if (got < 0 && errno == EINTR) got = 1;
  }
  if (got < 0) return std::nullopt;
  content.resize(size);
  return content;
}

std::string readAll(const std::filesystem::path& path) {
  // A FIFO without a writer is opened, too, instead of being waited for.
  const File file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  std::string problem = problemOf(file);
  const std::optional<std::string> content = problem.empty() ? contentOf(file) : std::nullopt;
  if (content && content->size() <= kLargestFile) return *content;
  if (content) {
    problem = "it has more than " + std::to_string(kLargestFile) + " bytes";
  } else if (problem.empty()) {
    problem = std::strerror(errno);
  }
  throw ConfigurationError(path.string() + ": cannot be read: " + problem);
}

// The reader's report, "* Line 3, Column 5\n  Syntax error: ...\n", as "3: Syntax error: ...".
std::string firstError(const std::string& report) {
  constexpr std::string_view kLine = "Line ";
  const auto number = report.find(kLine);
  const auto comma = report.find(',', number);
  const auto newline = report.find('\n', comma);
  if (newline == std::string::npos) return report;
  const std::string message = report.substr(newline + 1);
  const auto begin = message.find_first_not_of(' ');
  return report.substr(number + kLine.size(), comma - number - kLine.size()) + ": " +
         message.substr(begin, message.find('\n', begin) - begin);
}

std::string shown(const Json::Value& value) {
  if (value.isNull()) return "nothing";
  Json::StreamWriterBuilder writer;
  writer["indentation"] = "";
  writer["precision"] = 15;  // as people write it: 2.4, not 2.3999999999999999
  const std::string text = Json::writeString(writer, value);
  return text.size() <= kLongestQuote ? text : text.substr(0, kLongestQuote) + "...";
}

}  // namespace

JsonFile::JsonFile(std::filesystem::path path) : path_(std::move(path)), content_(readAll(path_)) {
  Json::CharReaderBuilder builder;
  Json::CharReaderBuilder::strictMode(&builder.settings_);
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  std::string report;
  try {
    if (reader->parse(content_.data(), content_.data() + content_.size(), &root_, &report)) {
      if (!root_.isObject()) throw ConfigurationError(path_.string() + ":1: expected an object");
      return;
    }
  } catch (const Json::Exception&) {
    throw ConfigurationError(path_.string() + ": nested too deep");
  }
  throw ConfigurationError(path_.string() + ":" + firstError(report));
}

std::string JsonFile::text(const Json::Value& object, const char* member) const {
  return get(object, member, "a string", &Json::Value::isString).asString();
}

int JsonFile::integer(const Json::Value& object, const char* member) const {
  return get(object, member, "an integer", &Json::Value::isInt).asInt();
}

bool JsonFile::flag(const Json::Value& object, const char* member) const {
  return get(object, member, "true or false", &Json::Value::isBool).asBool();
}

const Json::Value& JsonFile::array(const Json::Value& object, const char* member) const {
  return get(object, member, "an array", &Json::Value::isArray);
}

const Json::Value& JsonFile::dictionary(const Json::Value& object, const char* member) const {
  return get(object, member, "an object", &Json::Value::isObject);
}

std::map<std::string, StoreValue> JsonFile::values(const Json::Value& object) const {
  std::map<std::string, StoreValue> values;
  for (const std::string& member : object.getMemberNames()) {
    const Json::Value& value = object[member];
    if (value.isBool()) {
      values.emplace(member, value.asBool());
    } else if (value.isInt()) {
      values.emplace(member, value.asInt());
    } else if (value.isString()) {
      values.emplace(member, value.asString());
    } else {
      expected("true, false, an integer or a string", member, value);
    }
  }
  return values;
}

void JsonFile::allowOnly(const Json::Value& object, const std::vector<std::string>& members) const {
  if (!object.isObject()) return;
  for (const std::string& member : object.getMemberNames()) {
    if (std::ranges::find(members, member) != members.end()) continue;
    fail(object[member],
         "member \"" + member + "\" means nothing here" + suggestion(member, members));
  }
}

void JsonFile::fail(const Json::Value& value, const std::string& reason) const {
  const auto end =
      content_.begin() + std::min<std::ptrdiff_t>(value.getOffsetStart(), std::ssize(content_));
  const auto line = 1 + std::count(content_.begin(), end, '\n');
  throw ConfigurationError(path_.string() + ":" + std::to_string(line) + ": " + reason);
}

void JsonFile::expected(const char* what, const std::string& member,
                        const Json::Value& value) const {
  fail(value, "member \"" + member + "\": expected " + what + ", found " + shown(value));
}

const Json::Value& JsonFile::get(const Json::Value& object, const char* member, const char* what,
                                 bool (Json::Value::*isOne)() const) const {
  if (!object.isObject()) expected("an object", member, object);
  if (!object.isMember(member)) {
    fail(object, std::string("member \"") + member + "\" is missing: expected " + what);
  }
  const Json::Value& value = object[member];
  if (!(value.*isOne)()) expected(what, member, value);
  return value;
}

}  // namespace platform::host
