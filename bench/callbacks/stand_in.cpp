#include "stand_in.h"

#include <dlfcn.h>
#include <pthread.h>

#include <array>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "platform/app_util.h"
#include "platform/config_store.h"
#include "platform/connection.h"
#include "platform/log.h"
#include "platform/markup.h"
#include "platform/path.h"
#include "platform/structured_log.h"
#include "platform/system_info.h"
#include "platform/wifi.h"

stand_in::Answers stand_in::answers;

namespace {

using stand_in::answers;

std::string* trace = nullptr;

__attribute__((format(printf, 1, 0))) std::string formatted(const char* format,
                                                            std::va_list arguments) {
  std::array<char, 8192> text{};
  std::vsnprintf(text.data(), text.size(), format, arguments);
  return text.data();
}

__attribute__((format(printf, 1, 2))) void addToTrace(const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  *trace += formatted(format, arguments) + '\n';
  va_end(arguments);
}

// The arguments are not evaluated while nobody traces.
#define TRACE(...)                     \
  do {                                 \
    if (trace != nullptr) [[unlikely]] \
      addToTrace(__VA_ARGS__);         \
  } while (false)

char handle;

bool endsWith(const char* text, std::string_view end) {
  return std::string_view(text).ends_with(end);
}

using MutexFunction = int (*)(pthread_mutex_t* mutex);

// The C library's own, sought at the first call. No guarded static: its guard may lock a mutex.
MutexFunction nextLock = nullptr;
MutexFunction nextUnlock = nullptr;

[[gnu::noinline]] int seekAndTrace(MutexFunction& next, const char* name, pthread_mutex_t* mutex) {
  if (next == nullptr) next = reinterpret_cast<MutexFunction>(dlsym(RTLD_NEXT, name));
  TRACE("%s", name);
  return next(mutex);
}

}  // namespace

std::string stand_in::traceOf(const std::function<void()>& work) {
  std::string lines;
  trace = &lines;
  work();
  trace = nullptr;
  return lines;
}

extern "C" {

int pthread_mutex_lock(pthread_mutex_t* mutex) noexcept {
  if (trace != nullptr || nextLock == nullptr) [[unlikely]]
    return seekAndTrace(nextLock, "pthread_mutex_lock", mutex);
  return nextLock(mutex);
}

int pthread_mutex_unlock(pthread_mutex_t* mutex) noexcept {
  if (trace != nullptr || nextUnlock == nullptr) [[unlikely]]
    return seekAndTrace(nextUnlock, "pthread_mutex_unlock", mutex);
  return nextUnlock(mutex);
}

int vconf_get_int(const char* key, int* value) {
  TRACE("vconf_get_int %s", key);
  *value = 0;
  return 0;
}

int vconf_set_int(const char* key, int value) {
  TRACE("vconf_set_int %s %d", key, value);
  return 0;
}

char* vconf_get_str(const char* key) {
  TRACE("vconf_get_str %s", key);
  return answers.text != nullptr ? strdup(answers.text) : nullptr;
}

int vconf_set_str(const char* key, const char* value) {
  TRACE("vconf_set_str %s %s", key, value);
  return 0;
}

int vconf_get_bool(const char* key, int* value) {
  TRACE("vconf_get_bool %s", key);
  *value = 0;
  return 0;
}

int vconf_notify_key_changed(const char* key, vconf_callback_fn /*callback*/, void* /*user_data*/) {
  TRACE("vconf_notify_key_changed %s", key);
  return 0;
}

int system_info_get_custom_bool(const char* key, bool* value) {
  TRACE("system_info_get_custom_bool %s", key);
  *value = answers.isBusiness && endsWith(key, "b2b_option_support");
  return 0;
}

int system_info_get_custom_int(const char* key, int* value) {
  TRACE("system_info_get_custom_int %s", key);
  *value = 0;
  return 0;
}

int system_info_get_custom_string(const char* key, char** value) {
  static char sid[] = "REP.DEVICE.TV";  // the provider keeps it, so it must not be a new block
  TRACE("system_info_get_custom_string %s", key);
  *value = sid;
  return 0;
}

int wifi_initialize(void) {
  TRACE("wifi_initialize");
  return 0;
}

int wifi_get_connected_ap(wifi_ap_h* ap) {
  TRACE("wifi_get_connected_ap");
  *ap = &handle;
  return 0;
}

int wifi_ap_get_frequency(wifi_ap_h ap, int* mhz) {
  TRACE("wifi_ap_get_frequency %p", ap);
  *mhz = answers.frequencyMhz;
  return 0;
}

int wifi_ap_destroy(wifi_ap_h ap) {
  TRACE("wifi_ap_destroy %p", ap);
  return 0;
}

int wifi_get_enable_qx(int* state) {
  TRACE("wifi_get_enable_qx");
  *state = 1;
  return 0;
}

int wifi_set_enable_qx(int enable) {
  TRACE("wifi_set_enable_qx %d", enable);
  return 0;
}

int connection_create(connection_h* connection) {
  TRACE("connection_create");
  *connection = &handle;
  return 0;
}

int connection_destroy(connection_h connection) {
  TRACE("connection_destroy %p", connection);
  return 0;
}

int connection_get_profile_iterator(connection_h connection, int iterator_type,
                                    connection_profile_iterator_h* iterator) {
  TRACE("connection_get_profile_iterator %p %d", connection, iterator_type);
  *iterator = &handle;
  return 0;
}

bool connection_profile_iterator_has_next(connection_profile_iterator_h iterator) {
  TRACE("connection_profile_iterator_has_next %p", iterator);
  return true;
}

int connection_profile_iterator_next(connection_profile_iterator_h iterator,
                                     connection_profile_h* profile) {
  TRACE("connection_profile_iterator_next %p", iterator);
  *profile = &handle;
  return 0;
}

int connection_profile_get_type(connection_profile_h profile, int* type) {
  TRACE("connection_profile_get_type %p", profile);
  *type = 2;
  return 0;
}

int connection_profile_enable_ethernet_eap(connection_profile_h profile, bool enable) {
  TRACE("connection_profile_enable_ethernet_eap %s %d", profile != nullptr ? "a profile" : "none",
        static_cast<int>(enable));
  return 0;
}

int util_get_wakeOnMobile_mode(bool* enabled) {
  TRACE("util_get_wakeOnMobile_mode");
  *enabled = true;
  return 0;
}

int util_set_wakeOnMobile_mode(bool enable) {
  TRACE("util_set_wakeOnMobile_mode %d", static_cast<int>(enable));
  return 0;
}

char* evas_textblock_text_utf8_to_markup(const void* object, const char* utf8) {
  TRACE("evas_textblock_text_utf8_to_markup %p %s", object, utf8);
  return strdup(utf8);
}

const char* platform_mkpath(int root, const char* relative) {
  TRACE("platform_mkpath %d %s", root, relative);
  return "/nowhere/res/locale";
}

int __dlog_print(int log_id, int priority, const char* tag, const char* format, ...) {
  if (trace == nullptr) [[likely]]
    return 0;
  std::va_list arguments;
  va_start(arguments, format);
  const std::string line = formatted(format, arguments);
  va_end(arguments);
  addToTrace("__dlog_print %d %d %s %s", log_id, priority, tag,
             line.substr(line.find(" > ") + 3).c_str());
  return 0;
}

// The string IDs are about as long as their texts. Those of the projector's package are templates.
char* dgettext(const char* domain, const char* sid) {
  static char text[] = "Connect this <<A>> to the network with your mobile device.";
  TRACE("dgettext %s %s", domain, sid);
  return sid[0] == 'P' && sid[1] == 'J' && sid[2] == 'T' ? text : const_cast<char*>(sid);
}

char* bindtextdomain(const char* domain, const char* folder) {
  TRACE("bindtextdomain %s %s", domain, folder);
  return const_cast<char*>(folder);
}

unsigned g_timeout_add_seconds(unsigned seconds, int (* /*function*/)(void*), void* /*data*/) {
  TRACE("g_timeout_add_seconds %u", seconds);
  return 7;
}

int g_source_remove(unsigned id) {
  TRACE("g_source_remove %u", id);
  return 1;
}

}  // extern "C"

void ht::TSLoggerHelper::Log(const TSCodeLocation& /*location*/, const char* format, ...) {
  if (trace == nullptr) [[likely]]
    return;
  std::va_list arguments;
  va_start(arguments, format);
  addToTrace("Log %s", formatted(format, arguments).c_str());
  va_end(arguments);
}

void CStringUtil::CombinateStrings(char* buffer, std::size_t capacity, const char* text,
                                   const char* first, const char* second, const char* third,
                                   const char* fourth) {
  TRACE("CombinateStrings %zu %s %s %d %s %s", capacity, text, first,
        static_cast<int>(second == nullptr), third, fourth);
  constexpr std::string_view kFilled = "Some features will not be available. Go ahead?";
  std::memcpy(buffer, kFilled.data(), kFilled.size() + 1);
}
