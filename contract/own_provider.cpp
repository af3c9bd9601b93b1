#include "own_provider.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <string>

namespace contract {

namespace {

constexpr std::string_view kIconFolder = "/usr/apps/com.norvane.tv.theme-resource/shared/res/";

bool isSignalIcon(std::string_view path) {
  constexpr std::string_view kSignal =
      "ug-SystemSetupNetworkUG-efl/res/systemsetup/icon_wifi/oobe_icon_n_wifi_";
  if (!path.starts_with(kIconFolder)) return false;
  path.remove_prefix(kIconFolder.size());
  if (!path.starts_with(kSignal)) return false;
  const std::string_view rest = path.substr(kSignal.size());
  return rest == "4.png" ||
         (rest.size() == 5 && rest[0] >= '0' && rest[0] <= '4' && rest.ends_with(".svg"));
}

bool isStatusIcon(std::string_view path) {
  if (path.empty() || path == VENTARO_ICON_BUSY) return true;
  return path.starts_with(kIconFolder) &&
         (path.ends_with("/i_icon_info_check.svg") || path.ends_with("/r_icon_xs_check.png"));
}

bool isBlockOf(const Answer& answer, std::size_t size) {
  return !answer.blockSize || *answer.blockSize == size;
}

constexpr int kStates = 3;   // entries in the list of a saved network
constexpr int kChoices = 2;  // at most in any other

Promises makeOwnPromises() {
  return {
      {&function("get_int"),
       {},
       [](const Answer& a) { return a.result >= -1 && a.result <= 1; },
       "an integer value gives -1, 0 or 1"},
      {&function("get_int"),
       {VENTARO_KEY_WIFI_DIRECT, VENTARO_KEY_WIRED_EAP},
       [](const Answer& a) { return a.result != -1; },
       "Wi-Fi Direct and wired 802.1X can always be read"},
      {&function("get_int"),
       {},
       [](const Answer& a) {
         return isSetting(a.key) || a.result == -1 || a.value == 0 || a.value == 1;
       },
       "the device name is an entry of its list"},
      {&function("get_string"),
       {},
       [](const Answer& a) { return !a.text || isBlockOf(a, a.text->size() + 1); },
       "a value as text is as long as its block"},
      {&function("get_module_info"),
       {VENTARO_KEY_OWNER},
       [](const Answer& a) { return a.text == "ventarodevs"; },
       "the owner is this repository's"},
      {&function("get_module_info"),
       {VENTARO_KEY_MAIN_COMPONENT, VENTARO_KEY_SUB_COMPONENT},
       [](const Answer& a) { return a.text && a.text->starts_with("TP_"); },
       "the components are this repository's"},
      {&function("get_title_icon_path"),
       {},
       [](const Answer& a) { return a.text && isSignalIcon(*a.text); },
       "a title icon shows a signal"},
      {&function("get_second_icon_path"),
       {},
       [](const Answer& a) { return a.text && isStatusIcon(*a.text); },
       "a side icon is one of the four"},
      {&function("get_list_items"),
       {},
       [](const Answer& a) {
         return isStates(a.key) ? a.value == kStates : a.value >= 1 && a.value <= kChoices;
       },
       "a list has one or two entries, a saved network's has three"},
      {&function("get_list_items"),
       {},
       [](const Answer& a) {
         return isBlockOf(a, (isStates(a.key) ? kStates : kChoices) * sizeof(void*));
       },
       "an array has its size"},
      {&function("get_list_item_display_value"),
       {},
       [](const Answer& a) {
         return isBlockOf(a, isStates(a.key) ? VENTARO_TEXT_SIZE : VENTARO_LIST_TEXT_SIZE);
       },
       "an entry's block has its size"},
      {&function("get_list_item_int_value"),
       {},
       [](const Answer& a) { return a.value == a.position; },
       "an entry's value is its position"},
  };
}

Promises makeOwnPromisesInEnglish() {
  Promises promises = ownPromises();
  const Promises more = {
      {&function("set_int"),
       {},
       [](const Answer& a) { return a.result >= -1 && a.result <= 1; },
       "a set value gives -1, 0 or 1"},
      {&function("set_string"), {}, [](const Answer& a) { return a.result == 0; }, "a name is set"},
      {&function("get_int"),
       {},
       [](const Answer& a) { return a.result >= 0 && (a.value == 0 || a.value == 1); },
       "every value can be read"},
      {&function("get_string"),
       {},
       [](const Answer& a) {
         if (!isSetting(a.key)) return a.text && !a.text->empty();
         return a.text == "On" || a.text == "Off";
       },
       "a setting is On or Off, and there is a device name"},
      {&function("get_current_value_sid"),
       {},
       [](const Answer& a) { return a.result == 0 && a.text && !a.text->empty(); },
       "there is a device name"},
      {&function("get_messagebox_info"),
       {},
       [](const Answer& a) {
         return a.text && !a.text->empty() && a.first == "Yes" && a.second == "No";
       },
       "a box has a text, Yes and No"},
      {&function("get_list_items"),
       {},
       [](const Answer& a) { return a.value == (isStates(a.key) ? kStates : kChoices); },
       "a list has all its entries"},
      {&function("get_list_item_display_value"),
       {},
       [](const Answer& a) { return a.text && !a.text->empty(); },
       "an entry's text is not empty"},
  };
  std::ranges::copy(more, std::back_inserter(promises));
  return promises;
}

}  // namespace

const Promises& ownPromises() {
  static const Promises promises = makeOwnPromises();
  return promises;
}

const Promises& ownPromisesInEnglish() {
  static const Promises promises = makeOwnPromisesInEnglish();
  return promises;
}

void freeUncovered(void** items, int count) {
  if (count == 1) std::free(items[1]);
}

}  // namespace contract
