/*
 * One definition of each platform function, which finds the real one and passes on whatever it was
 * called with. That takes gcc's functions for calls of an unknown signature, so no header of the
 * platform may be seen here: each function is defined without its parameters.
 */
#define _GNU_SOURCE
#include "platform_calls.h"

#include <dlfcn.h>
#include <stddef.h>
#include <time.h>

enum { STACK_OF_ARGUMENTS = 128 }; /* bytes; more than any call has */

enum position {
#define POSITION(name) position_##name,
  PLATFORM_FUNCTIONS(POSITION) position_nothing,
};

static void really_nothing() {}

struct platform_call platform_calls[] = {
#define ROW(name) {#name, NULL, 0, 0},
    PLATFORM_FUNCTIONS(ROW){"nothing", really_nothing, 0, 0},
    {NULL, NULL, 0, 0},
};

static int depth = 0; /* what the platform calls in itself belongs to the outer call */

static long now(void) {
  struct timespec time;
  clock_gettime(CLOCK_MONOTONIC, &time);
  return time.tv_sec * 1000000000L + time.tv_nsec;
}

static void* find(struct platform_call* call) {
  if (call->real == NULL) call->real = dlsym(RTLD_NEXT, call->name);
  return call->real;
}

static long start(void) {
  return depth++ == 0 ? now() : 0;
}

static void stop(struct platform_call* call, long start) {
  if (--depth > 0) return;
  call->nanoseconds += now() - start;
  ++call->calls;
}

#define DEFINE(name)                                                     \
  void name() {                                                          \
    void* arguments = __builtin_apply_args();                            \
    struct platform_call* call = &platform_calls[position_##name];       \
    void (*real)() = find(call);                                         \
    const long started = start();                                        \
    void* result = __builtin_apply(real, arguments, STACK_OF_ARGUMENTS); \
    stop(call, started);                                                 \
    __builtin_return(result);                                            \
  }
PLATFORM_FUNCTIONS(DEFINE)
DEFINE(nothing)
