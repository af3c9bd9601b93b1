// The ABI's header, first and alone, in C++.
#include "ventaro/data_provider.h"

#include <type_traits>

static_assert(sizeof(data_provider_cbs) == 60 * sizeof(void (*)()));
static_assert(sizeof(ITEM_FOLLOWING_ACTION_TYPE) == 4);
static_assert(offsetof(data_provider_cbs, get_second_icon_path) == 50 * sizeof(void (*)()));
static_assert(std::is_standard_layout_v<data_provider_cbs>);
static_assert(std::is_trivial_v<data_provider_cbs>);
static_assert(std::is_same_v<decltype(&create_provider), int (*)(data_provider_cbs**)>);
static_assert(std::is_same_v<decltype(&check_enable_bool), bool (*)(const char*, bool)>);
