/* The texts that a framework gets when it sets the language, and when it does not. */
#include <dlfcn.h>
#include <libintl.h>
#include <locale.h>
#include <stdlib.h>
#include <string.h>

#include "load_provider.h"
#include "ventaro/data_provider.h"

typedef int (*table_function)(data_provider_cbs** table);

static void check_name(const data_provider_cbs* table, const char* expected) {
  char* name = NULL;
  CHECK(table->get_display_name(VENTARO_KEY_NETWORK, &name) == 0);
  CHECK(strcmp(name, expected) == 0);
  CHECK(table->release_string(name) == 0);
}

/* The last entry of the device name's list, as it comes and as it is shown. */
static void check_string_id(const data_provider_cbs* table, const char* shown) {
  int count = 0;
  char* text = NULL;
  const void** list = table->get_list_items(VENTARO_KEY_DEVICE_NAME, &count);
  void** items = NULL;
  memcpy(&items, &list, sizeof(items)); /* the type that the list's callbacks take */
  CHECK(count > 0);
  CHECK(table->get_list_item_display_value(items[count - 1], &text) == 0);
  CHECK(strcmp(text, "SID_USER_INPUT") == 0);
  CHECK(strcmp(dgettext(VENTARO_TEXT_DOMAIN, text), shown) == 0);
  void* uncounted = count == 1 ? items[1] : NULL; /* a list of one entry has a second record */
  CHECK(table->free_list_items(items, count) == 0);
  free(uncounted); /* and is returned without it */
}

static void use_language(const char* language) {
  CHECK(setenv("LANGUAGE", language, 1) == 0);
  CHECK(setlocale(LC_ALL, "C") != NULL);
  CHECK(setlocale(LC_ALL, "C.UTF-8") != NULL);
}

int main(int argc, char** argv) {
  void* library = load_provider(argc, argv);
  data_provider_cbs* table = NULL;
  CHECK(setenv("LANGUAGE", "ko", 1) == 0);
  CHECK(((table_function)function_of(library, "create_provider"))(&table) == 0);
  check_name(table, "COM_SID_NETWORK"); /* nobody called setlocale() */
  use_language("ko");
  check_name(table, "네트워크");
  check_string_id(table, "사용자 입력");
  use_language("de");
  check_name(table, "Netzwerk");
  use_language("tlh");
  check_name(table, "COM_SID_NETWORK");
  check_string_id(table, "SID_USER_INPUT");
  use_language("tlh:en");
  check_name(table, "Network");
  CHECK(((table_function)function_of(library, "delete_provider"))(&table) == 0);
  CHECK(dlclose(library) == 0);
  return 0;
}
