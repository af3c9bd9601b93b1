#include "random_calls.h"

#include <iterator>

namespace contract {

KeyChoice headersKeys() {
  KeyChoice keys{{kKeys.begin(), kKeys.end()},
                 {VENTARO_KEY_WIFI, VENTARO_KEY_WIFI_DIRECT, VENTARO_KEY_WIRED_EAP,
                  VENTARO_KEY_POWER_ON_WITH_MOBILE_US, VENTARO_KEY_SAVED_NETWORK_1,
                  VENTARO_KEY_SAVED_NETWORK_2, VENTARO_KEY_SAVED_NETWORK_1_STATES,
                  VENTARO_KEY_SAVED_NETWORK_2_STATES}};
  for (const char* unknown : {"no/such/key", "menu/network/", ""}) keys.all.emplace_back(unknown);
  return keys;
}

FixedTexts fixedTexts(Calls& calls, const KeyChoice& keys) {
  FixedTexts texts;
  for (const std::string& key : keys.all) {
    if (!covers(Keys::kNamedAfterSavedNetworks, key)) {
      texts.names[key] = calls.displayName(key).text.value_or("");
    }
    texts.helps[key] = calls.helpText(key).text.value_or("");
  }
  return texts;
}

void RandomCalls::callOne() {
  using Step = void (*)(RandomCalls&);
  static constexpr const char* kInfos[] = {VENTARO_KEY_OWNER, VENTARO_KEY_MAIN_COMPONENT,
                                           VENTARO_KEY_SUB_COMPONENT};
  static constexpr Step kSteps[] = {
      [](RandomCalls& r) { r.setInt(); },
      [](RandomCalls& r) { r.setString(); },
      [](RandomCalls& r) { r.calls_.getInt(r.key()); },
      [](RandomCalls& r) { r.calls_.getInt(r.key()); },
      [](RandomCalls& r) { r.calls_.getString(r.key(), true); },
      [](RandomCalls& r) { r.calls_.getString(r.key(), false); },
      [](RandomCalls& r) { r.requireFixed(r.calls_.displayName(r.key()), r.texts_.names); },
      [](RandomCalls& r) { r.requireFixed(r.calls_.displayName(r.key()), r.texts_.names); },
      [](RandomCalls& r) { r.requireFixed(r.calls_.helpText(r.key()), r.texts_.helps); },
      [](RandomCalls& r) { r.requireFixed(r.calls_.helpText(r.key()), r.texts_.helps); },
      [](RandomCalls& r) { r.calls_.titleIcon(r.key()), r.calls_.secondIcon(r.key()); },
      [](RandomCalls& r) { r.calls_.moduleInfo(kInfos[r.pick(std::size(kInfos))]); },
      [](RandomCalls& r) { r.calls_.currentValue(r.key()); },
      [](RandomCalls& r) { r.calls_.messageBox(r.key()); },
      [](RandomCalls& r) { r.calls_.entries(r.calls_.listItems(r.key())); },
      [](RandomCalls& r) { r.calls_.entries(r.calls_.listItems(r.key())); },
      [](RandomCalls& r) { r.calls_.createProvider(); },
      [](RandomCalls& r) { r.calls_.isVisibleInt(r.key()), r.calls_.isEnabledInt(r.key()); },
      [](RandomCalls& r) { r.calls_.otherChecks(r.key()); },
      [](RandomCalls& r) { r.calls_.nulls(); },
  };
  kSteps[pick(std::size(kSteps))](*this);
}

std::size_t RandomCalls::pick(std::size_t choices) {
  return static_cast<std::size_t>(random_() % choices);
}

const std::string& RandomCalls::key() {
  const std::vector<std::string>& keys = pick(2) == 0 ? keys_.often : keys_.all;
  return keys[pick(keys.size())];
}

void RandomCalls::requireFixed(const Answer& answer,
                               const std::map<std::string, std::string>& texts) {
  const auto fixed = texts.find(answer.key);
  calls_.require(answer.hasRaised() || fixed == texts.end() || answer.text == fixed->second, answer,
                 "a translation stays the same");
}

// The values of the choices, and one on each side.
void RandomCalls::setInt() {
  const std::string& asked = key();
  calls_.setInt(asked, static_cast<int>(pick(4)) - 1);
}

// Some names are longer than the buffers that they are read into.
void RandomCalls::setString() {
  const std::size_t length = pick(8) == 0 ? 3000 : 1 + pick(40);
  calls_.setString(key(), std::string(length, '&'));
}

}  // namespace contract
