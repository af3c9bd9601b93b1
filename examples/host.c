/* A host in C: shows some items of the network menu. README.md tells how to build it. */
#include <dlfcn.h>
#include <libintl.h>
#include <locale.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <ventaro/data_provider.h>

typedef int (*text_callback)(const char* key, char** value);

static void show_text(const data_provider_cbs* table, text_callback ask, const char* key) {
  char* text = NULL;
  ask(key, &text);
  if (text != NULL) puts(text);
  table->release_string(text);
}

static void show_list(const data_provider_cbs* table, const char* key) {
  int count = 0;
  void** items = (void**)table->get_list_items(key, &count);
  for (int i = 0; i < count; ++i) {
    char* text = NULL; /* markup for a text widget; printed unchanged */
    int value = 0;
    table->get_list_item_display_value(items[i], &text);
    table->get_list_item_int_value(items[i], &value);
    if (strncmp(text, "SID_", 4) == 0) text = dgettext(VENTARO_TEXT_DOMAIN, text);
    printf("  %d %.*s\n", value, VENTARO_LIST_TEXT_SIZE, text);
  }
  table->free_list_items(items, count);
}

int main(void) {
  setenv("LANGUAGE", "en", 0); /* unless the user has set one */
  setlocale(LC_ALL, "C.UTF-8");
  void* library = dlopen(PROVIDER, RTLD_NOW);
  if (library == NULL) {
    fprintf(stderr, "%s\n", dlerror());
    return 1;
  }
  int (*create)(data_provider_cbs**) = NULL;
  int (*destroy)(data_provider_cbs**) = NULL;
  *(void**)&create = dlsym(library, "create_provider");
  *(void**)&destroy = dlsym(library, "delete_provider");
  data_provider_cbs* table = NULL;
  create(&table);
  show_text(table, table->get_display_name, VENTARO_KEY_WIFI);
  show_text(table, table->get_string, VENTARO_KEY_WIFI);
  show_list(table, VENTARO_KEY_DEVICE_NAME);
  show_text(table, table->get_display_name, VENTARO_KEY_SAVED_NETWORK_1);
  show_list(table, VENTARO_KEY_SAVED_NETWORK_1_STATES);
  destroy(&table);
  return dlclose(library);
}
