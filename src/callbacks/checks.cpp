// The exported checks: which items are shown, and which may be used.
#include "callbacks/callbacks.h"
#include "conditions.h"
#include "items.h"
#include "log.h"
#include "platform/system_info.h"
#include "settings/SavedAPConnection.h"
#include "ventaro/data_provider.h"

namespace {

constexpr char kNetworkSupport[] = "com.norvane/featureconf/network.network_support";

// The saved networks that the store has now.
int savedNetworkCount() {
  SavedAPConnection* saved = SavedAPConnection::GetInstance();
  saved->ReadVconf();
  const int count = static_cast<int>(saved->GetCount());
  LOG_MAIN("Saved AP Count %d", count);
  return count;
}

}  // namespace

bool check_visibility_int(const char* /*key*/, int /*value*/) {
  const ProviderLock lock(ProviderMutex);
  if (!IsB2BOptionSupported()) return true;
  int networkSupport = 0;
  if (system_info_get_custom_int(kNetworkSupport, &networkSupport) == 0 && networkSupport == 0) {
    LOG_MAIN("Network is not supported.");
    return false;
  }
  return true;
}

bool check_visibility_string(const char* /*key*/, const char* /*value*/) {
  return true;
}

bool check_visibility_double(const char* /*key*/, double /*value*/) {
  return true;
}

bool check_visibility_bool(const char* /*key*/, bool /*value*/) {
  return true;
}

bool check_enable_int(const char* key, int /*value*/) {
  const ProviderLock lock(ProviderMutex);
  LOG_MAIN("key = %s", key);
  const Item& item = itemOf(key);
  if (item.savedNetwork != 0) return savedNetworkCount() >= item.savedNetwork;
  return item.isEnabled == nullptr || item.isEnabled();
}

bool check_enable_string(const char* /*key*/, const char* /*value*/) {
  LOG_MAIN("check_enable_string");
  return true;
}

bool check_enable_double(const char* /*key*/, double /*value*/) {
  LOG_MAIN("check_enable_double");
  return true;
}

bool check_enable_bool(const char* /*key*/, bool /*value*/) {
  LOG_MAIN("check_enable_bool");
  return true;
}
