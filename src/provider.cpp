// The library's entry points, and the two callbacks that concern the provider itself.
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <string_view>

#include "c_heap.h"
#include "callbacks/callbacks.h"
#include "globals.h"
#include "log.h"
#include "platform/path.h"
#include "translation.h"
#include "ventaro/data_provider.h"

constinit std::mutex ProviderMutex;

namespace {

struct ModuleInfo {
  std::string_view key;
  const char* value;
};

constexpr ModuleInfo kModuleInfos[] = {
    {VENTARO_KEY_OWNER, "ventarodevs"},
    {VENTARO_KEY_MAIN_COMPONENT, "TP_ConnectivityApp"},
    {VENTARO_KEY_SUB_COMPONENT, "TP_NetworkSettings"},
};

int get_module_info(const char* key, char** value) {
  const ProviderLock lock(ProviderMutex);
  // An unknown key is not an error: the caller has set its pointer before and finds it untouched.
  for (const ModuleInfo& info : kModuleInfos) {
    if (info.key != key) continue;
    CText block(newZeroed<char>(VENTARO_MODULE_INFO_SIZE));
    std::memcpy(block.get(), info.value, std::strlen(info.value) + 1);
    *value = block.release();
  }
  return 0;
}

// The one callback that frees without the lock: the string is the caller's.
int release_string(char* str) {
  LOG_MAIN("START");
  int result = 1;
  if (str != nullptr) {
    LOG_MAIN("******* Value[%s]", str);
    std::free(str);
    result = 0;
  }
  LOG_MAIN("END");
  return result;
}

data_provider_cbs* newTable() {
  auto* table = newZeroed<data_provider_cbs>();
  installValueCallbacks(*table);
  installListCallbacks(*table);
  installDisplayNameCallbacks(*table);
  installHelpTextCallbacks(*table);
  installStringValueCallbacks(*table);
  installIconPathCallbacks(*table);
  installMessageBoxCallbacks(*table);
  table->get_module_info = get_module_info;
  table->release_string = release_string;
  // Reserved slots have no meaning, so they stay null.
  table->reserved_2 = nullptr;
  table->reserved_4 = nullptr;
  table->reserved_9 = nullptr;
  table->reserved_10 = nullptr;
  return table;
}

}  // namespace

int create_provider(data_provider_cbs** cbs) {
  const ProviderLock lock(ProviderMutex);
  LOG_MAIN("START");
  bindtextdomain(kTextDomain, platform_mkpath(PLATFORM_ROOT_RESOURCES, "res/locale"));
  DeviceNameListInterface::fillDeviceNameList();
  CMobileDeviceTVObj.fillList();
  CWiFiDirectObj.fillList();
  *cbs = newTable();
  LOG_MAIN("END");
  return 0;
}

int delete_provider(data_provider_cbs** cbs) {
  const ProviderLock lock(ProviderMutex);
  LOG_MAIN("START");
  if (cbs == nullptr) return 1;
  std::free(*cbs);
  LOG_MAIN("END");
  return 0;
}
