// A sequence of callbacks: the input decides which are called with what, what the TV answers, which
// of its functions fail, and what happens in between. The provider's objects are constructed for
// each input, as when the library is loaded, and destroyed at its end.
#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "framework.h"
#include "globals.h"
#include "require.h"
#include "settings/SavedAPConnection.h"
#include "tv.h"

using namespace fuzz;
using fake_platform::flags;
using fake_platform::runningTimers;
using fake_platform::store;

namespace {

// The header's keys, and an unknown one.
constexpr auto kKeys = [] {
  std::array<const char*, contract::kKeys.size() + 1> keys{};
  std::ranges::copy(contract::kKeys, keys.begin());
  keys.back() = "";
  return keys;
}();

constexpr char kAdministratorKey[] = "memory/ephotel/hotelmenu/hotelfactorymode";

constexpr std::array kStoreKeys = {
    kLanguageKey,
    kSavedNetworksKey,
    kDeviceNameStoreKey,
    kDefaultNameStoreKey,
    "db/menu/network/wifidirect",
    "db/menu/network/wiredeap",
    "db/menu/system/accessibility/highcontrast",
    kAdministratorKey,
    "memory/multiscreen/state",
};

constexpr std::array kFlags = {
    "broadcast.removable_rf_tuner_support",
    "network.network_support",
    "orlex_version",
    "product.b2b_option_support",
    "product.device_sid",
    "product.smart_monitor_feature_support",
    "projector_feature_support",
    "setting.eu_energy_regulation",
};

constexpr std::size_t kLongText = 3000;

// A text from the input; short, or repeated until it is longer than every buffer. Texts end at a
// NUL.
std::string takeText(FuzzedDataProvider& input) {
  const std::string text = untilNul(input.ConsumeRandomLengthString(300));
  if (text.empty() || input.ConsumeIntegralInRange(0, 7) != 7) return text;
  std::string longText;
  while (longText.size() < kLongText) longText += text;
  return longText;
}

std::string takeKey(FuzzedDataProvider& input) {
  const auto choice = input.ConsumeIntegral<std::uint8_t>();
  if (choice < 5 * kKeys.size()) return kKeys.at(choice % kKeys.size());
  if (choice % 2 == 0) return untilNul(input.ConsumeRandomLengthString(64));
  const std::string key = input.PickValueInArray(kKeys);
  return key.substr(0, input.ConsumeIntegralInRange<std::size_t>(0, key.size()));
}

std::string takeDocument(FuzzedDataProvider& input) {
  std::string text =
      "{\"count\":" + std::to_string(input.ConsumeIntegralInRange(-1, 4)) + ",\"values\":[";
  const int entries = input.ConsumeIntegralInRange(0, 3);
  for (int i = 0; i < entries; ++i) {
    const std::string status =
        input.PickValueInArray({"Connected", "Connecting", "Disconnected", ""});
    const int strength = input.ConsumeIntegralInRange(-100, 20);
    text += (i == 0 ? "{\"SSID\":\"" : ",{\"SSID\":\"") + input.ConsumeRandomLengthString(40) +
            "\",\"STATUS\":\"" + status + "\",\"SIGNAL_STRENGTH\":" + std::to_string(strength) +
            "}";
  }
  return text + "]}";
}

// In the form that the provider reads.
void storeNumber(const std::string& key, int value) {
  if (key == kAdministratorKey) {
    store().setRawBool(key, value);
  } else {
    store().set(key, value);
  }
}

void changeStore(FuzzedDataProvider& input) {
  const std::string key = input.PickValueInArray(kStoreKeys);
  switch (input.ConsumeIntegralInRange(0, 3)) {
    case 0:
      store().erase(key);
      break;
    case 1:
      storeNumber(key, input.ConsumeIntegralInRange(-1, 3));
      break;
    case 2:
      store().set(key, takeText(input));
      break;
    default:
      store().set(key, takeDocument(input));
  }
  store().notify(key);
}

void changeFlag(FuzzedDataProvider& input) {
  const std::string flag = input.PickValueInArray(kFlags);
  switch (input.ConsumeIntegralInRange(0, 3)) {
    case 0:
      flags().erase(flag);
      break;
    case 1:
      flags().setBool(flag, input.ConsumeBool());
      break;
    case 2:
      flags().set(flag, input.ConsumeIntegralInRange(-1, 3));
      break;
    default:
      flags().set(flag, takeText(input));
  }
}

void changeNetwork(FuzzedDataProvider& input) {
  fake_platform::setRadio(input.ConsumeIntegralInRange(-1, 2));
  fake_platform::setConnectedAp(std::nullopt);
  if (input.ConsumeBool()) {
    fake_platform::setConnectedAp(input.ConsumeIntegralInRange(5900, 5930));
  }
  fake_platform::setWakeOnMobile(input.ConsumeBool());
}

void changeTranslations(FuzzedDataProvider& input) {
  translations().others = std::nullopt;
  if (input.ConsumeBool()) translations().others = takeText(input);
}

// Which functions fail, until the next change.
void changeFaults(FuzzedDataProvider& input) {
  Faults faults;
  faults.functions = input.ConsumeBool() ? input.ConsumeIntegral<std::uint32_t>() : 0;
  faults.result = input.ConsumeIntegralInRange(1, 20) * (input.ConsumeBool() ? -1 : 1);
  faults.afterWork = input.ConsumeBool();
  setFaults(faults);
}

// The number of entries in the list of wired 802.1X: 0 before it was first requested.
int wiredEntries = 0;

// In the device name's list, every entry but the last can be set as a number.
int nameEntries() {
  return std::max(static_cast<int>(DeviceNameListInterface::m_DevicenameList.size()) - 1, 0);
}

// Constructs and destroys the provider's objects, as loading and unloading the library does.
class LoadedObjects {
 public:
  explicit LoadedObjects(FuzzedDataProvider& input) {
    destroy();
    if (input.ConsumeBool()) {
      changeFaults(input);
      changeNetwork(input);
      const int profiles = input.ConsumeIntegralInRange(0, 3);
      std::vector<int> types;
      for (int i = 0; i < profiles; ++i) types.push_back(input.ConsumeIntegralInRange(0, 3));
      fake_platform::setProfiles(types);
    }
    construct();
  }
  ~LoadedObjects() {
    destroy();
    newTv();
    construct();  // these are destroyed at the end of the process
  }
  LoadedObjects(const LoadedObjects&) = delete;
  LoadedObjects& operator=(const LoadedObjects&) = delete;

 private:
  static void construct() {
    DeviceNameListInterface::m_DevicenameList.clear();
    DeviceNameListInterface::m_DefaultDeviceName.clear();
    DeviceNameListInterface::m_IsFillDeviceNameList = false;
    std::construct_at(&CMobileDeviceTVObj);
    std::construct_at(&CWiFiOnOffObj);
    std::construct_at(&CWiFiDirectObj);
    std::construct_at(&CWiredEAPObj);
    wiredEntries = 0;
  }

  static void destroy() {
    std::destroy_at(&CWiredEAPObj);
    std::destroy_at(&CWiFiDirectObj);
    std::destroy_at(&CWiFiOnOffObj);
    std::destroy_at(&CMobileDeviceTVObj);
    requireNoMisuse();
    require(fake_platform::openConnections() == 0, "every connection is destroyed with its object");
    require(fake_platform::openAps() == 0, "every access point is destroyed");
    require(runningTimers() == 0, "the timer ends with its object");
  }
};

void getInt(FuzzedDataProvider& input, Framework& framework) {
  const std::string key = takeKey(input);
  framework.calls().getInt(key, input.ConsumeIntegralInRange(-2, 3));
}

// The result for an item whose value is an entry of its list.
void requireEntrySet(int value, int entries, int whenSet, int result) {
  const int expected = value >= 0 && value < entries ? whenSet : -1;
  require(result == expected, "an entry of the list gives the store's result, others -1");
}

void setInt(FuzzedDataProvider& input, Framework& framework) {
  const std::string key = takeKey(input);
  const int value =
      input.ConsumeBool() ? input.ConsumeIntegralInRange(-1, 3) : input.ConsumeIntegral<int>();
  const contract::Answer answer = framework.calls().setInt(key, value);
  if (answer.hasRaised()) return;
  const int whenSet = resultOf("vconf_set_int");
  if (key == VENTARO_KEY_WIFI) {
    require(runningTimers() == 1, "a Wi-Fi switch starts the timer");
  } else if (key == VENTARO_KEY_WIFI_DIRECT) {
    require(answer.result == whenSet, "Wi-Fi Direct gives the store's result");
  } else if (key == VENTARO_KEY_WIRED_EAP) {
    requireEntrySet(value, wiredEntries, whenSet, answer.result);
  } else if (!contract::isSetting(key) && !contract::covers(contract::Keys::kSavedNetworks, key)) {
    requireEntrySet(value, nameEntries(), resultOf("vconf_set_str"), answer.result);
  }
}

void setString(FuzzedDataProvider& input, Framework& framework) {
  const std::string key = takeKey(input);
  const std::string name = takeText(input);
  const auto before = readableText(kDeviceNameStoreKey);
  const contract::Answer answer = framework.calls().setString(key, name);
  if (!answer.hasRaised() && answer.result == 0) {
    require(store().stringAt(kDeviceNameStoreKey) == name, "a name is stored");
  } else if (!faults().afterWork) {
    require(readableText(kDeviceNameStoreKey) == before, "the old name stays");
  }
}

void getString(FuzzedDataProvider& input, Framework& framework) {
  const std::string key = takeKey(input);
  framework.calls().getString(key, input.ConsumeBool());
}

void askText(FuzzedDataProvider& input, Framework& framework) {
  const std::string key = takeKey(input);
  switch (input.ConsumeIntegralInRange(0, 3)) {
    case 0:
      framework.calls().displayName(key);
      break;
    case 1:
      framework.calls().helpText(key);
      break;
    case 2:
      framework.calls().titleIcon(key);
      break;
    default:
      framework.calls().secondIcon(key);
  }
}

void askList(FuzzedDataProvider& input, Framework& framework) {
  const std::string key = takeKey(input);
  const bool arrayAlone = input.ConsumeIntegralInRange(0, 7) == 7;
  contract::Answer list = framework.calls().listItems(key);
  if (list.hasRaised()) return;
  framework.calls().entries(list);
  if (arrayAlone) framework.giveBackArrayAlone(list);
  if (key == VENTARO_KEY_WIRED_EAP) wiredEntries = list.value;
}

void askBox(FuzzedDataProvider& input, Framework& framework) {
  const std::string key = takeKey(input);
  framework.calls().messageBox(key, {takeText(input), takeText(input), takeText(input)});
}

void askRules(FuzzedDataProvider& input, Framework& framework) {
  const std::string key = takeKey(input);
  framework.calls().isEnabledInt(key);
  framework.calls().isVisibleInt(key);
  framework.calls().otherChecks(key);
}

void askRest(FuzzedDataProvider& input, Framework& framework) {
  const std::string key = takeKey(input);
  framework.calls().moduleInfo(key);
  framework.requireCurrentValue(key);
  framework.calls().nulls();
}

void passTime(FuzzedDataProvider& input, Framework& /*framework*/) {
  const int times = input.ConsumeIntegralInRange(1, 5);
  for (int i = 0; i < times; ++i) fireTimers();
}

void changeTv(FuzzedDataProvider& input, Framework& /*framework*/) {
  constexpr std::array kChanges = {changeStore, changeFlag, changeNetwork, changeTranslations,
                                   changeFaults};
  input.PickValueInArray(kChanges)(input);
}

void failLock(FuzzedDataProvider& input, Framework& framework);

using Step = void (*)(FuzzedDataProvider& input, Framework& framework);
constexpr std::array<Step, 12> kSteps = {getInt,  setInt,   setString, getString,
                                         askText, askList,  askBox,    askRules,
                                         askRest, passTime, changeTv,  failLock};

// One step while the lock cannot be taken.
void failLock(FuzzedDataProvider& input, Framework& framework) {
  const Step step = input.PickValueInArray(kSteps);
  if (step == failLock) return;
  setLockError(input.ConsumeIntegralInRange(1, 40));
  step(input, framework);
  setLockError(0);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  SavedAPConnection::GetInstance();  // subscribes, once per process
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  newTv();
  FuzzedDataProvider input(data, size);
  const LoadedObjects objects(input);
  Framework framework;
  while (input.remaining_bytes() > 0) input.PickValueInArray(kSteps)(input, framework);
  return 0;
}
