#include "texts.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <sstream>
#include <system_error>

#include "../host/display_text.h"
#include "../host/language.h"
#include "../host/languages.h"
#include "../host/texts.h"
#include "environment.h"
#include "exit_codes.h"
#include "output.h"
#include "platform/host/nearest.h"
#include "platform/host/product.h"
#include "platform/host/resources.h"
#include "platform/host/visible_text.h"
#include "product_process.h"
#include "session.h"

namespace cli {

namespace {

using platform::host::visibleLine;
using platform::host::visibleText;

// A TV of its own for this command, which switches its settings. Removed at the end.
class ScratchFolder {
 public:
  ScratchFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "ventaro-tv-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
      throw std::system_error(errno, std::generic_category(), "cannot make " + name);
    }
    path_ = name;
  }
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  // The variables of a process that is to see the TV in the subfolder, as it left the factory.
  void use(const std::string& subfolder) const {
    setenv("VENTARO_STATE_DIR", (path_ / subfolder / "state").c_str(), 1);
    setenv("VENTARO_RUNTIME_DIR", (path_ / subfolder / "runtime").c_str(), 1);
    unsetenv("VENTARO_SCENARIO");
  }

 private:
  std::filesystem::path path_;
};

Json::Value measured(const std::string& bytes) {
  const std::string text = visibleText(bytes);
  std::size_t widest = 0;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) widest = std::max(widest, menu::columns(line));
  Json::Value json(Json::objectValue);
  json["text"] = bytes;
  json["bytes"] = Json::UInt64{bytes.size()};
  json["columns"] = Json::UInt64{widest};
  return json;
}

// What a process tells of a text: the text, and one place where it appears.
Json::Value describe(const menu::PlacedText& text) {
  Json::Value json(Json::objectValue);
  json["text"]["id"] = text.id;
  json["text"]["english"] = measured(text.english);
  json["text"]["translation"] = measured(text.text);
  Json::Value& place = json["place"];
  place["item"] = text.place.item;
  place["from"] = text.place.from;
  place["state"] = text.place.state;
  place["most"] = Json::UInt64{text.place.most};
  return json;
}

// Without their pages: each item stands for itself.
std::vector<menu::MenuNode> itemsOfAllRegions() {
  std::vector<menu::MenuNode> items;
  for (const char* region : {"us", "other"}) {
    const std::vector<menu::MenuNode> tree = Session::menuTree(region).items;
    for (const menu::MenuNode* node : menu::flatten(tree)) {
      if (std::ranges::find(items, node->key, &menu::MenuNode::key) != items.end()) continue;
      items.push_back({node->key, node->kind, node->listKey, {}});
    }
  }
  return items;
}

// The texts of the product that the environment names.
Json::Value textsOfProduct(Session& session, const std::string& language) {
  setenv("LANGUAGE", "en", 1);
  session.menu();
  Json::Value all(Json::arrayValue);
  for (const auto& text : menu::textsOf(session.provider(), itemsOfAllRegions(), language)) {
    all.append(describe(text));
  }
  return all;
}

bool isTooLong(const Json::Value& text, const Json::Value& place) {
  const auto most = place["most"].asUInt64();
  // One that fills its place may have been cut to fit.
  return most > 0 && text["translation"]["bytes"].asUInt64() >= most;
}

bool isUntranslated(const Json::Value& text) {
  return text["translation"]["text"] == text["id"] && text["english"]["text"] != text["id"];
}

// The texts of several products, each text once, with all the places where it appears.
class Report {
 public:
  explicit Report(std::string language, std::size_t products)
      : language_(std::move(language)), products_(products) {}

  void add(const std::string& product, const Json::Value& texts) {
    for (const Json::Value& each : texts) {
      const auto [found, isNew] = rows_.try_emplace(jsonText(each["text"], ""),
                                                    static_cast<Json::ArrayIndex>(rows_.size()));
      Json::Value& row = json_[found->second];
      if (isNew) row = each["text"];
      Json::Value& products = placeIn(row["places"], each["place"])["products"];
      const bool isTold = std::ranges::find(products, Json::Value(product)) != products.end();
      if (!isTold) products.append(product);
    }
  }

  // With the marks, once all products are in.
  void finish() {
    for (Json::Value& row : json_) {
      Json::Value marks(Json::arrayValue);
      if (isUntranslated(row)) marks.append("not translated");
      const bool tooLong = std::ranges::any_of(
          row["places"], [&row](const Json::Value& place) { return isTooLong(row, place); });
      if (tooLong) marks.append("too long");
      row["marks"] = marks;
    }
  }

  const Json::Value& json() const { return json_; }
  const std::string& language() const { return language_; }
  std::size_t products() const { return products_; }

 private:
  static Json::Value& placeIn(Json::Value& places, const Json::Value& wanted) {
    for (Json::Value& place : places) {
      const bool isIt = std::ranges::all_of(
          wanted.getMemberNames(),
          [&](const std::string& member) { return place[member] == wanted[member]; });
      if (isIt) return place;
    }
    return places.append(wanted);
  }

  std::string language_;
  std::size_t products_;
  Json::Value json_{Json::arrayValue};
  std::map<std::string, Json::ArrayIndex> rows_;
};

Json::Value toJson(const Report& report) {
  return report.json();
}

std::string inOneLine(const Json::Value& text) {
  std::string line;
  for (const char c : visibleText(text.asString())) line += c == '\n' ? "⏎" : std::string(1, c);
  return line;
}

std::string textLine(const std::string& language, const Json::Value& text) {
  const std::string gap(language.size() < 6 ? 6 - language.size() : 1, ' ');
  return "  " + language + gap + inOneLine(text["text"]) + "  (" + text["bytes"].asString() +
         " bytes, " + text["columns"].asString() + " columns)\n";
}

std::string placeLine(const Json::Value& place, std::size_t products) {
  std::string line =
      "  in " + visibleLine(place["item"].asString()) + ": " + place["from"].asString();
  const std::string state = place["state"].asString();
  if (!state.empty()) line += ", when " + visibleLine(state);
  if (place["products"].size() == products) return line;
  const char* separator = "; only ";
  for (const Json::Value& product : place["products"]) {
    line += separator + visibleLine(product.asString());
    separator = ", ";
  }
  return line;
}

std::string toText(const Report& report) {
  std::string text;
  for (const Json::Value& row : report.json()) {
    text += inOneLine(row["id"]) + "\n" + textLine("en", row["english"]);
    if (report.language() != "en") text += textLine(report.language(), row["translation"]);
    if (isUntranslated(row)) text += "  NOT TRANSLATED\n";
    for (const Json::Value& place : row["places"]) {
      text += placeLine(place, report.products());
      if (isTooLong(row, place)) text += "  TOO LONG: " + place["most"].asString() + " bytes fit";
      text += "\n";
    }
    text += "\n";
  }
  return text;
}

// All, unless one is named.
std::vector<std::string> wantedProducts() {
  const std::string named = variable("VENTARO_PRODUCT");
  if (!named.empty() && !wantsAllProducts()) return {named};
  return platform::host::resourceNames("products");
}

// The language that the menu would be in.
std::string menuLanguage() {
  const auto tellLanguage = [](std::string& language) {
    language = menu::wantedLanguage();
    return kDone;
  };
  return inProcessOf(variable("VENTARO_PRODUCT"), tellLanguage).output;
}

std::string languageFor(const Arguments& arguments) {
  const std::string asked = arguments.text("--language");
  const std::string language = asked.empty() ? menuLanguage() : asked;
  if (variable("VENTARO_PROVIDER").empty() && !menu::hasTexts(language)) {
    throw menu::UnknownError("there are no texts in \"" + language +
                             "\"; there are: " + platform::host::joined(menu::languages()));
  }
  return language;
}

}  // namespace

int texts(Session& session, const Arguments& arguments) {
  if (session.isLoaded()) {
    throw menu::RefusedError("this shell has a product already; \"exit\", then \"ventaro texts\"");
  }
  const std::string language = languageFor(arguments);
  const std::vector<std::string> products = wantedProducts();
  const ScratchFolder folder;
  Report report(language, products.size());
  for (std::size_t i = 0; i < products.size(); ++i) {
    platform::host::loadProduct(products[i]);  // or it is told here that there is none
    const auto [result, output] = inProcessOf(products[i], [&](std::string& told) {
      folder.use(std::to_string(i));
      told = jsonText(textsOfProduct(session, language), "");
      return kDone;
    });
    if (result != kDone) return result;
    report.add(products[i], jsonOf(output));
  }
  report.finish();
  Printer(arguments).print(report);
  return kDone;
}

}  // namespace cli
