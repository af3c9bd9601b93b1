#include "languages.h"

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <system_error>

#include "platform/host/resources.h"

namespace menu {

std::vector<std::string> languages() {
  std::vector<std::string> names;
  std::error_code error;
  const auto folder = platform::host::resourceRoot() / "res/locale";
  for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
    names.push_back(entry.path().filename().string());
  }
  std::ranges::sort(names);
  return names;
}

bool hasTexts(const std::string& list) {
  if (list.size() > kLongestLanguages) return false;
  const std::vector<std::string> known = languages();
  const auto isKnown = [&](const std::string& name) {
    return name == "C" || name == "POSIX" || std::ranges::binary_search(known, name);
  };
  std::istringstream locales(list);
  for (std::string locale; std::getline(locales, locale, ':');) {
    const std::string withTerritory = locale.substr(0, locale.find_first_of(".@"));
    if (isKnown(withTerritory) || isKnown(withTerritory.substr(0, withTerritory.find('_')))) {
      return true;
    }
  }
  return false;
}

}  // namespace menu
