/*
 * A platform with almost no cost: every platform symbol that the provider uses, and the
 * translations and timers of libc and GLib, returns these values at once. For one thread.
 */
#ifndef BENCH_CALLBACKS_STAND_IN_H
#define BENCH_CALLBACKS_STAND_IN_H

namespace stand_in {

struct Answers {
  const char* text = nullptr;  // of every string in the store; null means an error
  bool isBusiness = false;     // the flag of a business product; all others are false
  int frequencyMhz = 6135;     // of the connected network
};

extern Answers answers;

}  // namespace stand_in

#endif  // BENCH_CALLBACKS_STAND_IN_H
