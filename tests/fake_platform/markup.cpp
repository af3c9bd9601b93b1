#include "platform/markup.h"

#include <cstring>

#include "call.h"

namespace fake_platform {
namespace {

std::string escaped(const char* text) {
  std::string result;
  for (; *text != '\0'; ++text) {
    switch (*text) {
      case '&':
        result += "&amp;";
        break;
      case '<':
        result += "&lt;";
        break;
      case '>':
        result += "&gt;";
        break;
      default:
        result += *text;
    }
  }
  return result;
}

}  // namespace
}  // namespace fake_platform

using namespace fake_platform;

char* evas_textblock_text_utf8_to_markup(const void* object, const char* utf8) {
  const Call call("evas_textblock_text_utf8_to_markup", Handle{object}, utf8);
  if (call.fails() || utf8 == nullptr) return nullptr;
  return strdup(escaped(utf8).c_str());
}
