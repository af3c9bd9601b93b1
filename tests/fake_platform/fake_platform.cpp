#include "fake_platform.h"

#include "call.h"

namespace fake_platform {
namespace {

void resetTo(Extent extent) {
  const StateLock lock(stateMutex());
  resetCalls(extent);
  resetStore(extent);
  resetFlags();
  resetWifi(extent);
  resetConnections(extent);
  resetAppUtil();
  resetPath();
  resetLog();
  if (extent == Extent::kValues) return;
  resetHandles();
  resetLock();
  resetTimers();
  resetAllocations();
}

}  // namespace

void reset() {
  resetTo(Extent::kAll);
}

void resetValues() {
  resetTo(Extent::kValues);
}

}  // namespace fake_platform
