// What the C functions of the network have in common.
#ifndef PLATFORM_NETWORK_GUARD_H
#define PLATFORM_NETWORK_GUARD_H

#include <functional>

namespace platform {

// What the network's C functions return.
enum class NetworkCode : int {
  kOk = 0,
  kNullArgument = -101,  // an output or a handle is null
  kBadHandle = -102,     // not a handle of that kind, or no longer
  kNotConnected = -103,  // the radio is off, or there is no connection
  kWrongType = -104,     // no such iterator, or not an Ethernet profile
  kEnd = -105,           // the iterator has no more
  kUnavailable = -106,   // the network's state cannot be read or written
};

// Carries out `action` and returns its result; an injected fault instead of it, and kUnavailable
// with a line in the log for an exception.
int guarded(const char* function, const std::function<NetworkCode()>& action);

}  // namespace platform

#endif  // PLATFORM_NETWORK_GUARD_H
