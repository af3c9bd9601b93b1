// A command's results: as text for people, or as JSON for programs with --json.
#ifndef MENU_CLI_OUTPUT_H
#define MENU_CLI_OUTPUT_H

#include <json/value.h>

#include <map>
#include <string>
#include <vector>

#include "../host/menu_model.h"
#include "command.h"
#include "platform/host/config_store.h"
#include "stream.h"

namespace cli {

// Values of the store by their keys, and one of them.
using StoreEntries = std::map<std::string, platform::host::StoreValue>;
using StoreEntry = StoreEntries::value_type;

// A key of the store that was removed.
struct RemovedKey {
  std::string key;
};

// What things are, by their names.
using Descriptions = std::map<std::string, std::string>;

// How much a person is shown of an item: its line, all that the provider says, or what a person at
// a terminal wants to know. JSON always has everything.
enum class Detail { kLine, kAll, kScreen };

struct View {
  Detail detail = Detail::kLine;
  bool keys = false;  // whether each item's key is shown
};

// Each line with its line feed. Keys, names and values are shown in one line, and nothing in the
// text commands a terminal but the styles of View's kScreen.
std::string toText(const std::vector<menu::Item>& items, const View& view = {});
std::string toText(const menu::Item& item, const View& view = {});
std::string toText(const std::vector<menu::Provider::ListEntry>& entries);
std::string toText(const menu::Provider::MessageBox& box);
std::string toText(const StoreEntry& entry);
std::string toText(const StoreEntries& entries);
std::string toText(const RemovedKey& removed);
std::string toText(const Descriptions& descriptions);

Json::Value toJson(const std::vector<menu::Item>& items);
Json::Value toJson(const menu::Item& item);
Json::Value toJson(const menu::Provider::ListEntry& entry);
Json::Value toJson(const std::vector<menu::Provider::ListEntry>& entries);
Json::Value toJson(const menu::Provider::MessageBox& box);
Json::Value toJson(const StoreEntry& entry);
Json::Value toJson(const StoreEntries& entries);
Json::Value toJson(const RemovedKey& removed);
Json::Value toJson(const Descriptions& descriptions);

// The document, with a line feed at its end; without indentation it is one line. It is JSON in
// UTF-8 whatever bytes the document's texts have: U+FFFD stands for each that is no character. What
// a terminal would obey is escaped.
std::string jsonText(const Json::Value& json, const char* indentation);

// What jsonText() wrote; null for what is no JSON.
Json::Value jsonOf(const std::string& text);

// Whether a command has one result, or one after the other for as long as it runs. In a series each
// result is one line of JSON, so that a program can read it before the next one comes.
enum class Results { kOne, kSeries };

class Printer {
 public:
  explicit Printer(const Arguments& arguments, Results results = Results::kOne)
      : json_(arguments.has("--json")), indentation_(results == Results::kOne ? "  " : "") {}

  // `view` is given for items only; without it their lines are shown.
  template <typename Result, typename... View>
  void print(const Result& result, const View&... view) const {
    cli::print(json_ ? jsonText(toJson(result), indentation_) : toText(result, view...));
  }

  // A line for people; programs are not told.
  void note(const std::string& line) const {
    if (!json_) printLine(line);
  }

 private:
  bool json_;
  const char* indentation_;
};

}  // namespace cli

#endif  // MENU_CLI_OUTPUT_H
