// Names that a person misspelt.
#ifndef PLATFORM_HOST_NEAREST_H
#define PLATFORM_HOST_NEAREST_H

#include <string>
#include <vector>

#include "platform/export.h"

namespace platform::host {

// The one of the names that the fewest mistyped letters turn into the typed one, whatever the
// letter case; the first of several. Empty when none is near: more than a third of the letters
// differ.
PLATFORM_API std::string nearest(const std::string& typed, const std::vector<std::string>& names);

// "a, b, c".
PLATFORM_API std::string joined(const std::vector<std::string>& names);

// What to tell who typed a name that is none of these: "; did you mean \"radio\"?", or
// "; there are: ..." with all of them when none is near.
PLATFORM_API std::string suggestion(const std::string& typed,
                                    const std::vector<std::string>& names);

}  // namespace platform::host

#endif  // PLATFORM_HOST_NEAREST_H
