// Faults injected through the store.
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "platform/app_util.h"
#include "platform/config_store.h"
#include "platform/connection.h"
#include "platform/host/faults.h"
#include "platform/log.h"
#include "platform/markup.h"
#include "platform/path.h"
#include "platform/system_info.h"
#include "platform/wifi.h"
#include "process.h"
#include "simulated_network.h"

namespace platform_tests {
namespace {

constexpr int kFault = -77;

// How a function without a code reports success and failure.
int codeOfResult(bool success) {
  return success ? 0 : kFault;
}

int freed(char* text) {
  const int code = codeOfResult(text != nullptr);
  std::free(text);
  return code;
}

// The handles that the functions are called with.
struct Handles {
  wifi_ap_h point = nullptr;
  connection_h connection = nullptr;
  connection_profile_iterator_h iterator = nullptr;
  connection_profile_h ethernet = nullptr;
};

struct Function {
  const char* name;
  // Calls it with valid arguments; returns the code with which it fails, or 0.
  std::function<int(Handles&)> call;
};

void PrintTo(const Function& function, std::ostream* out) {
  *out << function.name;
}

const std::vector<Function> kFunctions = {
    {"vconf_get_int",
     [](Handles&) {
       int value = 0;
       return vconf_get_int("db/fault/int", &value);
     }},
    {"vconf_set_int", [](Handles&) { return vconf_set_int("db/fault/int", 1); }},
    {"vconf_get_str", [](Handles&) { return freed(vconf_get_str("db/fault/string")); }},
    {"vconf_set_str", [](Handles&) { return vconf_set_str("db/fault/string", "text"); }},
    {"vconf_get_bool",
     [](Handles&) {
       int value = 0;
       return vconf_get_bool("db/fault/bool", &value);
     }},
    {"vconf_notify_key_changed",
     [](Handles&) {
       return vconf_notify_key_changed(
           "db/fault/int", [](keynode_t*, void*) {}, nullptr);
     }},
    {"system_info_get_custom_bool",
     [](Handles&) {
       bool value = false;
       return system_info_get_custom_bool("com.norvane/featureconf/product.b2b_option_support",
                                          &value);
     }},
    {"system_info_get_custom_int",
     [](Handles&) {
       int value = 0;
       return system_info_get_custom_int("com.norvane/featureconf/network.network_support", &value);
     }},
    {"system_info_get_custom_string",
     [](Handles&) {
       char* value = nullptr;
       const int code =
           system_info_get_custom_string("com.norvane/featureconf/product.device_sid", &value);
       std::free(value);
       return code;
     }},
    {"wifi_initialize", [](Handles&) { return wifi_initialize(); }},
    {"wifi_get_connected_ap",
     [](Handles&) {
       wifi_ap_h point = nullptr;
       const int code = wifi_get_connected_ap(&point);
       if (code == 0) wifi_ap_destroy(point);
       return code;
     }},
    {"wifi_ap_get_frequency",
     [](Handles& handles) {
       int frequency = 0;
       return wifi_ap_get_frequency(handles.point, &frequency);
     }},
    {"wifi_ap_destroy", [](Handles& handles) { return wifi_ap_destroy(handles.point); }},
    {"wifi_get_enable_qx",
     [](Handles&) {
       int state = 0;
       return wifi_get_enable_qx(&state);
     }},
    {"wifi_set_enable_qx", [](Handles&) { return wifi_set_enable_qx(1); }},
    {"connection_create",
     [](Handles&) {
       connection_h connection = nullptr;
       const int code = connection_create(&connection);
       if (code == 0) connection_destroy(connection);
       return code;
     }},
    {"connection_destroy", [](Handles& handles) { return connection_destroy(handles.connection); }},
    {"connection_get_profile_iterator",
     [](Handles& handles) {
       connection_profile_iterator_h iterator = nullptr;
       return connection_get_profile_iterator(handles.connection, 0, &iterator);
     }},
    {"connection_profile_iterator_has_next",
     [](Handles& handles) {
       return codeOfResult(connection_profile_iterator_has_next(handles.iterator));
     }},
    {"connection_profile_iterator_next",
     [](Handles& handles) {
       connection_profile_h profile = nullptr;
       return connection_profile_iterator_next(handles.iterator, &profile);
     }},
    {"connection_profile_get_type",
     [](Handles& handles) {
       int type = 0;
       return connection_profile_get_type(handles.ethernet, &type);
     }},
    {"connection_profile_enable_ethernet_eap",
     [](Handles& handles) {
       return connection_profile_enable_ethernet_eap(handles.ethernet, true);
     }},
    {"util_get_wakeOnMobile_mode",
     [](Handles&) {
       bool enabled = false;
       return util_get_wakeOnMobile_mode(&enabled);
     }},
    {"util_set_wakeOnMobile_mode", [](Handles&) { return util_set_wakeOnMobile_mode(true); }},
    {"evas_textblock_text_utf8_to_markup",
     [](Handles&) { return freed(evas_textblock_text_utf8_to_markup(nullptr, "text")); }},
    {"platform_mkpath",
     [](Handles&) {
       return codeOfResult(platform_mkpath(PLATFORM_ROOT_RESOURCES, "file") != nullptr);
     }},
    {"__dlog_print",
     [](Handles&) {
       const int result = __dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_INFO, "TAG", "text");
       return result < 0 ? result : 0;
     }},
};

Handles openHandles() {
  Handles handles;
  connection_profile_iterator_h other = nullptr;
  EXPECT_EQ(wifi_get_connected_ap(&handles.point), 0);
  EXPECT_EQ(connection_create(&handles.connection), 0);
  EXPECT_EQ(connection_get_profile_iterator(handles.connection, 0, &handles.iterator), 0);
  EXPECT_EQ(connection_get_profile_iterator(handles.connection, 0, &other), 0);
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(connection_profile_iterator_next(other, &handles.ethernet), 0);
  }
  return handles;
}

class AFault : public NetworkTest {
 protected:
  void SetUp() override {
    use(scenarioText(0));
    store().set({{"db/fault/int", 1}, {"db/fault/bool", true}, {"db/fault/string", "text"}});
  }

  static std::string keyOf(const Function& function) {
    return std::string("memory/host/fault/") + function.name;
  }
};

class AFaultOf : public AFault, public testing::WithParamInterface<Function> {};

INSTANTIATE_TEST_SUITE_P(TheFunction, AFaultOf, testing::ValuesIn(kFunctions),
                         [](const auto& function) { return function.param.name; });

TEST_P(AFaultOf, MakesItFailWithItsCodeUntilItIsHealed) {
  Handles handles = openHandles();
  store().set(keyOf(GetParam()), kFault);
  EXPECT_EQ(GetParam().call(handles), kFault);
  EXPECT_EQ(GetParam().call(handles), kFault);
  store().set(keyOf(GetParam()), 0);
  EXPECT_EQ(GetParam().call(handles), 0);
}

TEST(AFaultOfAFunction, CanBeTriedForEveryOneThatCanFail) {
  std::set<std::string> listed;
  for (const std::string& name : platform::host::functionsThatCanFail()) listed.insert(name);
  std::set<std::string> tried;
  for (const Function& function : kFunctions) tried.insert(function.name);
  EXPECT_EQ(tried, listed);
}

TEST_F(AFault, ThatIsNotANumberHasNoEffect) {
  for (const Function& function : kFunctions) {
    Handles handles = openHandles();
    store().set(keyOf(function), "fail");
    EXPECT_EQ(function.call(handles), 0) << function.name;
  }
}

TEST_F(AFault, OfAnotherFunctionHasNoEffect) {
  for (const Function& function : kFunctions) {
    Handles handles = openHandles();
    std::map<std::string, StoreValue> faults;
    for (const Function& other : kFunctions) {
      faults[keyOf(other)] = other.name == function.name ? 0 : kFault;
    }
    store().set(faults);
    EXPECT_EQ(function.call(handles), 0) << function.name;
    for (auto& [key, code] : faults) code = 0;
    store().set(faults);
  }
}

class AFaultyFunction : public NetworkTest {
 protected:
  void SetUp() override { use(scenarioText(0)); }
};

TEST_F(AFaultyFunction, DoesNothing) {
  store().set({{"db/key", 1},
               {"memory/host/fault/vconf_set_int", kFault},
               {"memory/host/fault/wifi_set_enable_qx", kFault},
               {"memory/host/fault/vconf_get_int", kFault}});
  EXPECT_EQ(vconf_set_int("db/key", 2), kFault);
  EXPECT_EQ(store().get("db/key"), StoreValue(1));
  EXPECT_EQ(wifi_set_enable_qx(0), kFault);
  EXPECT_EQ(connectedNetwork(), "Attic");
  int value = 7;
  EXPECT_EQ(vconf_get_int("db/key", &value), kFault);
  EXPECT_EQ(value, 7);
}

TEST_F(AFaultyFunction, CanBeMadeOneThroughTheStoresOwnFunctions) {
  EXPECT_EQ(vconf_set_int("memory/host/fault/wifi_initialize", 5), 0);
  EXPECT_EQ(wifi_initialize(), 5) << "any number but 0, as on a device";
  EXPECT_EQ(vconf_set_int("memory/host/fault/wifi_initialize", 0), 0);
  EXPECT_EQ(wifi_initialize(), 0);
}

TEST_F(AFaultyFunction, IsOneFromTheNextCallOnWhenAnotherProcessMakesItSo) {
  constexpr int kRounds = 20'000;
  Process other([](Channel& test) {
    for (int round = 1; round <= kRounds; ++round) {
      test.receiveLine();
      store().set("memory/host/fault/wifi_initialize", round % 3);
      test.sendLine("set");
    }
  });
  EXPECT_EQ(wifi_initialize(), 0);
  std::atomic<bool> done = false;
  // Calls during the set must not hide it from later calls.
  std::thread busy([&] {
    while (!done) wifi_initialize();
  });
  for (int round = 1; round <= kRounds; ++round) {
    other.channel().sendLine("set");
    other.channel().receiveLine();
    EXPECT_EQ(wifi_initialize(), round % 3) << round;
  }
  done = true;
  busy.join();
  other.join();
}

// A library that was not unloaded still asks from the destructors of its objects.
TEST_F(AFaultyFunction, IsStillOneWhileTheProcessEnds) {
  inOwnProcess([] {
    store().set("memory/host/fault/wifi_initialize", kFault);
    EXPECT_EQ(wifi_initialize(), kFault);
    std::atexit([] { _exit(wifi_initialize() == kFault ? EXIT_SUCCESS : EXIT_FAILURE); });
    std::exit(EXIT_FAILURE);  // NOLINT(concurrency-mt-unsafe): one thread
  });
}

TEST_F(AFaultyFunction, IsNoneWithoutAStore) {
  setenv("VENTARO_RUNTIME_DIR", write("file", "").c_str(), 1);
  EXPECT_EQ(vconf_set_int("db/key", 2), 0);
}

}  // namespace
}  // namespace platform_tests
