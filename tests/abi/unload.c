/* A framework that unloads the provider after use: nothing may stay behind. */
#include <dlfcn.h>
#include <stdlib.h>

#include "load_provider.h"
#include "ventaro/data_provider.h"

typedef int (*create_function)(data_provider_cbs** table);
typedef bool (*check_function)(const char* key, int value);

/* One use from loading to unloading, including calls that create objects on first use. */
static void use_once(int argc, char** argv) {
  void* library = load_provider(argc, argv);
  data_provider_cbs* table = NULL;
  char* name = NULL;
  CHECK(((create_function)function_of(library, "create_provider"))(&table) == 0);
  CHECK(!((check_function)function_of(library, "check_enable_int"))("menu/network/SavedAP1", 0));
  CHECK(table->set_int("menu/network/WiFiOnOff", 1) == 1);
  CHECK(table->get_display_name("menu/network/SavedAP1", &name) == 0);
  CHECK(table->release_string(name) == 0);
  CHECK(((create_function)function_of(library, "delete_provider"))(&table) == 0);
  CHECK(dlclose(library) == 0);
}

int main(int argc, char** argv) {
  int time = 0;
  for (time = 0; time < 2; ++time) {
    use_once(argc, argv);
    CHECK(dlopen(argv[1], RTLD_NOW | RTLD_NOLOAD) == NULL);
  }
  return 0;
}
