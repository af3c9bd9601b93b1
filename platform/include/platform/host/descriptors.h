// Whether this process can open more files.
#ifndef PLATFORM_HOST_DESCRIPTORS_H
#define PLATFORM_HOST_DESCRIPTORS_H

#include "platform/export.h"

namespace platform::host {

// Raises StoreError, which names the limit, unless so many descriptors can be opened now. To be
// called before what would end the process without them, as GLib does. Any thread.
PLATFORM_API void requireDescriptors(int count);

}  // namespace platform::host

#endif  // PLATFORM_HOST_DESCRIPTORS_H
