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
  void expectOn(const World& world, Function (Functions::*function)() const, MakeTable makeTable) {
    enter(world);
    expectTable((functions().*function)(), makeTable(world));
    leave();
  }

  void expectOn(const World& world, Function (Functions::*function)(), MakeTable makeTable) {
    enter(world);
    expectTable((functions().*function)(), makeTable(world));
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
  expectOn(kUsual, &Functions::getInt, getIntTable);
  expectOn(kAt5Ghz, &Functions::getInt, getIntTable);
}

TEST_F(EveryFault, OfSettingAnIntegerIsAnsweredAsTheTableSays) {
  for (const int value : {0, 1, 2, -1}) expectSetInt(kUsual, value);
  expectSetInt(kMisshapen, 1);
}

TEST_F(EveryFault, OfSettingAnIntegerBeforeTheWiredListWasAskedForIsAnsweredAsTheTableSays) {
  expectSetInt(kWiredListNotAsked, 1);
}

TEST_F(EveryFault, OfTypingANameIsAnsweredAsTheTableSays) {
  expectOn(kUsual, &Functions::setString, setStringTable);
}

TEST_F(EveryFault, OfReadingTheNameIsAnsweredAsTheTableSays) {
  expectOn(kUsual, &Functions::currentValue, currentValueTable);
}

// ---- Texts ----

TEST_F(EveryFault, OfReadingATextIsAnsweredAsTheTableSays) {
  expectOn(kUsual, &Functions::getString, getStringTable);
  expectOn(kAt5Ghz, &Functions::getString, getStringTable);
}

TEST_F(EveryFault, OfNamingAnItemIsAnsweredAsTheTableSays) {
  expectOn(kUsual, &Functions::displayName, displayNameTable);
  expectOn(kMisshapen, &Functions::displayName, displayNameTable);
}

TEST_F(EveryFault, OfHelpingOnAnyProductIsAnsweredAsTheTableSays) {
  for (const World& world : {product(Product::kTv, "a television"),  //
                             product(Product::kScreen, "a tunerless screen"),
                             product(Product::kFirstModular, "a modular display"),
                             product(Product::kSecondModular, "a second modular display"),
                             product(Product::kProjector, "a projector"),
                             product(Product::kSmartMonitor, "a smart monitor")}) {
    expectOn(world, &Functions::helpText, helpTextTable);
  }
}

TEST_F(EveryFault, OfAskingForConfirmationIsAnsweredAsTheTableSays) {
  expectOn(kUsual, &Functions::messageBox, messageBoxTable);
  expectOn(kRegulated, &Functions::messageBox, messageBoxTable);
  expectOn(kRegulatedRadioOff, &Functions::messageBox, messageBoxTable);
}

// ---- Lists ----

TEST_F(EveryFault, OfListingIsAnsweredAsTheTableSays) {
  expectOn(kUsual, &Functions::listItems, listItemsTable);
  expectOn(kRegulated, &Functions::listItems, listItemsTable);
}

TEST_F(EveryFault, LeavesWhatIsSaidOfAListsEntryAlone) {
  expectOn(kUsual, &Functions::itemDisplayValue, itemDisplayValueTable);
  expectOn(kUsual, &Functions::itemIntValue, itemIntValueTable);
  expectOn(kUsual, &Functions::itemAction, itemActionTable);
}

TEST_F(EveryFault, LeavesTheReturningOfListsAlone) {
  expectOn(kUsual, &Functions::freeList, freeListTable);
}

// ---- Icons ----

TEST_F(EveryFault, OfShowingATitleIconIsAnsweredAsTheTableSays) {
  expectOn(kUsual, &Functions::titleIcon, titleIconTable);
  expectOn(kMisshapen, &Functions::titleIcon, titleIconTable);
}

TEST_F(EveryFault, OfShowingASecondIconIsAnsweredAsTheTableSays) {
  expectOn(kUsual, &Functions::secondIcon, secondIconTable);
  expectOn(kSecondConnected, &Functions::secondIcon, secondIconTable);
  expectOn(kMisshapen, &Functions::secondIcon, secondIconTable);
}

// ---- Checks ----

TEST_F(EveryFault, OfCheckingTheVisibilityIsAnsweredAsTheTableSays) {
  expectOn(kUsual, &Functions::visibilityInt, visibilityIntTable);
  expectOn(kEverydayProduct, &Functions::visibilityInt, visibilityIntTable);
}

TEST_F(EveryFault, OfCheckingWhatIsEnabledIsAnsweredAsTheTableSays) {
  for (const World& world : {kUsual, kEverydayProduct, kSplitScreen, kMisshapen}) {
    expectOn(world, &Functions::enableInt, enableIntTable);
  }
}

TEST_F(EveryFault, LeavesTheOtherChecksAlone) {
  expectOn(kUsual, &Functions::visibilityString, alwaysVisibleTable);
  expectOn(kUsual, &Functions::visibilityDouble, alwaysVisibleTable);
  expectOn(kUsual, &Functions::visibilityBool, alwaysVisibleTable);
  expectOn(kUsual, &Functions::enableString, enableStringTable);
  expectOn(kUsual, &Functions::enableDouble, enableDoubleTable);
  expectOn(kUsual, &Functions::enableBool, enableBoolTable);
}

// ---- The provider itself ----

TEST_F(EveryFault, OfCreatingAnotherProviderIsAnsweredAsTheTableSays) {
  expectOn(kUsual, &Functions::createProvider, createProviderTable);
}

TEST_F(EveryFault, LeavesTheDeletingOfAProviderAlone) {
  expectOn(kUsual, &Functions::deleteProvider, deleteProviderTable);
}

TEST_F(EveryFault, OfSayingWhoItIsIsAnsweredAsTheTableSays) {
  expectOn(kUsual, &Functions::moduleInfo, moduleInfoTable);
}

TEST_F(EveryFault, LeavesTheReturningOfTextsAlone) {
  expectOn(kUsual, &Functions::releaseString, releaseStringTable);
}

// ---- What the provider does of its own ----

TEST_F(EveryFault, OfTheRefreshAfterASwitchIsAnsweredAsTheTableSays) {
  enter(kUsual);
  expectTable(functions().switchAndEightSeconds(), refreshTimerTable(kUsual), {kWifiItemKey});
}

TEST_F(EveryFault, OfTheRefreshForTheSavedNetworksIsAnsweredAsTheTableSays) {
  enter(kUsual);
  expectTable(functions().notification(), notificationTable(kUsual), {kFirstNetworkKey});
}

}  // namespace
