// Faults that a person injects to see how the product takes them: while the store's key
// "memory/host/fault/<function>" holds an integer other than 0, that platform function does nothing
// and fails with it.
#ifndef PLATFORM_CONFIG_STORE_FAULTS_H
#define PLATFORM_CONFIG_STORE_FAULTS_H

namespace platform {

// The code with which the function is to fail, or 0.
int injectedFault(const char* function);

}  // namespace platform

#endif  // PLATFORM_CONFIG_STORE_FAULTS_H
