// The platforms over which the matrix runs, chosen so that a failure makes a difference.
#ifndef FAULT_MATRIX_WORLD_H
#define FAULT_MATRIX_WORLD_H

#include <string>

enum class Product { kTv, kScreen, kFirstModular, kSecondModular, kProjector, kSmartMonitor };
enum class Screen { kWhole, kSplit };
// What the saved networks' document holds. The first network is connected and the second is being
// connected to, or the other way round.
enum class Networks { kFirstConnected, kSecondConnected, kMisshapen };

// The usual platform; the others differ from it in a few things only.
struct World {
  std::string name = "the usual platform";
  Product product = Product::kTv;
  bool businessOption = true;
  Screen screen = Screen::kWhole;
  bool energyRegulation = false;
  int radio = 1;
  int frequencyMhz = 5955;
  Networks networks = Networks::kFirstConnected;
  bool wiredListWasAsked = true;
};

inline constexpr char kTvName[] = "TV One";

inline constexpr char kNameKey[] = "db/menu/network/devicename/tv_name";
inline constexpr char kDefaultNameKey[] = "db/menu/network/devicename/default_tv_name";
inline constexpr char kLanguageKey[] = "db/menu_widget/language";
inline constexpr char kWiredKey[] = "db/menu/network/wiredeap";
inline constexpr char kDirectKey[] = "db/menu/network/wifidirect";
inline constexpr char kHighContrastKey[] = "db/menu/system/accessibility/highcontrast";
inline constexpr char kNetworksKey[] = "db/menu/network/TopSavedAP";
inline constexpr char kScreenKey[] = "memory/multiscreen/state";
inline constexpr char kHotelKey[] = "memory/ephotel/hotelmenu/hotelfactorymode";
inline constexpr char kRefreshKey[] = "db/menu/refresh_menu";

// The multi-view document.
std::string screenDocument(Screen screen);

// Makes the fake platform this world. The texts of the world are set by useWorldTexts().
void apply(const World& world);

// Publishes the world's saved networks.
void publishNetworks(const World& world);

// Restores what a run may have changed.
void restore(const World& world);

// A language in which the texts with placeholders show what was filled in, and every other text is
// its string ID.
void useWorldTexts();

#endif  // FAULT_MATRIX_WORLD_H
