// The tables: what every function of the provider does for every key, and the result when each
// platform function that it calls fails. Written from the provider's contract, by group.
#ifndef FAULT_MATRIX_TABLES_H
#define FAULT_MATRIX_TABLES_H

#include <string>
#include <vector>

#include "course.h"
#include "ventaro/data_provider.h"
#include "world.h"

// What a function does for these keys; without keys, for every key that no row before names.
struct Row {
  std::vector<std::string> keys;
  Steps steps;
};
using Table = std::vector<Row>;

const Steps& stepsFor(const Table& table, const std::string& key);

// ---- The keys ----

inline constexpr char kMobileKey[] = VENTARO_KEY_POWER_ON_WITH_MOBILE_US;
inline constexpr char kWifiItemKey[] = VENTARO_KEY_WIFI;
inline constexpr char kDirectItemKey[] = VENTARO_KEY_WIFI_DIRECT;
inline constexpr char kWiredItemKey[] = VENTARO_KEY_WIRED_EAP;
inline constexpr char kFirstNetworkKey[] = VENTARO_KEY_SAVED_NETWORK_1;
inline constexpr char kSecondNetworkKey[] = VENTARO_KEY_SAVED_NETWORK_2;

// Every menu key, the keys of the provider's identity, and some that no item has.
const std::vector<std::string>& allKeys();

// ---- What several functions do ----

// The saved networks are read: `read` follows when there are two, `none` without the document, and
// in a world where it is misshapen the exception that leaves.
Steps networksAreRead(const World& world, Steps read, Steps none);
// The line of a network, when it is read and when its name or status is asked for.
Step networkLine(const World& world, int network);
const char* statusOf(const World& world, int network);

// The power-on-with-mobile mode is read: `on` or `off` follows, or `unknown` when it cannot be.
Steps mobileModeIsRead(bool isOn, Steps known, Steps unknown);

// Wi-Fi Direct's state is found out: `on` or `off` follows.
Steps directStateIsRead(const World& world, const Steps& on, const Steps& off);

// Whether the energy regulation applies: a flag that cannot be read counts as set.
Steps regulationIsRead(const World& world, Steps applies, Steps appliesNot);

// ---- The tables ----

Table getIntTable(const World& world);
Table setIntTable(const World& world, int value);
Table setStringTable(const World& world);
Table currentValueTable(const World& world);

Table getStringTable(const World& world);
Table displayNameTable(const World& world);
Table messageBoxTable(const World& world);

Table helpTextTable(const World& world);

Table listItemsTable(const World& world);
Table itemDisplayValueTable(const World& world);
Table itemIntValueTable(const World& world);
Table itemActionTable(const World& world);
Table freeListTable(const World& world);

Table titleIconTable(const World& world);
Table secondIconTable(const World& world);

Table visibilityIntTable(const World& world);
Table enableIntTable(const World& world);
Table alwaysVisibleTable(const World& world);
Table enableStringTable(const World& world);
Table enableDoubleTable(const World& world);
Table enableBoolTable(const World& world);

Table createProviderTable(const World& world);
Table deleteProviderTable(const World& world);
Table moduleInfoTable(const World& world);
Table releaseStringTable(const World& world);

// No functions of the table, but what the provider does of its own: the refresh after a Wi-Fi
// switch, and when the saved networks have changed.
Table refreshTimerTable(const World& world);
Table notificationTable(const World& world);

#endif  // FAULT_MATRIX_TABLES_H
