/*
 * The floor: for each callback the least C that asks the platform the same with the same arguments,
 * writes the same log lines and hands out the same blocks. It knows beforehand which item is asked
 * and that nothing fails. What jsoncpp does for the provider it does here alike.
 *
 * Every function does what the provider's function of that name does, with what the item makes of
 * it as further arguments.
 */
#ifndef BENCH_CALLBACKS_FLOOR_H
#define BENCH_CALLBACKS_FLOOR_H

#include <stdbool.h>
#include <stddef.h>

#include "ventaro/data_provider.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef enum { FLOOR_PLAIN, FLOOR_RESET, FLOOR_EXPERT, FLOOR_UNKNOWN } floor_name;
typedef enum {
  FLOOR_HELP_PLAIN,
  FLOOR_HELP_TWO_LINES,
  FLOOR_HELP_FEATURES,
  FLOOR_HELP_UNKNOWN
} floor_help;
typedef enum { FLOOR_WIFI, FLOOR_DIRECT, FLOOR_WIRED, FLOOR_MOBILE, FLOOR_NAME } floor_item;

void floor_start(void);
int floor_create_provider(data_provider_cbs** cbs, const data_provider_cbs* table);
int floor_delete_provider(data_provider_cbs** cbs);

int floor_get_display_name(const char* key, char** value, floor_name name, const char* sid);
int floor_get_network_name(const char* key, char** value, int position);

/* The help of an item whose text is one translation or put together of some. */
int floor_get_help_text(const char* key, char** value, floor_help help, const char* sid,
                        const char* second);
/* The help of one that names the product, some after they asked what it is, and some with a
 * template that names the device. */
int floor_get_product_help(const char* key, char** value, bool asks_type, bool names_device,
                           const char* sid);

int floor_get_int(const char* key, int* value, floor_item item);
int floor_set_int(const char* key, int value, floor_item item);
int floor_connect(const char* key, int value, int position);
int floor_get_string(const char* key, char** value, floor_item item);
int floor_set_string(const char* key, const char* value);
int floor_get_current_value_sid(const char* key, char** value);
int floor_release_string(char* text);

int floor_get_title_icon_path(const char* key, char** path, int position);
int floor_get_second_icon_path(const char* key, char** path, int position);

const void** floor_get_list_items(const char* key, int* count, floor_item item);
const void** floor_get_state_items(const char* key, int* count);
int floor_get_list_item_display_value(void* item, char** value);
int floor_get_list_item_int_value(void* item, int* value);
int floor_get_list_item_following_action_type(void* item, ITEM_FOLLOWING_ACTION_TYPE* type);
int floor_free_list_items(void** items, int count);

int floor_get_messagebox_info(const char* key, char* text, char* first, char* second, int* type);
int floor_get_module_info(const char* key, char** value, const char* text);

bool floor_check_visibility_int(const char* key, int value);
bool floor_check_visibility_string(const char* key, const char* value);
bool floor_check_visibility_double(const char* key, double value);
bool floor_check_visibility_bool(const char* key, bool value);
bool floor_check_enable_int(const char* key, int value);
bool floor_check_enable_network(const char* key, int value, int position);
bool floor_check_enable_name(const char* key, int value);
bool floor_check_enable_string(const char* key, const char* value);
bool floor_check_enable_double(const char* key, double value);
bool floor_check_enable_bool(const char* key, bool value);

/* ---- In floor_document.cpp ---- */

/* Reads the saved networks with jsoncpp, unless the text is that of the last time, and writes the
 * log line of each. */
size_t floor_read_document(const char* text);
/* A member of a network that was read; valid until the next reading. */
const char* floor_ssid(int position);
const char* floor_status(int position);
int floor_strength(int position);
/* The state document's two texts, or null. Both are valid until the next call. */
bool floor_parse_state(const char* text, const char** style, const char** status);
/* Writes the command to connect, into a text that is valid until the next call. */
const char* floor_connect_command(const char* ssid);

#ifdef __cplusplus
}
#endif

#endif /* BENCH_CALLBACKS_FLOOR_H */
