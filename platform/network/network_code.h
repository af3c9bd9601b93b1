// What the C functions of the network return, and how they fail.
#ifndef PLATFORM_NETWORK_NETWORK_CODE_H
#define PLATFORM_NETWORK_NETWORK_CODE_H

#include "../host/guard.h"

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
  kNoWifi = -107,        // the TV has no Wi-Fi device
};

inline constexpr Service kNetwork = {
    "NETWORK", [](const std::exception&) { return static_cast<int>(NetworkCode::kUnavailable); }};

}  // namespace platform

#endif  // PLATFORM_NETWORK_NETWORK_CODE_H
