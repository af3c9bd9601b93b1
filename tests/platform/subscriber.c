/* Subscribes with its own function, which disappears when this library is unloaded. */
#include "platform/config_store.h"
#include "platform/export.h"

PLATFORM_API int subscribe(const char* key, int* calls);

static void count(keynode_t* node, void* user_data) {
  (void)node;
  ++*(int*)user_data;
}

int subscribe(const char* key, int* calls) {
  return vconf_notify_key_changed(key, count, calls);
}
