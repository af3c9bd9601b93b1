/* Subscribes while it is being loaded. */
#include "platform/config_store.h"

/* The program's. */
void while_a_library_is_loaded(void);

static void ignore(keynode_t* node, void* user_data) {
  (void)node;
  (void)user_data;
}

__attribute__((constructor)) static void subscribe(void) {
  while_a_library_is_loaded();
  vconf_notify_key_changed("db/of/the/library", ignore, 0);
}
