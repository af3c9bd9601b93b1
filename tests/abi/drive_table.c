/* A framework that knows the table as 60 positions, not by the header's names. */
#include <dlfcn.h>
#include <stdlib.h>
#include <string.h>

#include "load_provider.h"

enum { SLOTS = 60 };
enum { RELEASE_STRING = 12, GET_DISPLAY_NAME = 13, GET_MODULE_INFO = 44 };

typedef int (*create_function)(any_function** table);
typedef int (*release_function)(char* text);
typedef int (*text_function)(const char* key, char** value);

static const int kFilled[] = {0, 6, 8, 11, 12, 13, 14, 16, 17, 20, 23, 24, 38, 39, 44, 49, 50};

static int is_filled(int slot) {
  size_t i = 0;
  for (i = 0; i < sizeof(kFilled) / sizeof(kFilled[0]); ++i) {
    if (kFilled[i] == slot) return 1;
  }
  return 0;
}

static void check_slots(any_function* table) {
  int slot = 0;
  for (slot = 0; slot < SLOTS; ++slot) CHECK((table[slot] != NULL) == is_filled(slot));
}

/* Asks for a text, compares it, and returns it through the table. */
static void check_text(any_function* table, int slot, const char* key, const char* expected) {
  char* text = NULL;
  CHECK(((text_function)table[slot])(key, &text) == 0);
  CHECK(text != NULL);
  CHECK(strcmp(text, expected) == 0);
  CHECK(((release_function)table[RELEASE_STRING])(text) == 0);
}

int main(int argc, char** argv) {
  void* library = load_provider(argc, argv);
  any_function* table = NULL;
  CHECK(((create_function)function_of(library, "create_provider"))(&table) == 0);
  CHECK(table != NULL);
  check_slots(table);
  check_text(table, GET_MODULE_INFO, "provider/main-component", "TP_ConnectivityApp");
  check_text(table, GET_MODULE_INFO, "provider/sub-component", "TP_NetworkSettings");
  check_text(table, GET_DISPLAY_NAME, "no/such/key", "");
  CHECK(((release_function)table[RELEASE_STRING])(NULL) == 1);
  CHECK(((create_function)function_of(library, "delete_provider"))(&table) == 0);
  CHECK(((create_function)function_of(library, "delete_provider"))(NULL) == 1);
  CHECK(dlclose(library) == 0);
  return 0;
}
