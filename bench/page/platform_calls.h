/* What the provider calls in the platform, counted and timed between the two. */
#ifndef BENCH_PAGE_PLATFORM_CALLS_H
#define BENCH_PAGE_PLATFORM_CALLS_H

/* The functions that the provider takes from the platform, and the one of the C library that reads
 * files of its own. Without platform_mkpath(): the platform finds its files by where that is. */
/* clang-format off */
#define PLATFORM_FUNCTIONS(each)                              \
  each(__dlog_print)                                          \
  each(_ZN2ht14TSLoggerHelper3LogERKNS_14TSCodeLocationEPKcz) \
  each(_ZN11CStringUtil16CombinateStringsEPcmPKcS2_S2_S2_S2_) \
  each(connection_create)                                     \
  each(connection_destroy)                                    \
  each(connection_get_profile_iterator)                       \
  each(connection_profile_enable_ethernet_eap)                \
  each(connection_profile_get_type)                           \
  each(connection_profile_iterator_has_next)                  \
  each(connection_profile_iterator_next)                      \
  each(dgettext)                                              \
  each(evas_textblock_text_utf8_to_markup)                    \
  each(system_info_get_custom_bool)                           \
  each(system_info_get_custom_int)                            \
  each(system_info_get_custom_string)                         \
  each(util_get_wakeOnMobile_mode)                            \
  each(util_set_wakeOnMobile_mode)                            \
  each(vconf_get_bool)                                        \
  each(vconf_get_int)                                         \
  each(vconf_get_str)                                         \
  each(vconf_notify_key_changed)                              \
  each(vconf_set_int)                                         \
  each(vconf_set_str)                                         \
  each(wifi_ap_destroy)                                       \
  each(wifi_ap_get_frequency)                                 \
  each(wifi_get_connected_ap)                                 \
  each(wifi_get_enable_qx)                                    \
  each(wifi_initialize)                                       \
  each(wifi_set_enable_qx)
/* clang-format on */

#ifdef __cplusplus
extern "C" {
#endif

struct platform_call {
  const char* name;
  void* real;
  long calls;
  long nanoseconds;
};

/* Ends with a row without a name; the row before it is that of nothing(). For one thread. */
extern struct platform_call platform_calls[];

/* Goes the same way to a function that does nothing: what the counting itself costs. */
void nothing(void);

#ifdef __cplusplus
}
#endif

#endif /* BENCH_PAGE_PLATFORM_CALLS_H */
