/* Asks the installed provider for a name, and the installed platform for the language. */
#include <dlfcn.h>
#include <locale.h>
#include <platform/config_store.h>
#include <stdio.h>
#include <stdlib.h>
#include <ventaro/data_provider.h>

typedef int (*create_provider_fn)(data_provider_cbs** table);

int main(void) {
  setlocale(LC_ALL, "C.UTF-8");
  void* library = dlopen(PROVIDER, RTLD_NOW);
  if (library == NULL) {
    fprintf(stderr, "%s\n", dlerror());
    return 1;
  }
  create_provider_fn create = (create_provider_fn)dlsym(library, "create_provider");
  data_provider_cbs* table = NULL;
  char* name = NULL;
  if (create(&table) != 0 || table->get_display_name("menu/network/WiFiOnOff", &name) != 0)
    return 1;
  char* language = vconf_get_str("db/menu_widget/language");
  printf("%s %s\n", name, language);
  free(language);
  table->release_string(name);
  return 0;
}
