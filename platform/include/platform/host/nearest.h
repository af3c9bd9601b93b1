// Suggestions for misspelt names.
#ifndef PLATFORM_HOST_NEAREST_H
#define PLATFORM_HOST_NEAREST_H

#include <string>
#include <vector>

#include "platform/export.h"

namespace platform::host {

// The name that is the fewest mistyped letters away from the typed one, ignoring case; the first of
// several. Empty when none is near: more than a third of the letters differ.
PLATFORM_API std::string nearest(const std::string& typed, const std::vector<std::string>& names);

// "a, b, c".
PLATFORM_API std::string joined(const std::vector<std::string>& names);

// The end of the message about an unknown name: "; did you mean \"radio\"?", or "; there are: ..."
// with all of the names when none is near.
PLATFORM_API std::string suggestion(const std::string& typed,
                                    const std::vector<std::string>& names);

}  // namespace platform::host

#endif  // PLATFORM_HOST_NEAREST_H
