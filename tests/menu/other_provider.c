/* Providers of somebody else, which offer little of the table: a name for each key, and with
 * OFFERS_LISTS option lists, of whose entries nothing can be asked but the text. With NEVER_ANSWERS
 * whoever asks for a name waits for ever. */
#include <stddef.h>
#ifdef NEVER_ANSWERS
#include <stdio.h>
#include <unistd.h>
#endif

#include "ventaro/data_provider.h"

static char name[] = "A Clock";

static int get_display_name(const char* key, char** value) {
  (void)key;
#ifdef NEVER_ANSWERS
  fputs("never answers\n", stderr);
  for (;;) pause();
#endif
  *value = name;
  return 0;
}

#ifdef OFFERS_LISTS
static char string_id[] = "SID_ON";
static const void* entries[] = {name, string_id};

static const void** get_list_items(const char* key, int* count) {
  (void)key;
  *count = 2;
  return entries;
}

static int get_list_item_display_value(void* item, char** value) {
  *value = item;
  return 0;
}
#endif

static data_provider_cbs table = {
    .get_display_name = get_display_name,
#ifdef OFFERS_LISTS
    .get_list_items = get_list_items,
    .get_list_item_display_value = get_list_item_display_value,
#endif
};

int create_provider(data_provider_cbs** cbs) {
  *cbs = &table;
  return 0;
}

int delete_provider(data_provider_cbs** cbs) {
  return cbs == NULL;
}

bool check_visibility_int(const char* key, int value) {
  (void)key;
  (void)value;
  return true;
}

bool check_enable_int(const char* key, int value) {
  return check_visibility_int(key, value);
}
