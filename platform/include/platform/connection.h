/*
 * The connection service: the registered network profiles and 802.1X on the wired one.
 *
 * A result of 0 is success; on an error (a null handle or output, nothing to return) the outputs
 * are untouched. Any thread, but one handle on one thread at a time.
 */
#ifndef PLATFORM_CONNECTION_H
#define PLATFORM_CONNECTION_H

#include <stdbool.h>

#include "platform/export.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef void* connection_h;
/* Profiles and iterators belong to their connection and are freed with it, never by the caller. */
typedef void* connection_profile_h;
typedef void* connection_profile_iterator_h;

/* Gives the caller a connection, to be returned through connection_destroy(). */
PLATFORM_API int connection_create(connection_h* connection);
PLATFORM_API int connection_destroy(connection_h connection);

/* An iterator over the profiles. `iterator_type` 0: the registered ones; fails for other types. */
PLATFORM_API int connection_get_profile_iterator(connection_h connection, int iterator_type,
                                                 connection_profile_iterator_h* iterator);

/* False at the end, and for a null iterator. */
PLATFORM_API bool connection_profile_iterator_has_next(connection_profile_iterator_h iterator);
PLATFORM_API int connection_profile_iterator_next(connection_profile_iterator_h iterator,
                                                  connection_profile_h* profile);

/* The kind of network: 1 Wi-Fi, 2 Ethernet. */
PLATFORM_API int connection_profile_get_type(connection_profile_h profile, int* type);

/* Switches 802.1X on an Ethernet profile. Fails for a profile of another type. */
PLATFORM_API int connection_profile_enable_ethernet_eap(connection_profile_h profile, bool enable);

#ifdef __cplusplus
}
#endif

#endif /* PLATFORM_CONNECTION_H */
