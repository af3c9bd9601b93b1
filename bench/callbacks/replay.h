// The functions that floors are written in. The length of a constant is known; a text from the
// platform has to be measured, and may be cut.
#ifndef BENCH_CALLBACKS_REPLAY_H
#define BENCH_CALLBACKS_REPLAY_H

#include <json/json.h>
#include <pthread.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "cases.h"
#include "platform/app_util.h"
#include "platform/config_store.h"
#include "platform/connection.h"
#include "platform/log.h"
#include "platform/markup.h"
#include "platform/path.h"
#include "platform/structured_log.h"
#include "platform/system_info.h"
#include "platform/wifi.h"

// Their headers define some of them as macros.
extern "C" {
char* dgettext(const char* domain, const char* sid);
char* bindtextdomain(const char* domain, const char* folder);
unsigned g_timeout_add_seconds(unsigned seconds, int (*function)(void*), void* data);
int g_source_remove(unsigned id);

const data_provider_cbs* providersTable = nullptr;  // set by the program that loads the floors
}

namespace {

pthread_mutex_t lock_ = PTHREAD_MUTEX_INITIALIZER;
[[maybe_unused]] char other_;  // a handle that the provider got earlier

template <std::size_t size>
inline char* constant(void* to, const char (&text)[size]) {
  std::memcpy(to, text, size - 1);
  return static_cast<char*>(to) + size - 1;
}

inline char* given(void* to, const char* text, std::size_t most) {
  __asm__("" : "+r"(text));  // hides the text's origin from the compiler
  const std::size_t size = strnlen(text, most);
  std::memcpy(to, text, size);
  return static_cast<char*>(to) + size;
}

// A floor is correct only if the platform answers as it did when recorded, so it compares each text
// that it does not copy.
inline void look(const char* text, const char* recorded) {
  if (std::strcmp(text, recorded) != 0) std::abort();
}

inline void enter(void* list, int number, void* entry, void* text, int value, int action) {
  *static_cast<ListEntry*>(entry) = {static_cast<char*>(text), value,
                                     static_cast<ITEM_FOLLOWING_ACTION_TYPE>(action)};
  static_cast<void**>(list)[number] = entry;
}

inline data_provider_cbs* copyOfTable(void* to) {
  return static_cast<data_provider_cbs*>(std::memcpy(to, providersTable, sizeof(*providersTable)));
}

[[maybe_unused]] Json::Value readJson(const char* text) {
  const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
  Json::Value root;
  std::string errors;
  reader->parse(text, text + std::strlen(text), &root, &errors);
  return root;
}

[[maybe_unused]] int nothing(void* /*data*/) {
  return 0;
}

}  // namespace

#define LOG(path, line, signature, ...)                            \
  do {                                                             \
    static const ht::TSCodeLocation kPlace{path, line, signature}; \
    ht::TSLoggerHelper::Log(kPlace, __VA_ARGS__);                  \
  } while (false)

#define WRITE_JSON(text)                                       \
  do {                                                         \
    static const Json::Value kDocument = readJson(text);       \
    Json::writeString(Json::StreamWriterBuilder(), kDocument); \
  } while (false)

// Takes the platform's outputs that a floor ignores.
#define RESULTS                   \
  [[maybe_unused]] int number_;   \
  [[maybe_unused]] bool flag_;    \
  [[maybe_unused]] char* word_;   \
  [[maybe_unused]] void* handle_; \
  [[maybe_unused]] char room_[1024]

#endif  // BENCH_CALLBACKS_REPLAY_H
