/*
 * The configuration store: typed values by key, shared by all processes of the TV.
 *
 * "db/..." keys last; a set of one has reached the disk when it returns. "memory/..." keys last as
 * long as the TV is on. Every function may be called from any thread; none takes the caller's
 * locks. A result of 0 is success. What else the functions return on the host platform, by name, is
 * in platform/host/config_store.h; a device has codes of its own, so callers compare with 0 only.
 */
#ifndef PLATFORM_CONFIG_STORE_H
#define PLATFORM_CONFIG_STORE_H

#include "platform/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* What changed, as told to a subscriber; valid during the notification only. */
typedef struct keynode_t keynode_t;

typedef void (*vconf_callback_fn)(keynode_t* node, void* user_data);

/* Reads an integer into `*value`. On an error (no such key, a value of another type, a bad key, the
 * store cannot be read) `*value` is untouched. */
PLATFORM_API int vconf_get_int(const char* key, int* value);

/* Stores an integer. On an error (a bad key, a read-only or full store) the old value stays. */
PLATFORM_API int vconf_set_int(const char* key, int value);

/* Returns the string, a block that the caller frees with free(), or null on an error. */
PLATFORM_API char* vconf_get_str(const char* key);

/* Stores a copy of the string. On an error (as vconf_set_int, or a null or over-long value) the old
 * value stays. */
PLATFORM_API int vconf_set_str(const char* key, const char* value);

/* Reads a truth value: writes 0 or 1 into the int. On an error `*value` is untouched. */
PLATFORM_API int vconf_get_bool(const char* key, int* value);

/* From now on calls `callback(node, user_data)` after every set of the key by any process, also of
 * an equal value. `user_data` stays the caller's. There is no way to take a subscription back; one
 * whose callback's library was unloaded is dropped, at the latest when somebody subscribes the same
 * key and callback after a library was unloaded and one was loaded: who subscribes one callback to
 * one key twice may then be left with the second subscription only. On the host platform the calls
 * come from the default GLib main context, so on the thread that iterates it. */
PLATFORM_API int vconf_notify_key_changed(const char* key, vconf_callback_fn callback,
                                          void* user_data);

#ifdef __cplusplus
}
#endif

#endif /* PLATFORM_CONFIG_STORE_H */
