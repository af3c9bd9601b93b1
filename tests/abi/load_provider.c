#include "load_provider.h"

#include <dlfcn.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

void check_that(int holds, const char* condition, int line) {
  if (holds) return;
  fprintf(stderr, "line %d: not so: %s\n", line, condition);
  exit(1);
}

any_function function_of(void* library, const char* name) {
  void* symbol = dlsym(library, name);
  any_function function = NULL;
  if (symbol == NULL) {
    fprintf(stderr, "not exported: %s\n", name);
    exit(1);
  }
  /* C has no cast from an object's pointer to a function's. */
  memcpy(&function, &symbol, sizeof(function));
  return function;
}

void* load_provider(int argc, char** argv) {
  void* library = NULL;
  CHECK(argc == 2);
  library = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
  if (library == NULL) fprintf(stderr, "%s\n", dlerror());
  CHECK(library != NULL);
  return library;
}
