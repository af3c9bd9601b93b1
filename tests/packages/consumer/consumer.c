/* Asks the installed provider for a name and calls nothing of the platform itself. */
#include <dlfcn.h>
#include <locale.h>
#include <stdio.h>
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
  puts(name);
  table->release_string(name);
  return 0;
}
