// The saved networks: the one object that reads their document, and what it does when the document
// changes.
#include <functional>

#include "saved_networks_test.h"

namespace {

constexpr char kFirst[] = VENTARO_KEY_SAVED_NETWORK_1;
constexpr char kSecond[] = VENTARO_KEY_SAVED_NETWORK_2;
constexpr char kRefreshKey[] = "db/menu/refresh_menu";
constexpr char kCommandKey[] = "memory/NW-Daemon/Command";

// ---- The one object ----

TEST_F(SavedNetworks, LoadingAndCreatingNeitherReadThemNorSubscribe) {
  store().set(kSavedNetworksKey, kHomeAndOffice);
  load();
  create();
  EXPECT_FALSE(calls().contains(call("vconf_get_str", kSavedNetworksKey)));
  EXPECT_EQ(store().subscriptions(), std::vector<std::string>());
}

TEST_F(SavedNetworks, TheFirstUseSubscribesAndThenReads) {
  create();
  EXPECT_FALSE(entries().check_enable_int(kFirst, 0));
  EXPECT_EQ(journal(), (Journal{locks(), mainLog(std::string("key = ") + kFirst),
                                call("vconf_notify_key_changed", kSavedNetworksKey),
                                call("vconf_get_str", kSavedNetworksKey),
                                mainLog("Saved AP Count 0"), unlocks()}));
}

TEST_F(SavedNetworks, FurtherUsesOnlyRead) {
  create();
  read(kHomeOnly);
  read(kHomeOnly);
  EXPECT_EQ(journal(), reading({networkLog("Home", "Connected")}, 1));
  EXPECT_EQ(store().subscriptions(), std::vector<std::string>{kSavedNetworksKey});
}

TEST_F(SavedNetworks, WhicheverCallbackIsFirstMakesTheOneObject) {
  const std::function<void()> uses[] = {
      [this] { entries().check_enable_int(kSecond, 0); },
      [this] { displayName(kFirst); },
      [this] { displayName(kSecond); },
      [this] { titleIcon(kFirst); },
      [this] { titleIcon(kSecond); },
      [this] { secondIcon(kFirst); },
      [this] { secondIcon("no/such/key"); },
      [this] { setInt(kFirst, 0); },
      [this] { setInt(kSecond, 0); },
  };
  for (const auto& first : uses) {
    create();
    first();
    for (const auto& each : uses) each();
    EXPECT_EQ(calls().lines().front(), "vconf_notify_key_changed(db/menu/network/TopSavedAP)");
    EXPECT_EQ(calls().count(call("vconf_notify_key_changed", kSavedNetworksKey)), 1U);
    unload();
    reset();
  }
}

TEST_F(SavedNetworks, ItemsThatAreNoSavedNetworksMakeNoObject) {
  create();
  entries().check_enable_int(VENTARO_KEY_WIFI, 0);
  displayName(VENTARO_KEY_WIFI);
  titleIcon(VENTARO_KEY_WIFI);
  getInt(kFirst);
  listItems(VENTARO_KEY_SAVED_NETWORK_1_STATES);
  EXPECT_EQ(store().subscriptions(), std::vector<std::string>());
}

TEST_F(SavedNetworks, ASecondProviderSharesTheObject) {
  create();
  read(kHomeOnly);
  data_provider_cbs* second = nullptr;
  entries().create_provider(&second);
  entries().delete_provider(&second);
  read(kHomeOnly);
  EXPECT_EQ(store().subscriptions(), std::vector<std::string>{kSavedNetworksKey});
}

TEST_F(SavedNetworks, ASubscriptionThatFailsIsNeitherReportedNorTriedAgain) {
  failWith("vconf_notify_key_changed", -5);
  create();
  read(kHomeOnly);
  EXPECT_EQ(logLines(), (Journal{mainLog(std::string("key = ") + kFirst),
                                 networkLog("Home", "Connected"), mainLog("Saved AP Count 1")}));
  read(kHomeOnly);
  EXPECT_FALSE(calls().contains(call("vconf_notify_key_changed", kSavedNetworksKey)));
}

TEST_F(SavedNetworks, UnloadingDoesNothingWithTheStore) {
  createWithObject();
  unload();
  EXPECT_EQ(calls(), (Journal{call("connection_destroy", "connection 3"),
                              call("connection_destroy", "connection 2"),
                              call("connection_destroy", "connection 1")}));
}

// ---- A changed document ----

TEST_F(SavedNetworks, AChangedDocumentAsksForARefreshOfTheNetworkMenuAndDoesNothingElse) {
  createWithObject();
  store().set(kSavedNetworksKey, kHomeAndOffice);
  store().notify(kSavedNetworksKey);
  EXPECT_EQ(journal(), Journal{call("vconf_set_int", kRefreshKey, 100002)});
  EXPECT_EQ(store().intAt(kRefreshKey), 100002);
}

TEST_F(SavedNetworks, EveryChangeAsksAlsoOneToTheSameOrAnInvalidOrNoDocument) {
  createWithObject();
  store().set(kSavedNetworksKey, kHomeAndOffice);
  store().notify(kSavedNetworksKey);
  store().notify(kSavedNetworksKey);
  store().set(kSavedNetworksKey, "no JSON");
  store().notify(kSavedNetworksKey);
  store().erase(kSavedNetworksKey);
  store().notify(kSavedNetworksKey);
  const auto refresh = call("vconf_set_int", kRefreshKey, 100002);
  EXPECT_EQ(journal(), (Journal{refresh, refresh, refresh, refresh}));
}

TEST_F(SavedNetworks, AChangeWhileACallbackHoldsTheLockDoesNotWait) {
  createWithObject();
  onCall("vconf_get_str", [] { store().notify(kSavedNetworksKey); });
  read(kHomeOnly);
  EXPECT_EQ(
      journal(),
      reading({call("vconf_set_int", kRefreshKey, 100002), networkLog("Home", "Connected")}, 1));
}

TEST_F(SavedNetworks, AChangeWhileTheDocumentIsReadLeavesTheListAlone) {
  createWithObject();
  store().set(kSavedNetworksKey, kHomeAndOffice);
  onCall("vconf_get_str", [] { store().notify(kSavedNetworksKey); });
  EXPECT_EQ(displayName(kSecond), "Office");
}

TEST_F(SavedNetworks, ARefreshThatCannotBeWrittenIsNotReported) {
  createWithObject();
  failWith("vconf_set_int", kRefreshKey, -3);
  store().notify(kSavedNetworksKey);
  EXPECT_EQ(journal(), Journal{call("vconf_set_int", kRefreshKey, 100002)});
}

TEST_F(SavedNetworks, ChangesOfOtherKeysAskForNothing) {
  createWithObject();
  store().notify("db/menu/network/wifidirect");
  store().notify(kCommandKey);
  EXPECT_EQ(journal(), Journal());
}

// ---- Reading the document ----

TEST_F(SavedNetworks, TheNetworksAreReadInTheirOrder) {
  createWithObject();
  read(kHomeAndOffice);
  EXPECT_EQ(journal(),
            reading({networkLog("Home", "Connected"), networkLog("Office", "Saved")}, 2));
  EXPECT_EQ(displayName(kFirst), "Home");
  EXPECT_EQ(displayName(kSecond), "Office");
}

TEST_F(SavedNetworks, WithoutADocumentThereIsNoNetworkAndNothingIsLogged) {
  createWithObject();
  read(std::nullopt);
  EXPECT_EQ(journal(), reading({}, 0));
}

TEST_F(SavedNetworks, ADocumentThatCannotBeReadIsAsNone) {
  createWithObject();
  failWith("vconf_get_str", kSavedNetworksKey, -1);
  read(kHomeAndOffice);
  EXPECT_EQ(journal(), reading({}, 0));
}

TEST_F(SavedNetworks, AValueThatIsNoTextIsAsNone) {
  store().set(kSavedNetworksKey, 5);
  createWithObject();
  entries().check_enable_int(kFirst, 0);
  EXPECT_EQ(journal(), reading({}, 0));
}

TEST_F(SavedNetworks, EveryReadingReplacesTheNetworks) {
  createWithObject();
  read(kHomeAndOffice);
  read(document(1, {network("Cafe", -70, "Saved")}));
  EXPECT_EQ(journal(), reading({networkLog("Cafe", "Saved")}, 1));
  read("no JSON");
  EXPECT_TRUE(journal().contains(mainLog("Saved AP Count 0")));
  read(kHomeAndOffice);
  EXPECT_TRUE(journal().contains(mainLog("Saved AP Count 2")));
  read(std::nullopt);
  EXPECT_EQ(journal(), reading({}, 0));
}

}  // namespace
