// Loading, creating, deleting, unloading; the callbacks that concern the provider itself.
#include <cstring>
#include <set>

#include "provider_test.h"
#include "wifi_direct_status.h"

namespace {

constexpr char kDefaultNameKey[] = "db/menu/network/devicename/default_tv_name";
constexpr char kWifiDirectKey[] = "db/menu/network/wifidirect";
constexpr std::size_t kSlots = sizeof(data_provider_cbs) / sizeof(void (*)());
const std::set<std::size_t> kFilledSlots = {0,  6,  8,  11, 12, 13, 14, 16, 17,
                                            20, 23, 24, 38, 39, 44, 49, 50};

class ProviderLifecycle : public ProviderTest {};

// ---- Loading and unloading ----

TEST_F(ProviderLifecycle, LoadingConstructsTheObjectsInTheirOrder) {
  setProfiles({kWifiProfile, kEthernetProfile});
  load();
  EXPECT_EQ(journal(), (Journal{
                           call("connection_create"),  // power on with mobile
                           call("connection_create"),  // Wi-Fi power
                           wifiDirectStatusWithoutAp(),
                           call("vconf_get_int", kWifiDirectKey),
                           call("connection_create"),  // wired 802.1X
                           call("connection_get_profile_iterator", "connection 3", 0),
                           call("connection_profile_iterator_has_next", "iterator"),
                           call("connection_profile_iterator_next", "iterator"),
                           call("connection_profile_get_type", "profile 1"),
                           call("connection_profile_iterator_has_next", "iterator"),
                           call("connection_profile_iterator_next", "iterator"),
                           call("connection_profile_get_type", "profile 2"),
                           mainLog("profile type ethernet"),
                       }));
}

TEST_F(ProviderLifecycle, UnloadingDestroysTheObjectsInReverseOrder) {
  create();
  setInt(VENTARO_KEY_WIFI, 1);
  clearJournal();
  unload();
  EXPECT_EQ(journal(), (Journal{locks(), mainLog("START"), mainLog("END"), unlocks(),
                                call("connection_destroy", "connection 3"),
                                mainLog("[connection_destroy success]"),
                                call("g_source_remove", 1),  // Wi-Fi power
                                call("connection_destroy", "connection 2"),
                                call("connection_destroy", "connection 1")}));
  EXPECT_EQ(openConnections(), 0);
}

TEST_F(ProviderLifecycle, ALibraryLoadedAgainStartsFresh) {
  store().set(kDefaultNameKey, "TV One");
  create();
  unload();
  store().set(kDefaultNameKey, "TV Two");
  create();
  EXPECT_EQ(listItems(VENTARO_KEY_DEVICE_NAME).text(0), "&#x202d;TV Two");
}

// ---- create_provider and delete_provider ----

TEST_F(ProviderLifecycle, CreatingBindsTheTextsAndBuildsTheDeviceNamesUnderTheLock) {
  store().set(kDefaultNameKey, "TV One");
  load();
  clearJournal();
  data_provider_cbs* cbs = nullptr;
  EXPECT_EQ(entries().create_provider(&cbs), 0);
  EXPECT_EQ(journal(),
            (Journal{locks(), mainLog("START"), call("platform_mkpath", 44, "res/locale"),
                     call("vconf_get_str", kDefaultNameKey), mainLog("dName==TV One\n"),
                     mainLog("END"), unlocks()}));
  entries().delete_provider(&cbs);
}

TEST_F(ProviderLifecycle, DeletingFreesTheTableUnderTheLock) {
  create();
  data_provider_cbs* cbs = nullptr;
  entries().create_provider(&cbs);
  clearJournal();
  EXPECT_EQ(entries().delete_provider(&cbs), 0);
  EXPECT_EQ(journal(), (Journal{locks(), mainLog("START"), mainLog("END"), unlocks()}));
}

TEST_F(ProviderLifecycle, DeletingLeavesTheCallersPointerAlone) {
  create();
  data_provider_cbs* cbs = nullptr;
  entries().create_provider(&cbs);
  const auto before = reinterpret_cast<std::uintptr_t>(cbs);
  entries().delete_provider(&cbs);
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(cbs), before);
}

TEST_F(ProviderLifecycle, DeletingNothingReturnsOneWithoutAnEnd) {
  load();
  clearJournal();
  EXPECT_EQ(entries().delete_provider(nullptr), 1);
  EXPECT_EQ(journal(), (Journal{locks(), mainLog("START"), unlocks()}));
}

TEST_F(ProviderLifecycle, DeletingANullTableSucceeds) {
  load();
  data_provider_cbs* cbs = nullptr;
  EXPECT_EQ(entries().delete_provider(&cbs), 0);
}

TEST_F(ProviderLifecycle, TheTableIsABlockOfSixtyPointers) {
  create();
  EXPECT_EQ(kSlots, 60U);
  EXPECT_EQ(requestedSize(&table()), 60 * sizeof(void*));
}

TEST_F(ProviderLifecycle, SeventeenSlotsHoldTheirCallbacksAndAllOthersAreNull) {
  create();
  void (*slots[kSlots])();
  std::memcpy(&slots, &table(), sizeof(slots));
  std::set<std::size_t> filled;
  for (std::size_t i = 0; i < kSlots; ++i) {
    if (slots[i] != nullptr) filled.insert(i);
  }
  EXPECT_EQ(filled, kFilledSlots);
}

TEST_F(ProviderLifecycle, ASecondProviderIsAnotherTableOverTheSameDeviceNames) {
  store().set(kDefaultNameKey, "TV One");
  create();
  data_provider_cbs* second = nullptr;
  EXPECT_EQ(entries().create_provider(&second), 0);
  EXPECT_NE(second, &table());
  EXPECT_EQ(std::memcmp(second, &table(), sizeof(table())), 0);
  EXPECT_EQ(listItems(VENTARO_KEY_DEVICE_NAME).count(), 2);
  entries().delete_provider(&second);
}

TEST_F(ProviderLifecycle, ASecondProviderDoesNotReadTheDefaultNameAgain) {
  create();
  data_provider_cbs* second = nullptr;
  entries().create_provider(&second);
  EXPECT_EQ(calls(), (Journal{call("platform_mkpath", 44, "res/locale")}));
  entries().delete_provider(&second);
}

TEST_F(ProviderLifecycle, AProviderCanBeCreatedAgainAfterItWasDeleted) {
  load();
  data_provider_cbs* cbs = nullptr;
  entries().create_provider(&cbs);
  entries().delete_provider(&cbs);
  create();
  EXPECT_EQ(displayName(VENTARO_KEY_NETWORK), "Network");
}

TEST_F(ProviderLifecycle, TextsComeFromTheResourceRootsCatalogues) {
  useLanguage("ko");
  create();
  EXPECT_EQ(displayName(VENTARO_KEY_NETWORK), tr("COM_SID_NETWORK"));
  EXPECT_NE(tr("COM_SID_NETWORK"), "COM_SID_NETWORK");
}

TEST_F(ProviderLifecycle, ASecondProviderBindsTheTextsAgain) {
  create();
  EXPECT_EQ(displayName(VENTARO_KEY_NETWORK), "Network");
  useLongTexts(256);
  data_provider_cbs* second = nullptr;
  entries().create_provider(&second);
  EXPECT_EQ(stringValue(VENTARO_KEY_WIRED_EAP).length(), 256U);
  EXPECT_EQ(displayName(VENTARO_KEY_NETWORK).length(), 2047U);
  entries().delete_provider(&second);
}

// ---- get_module_info ----

TEST_F(ProviderLifecycle, ModuleInfoAnswersThreeKeysUnderTheLockWithoutALog) {
  create();
  EXPECT_EQ(moduleInfo("provider/main-component"), "TP_ConnectivityApp");
  EXPECT_EQ(journal(), (Journal{locks(), unlocks()}));
  EXPECT_EQ(moduleInfo("provider/sub-component"), "TP_NetworkSettings");
  EXPECT_EQ(moduleInfo("provider/owner"), "ventarodevs");
}

TEST_F(ProviderLifecycle, ModuleInfoComesInAZeroFilledBlockOf255Bytes) {
  create();
  const OwnedText info = moduleInfo(VENTARO_KEY_MAIN_COMPONENT);
  ASSERT_EQ(info.blockSize(), 255U);
  for (std::size_t i = info.length(); i < 255; ++i) EXPECT_EQ(info.get()[i], '\0') << i;
}

TEST_F(ProviderLifecycle, ModuleInfoLeavesTheOutputOfAnUnknownKeyUntouched) {
  create();
  char preset[] = "preset";
  for (const char* key : {"", "provider/", "provider/owner2", "provider/owne", "Provider/owner"}) {
    char* value = preset;
    EXPECT_EQ(table().get_module_info(key, &value), 0) << key;
    EXPECT_EQ(value, preset) << key;
  }
}

// ---- release_string ----

TEST_F(ProviderLifecycle, ReleasingAStringLogsItWithoutTheLockAndReturnsZero) {
  create();
  OwnedText name = displayName(VENTARO_KEY_NETWORK);
  clearJournal();
  EXPECT_EQ(table().release_string(name.release()), 0);
  EXPECT_EQ(journal(),
            (Journal{mainLog("START"), mainLog("******* Value[Network]"), mainLog("END")}));
}

TEST_F(ProviderLifecycle, ReleasingNullReturnsOneAndFreesNothing) {
  create();
  EXPECT_EQ(table().release_string(nullptr), 1);
  EXPECT_EQ(journal(), (Journal{mainLog("START"), mainLog("END")}));
}

}  // namespace
