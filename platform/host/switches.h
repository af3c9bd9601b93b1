// Switches in the store with which the user tests the product's reactions. Any thread; a change by
// any process takes effect at the next call.
#ifndef PLATFORM_HOST_SWITCHES_H
#define PLATFORM_HOST_SWITCHES_H

namespace platform {

// The code with which a platform function is to fail, or 0: while the store's key
// "memory/host/fault/<function>" holds an integer other than 0, the function does nothing and fails
// with it.
int injectedFault(const char* function);

// Whether the structured logger keeps its records: while "memory/host/structured_log" is true.
bool keepsStructuredLog();

}  // namespace platform

#endif  // PLATFORM_HOST_SWITCHES_H
