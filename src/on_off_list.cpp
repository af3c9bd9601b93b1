#include "on_off_list.h"

#include <cstdlib>

#include "CMobileDeviceTV.h"
#include "translation.h"

void fillOnOffTexts(std::vector<std::string>& texts) {
  texts.clear();
  texts.emplace_back(translate("SID_OFF"));
  texts.emplace_back(translate("SID_ON"));
}

const char** copyListTexts(const std::vector<std::string>& texts, int* count) {
  auto** copies = static_cast<char**>(std::calloc(texts.size(), sizeof(char*)));
  for (std::size_t i = 0; i < texts.size(); ++i) {
    copies[i] = static_cast<char*>(std::calloc(1, kListTextSize));
    texts[i].copy(copies[i], kListTextSize);
  }
  *count = static_cast<int>(texts.size());
  return const_cast<const char**>(copies);
}

void putOnOffText(bool on, char** text) {
  CMobileDeviceTV::string2cstr(translate(on ? "SID_ON" : "SID_OFF"), text);
}
