/* The ABI's header, first and alone, in plain C. */
#include "ventaro/data_provider.h"

_Static_assert(sizeof(data_provider_cbs) == 60 * sizeof(void (*)(void)), "60 slots");
_Static_assert(sizeof(ITEM_FOLLOWING_ACTION_TYPE) == 4, "32 bits");
_Static_assert(offsetof(data_provider_cbs, get_second_icon_path) == 50 * sizeof(void (*)(void)),
               "slot 50");

/* The names that a framework in C uses. */
int use_of_the_header(data_provider_cbs** cbs);

int use_of_the_header(data_provider_cbs** cbs) {
  ITEM_FOLLOWING_ACTION_TYPE action = ITEM_FOLLOWING_ACTION_NONE;
  char* text = NULL;
  char buffer[VENTARO_CURRENT_VALUE_SIZE];
  (void)sizeof(buffer);
  if (create_provider(cbs) != 0 || !check_enable_int("", 0)) return 1;
  (*cbs)->get_list_item_following_action_type(NULL, &action);
  if ((*cbs)->get_module_info("", &text) != 0 || (*cbs)->reserved_1 != NULL) return 1;
  return delete_provider(cbs);
}
