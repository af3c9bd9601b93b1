/*
 * A process that has a platform, loads a provider and asks for its table. Prints JSON: the
 * nanoseconds and the minor page faults of the two steps, and the memory of the library's mappings.
 *
 *   load PLATFORM-LIBRARY PROVIDER
 */
#include <dlfcn.h>
#include <glib.h>
#include <limits.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/resource.h>
#include <time.h>

#include "platform/log.h"
#include "ventaro/data_provider.h"

typedef int (*create_fn)(data_provider_cbs**);
typedef int (*initialize_fn)(void);
typedef int (*get_int_fn)(const char*, int*);
typedef int (*print_fn)(int, int, const char*, const char*, ...);

struct moment {
  long nanoseconds;
  long faults;
};

static void fail(const char* what) {
  fprintf(stderr, "load: %s\n", what);
  exit(1);
}

static void* find(void* library, const char* name) {
  void* found = dlsym(library, name);
  if (found == NULL) fail(dlerror());
  return found;
}

static struct moment now(void) {
  struct rusage usage;
  struct timespec time;
  getrusage(RUSAGE_SELF, &usage);
  clock_gettime(CLOCK_MONOTONIC, &time);
  return (struct moment){time.tv_sec * 1000000000L + time.tv_nsec, usage.ru_minflt};
}

/* The platform as a framework has used it by then: its store, its network and its log are open. */
static void prepare(const char* file) {
  void* platform = dlopen(file, RTLD_NOW | RTLD_GLOBAL);
  if (platform == NULL) fail(dlerror());
  int value = 0;
  ((initialize_fn)find(platform, "wifi_initialize"))();
  ((get_int_fn)find(platform, "vconf_get_int"))("db/menu/network/wiredeap", &value);
  ((print_fn)find(platform, "__dlog_print"))(PLATFORM_LOG_MAIN, PLATFORM_LOG_INFO, "LOAD", "ready");
  g_free(g_strdup_printf("%d", g_main_context_pending(NULL)));
}

/* The KiB of a kind in all mappings of the file. */
static long memory(const char* file, const char* kind) {
  FILE* maps = fopen("/proc/self/smaps", "r");
  if (maps == NULL) fail("no /proc/self/smaps");
  char line[PATH_MAX + 128];
  long sum = 0;
  int of_file = 0;
  while (fgets(line, sizeof(line), maps) != NULL) {
    const int is_mapping = strchr(line, '-') != NULL && strchr(line, ':') > strchr(line, '-');
    if (is_mapping) of_file = strstr(line, file) != NULL;
    if (of_file && strncmp(line, kind, strlen(kind)) == 0) sum += atol(line + strlen(kind));
  }
  fclose(maps);
  return sum;
}

static void print_step(const char* name, struct moment from, struct moment to) {
  printf("\"%s\": {\"nanoseconds\": %ld, \"faults\": %ld}, ", name,
         to.nanoseconds - from.nanoseconds, to.faults - from.faults);
}

int main(int count, char** words) {
  if (count != 3) fail("usage: load PLATFORM-LIBRARY PROVIDER");
  prepare(words[1]);
  now();
  const struct moment start = now();
  void* provider = dlopen(words[2], RTLD_NOW);
  const struct moment loaded = now();
  if (provider == NULL) fail(dlerror());
  data_provider_cbs* table = NULL;
  const int result = ((create_fn)find(provider, "create_provider"))(&table);
  const struct moment ready = now();
  if (result != 0 || table == NULL) fail("create_provider failed");
  putchar('{');
  print_step("dlopen", start, loaded);
  print_step("create", loaded, ready);
  printf("\"rss\": %ld, \"private_dirty\": %ld}\n", memory(words[2], "Rss:"),
         memory(words[2], "Private_Dirty:"));
  return 0;
}
