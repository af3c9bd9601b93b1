// Block sizes under a sanitizer, whose allocator knows them exactly.
#include <malloc.h>

#include "call.h"

namespace fake_platform {

void resetAllocations() {}

std::size_t requestedSize(const void* block) {
  return malloc_usable_size(const_cast<void*>(block));
}

}  // namespace fake_platform
