/*
 * The configuration store: typed values by key, shared by all processes of the TV.
 *
 * "db/..." keys are persistent; setting one has reached the disk when the call returns.
 * "memory/..." keys last as long as the TV is on. Every function may be called from any thread;
 * none takes the caller's locks. A result of 0 is success. The host platform's error codes are
 * listed in platform/host/config_store.h; a device has its own, so callers compare only with 0.
 */
#ifndef PLATFORM_CONFIG_STORE_H
#define PLATFORM_CONFIG_STORE_H

#include "platform/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* What changed, as passed to a subscriber; valid only during the notification. */
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

/* From now on calls `callback(node, user_data)` after every set of the key by any process, even to
 * an equal value. The caller keeps owning `user_data`. A subscription cannot be cancelled. It is
 * dropped when its callback's library was unloaded: at the latest when the same callback is
 * subscribed to the same key again after any library was unloaded and any was loaded. A caller that
 * subscribes one callback to one key twice may then keep only the second subscription. On the host
 * platform, the calls come from the default GLib main context, so on the thread that iterates it.
 * */
PLATFORM_API int vconf_notify_key_changed(const char* key, vconf_callback_fn callback,
                                          void* user_data);

#ifdef __cplusplus
}
#endif

#endif /* PLATFORM_CONFIG_STORE_H */
