// The keys that the provider knows, and how the tables of what belongs to them are searched. Letter
// case matters.
#ifndef VENTARO_MENU_KEYS_H
#define VENTARO_MENU_KEYS_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string_view>

#include "ventaro/data_provider.h"

namespace menu_keys {

inline constexpr char kNetwork[] = VENTARO_KEY_NETWORK;
inline constexpr char kNetworkStatus[] = VENTARO_KEY_NETWORK_STATUS;
inline constexpr char kNetworkSettings[] = VENTARO_KEY_NETWORK_SETTINGS;
inline constexpr char kResetNetwork[] = VENTARO_KEY_RESET_NETWORK;
inline constexpr char kWiFiOnOff[] = VENTARO_KEY_WIFI;
inline constexpr char kSavedAp1[] = VENTARO_KEY_SAVED_NETWORK_1;
inline constexpr char kSavedAp2[] = VENTARO_KEY_SAVED_NETWORK_2;
inline constexpr char kSavedAp1States[] = VENTARO_KEY_SAVED_NETWORK_1_STATES;
inline constexpr char kSavedAp2States[] = VENTARO_KEY_SAVED_NETWORK_2_STATES;
inline constexpr char kExpertSettings[] = VENTARO_KEY_EXPERT_SETTINGS;
inline constexpr char kWifiDirect[] = VENTARO_KEY_WIFI_DIRECT;
inline constexpr char kEasyConnect[] = VENTARO_KEY_EASY_CONNECTION;
inline constexpr char kWiredEap[] = VENTARO_KEY_WIRED_EAP;
inline constexpr char kMobileDeviceTvUs[] = VENTARO_KEY_POWER_ON_WITH_MOBILE_US;
inline constexpr char kMobileDeviceTvNotUs[] = VENTARO_KEY_POWER_ON_WITH_MOBILE_NOT_US;
inline constexpr char kDeviceName[] = VENTARO_KEY_DEVICE_NAME;
inline constexpr char kSelectDeviceName[] = VENTARO_KEY_SELECT_DEVICE_NAME;
inline constexpr char kInstallCertificate[] = VENTARO_KEY_INSTALL_CERTIFICATE;
inline constexpr char kCertificateList[] = VENTARO_KEY_CERTIFICATE_LIST;
inline constexpr char kCertificateManager[] = VENTARO_KEY_CERTIFICATE_MANAGER;
inline constexpr char kOwner[] = VENTARO_KEY_OWNER;
inline constexpr char kMainComponent[] = VENTARO_KEY_MAIN_COMPONENT;
inline constexpr char kSubComponent[] = VENTARO_KEY_SUB_COMPONENT;

// How a table entry's key is compared with the key that was asked for.
enum class Match : std::uint8_t {
  kExact,        // as whole strings
  kLeadingPart,  // the asked key is the entry's key or any leading part of it, the empty key
                 // included
};

namespace detail {

inline constexpr std::string_view kAll[] = {
    kNetwork,    kNetworkStatus,    kNetworkSettings,    kResetNetwork,     kWiFiOnOff,
    kSavedAp1,   kSavedAp2,         kSavedAp1States,     kSavedAp2States,   kExpertSettings,
    kWifiDirect, kEasyConnect,      kWiredEap,           kMobileDeviceTvUs, kMobileDeviceTvNotUs,
    kDeviceName, kSelectDeviceName, kInstallCertificate, kCertificateList,  kCertificateManager,
    kOwner,      kMainComponent,    kSubComponent,
};
inline constexpr std::uint8_t kNone = 255;

// A hash table of the keys' numbers, twice as large as it must be and so with hardly a collision.
inline constexpr std::size_t kSlots = 64;

constexpr std::size_t slotOf(const char* key, std::size_t size) {
  return (size + std::size_t{5} * static_cast<unsigned char>(key[size - 1])) % kSlots;
}

inline constexpr auto kNumbers = [] {
  std::array<std::uint8_t, kSlots> numbers{};
  numbers.fill(kNone);
  std::uint8_t number = 0;
  for (const std::string_view key : kAll) {
    std::size_t slot = slotOf(key.data(), key.size());
    while (numbers[slot] != kNone) slot = (slot + 1) % kSlots;
    numbers[slot] = number++;
  }
  return numbers;
}();

// The number of a whole key; kNone for others.
inline unsigned numberOf(const char* asked) {
  const std::size_t size = std::strlen(asked);
  if (size == 0) return kNone;
  for (std::size_t slot = slotOf(asked, size);; slot = (slot + 1) % kSlots) {
    const unsigned number = kNumbers[slot];
    if (number == kNone) return kNone;
    const std::string_view& key = kAll[number];
    if (key.size() == size && std::memcmp(key.data(), asked, size) == 0) return number;
  }
}

}  // namespace detail

// One of the keys, as the tables hold it: its number, which takes no relocation as a pointer does.
class Key {
 public:
  // NOLINTNEXTLINE(google-explicit-constructor): the tables name the texts.
  consteval Key(const char* text) {
    while (detail::kAll[number_] != text) ++number_;
  }

  constexpr std::string_view text() const { return detail::kAll[number_]; }

 private:
  std::uint8_t number_ = 0;
};

namespace detail {

template <typename Entry>
constexpr Match matchOf(const Entry& entry) {
  if constexpr (requires { entry.match; }) {
    return entry.match;
  } else {
    return Match::kExact;
  }
}

template <typename Entry>
constexpr bool matches(std::string_view asked, const Entry& entry) {
  const std::string_view key = entry.key.text();
  if (asked.size() > key.size()) return false;
  if (asked.size() < key.size() && matchOf(entry) == Match::kExact) return false;
  return std::char_traits<char>::compare(asked.data(), key.data(), asked.size()) == 0;
}

template <const auto& table>
inline constexpr bool takesLeadingParts = std::ranges::any_of(table, [](const auto& entry) {
  return matchOf(entry) == Match::kLeadingPart;
});

// The place of the first entry that matches a key; the table's size when none does.
template <const auto& table>
constexpr std::size_t firstMatch(std::string_view asked) {
  std::size_t place = 0;
  while (place < std::size(table) && !matches(asked, table[place])) ++place;
  return place;
}

// For each known key, the place of the first entry that matches it.
template <const auto& table>
inline constexpr auto kPlaces = [] {
  std::array<std::uint8_t, std::size(kAll)> places{};
  for (std::size_t number = 0; number < places.size(); ++number) {
    places[number] = static_cast<std::uint8_t>(firstMatch<table>(kAll[number]));
  }
  return places;
}();

}  // namespace detail

// The first entry of a table that matches the asked key, by the entry's own `match` rule where it
// has one and else as whole strings; null when there is none. The order counts: a leading part may
// belong to several entries.
template <const auto& table>
const auto* find(const char* asked) {
  const unsigned number = detail::numberOf(asked);
  std::size_t place = std::size(table);
  if (number != detail::kNone) {
    place = detail::kPlaces<table>[number];
  } else if constexpr (detail::takesLeadingParts<table>) {
    place = detail::firstMatch<table>(asked);
  }
  return place < std::size(table) ? &table[place] : nullptr;
}

}  // namespace menu_keys

#endif  // VENTARO_MENU_KEYS_H
