/*
 * A platform that costs next to nothing: every symbol that the provider asks, and of libc and GLib
 * the translations and the timers, answers at once with what stands here. Not for several threads.
 */
#ifndef BENCH_CALLBACKS_STAND_IN_H
#define BENCH_CALLBACKS_STAND_IN_H

namespace stand_in {

struct Answers {
  const char* text = nullptr;  // of every string in the store; null is an error
  bool isBusiness = false;     // the flag of a business product; all others are false
  int frequencyMhz = 6135;     // of the connected network
};

extern Answers answers;

}  // namespace stand_in

#endif  // BENCH_CALLBACKS_STAND_IN_H
