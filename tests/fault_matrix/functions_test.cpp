// Every function of the provider, for every key, while each platform function fails: always, on its
// first, second or third call only, and always although its work is done.
#include "fault_matrix.h"

namespace {

using MakeTable = Table (*)(const World&);

World with(const std::string& name, const std::function<void(World&)>& change) {
  World world;
  world.name = name;
  change(world);
  return world;
}

World product(Product product, const std::string& name) {
  return with(name, [&](World& world) { world.product = product; });
}

const World kUsual;
const World kEverydayProduct =
    with("a product without the business option", [](World& w) { w.businessOption = false; });
const World kSplitScreen = with("a split screen", [](World& w) { w.screen = Screen::kSplit; });
const World kRegulated = with("a regulated product", [](World& w) { w.energyRegulation = true; });
const World kRegulatedRadioOff = with("a regulated product with the radio off", [](World& w) {
  w.energyRegulation = true;
  w.radio = 0;
});
const World kAt5Ghz = with("an access point at 5 GHz", [](World& w) { w.frequencyMhz = 5915; });
const World kSecondConnected =
    with("the second network connected", [](World& w) { w.networks = Networks::kSecondConnected; });
const World kMisshapen = with("a misshapen document of the saved networks",
                              [](World& w) { w.networks = Networks::kMisshapen; });
const World kWiredListNotAsked =
    with("the wired list not asked for", [](World& w) { w.wiredListWasAsked = false; });

class EveryFault : public FaultMatrix {
 protected:
  void expectOn(const World& world, const char* function, MakeTable makeTable) {
    enter(world);
    expectTable(functions().named(function), makeTable(world));
    leave();
  }

  void expectSetInt(const World& world, int value) {
    enter(world);
    expectTable(functions().setInt(value), setIntTable(world, value));
    leave();
  }
};

// ---- Values ----

TEST_F(EveryFault, OfReadingAnIntegerIsAnsweredAsTheTableSays) {
  expectOn(kUsual, "get_int", getIntTable);
  expectOn(kAt5Ghz, "get_int", getIntTable);
}

TEST_F(EveryFault, OfSettingAnIntegerIsAnsweredAsTheTableSays) {
  for (const int value : {0, 1, 2, -1}) expectSetInt(kUsual, value);
  expectSetInt(kMisshapen, 1);
}

TEST_F(EveryFault, OfSettingAnIntegerBeforeTheWiredListWasAskedForIsAnsweredAsTheTableSays) {
  expectSetInt(kWiredListNotAsked, 1);
}

TEST_F(EveryFault, OfTypingANameIsAnsweredAsTheTableSays) {
  expectOn(kUsual, "set_string", setStringTable);
}

TEST_F(EveryFault, OfReadingTheNameIsAnsweredAsTheTableSays) {
  expectOn(kUsual, "get_current_value_sid", currentValueTable);
}

// ---- Texts ----

TEST_F(EveryFault, OfReadingATextIsAnsweredAsTheTableSays) {
  expectOn(kUsual, "get_string", getStringTable);
  expectOn(kAt5Ghz, "get_string", getStringTable);
}

TEST_F(EveryFault, OfNamingAnItemIsAnsweredAsTheTableSays) {
  expectOn(kUsual, "get_display_name", displayNameTable);
  expectOn(kMisshapen, "get_display_name", displayNameTable);
}

TEST_F(EveryFault, OfHelpingOnAnyProductIsAnsweredAsTheTableSays) {
  for (const World& world : {product(Product::kTv, "a television"),  //
                             product(Product::kScreen, "a tunerless screen"),
                             product(Product::kFirstModular, "a modular display"),
                             product(Product::kSecondModular, "a second modular display"),
                             product(Product::kProjector, "a projector"),
                             product(Product::kSmartMonitor, "a smart monitor")}) {
    expectOn(world, "get_help_text", helpTextTable);
  }
}

TEST_F(EveryFault, OfAskingForConfirmationIsAnsweredAsTheTableSays) {
  expectOn(kUsual, "get_messagebox_info", messageBoxTable);
  expectOn(kRegulated, "get_messagebox_info", messageBoxTable);
  expectOn(kRegulatedRadioOff, "get_messagebox_info", messageBoxTable);
}

// ---- Lists ----

TEST_F(EveryFault, OfListingIsAnsweredAsTheTableSays) {
  expectOn(kUsual, "get_list_items", listItemsTable);
  expectOn(kRegulated, "get_list_items", listItemsTable);
}

TEST_F(EveryFault, LeavesWhatIsSaidOfAListsEntryAlone) {
  expectOn(kUsual, "get_list_item_display_value", itemDisplayValueTable);
  expectOn(kUsual, "get_list_item_int_value", itemIntValueTable);
  expectOn(kUsual, "get_list_item_following_action_type", itemActionTable);
}

TEST_F(EveryFault, LeavesTheReturningOfListsAlone) {
  expectOn(kUsual, "free_list_items", freeListTable);
}

// ---- Icons ----

TEST_F(EveryFault, OfShowingATitleIconIsAnsweredAsTheTableSays) {
  expectOn(kUsual, "get_title_icon_path", titleIconTable);
  expectOn(kMisshapen, "get_title_icon_path", titleIconTable);
}

TEST_F(EveryFault, OfShowingASecondIconIsAnsweredAsTheTableSays) {
  expectOn(kUsual, "get_second_icon_path", secondIconTable);
  expectOn(kSecondConnected, "get_second_icon_path", secondIconTable);
  expectOn(kMisshapen, "get_second_icon_path", secondIconTable);
}

// ---- Checks ----

TEST_F(EveryFault, OfCheckingTheVisibilityIsAnsweredAsTheTableSays) {
  expectOn(kUsual, "check_visibility_int", visibilityIntTable);
  expectOn(kEverydayProduct, "check_visibility_int", visibilityIntTable);
}

TEST_F(EveryFault, OfCheckingWhatIsEnabledIsAnsweredAsTheTableSays) {
  for (const World& world : {kUsual, kEverydayProduct, kSplitScreen, kMisshapen}) {
    expectOn(world, "check_enable_int", enableIntTable);
  }
}

TEST_F(EveryFault, LeavesTheOtherChecksAlone) {
  expectOn(kUsual, "check_visibility_string", alwaysVisibleTable);
  expectOn(kUsual, "check_visibility_double", alwaysVisibleTable);
  expectOn(kUsual, "check_visibility_bool", alwaysVisibleTable);
  expectOn(kUsual, "check_enable_string", enableStringTable);
  expectOn(kUsual, "check_enable_double", enableDoubleTable);
  expectOn(kUsual, "check_enable_bool", enableBoolTable);
}

// ---- The provider itself ----

TEST_F(EveryFault, OfCreatingAnotherProviderIsAnsweredAsTheTableSays) {
  expectOn(kUsual, "create_provider", createProviderTable);
}

TEST_F(EveryFault, LeavesTheDeletingOfAProviderAlone) {
  expectOn(kUsual, "delete_provider", deleteProviderTable);
}

TEST_F(EveryFault, OfTheModuleInformationIsAnsweredAsTheTableSays) {
  expectOn(kUsual, "get_module_info", moduleInfoTable);
}

TEST_F(EveryFault, LeavesTheReturningOfTextsAlone) {
  expectOn(kUsual, "release_string", releaseStringTable);
}

// ---- What the provider does of its own ----

TEST_F(EveryFault, OfTheRefreshAfterASwitchIsAnsweredAsTheTableSays) {
  enter(kUsual);
  expectTable(functions().switchAndEightSeconds(), refreshTimerTable(kUsual), {kWifiItemKey});
}

TEST_F(EveryFault, OfTheRefreshForTheSavedNetworksIsAnsweredAsTheTableSays) {
  enter(kUsual);
  expectTable(Functions::notification(), notificationTable(kUsual), {kFirstNetworkKey});
}

}  // namespace
