// What the program prints: the input's lines are the texts, with a NUL where a line has "\0"
// written out. Whatever bytes they have, a terminal must obey nothing of what is printed, a name
// must not begin a line of its own, and JSON must be JSON in UTF-8 that tells of all of the text.
#include <glib.h>
#include <json/reader.h>
#include <json/value.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "../menu/cli/output.h"
#include "../menu/cli/stream.h"
#include "platform/host/visible_text.h"
#include "require.h"

using namespace fuzz;

namespace {

using menu::Item;
using platform::host::validText;

constexpr std::size_t kLongest = 8192;  // bytes of input; JSON of it is read back

// The texts of the input, empty ones when there are no more.
class Texts {
 public:
  explicit Texts(std::string_view input) : left_(input) {}

  std::string next() {
    const auto end = std::min(left_.find('\n'), left_.size());
    std::string text(left_.substr(0, end));
    left_.remove_prefix(std::min(end + 1, left_.size()));
    constexpr std::string_view kNul = "\\0";
    for (auto at = text.find(kNul); at != std::string::npos; at = text.find(kNul, at)) {
      text.replace(at, kNul.size(), 1, '\0');
    }
    // The only way for a text to have a line feed.
    std::ranges::replace(text, '\v', '\n');
    return text;
  }

 private:
  std::string_view left_;
};

bool turnsTheDirection(gunichar character) {
  constexpr std::u32string_view kMarks =
      U"\u061C\u200E\u200F\u202A\u202B\u202C\u202D\u202E\u2066\u2067\u2068\u2069";
  return kMarks.find(static_cast<char32_t>(character)) != std::u32string_view::npos;
}

void requireHarmless(const std::string& text) {
  require(g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr) != FALSE,
          "what is printed is UTF-8");
  for (const char* at = text.data(); at < text.data() + text.size();
       at = g_utf8_find_next_char(at, nullptr)) {
    const gunichar character = g_utf8_get_char(at);
    const GUnicodeType type = g_unichar_type(character);
    require(type != G_UNICODE_CONTROL || character == '\n', "no control character is printed");
    require(type != G_UNICODE_LINE_SEPARATOR && type != G_UNICODE_PARAGRAPH_SEPARATOR,
            "nothing but a line feed begins a line");
    require(!turnsTheDirection(character), "nothing that is printed turns the writing direction");
  }
}

void requireLines(const std::string& text, std::ptrdiff_t lines) {
  requireHarmless(text);
  require(std::ranges::count(text, '\n') == lines, "each thing that is listed has its one line");
}

Json::Value read(const std::string& text) {
  requireHarmless(text);
  Json::CharReaderBuilder strict;
  Json::CharReaderBuilder::strictMode(&strict.settings_);
  strict["strictRoot"] = false;
  const std::unique_ptr<Json::CharReader> reader(strict.newCharReader());
  Json::Value root;
  std::string errors;
  require(reader->parse(text.data(), text.data() + text.size(), &root, &errors), "JSON is JSON");
  return root;
}

template <typename Result>
Json::Value asJson(const Result& result) {
  const Json::Value indented = read(cli::jsonText(cli::toJson(result), "  "));
  const std::string line = cli::jsonText(cli::toJson(result), "");
  requireLines(line, 1);
  require(read(line) == indented, "JSON is the same on one line");
  return indented;
}

void requireText(const Json::Value& json, const std::string& text) {
  require(json == Json::Value(validText(text)), "JSON tells of all of the text");
}

// As the provider's functions give it.
Item itemOf(Texts& texts) {
  Item item;
  item.kind = menu::ItemKind::kChoice;
  item.key = texts.next();
  item.name = texts.next();
  item.value = texts.next();
  item.help = texts.next();
  item.titleIcon = texts.next();
  item.statusIcon = texts.next();
  item.list = {{texts.next(), 0, ITEM_FOLLOWING_ACTION_MESSAGE_BOX},
               {texts.next(), 1, ITEM_FOLLOWING_ACTION_REFRESH}};
  item.box = menu::Provider::MessageBox{texts.next(), texts.next(), texts.next(), 0};
  for (std::string* text : {&item.name, &*item.value, &item.help, &item.list[0].text,
                            &item.list[1].text, &item.box->text, &item.box->yes, &item.box->no}) {
    *text = validText(*text);
  }
  return item;
}

void checkItem(const Item& item) {
  requireLines(cli::toText(item), 1);
  requireLines(cli::toText(item, {cli::Detail::kLine, true}), 2);
  requireLines(cli::toText(item.list), 2);
  requireHarmless(cli::toText(item, {cli::Detail::kAll, true}));
  requireHarmless(cli::toText(item, {cli::Detail::kScreen, true}));
  requireHarmless(cli::toText(*item.box));
  const Json::Value json = asJson(item);
  requireText(json["key"], item.key);
  requireText(json["name"], item.name);
  requireText(json["value"], *item.value);
  requireText(json["help"], item.help);
  requireText(json["list"][1]["text"], item.list[1].text);
  requireText(json["box"]["buttons"][0], item.box->yes);
}

void checkStore(const std::string& key, const std::string& value) {
  const cli::StoreEntry entry(key, value);
  requireLines(cli::toText(entry), 1);
  requireLines(cli::toText(cli::StoreEntries{entry, {key + "2", 2}}), 2);
  requireLines(cli::toText(cli::RemovedKey{key}), 1);
  const Json::Value json = asJson(entry);
  requireText(json["key"], key);
  requireText(json["value"], value);
  requireText(asJson(cli::RemovedKey{key})["key"], key);
}

void checkDescriptions(const std::string& name, const std::string& description) {
  const cli::Descriptions descriptions = {{name, description}};
  requireLines(cli::toText(descriptions), 1);
  const Json::Value json = asJson(descriptions);
  requireText(json[0]["name"], name);
  requireText(json[0]["description"], description);
}

void checkComplaint(const std::string& message, const std::string& listed) {
  std::ostringstream printed;
  std::streambuf* const before = std::cerr.rdbuf(printed.rdbuf());
  cli::complain(message, "ventaro", {listed});
  std::cerr.rdbuf(before);
  requireLines(printed.str(), 2);
  require(printed.str().size() < 6 * kLongest, "a complaint is not endless");
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  setenv("VENTARO_COLOR", "never", 1);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > kLongest) return -1;
  Texts texts({reinterpret_cast<const char*>(data), size});
  const std::string first = texts.next();
  const std::string second = texts.next();
  checkStore(first, second);
  checkDescriptions(second, first);
  checkComplaint(first, second);
  checkItem(itemOf(texts));
  return 0;
}
