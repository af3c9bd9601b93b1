/* The application utilities: the wake-on-mobile mode, and texts with placeholders. C++ only. */
#ifndef PLATFORM_APP_UTIL_H
#define PLATFORM_APP_UTIL_H

#include <cstddef>

#include "platform/export.h"

extern "C" {

/* Whether a mobile device may switch the TV on. Returns 0, or an error code with `*enabled`
 * untouched. Any thread. */
PLATFORM_API int util_get_wakeOnMobile_mode(bool* enabled);

/* Returns 0, or an error code when the mode could not be changed. Any thread. */
PLATFORM_API int util_set_wakeOnMobile_mode(bool enable);

}  // extern "C"

class PLATFORM_API CStringUtil {
 public:
  /* Writes `text` into `buffer`, with each "<<A>>" replaced by `first`, "<<B>>" by `second`,
   * "<<C>>" by `third` and "<<D>>" by `fourth`. The inserted text is not searched again. A null
   * argument inserts nothing. Writes at most `capacity` - 1 bytes and a NUL; nothing when the
   * capacity is 0 or the buffer null; the empty text when `text` is null. Any thread. */
  static void CombinateStrings(char* buffer, std::size_t capacity, const char* text,
                               const char* first, const char* second, const char* third,
                               const char* fourth);
};

#endif  // PLATFORM_APP_UTIL_H
