/* The well-known directories of an installed package. */
#ifndef PLATFORM_PATH_H
#define PLATFORM_PATH_H

#include "platform/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The root of a package's read-only resources. */
enum { PLATFORM_ROOT_RESOURCES = 44 };

/* Joins `relative` to one of the well-known roots. The platform owns the string; it is valid until
 * the next call on the same thread. Null for a root that does not exist or a null path. */
PLATFORM_API const char* platform_mkpath(int root, const char* relative);

#ifdef __cplusplus
}
#endif

#endif /* PLATFORM_PATH_H */
