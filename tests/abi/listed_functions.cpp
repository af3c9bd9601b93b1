// Every function of platform/platform_functions.def is declared as the list says.
#include <type_traits>

#include "platform/app_util.h"
#include "platform/config_store.h"
#include "platform/connection.h"
#include "platform/log.h"
#include "platform/markup.h"
#include "platform/path.h"
#include "platform/structured_log.h"
#include "platform/system_info.h"
#include "platform/wifi.h"

// The format attribute is not part of a function's type.
#pragma GCC diagnostic ignored "-Wignored-attributes"

#define PLATFORM_FUNCTION(header, result, name, parameters, failure)     \
  static_assert(std::is_same_v<decltype(name), result parameters>, #name \
                " has another "                                          \
                "signature");
#include "platform_functions.def"
