#include "language.h"

#include <libintl.h>

#include <clocale>
#include <cstdlib>
#include <stdexcept>

#include "fake_platform.h"
#include "platform/path.h"

namespace {

constexpr char kDomain[] = "ventaro";

}  // namespace

void useLanguage(const std::string& language) {
  setenv("LANGUAGE", language.c_str(), 1);
  // gettext notices the new language only when the locale changes. In the locale "C" it translates
  // nothing.
  std::setlocale(LC_ALL, "C");
  if (std::setlocale(LC_ALL, "C.UTF-8") == nullptr) throw std::runtime_error("no locale C.UTF-8");
}

void useLongTexts(int onOffSize) {
  fake_platform::setResourceRoot(TEST_RESOURCES);
  useLanguage("long" + std::to_string(onOffSize));
}

void bindCatalogues() {
  bindtextdomain(kDomain, platform_mkpath(PLATFORM_ROOT_RESOURCES, "res/locale"));
}

std::string tr(const char* sid) {
  return dgettext(kDomain, sid);
}
