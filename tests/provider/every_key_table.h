// Every key that the provider knows, with similar keys, and what answers for each of them.
#ifndef EVERY_KEY_TABLE_H
#define EVERY_KEY_TABLE_H

#include <set>
#include <string>

// What answers for a value: a setting object, a saved network, or the device name's object.
enum class Owner { kMobile, kWifi, kDirect, kWired, kName, kNetwork1, kNetwork2 };
using enum Owner;

// When an item is enabled.
enum class Rule { kAlways, kOneNetwork, kTwoNetworks, kWholeScreen };
using enum Rule;

// An option list: the states of a saved network, or an owner's.
enum class List { kStates, kMobileList, kWifiList, kDirectList, kWiredList, kNameList };
using enum List;

// An icon: fixed, or the first or the second saved network's.
enum class Icon { kFullSignal, kFirstSignal, kSecondSignal, kFirstStatus, kSecondStatus };
using enum Icon;

// No name or help text: the key matches nothing.
inline constexpr const char* kNone = nullptr;

struct Row {
  const char* key;
  Rule checkEnableInt;
  Owner getInt;
  Owner setInt;
  Owner getString;
  List listItems;
  Icon titleIcon;
  Icon secondIcon;
  // These also have rows for prefixes.
  const char* displayName = kNone;
  const char* helpText = kNone;
};

// Names used outside the table too.
inline constexpr char kName1[] = "Net One";
inline constexpr char kName2[] = "Net Two";
inline constexpr char kResetName[] = "TV_SID_SYSTEM_RESET_NETWORK";
inline constexpr char kExpertName[] = "TV_SID_EXPERT_SETTINGS";

// What the tables say about a key.
Row expectedOf(const std::string& key);

// The known keys, all their prefixes, longer keys, and keys in other letter case.
std::set<std::string> allKeys();

#endif  // EVERY_KEY_TABLE_H
