#include "language.h"

#include <libintl.h>

#include <clocale>
#include <cstdlib>
#include <string>

#include "languages.h"
#include "platform/host/config_store.h"
#include "platform/host/resources.h"
#include "ventaro/data_provider.h"

namespace menu {

namespace {

constexpr char kTextDomain[] = "ventaro-menu";

std::string tvLanguage() {
  using namespace platform::host;
  try {
    const auto value = ConfigStore::instance().get(VENTARO_STORE_LANGUAGE);
    const auto* language = value ? std::get_if<std::string>(&*value) : nullptr;
    return language != nullptr ? *language : "";
  } catch (const StoreError&) {
    return "";  // the first command that needs the store says what is wrong with it
  }
}

}  // namespace

std::string wantedLanguage() {
  // As it was set for this program, which sets it itself afterwards.
  static const char* const variable = std::getenv("LANGUAGE");
  static const std::string wanted = variable != nullptr ? variable : "";
  std::string language = !wanted.empty() ? wanted : tvLanguage();
  if (language.size() > kLongestLanguages) language = "en";
  // To gettext these mean string IDs instead of texts.
  if (language == "C" || language == "POSIX") language = "en";
  return language;
}

void useLanguage(const std::string& list) {
  setenv("LANGUAGE", list.c_str(), 1);
  // gettext notices that when the locale changes, and obeys it in every locale but "C". Every
  // machine has this one.
  std::setlocale(LC_ALL, "C");
  std::setlocale(LC_ALL, "C.UTF-8");
}

void chooseLanguage() {
  static std::string chosen;
  if (const std::string wanted = wantedLanguage(); chosen != wanted) {
    useLanguage(wanted + ":en");
    chosen = wanted;
  }
  bindtextdomain(kTextDomain, (platform::host::resourceRoot() / "res/locale").c_str());
}

std::string translated(const char* english) {
  return dgettext(kTextDomain, english);
}

}  // namespace menu
