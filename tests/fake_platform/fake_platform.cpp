#include "fake_platform.h"

#include "call.h"

namespace fake_platform {

void reset() {
  const StateLock lock(stateMutex());
  resetCalls();
  resetStore();
  resetFlags();
  resetWifi();
  resetConnections();
  resetAppUtil();
  resetPath();
  resetLog();
  resetTimers();
  resetAllocations();
}

}  // namespace fake_platform
