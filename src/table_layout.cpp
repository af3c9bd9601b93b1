// The framework finds a callback by its position: this file fails to compile when one moves.
#include <cstddef>

#include "callbacks/list_item.h"
#include "ventaro/data_provider.h"

namespace {

constexpr std::size_t slot(std::size_t index) {
  return index * sizeof(void (*)());
}

static_assert(sizeof(data_provider_cbs) == slot(60));
static_assert(offsetof(data_provider_cbs, set_int) == slot(0));
static_assert(offsetof(data_provider_cbs, reserved_2) == slot(2));
static_assert(offsetof(data_provider_cbs, reserved_4) == slot(4));
static_assert(offsetof(data_provider_cbs, set_string) == slot(6));
static_assert(offsetof(data_provider_cbs, get_int) == slot(8));
static_assert(offsetof(data_provider_cbs, reserved_9) == slot(9));
static_assert(offsetof(data_provider_cbs, reserved_10) == slot(10));
static_assert(offsetof(data_provider_cbs, get_string) == slot(11));
static_assert(offsetof(data_provider_cbs, release_string) == slot(12));
static_assert(offsetof(data_provider_cbs, get_display_name) == slot(13));
static_assert(offsetof(data_provider_cbs, get_help_text) == slot(14));
static_assert(offsetof(data_provider_cbs, get_list_items) == slot(16));
static_assert(offsetof(data_provider_cbs, get_list_item_display_value) == slot(17));
static_assert(offsetof(data_provider_cbs, get_list_item_int_value) == slot(20));
static_assert(offsetof(data_provider_cbs, get_list_item_following_action_type) == slot(23));
static_assert(offsetof(data_provider_cbs, free_list_items) == slot(24));
static_assert(offsetof(data_provider_cbs, get_current_value_sid) == slot(38));
static_assert(offsetof(data_provider_cbs, get_messagebox_info) == slot(39));
static_assert(offsetof(data_provider_cbs, get_module_info) == slot(44));
static_assert(offsetof(data_provider_cbs, get_title_icon_path) == slot(49));
static_assert(offsetof(data_provider_cbs, get_second_icon_path) == slot(50));
static_assert(offsetof(data_provider_cbs, reserved_59) == slot(59));

static_assert(sizeof(ITEM_FOLLOWING_ACTION_TYPE) == 4);
// The sizes on the TV, where pointers have 32 bits.
static_assert(sizeof(void*) != 4 || sizeof(data_provider_cbs) == 240);
static_assert(sizeof(void*) != 4 || sizeof(ListItem) == 12);

}  // namespace
