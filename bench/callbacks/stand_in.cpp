#include "stand_in.h"

#include <dlfcn.h>
#include <json/json.h>
#include <pthread.h>

#include <cstdarg>
#include <cstring>
#include <memory>
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
#include "recording.h"

stand_in::Answers stand_in::answers;

namespace {

using recording::Code;
using stand_in::answers;

constexpr Code kNone{"nullptr"};

char handle;
char deviceSid[] = "REP.DEVICE.TV";  // static, because the provider keeps it

// The library's own function, looked up at the first call. No guarded static, because its guard may
// lock.
template <typename Signature>
void seek(Signature*& next, const char* name) {
  if (next == nullptr) next = reinterpret_cast<Signature*>(dlsym(RTLD_NEXT, name));
}

using MutexFunction = int(pthread_mutex_t* mutex);
MutexFunction* nextLock = nullptr;
MutexFunction* nextUnlock = nullptr;

[[gnu::noinline]] int seekAndRecord(MutexFunction*& next, const char* name,
                                    pthread_mutex_t* mutex) {
  seek(next, name);
  RECORD(name, Code{"&lock_"});
  return next(mutex);
}

Json::CharReader* (*nextReader)(const Json::CharReaderBuilder*) = nullptr;
std::string (*nextWriteString)(const Json::StreamWriter::Factory&, const Json::Value&) = nullptr;

// Records the text that is read.
class RecordingReader : public Json::CharReader {
 public:
  explicit RecordingReader(Json::CharReader* reader) : reader_(reader) {}
  bool parse(const char* begin, const char* end, Json::Value* root, std::string* errors) override {
    RECORD("readJson", std::string(begin, end).c_str());
    return reader_->parse(begin, end, root, errors);
  }

 private:
  std::unique_ptr<Json::CharReader> reader_;
};

}  // namespace

// A platform function: what it does besides being recorded, its result, its arguments.
#define ANSWER(type, name, parameters, action, result, ...) \
  type name parameters {                                    \
    RECORD(#name __VA_OPT__(, ) __VA_ARGS__);               \
    action;                                                 \
    return result;                                          \
  }

extern "C" {

int pthread_mutex_lock(pthread_mutex_t* mutex) noexcept {
  if (recording::isOn || nextLock == nullptr) [[unlikely]]
    return seekAndRecord(nextLock, "pthread_mutex_lock", mutex);
  return nextLock(mutex);
}
int pthread_mutex_unlock(pthread_mutex_t* mutex) noexcept {
  if (recording::isOn || nextUnlock == nullptr) [[unlikely]]
    return seekAndRecord(nextUnlock, "pthread_mutex_unlock", mutex);
  return nextUnlock(mutex);
}

ANSWER(int, vconf_get_int, (const char* key, int* value), *value = 0, 0, key, value)
ANSWER(int, vconf_set_int, (const char* key, int value), , 0, key, value)
ANSWER(int, vconf_set_str, (const char* key, const char* value), , 0, key, value)
ANSWER(int, vconf_get_bool, (const char* key, int* value), *value = 0, 0, key, value)
ANSWER(int, vconf_notify_key_changed, (const char* key, vconf_callback_fn, void*), , 0, key, kNone,
       kNone)

char* vconf_get_str(const char* key) {
  RECORD("vconf_get_str", key);
  if (answers.text == nullptr) return nullptr;
  char* text = strdup(answers.text);
  return recording::isOn ? recording::handedOver(text) : text;
}

ANSWER(int, system_info_get_custom_bool, (const char* key, bool* value),
       *value = answers.isBusiness && std::string_view(key).ends_with("b2b_option_support"), 0, key,
       value)
ANSWER(int, system_info_get_custom_int, (const char* key, int* value), *value = 0, 0, key, value)
ANSWER(int, system_info_get_custom_string, (const char* key, char** value), *value = deviceSid, 0,
       key, value)

ANSWER(int, wifi_initialize, (void), , 0)
ANSWER(int, wifi_get_connected_ap, (void** ap), *ap = &handle, 0, ap)
ANSWER(int, wifi_ap_get_frequency, (void* ap, int* mhz), *mhz = answers.frequencyMhz, 0, ap, mhz)
ANSWER(int, wifi_ap_destroy, (void* ap), , 0, ap)
ANSWER(int, wifi_get_enable_qx, (int* state), *state = 1, 0, state)
ANSWER(int, wifi_set_enable_qx, (int enable), , 0, enable)

ANSWER(int, connection_create, (void** connection), *connection = &handle, 0, connection)
ANSWER(int, connection_destroy, (void* connection), , 0, connection)
ANSWER(int, connection_get_profile_iterator, (void* connection, int type, void** iterator),
       *iterator = &handle, 0, connection, type, iterator)
ANSWER(bool, connection_profile_iterator_has_next, (void* iterator), , true, iterator)
ANSWER(int, connection_profile_iterator_next, (void* iterator, void** profile), *profile = &handle,
       0, iterator, profile)
ANSWER(int, connection_profile_get_type, (void* profile, int* type), *type = 2, 0, profile, type)
ANSWER(int, connection_profile_enable_ethernet_eap, (void* profile, bool enable), , 0, profile,
       enable)

ANSWER(int, util_get_wakeOnMobile_mode, (bool* enabled), *enabled = true, 0, enabled)
ANSWER(int, util_set_wakeOnMobile_mode, (bool enable), , 0, enable)
ANSWER(const char*, platform_mkpath, (int root, const char* relative), , "/nowhere/res/locale",
       root, relative)
ANSWER(char*, bindtextdomain, (const char* domain, const char* folder), , const_cast<char*>(folder),
       domain, folder)
ANSWER(unsigned, g_timeout_add_seconds, (unsigned seconds, int (*)(void*), void*), , 7,
       static_cast<int>(seconds), Code{"nothing"}, kNone)
ANSWER(int, g_source_remove, (unsigned id), , 1, static_cast<int>(id))

char* evas_textblock_text_utf8_to_markup(const void* object, const char* utf8) {
  RECORD("evas_textblock_text_utf8_to_markup", object, utf8);
  char* markup = strdup(utf8);
  return recording::isOn ? recording::handedOver(markup) : markup;
}

int __dlog_print(int log_id, int priority, const char* tag, const char* format, ...) {
  if (!recording::isOn) [[likely]]
    return 0;
  std::va_list arguments;
  va_start(arguments, format);
  recording::logLine("__dlog_print", format, arguments, log_id, priority, tag);
  va_end(arguments);
  return 0;
}

// The string IDs are about as long as their texts. Those of the projector's package are templates.
char* dgettext(const char* domain, const char* sid) {
  static char text[] = "Connect this <<A>> to the network with your mobile device.";
  RECORD("dgettext", domain, sid);
  char* found = sid[0] == 'P' && sid[1] == 'J' && sid[2] == 'T' ? text : const_cast<char*>(sid);
  return recording::isOn ? recording::given(found) : found;
}
}  // extern "C"

void ht::TSLoggerHelper::Log(const TSCodeLocation& location, const char* format, ...) {
  if (!recording::isOn) [[likely]]
    return;
  std::va_list arguments;
  va_start(arguments, format);
  recording::logLine("LOG", format, arguments, location.path, location.line, location.signature);
  va_end(arguments);
}

void CStringUtil::CombinateStrings(char* buffer, std::size_t capacity, const char* text,
                                   const char* first, const char* second, const char* third,
                                   const char* fourth) {
  static constexpr char kFilled[] = "Some features will not be available. Go ahead?";
  if (recording::isOn) [[unlikely]]
    recording::writingCall("CStringUtil::CombinateStrings", kFilled, buffer,
                           static_cast<int>(capacity), text, first, second, third, fourth);
  std::memcpy(buffer, kFilled, sizeof(kFilled));
}

Json::CharReader* Json::CharReaderBuilder::newCharReader() const {
  seek(nextReader, "_ZNK4Json17CharReaderBuilder13newCharReaderEv");
  CharReader* reader = nextReader(this);
  if (!recording::isOn) [[likely]]
    return reader;
  return new RecordingReader(reader);
}

Json::String Json::writeString(const StreamWriter::Factory& factory, const Value& root) {
  seek(nextWriteString, "_ZN4Json11writeStringB5cxx11ERKNS_12StreamWriter7FactoryERKNS_5ValueE");
  String text = nextWriteString(factory, root);
  RECORD("WRITE_JSON", text.c_str());
  return text;
}
