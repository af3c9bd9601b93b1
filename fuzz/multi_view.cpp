// The multi-view document: the input is its text.
#include <json/reader.h>
#include <json/value.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "framework.h"
#include "require.h"
#include "tv.h"

using namespace fuzz;
using fake_platform::flags;
using fake_platform::store;

namespace {

constexpr char kB2bFlag[] = "product.b2b_option_support";
constexpr char kAdministratorKey[] = "memory/ephotel/hotelmenu/hotelfactorymode";

bool isText(const Json::Value& object, const char* member, const std::string& text) {
  return object.isObject() && object.isMember(member) && object[member].isString() &&
         object[member].asString() == text;
}

// What the document says, parsed in a different way.
bool isSplit(const std::string& text) {
  Json::Value root;
  std::string errors;
  const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
  try {
    if (!reader->parse(text.data(), text.data() + text.size(), &root, &errors)) return false;
  } catch (const Json::Exception&) {
    return false;
  }
  if (!isText(root, "status", "PostCondition") || !root.isMember("end")) return false;
  const auto styles = {"PAP_FN", "PAM_FN", "PAP_NF", "PAM_NF"};
  return std::ranges::any_of(
      styles, [&](const char* style) { return isText(root["end"], "style", style); });
}

bool isEnabled(Framework& framework) {
  const contract::Answer answer = framework.calls().isEnabledInt(VENTARO_KEY_DEVICE_NAME);
  require(!answer.hasRaised(), "the multi-view document never raises");
  return answer.result == 1;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  newTv();
  // The store's texts end at a NUL.
  const std::string text = untilNul({reinterpret_cast<const char*>(data), size});
  store().set("memory/multiscreen/state", text);
  Framework framework;
  const bool free = !isSplit(text);
  require(isEnabled(framework) == free, "the name may change unless the screen is split");
  flags().setBool(kB2bFlag, true);
  require(!isEnabled(framework), "a business product keeps the name");
  store().setBool(kAdministratorKey, true);
  require(isEnabled(framework) == free, "for its administrator, who may change it");
  return 0;
}
