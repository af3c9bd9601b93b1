#include "caller.h"

#include <dlfcn.h>
#include <link.h>

#include <cstring>

namespace fake_platform {

bool isProviderCode(const void* address) {
  dl_find_object object;
  if (_dl_find_object(const_cast<void*>(address), &object) != 0) return false;
  const char* path = object.dlfo_link_map->l_name;
  const char* slash = std::strrchr(path, '/');
  return std::strcmp(slash != nullptr ? slash + 1 : path, "libventaro.so") == 0;
}

}  // namespace fake_platform
