// A minimal platform library for a device, written from the interface headers alone: every read
// fails, every write succeeds.
#include <cstdlib>
#include <cstring>

#include "platform/app_util.h"
#include "platform/config_store.h"
#include "platform/connection.h"
#include "platform/log.h"
#include "platform/markup.h"
#include "platform/path.h"
#include "platform/structured_log.h"
#include "platform/system_info.h"
#include "platform/wifi.h"

namespace {
constexpr int kDone = 0;
constexpr int kFailed = -1;
}  // namespace

int vconf_get_int(const char* /*key*/, int* /*value*/) {
  return kFailed;
}
int vconf_set_int(const char* /*key*/, int /*value*/) {
  return kDone;
}
char* vconf_get_str(const char* /*key*/) {
  return nullptr;
}
int vconf_set_str(const char* /*key*/, const char* /*value*/) {
  return kDone;
}
int vconf_get_bool(const char* /*key*/, int* /*value*/) {
  return kFailed;
}
int vconf_notify_key_changed(const char* /*key*/, vconf_callback_fn /*callback*/,
                             void* /*user_data*/) {
  return kDone;
}

int system_info_get_custom_bool(const char* /*key*/, bool* /*value*/) {
  return kFailed;
}
int system_info_get_custom_int(const char* /*key*/, int* /*value*/) {
  return kFailed;
}
int system_info_get_custom_string(const char* /*key*/, char** /*value*/) {
  return kFailed;
}

int wifi_initialize() {
  return kDone;
}
int wifi_get_connected_ap(wifi_ap_h* /*ap*/) {
  return kFailed;
}
int wifi_ap_get_frequency(wifi_ap_h /*ap*/, int* /*mhz*/) {
  return kFailed;
}
int wifi_ap_destroy(wifi_ap_h /*ap*/) {
  return kFailed;
}
int wifi_get_enable_qx(int* /*state*/) {
  return kFailed;
}
int wifi_set_enable_qx(int /*enable*/) {
  return kDone;
}

int connection_create(connection_h* /*connection*/) {
  return kFailed;
}
int connection_destroy(connection_h /*connection*/) {
  return kFailed;
}
int connection_get_profile_iterator(connection_h /*connection*/, int /*iterator_type*/,
                                    connection_profile_iterator_h* /*iterator*/) {
  return kFailed;
}
bool connection_profile_iterator_has_next(connection_profile_iterator_h /*iterator*/) {
  return false;
}
int connection_profile_iterator_next(connection_profile_iterator_h /*iterator*/,
                                     connection_profile_h* /*profile*/) {
  return kFailed;
}
int connection_profile_get_type(connection_profile_h /*profile*/, int* /*type*/) {
  return kFailed;
}
int connection_profile_enable_ethernet_eap(connection_profile_h /*profile*/, bool /*enable*/) {
  return kFailed;
}

int util_get_wakeOnMobile_mode(bool* /*enabled*/) {
  return kFailed;
}
int util_set_wakeOnMobile_mode(bool /*enable*/) {
  return kFailed;
}
void CStringUtil::CombinateStrings(char* buffer, std::size_t capacity, const char* text,
                                   const char* /*first*/, const char* /*second*/,
                                   const char* /*third*/, const char* /*fourth*/) {
  std::strncpy(buffer, text, capacity - 1);
}

char* evas_textblock_text_utf8_to_markup(const void* /*object*/, const char* utf8) {
  return strdup(utf8);
}

const char* platform_mkpath(int /*root*/, const char* relative) {
  return relative;
}

int __dlog_print(int /*log_id*/, int /*priority*/, const char* /*tag*/, const char* /*format*/,
                 ...) {
  return 0;
}

namespace ht {
void TSLoggerHelper::Log(const TSCodeLocation& /*location*/, const char* /*format*/, ...) {}
}  // namespace ht
