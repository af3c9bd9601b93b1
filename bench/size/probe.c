/*
 * A process that has GLib, jsoncpp, the C++ library and a platform loaded, loads the provider, and
 * prints what that changed in its memory:
 *
 *   probe PLATFORM-LIBRARY PROVIDER
 *
 * The first line is the heap in use before and after, in bytes. Then come the two states of
 * /proc/self/smaps, each behind a line "before" or "after". It is started with LD_BIND_NOW=1, so
 * that no other library resolves its own symbols between the two.
 */
#include <dlfcn.h>
#include <fcntl.h>
#include <glib.h>
#include <malloc.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

#include "ventaro/data_provider.h"

typedef int (*create_fn)(data_provider_cbs**);

struct state {
  size_t heap;
  size_t length;
  char maps[512 * 1024];
};

/* Static, and written to beforehand: a reading must not itself cost memory that the next one sees.
 */
static struct state before, after;

static void fail(const char* what) {
  fprintf(stderr, "probe: %s\n", what);
  exit(1);
}

static void take(struct state* state) {
  const struct mallinfo2 heap = mallinfo2();
  state->heap = heap.uordblks + heap.hblkhd;
  state->length = 0;
  const int file = open("/proc/self/smaps", O_RDONLY | O_CLOEXEC);
  if (file < 0) fail("no /proc/self/smaps");
  ssize_t got = 0;
  while ((got = read(file, state->maps + state->length, sizeof(state->maps) - state->length)) > 0) {
    state->length += (size_t)got;
  }
  close(file);
  if (got < 0 || state->length == sizeof(state->maps)) fail("cannot read /proc/self/smaps");
}

int main(int count, char** words) {
  if (count != 3) fail("usage: probe PLATFORM-LIBRARY PROVIDER");

  /* Warm up: GLib, the loader's first dlopen and the readings have costs of their own. */
  g_free(g_strdup_printf("%d", g_main_context_pending(NULL)));
  if (dlopen(words[1], RTLD_NOW | RTLD_GLOBAL) == NULL) fail(dlerror());
  memset(&before, 1, sizeof(before));
  memset(&after, 1, sizeof(after));
  take(&after);

  take(&before);
  void* provider = dlopen(words[2], RTLD_NOW);
  if (provider == NULL) fail(dlerror());
  const create_fn create = (create_fn)dlsym(provider, "create_provider");
  data_provider_cbs* table = NULL;
  if (create == NULL || create(&table) != 0) fail("create_provider failed");
  take(&after);

  printf("%zu %zu\nbefore\n%.*s\nafter\n%.*s", before.heap, after.heap, (int)before.length,
         before.maps, (int)after.length, after.maps);
  return 0;
}
