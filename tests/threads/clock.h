// The time of the provider's timer: this program's own g_timeout_add_seconds overrides GLib's. The
// timer is a source of GLib's main loop and fires when a test says so.
#ifndef TESTS_THREADS_CLOCK_H
#define TESTS_THREADS_CLOCK_H

namespace threads_tests::clock {

// Makes the running timer, if any, fire this often from now on, on the thread that iterates the
// main loop. Pending firings of an earlier call are dropped.
void letFire(int times);

// Waits until those have begun, or there is no timer.
void waitForFirings();

// How many timers were removed by a firing of another timer.
int wrongTimersRemoved();

}  // namespace threads_tests::clock

#endif  // TESTS_THREADS_CLOCK_H
