/*
 * The Wi-Fi service: the radio and the access point that it is connected to.
 *
 * A result of 0 is success; on an error the outputs are untouched. Any thread. On a TV without a
 * Wi-Fi device all but the functions of an access point fail.
 */
#ifndef PLATFORM_WIFI_H
#define PLATFORM_WIFI_H

#include "platform/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* An access point; null for none. */
typedef void* wifi_ap_h;

/* Opens the service for this process. May be called any number of times. */
PLATFORM_API int wifi_initialize(void);

/* Gives the caller a handle, to be returned through wifi_ap_destroy(). Fails when the radio is off
 * or not connected. */
PLATFORM_API int wifi_get_connected_ap(wifi_ap_h* ap);

/* The access point's channel in MHz. Fails for a null handle. */
PLATFORM_API int wifi_ap_get_frequency(wifi_ap_h ap, int* mhz);

/* Takes the handle back. Fails for a null handle. */
PLATFORM_API int wifi_ap_destroy(wifi_ap_h ap);

/* The radio: 0 off, 1 on. */
PLATFORM_API int wifi_get_enable_qx(int* state);

/* Switches the radio on (non-zero) or off (0). Switching it off drops the connection. */
PLATFORM_API int wifi_set_enable_qx(int enable);

#ifdef __cplusplus
}
#endif

#endif /* PLATFORM_WIFI_H */
