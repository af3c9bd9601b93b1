/* The provider's log statement: one line to each of the two channels. */
#ifndef BENCH_CALLBACKS_FLOOR_LOG_H
#define BENCH_CALLBACKS_FLOOR_LOG_H

#ifdef __cplusplus
extern "C" {
#endif

struct floor_location {
  const char* path;
  int line;
  const char* signature;
};

int __dlog_print(int log_id, int priority, const char* tag, const char* format, ...);
/* The structured logger is C++; this is what the linker calls it. */
void floor_structured_log(const struct floor_location* location, const char* format,
                          ...) __asm__("_ZN2ht14TSLoggerHelper3LogERKNS_14TSCodeLocationEPKcz");

#ifdef __cplusplus
}
#endif

enum { FLOOR_MAIN = 0, FLOOR_SYSTEM = 2, FLOOR_INFO = 4 };

#define FLOOR_LOG_TO(buffer, format, ...)                                                    \
  do {                                                                                       \
    __dlog_print(buffer, FLOOR_INFO, "VENTARO", "%s: %s(%d) > " format, "floor.c", __func__, \
                 __LINE__, ##__VA_ARGS__);                                                   \
    static const struct floor_location location = {__FILE__, __LINE__, "floor"};             \
    floor_structured_log(&location, format, ##__VA_ARGS__);                                  \
  } while (0)

#define LOG_MAIN(format, ...) FLOOR_LOG_TO(FLOOR_MAIN, format, ##__VA_ARGS__)
#define LOG_SYSTEM(format, ...) FLOOR_LOG_TO(FLOOR_SYSTEM, format, ##__VA_ARGS__)

#endif /* BENCH_CALLBACKS_FLOOR_LOG_H */
