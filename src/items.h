// The items of the menu, one row each. A row holds everything that the callbacks return for its
// key.
#ifndef VENTARO_ITEMS_H
#define VENTARO_ITEMS_H

#include <string_view>

#include "ventaro/data_provider.h"

// The value behind an item: the global object that keeps it, and what follows a choice from its
// list.
struct Setting {
  int (*getInt)(const char* key, int* value);
  int (*setInt)(const char* key, int value);
  // Gives the caller the value as the word On or Off, and logs it; null for the device name. If the
  // setting cannot be read, `*text` is untouched.
  void (*putText)(char** text) = nullptr;
  // The option list's texts; null if the list holds the states of a saved network.
  const char** (*listTexts)(const char* key, int* count) = nullptr;
  // What follows when the user chooses the list's first or second entry.
  ITEM_FOLLOWING_ACTION_TYPE firstAction = ITEM_FOLLOWING_ACTION_NONE;
  ITEM_FOLLOWING_ACTION_TYPE (*secondAction)() = nullptr;
  bool logsListTexts = false;
};

// The setting of every key without one of its own.
extern const Setting kDeviceNameSetting;

// A help text: a string ID, or the function that writes the text into a block of VENTARO_TEXT_SIZE
// zeroes.
struct HelpText {
  constexpr HelpText() = default;
  // NOLINTBEGIN(google-explicit-constructor): a row holds one or the other.
  constexpr HelpText(const char* id) : sid(id), isGiven(true) {}
  constexpr HelpText(void (*function)(char* block)) : write(function), isGiven(true) {}
  // NOLINTEND(google-explicit-constructor)

  const char* sid = nullptr;
  void (*write)(char* block) = nullptr;
  bool isGiven = false;
};

struct Item {
  std::string_view key;
  // The string ID of its name; null if it has none of its own.
  const char* name = nullptr;
  // Called before its name is translated.
  void (*beforeName)(const char* askedKey) = nullptr;
  HelpText help = {};
  const Setting& setting = kDeviceNameSetting;
  // 1 or 2: the item is the saved network at this position. Its name, icons and state are the
  // network's, it is enabled while there is such a network, and setting it connects. 0: no network.
  int savedNetwork = 0;
  // Whether only the whole key, not a prefix of it, gets its texts.
  bool needsWholeKey = false;
  // Whether it may be used now; null if it always may.
  bool (*isEnabled)() = nullptr;

  constexpr bool hasName() const { return name != nullptr || savedNetwork != 0; }
  constexpr bool hasHelp() const { return help.isGiven; }
};

// The item with this key; for an unknown key, an item without texts whose value is the device name.
const Item& itemOf(std::string_view key);

// The item whose name or help text is shown for a key: the first whose key equals it or begins with
// it; otherwise an item without that text.
const Item& itemWithNameOf(std::string_view key);
const Item& itemWithHelpOf(std::string_view key);

#endif  // VENTARO_ITEMS_H
