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
  using Step = void (RandomCalls::*)();
  constexpr Step kSteps[] = {
      &RandomCalls::setInt,
      &RandomCalls::setString,
      &RandomCalls::getInt,
      &RandomCalls::getInt,
      &RandomCalls::getString,
      &RandomCalls::getString,
      &RandomCalls::getDisplayName,
      &RandomCalls::getDisplayName,
      &RandomCalls::getHelpText,
      &RandomCalls::getHelpText,
      &RandomCalls::getIcons,
      &RandomCalls::getModuleInfo,
      &RandomCalls::getCurrentValue,
      &RandomCalls::getMessageBox,
      &RandomCalls::useList,
      &RandomCalls::useList,
      &RandomCalls::makeTable,
      &RandomCalls::check,
      &RandomCalls::checkOfAnotherType,
      &RandomCalls::passNulls,
  };
  (this->*kSteps[pick(std::size(kSteps))])();
}

std::size_t RandomCalls::pick(std::size_t choices) {
  return static_cast<std::size_t>(random_() % choices);
}

const std::string& RandomCalls::key() {
  const std::vector<std::string>& keys = pick(2) == 0 ? keys_.often : keys_.all;
  return keys[pick(keys.size())];
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

void RandomCalls::getInt() {
  calls_.getInt(key());
}

void RandomCalls::getString() {
  calls_.getString(key(), pick(2) == 0);
}

void RandomCalls::getDisplayName() {
  requireFixed(calls_.displayName(key()), texts_.names);
}

void RandomCalls::getHelpText() {
  requireFixed(calls_.helpText(key()), texts_.helps);
}

void RandomCalls::requireFixed(const Answer& answer,
                               const std::map<std::string, std::string>& texts) {
  const auto fixed = texts.find(answer.key);
  calls_.require(answer.hasRaised() || fixed == texts.end() || answer.text == fixed->second, answer,
                 "a translation stays the same");
}

void RandomCalls::getIcons() {
  calls_.titleIcon(key());
  calls_.secondIcon(key());
}

void RandomCalls::getModuleInfo() {
  constexpr const char* kInfos[] = {VENTARO_KEY_OWNER, VENTARO_KEY_MAIN_COMPONENT,
                                    VENTARO_KEY_SUB_COMPONENT};
  calls_.moduleInfo(kInfos[pick(std::size(kInfos))]);
}

void RandomCalls::getCurrentValue() {
  calls_.currentValue(key());
}

void RandomCalls::getMessageBox() {
  calls_.messageBox(key());
}

void RandomCalls::useList() {
  calls_.entries(calls_.listItems(key()));
}

void RandomCalls::makeTable() {
  calls_.createProvider();
}

void RandomCalls::check() {
  calls_.isVisibleInt(key());
  calls_.isEnabledInt(key());
}

void RandomCalls::checkOfAnotherType() {
  const std::string& asked = key();
  calls_.isVisibleString(asked);
  calls_.isVisibleDouble(asked);
  calls_.isVisibleBool(asked);
  calls_.isEnabledString(asked);
  calls_.isEnabledDouble(asked);
  calls_.isEnabledBool(asked);
}

void RandomCalls::passNulls() {
  calls_.nulls();
}

}  // namespace contract
