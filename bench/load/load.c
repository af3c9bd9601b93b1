/*
 * A process that has a platform, loads a provider and asks for its table. Prints a line of JSON:
 * the nanoseconds and the minor page faults of the two steps, and the heap in use before and after,
 * in bytes. Then follow the two states of /proc/self/smaps, each after a line "before" or "after".
 *
 *   load PLATFORM-LIBRARY PROVIDER
 */
#include <dlfcn.h>
#include <fcntl.h>
#include <glib.h>
#include <malloc.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/resource.h>
#include <time.h>
#include <unistd.h>

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

struct memory {
  size_t heap;
  size_t length;
  char maps[512 * 1024];
};

/* Static and already written to: a reading must not itself use memory that the next one counts.
 */
static struct memory before, after;

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

static void read_memory(struct memory* memory) {
  const struct mallinfo2 heap = mallinfo2();
  memory->heap = heap.uordblks + heap.hblkhd;
  memory->length = 0;
  const int file = open("/proc/self/smaps", O_RDONLY | O_CLOEXEC);
  if (file < 0) fail("no /proc/self/smaps");
  ssize_t got = 0;
  while ((got = read(file, memory->maps + memory->length, sizeof(memory->maps) - memory->length)) >
         0) {
    memory->length += (size_t)got;
  }
  close(file);
  if (got < 0 || memory->length == sizeof(memory->maps)) fail("cannot read /proc/self/smaps");
}

/* The platform in the state in which a framework has used it: its store, network and log are open.
 * */
static void prepare(const char* file) {
  void* platform = dlopen(file, RTLD_NOW | RTLD_GLOBAL);
  if (platform == NULL) fail(dlerror());
  int value = 0;
  ((initialize_fn)find(platform, "wifi_initialize"))();
  ((get_int_fn)find(platform, "vconf_get_int"))("db/menu/network/wiredeap", &value);
  ((print_fn)find(platform, "__dlog_print"))(PLATFORM_LOG_MAIN, PLATFORM_LOG_INFO, "LOAD", "ready");
  g_free(g_strdup_printf("%d", g_main_context_pending(NULL)));
  memset(&before, 1, sizeof(before));
  memset(&after, 1, sizeof(after));
  read_memory(&after);
  now();
}

static void print_step(const char* name, struct moment from, struct moment to) {
  printf("\"%s\": {\"nanoseconds\": %ld, \"faults\": %ld}, ", name,
         to.nanoseconds - from.nanoseconds, to.faults - from.faults);
}

int main(int count, char** words) {
  if (count != 3) fail("usage: load PLATFORM-LIBRARY PROVIDER");
  prepare(words[1]);
  read_memory(&before);
  const struct moment start = now();
  void* provider = dlopen(words[2], RTLD_NOW);
  const struct moment loaded = now();
  if (provider == NULL) fail(dlerror());
  data_provider_cbs* table = NULL;
  const int result = ((create_fn)find(provider, "create_provider"))(&table);
  const struct moment ready = now();
  if (result != 0 || table == NULL) fail("create_provider failed");
  read_memory(&after);
  putchar('{');
  print_step("dlopen", start, loaded);
  print_step("create", loaded, ready);
  printf("\"heap\": [%zu, %zu]}\nbefore\n%.*s\nafter\n%.*s", before.heap, after.heap,
         (int)before.length, before.maps, (int)after.length, after.maps);
  return 0;
}
