/*
 * The product's feature flags, by key ("com.norvane/featureconf/...").
 *
 * A result of 0 is success. On an error (no such flag, a flag of another type, null arguments, the
 * product's flags cannot be read) `*value` is untouched. Any thread.
 */
#ifndef PLATFORM_SYSTEM_INFO_H
#define PLATFORM_SYSTEM_INFO_H

#include <stdbool.h>

#include "platform/export.h"

#ifdef __cplusplus
extern "C" {
#endif

PLATFORM_API int system_info_get_custom_bool(const char* key, bool* value);
PLATFORM_API int system_info_get_custom_int(const char* key, int* value);

/* Gives the caller a block in `*value`, which may be freed with free(). */
PLATFORM_API int system_info_get_custom_string(const char* key, char** value);

#ifdef __cplusplus
}
#endif

#endif /* PLATFORM_SYSTEM_INFO_H */
