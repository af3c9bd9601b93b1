#include "call.h"

#include "../host/main_loop.h"
#include "../host/raw_call.h"
#include "exit_codes.h"
#include "output.h"
#include "platform/host/visible_text.h"
#include "session.h"

namespace cli {

namespace {

using menu::RawValue;

struct CallReport {
  std::string function;
  std::string key;
  menu::RawResult did;
};

struct AsText {
  std::string operator()(menu::Untouched /*value*/) const { return "untouched"; }
  std::string operator()(menu::Null /*value*/) const { return "null"; }
  std::string operator()(menu::Pointer /*value*/) const { return "a pointer"; }
  std::string operator()(int value) const { return std::to_string(value); }
  std::string operator()(bool value) const { return value ? "true" : "false"; }
  std::string operator()(const std::string& value) const {
    return "\"" + platform::host::visibleLine(value) + "\" (" + std::to_string(value.size()) +
           " bytes)";
  }
};

Json::Value mark(const char* member) {
  Json::Value json(Json::objectValue);
  json[member] = true;
  return json;
}

struct AsJson {
  Json::Value operator()(menu::Untouched /*value*/) const { return mark("untouched"); }
  Json::Value operator()(menu::Null /*value*/) const { return Json::nullValue; }
  Json::Value operator()(menu::Pointer /*value*/) const { return mark("pointer"); }
  Json::Value operator()(int value) const { return value; }
  Json::Value operator()(bool value) const { return value; }
  Json::Value operator()(const std::string& value) const {
    Json::Value json(Json::objectValue);
    json["text"] = value;
    json["bytes"] = Json::UInt64{value.size()};
    return json;
  }
};

std::string toText(const CallReport& report) {
  std::string text = "result = " + std::visit(AsText(), report.did.result) + "\n";
  for (const auto& [name, value] : report.did.outputs) {
    text.append(name).append(" = ").append(std::visit(AsText(), value)).append("\n");
  }
  return text;
}

Json::Value toJson(const CallReport& report) {
  Json::Value json(Json::objectValue);
  json["function"] = report.function;
  json["key"] = report.key;
  json["result"] = std::visit(AsJson(), report.did.result);
  json["outputs"] = Json::objectValue;
  for (const auto& [name, value] : report.did.outputs) {
    json["outputs"][name] = std::visit(AsJson(), value);
  }
  return json;
}

}  // namespace

int call(Session& session, const Arguments& arguments) {
  const std::vector<std::string> given = arguments.texts("VALUE");
  const auto value = given.empty() ? std::nullopt : std::optional(given.front());
  CallReport report{arguments.text("CALLBACK"), arguments.text("KEY"), {}};
  report.did = callRaw(session.provider(), report.function, report.key, value);
  menu::runPending();
  Printer(arguments).print(report);
  return kDone;
}

}  // namespace cli
