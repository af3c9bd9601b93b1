// Where the host platform keeps its files.
#ifndef PLATFORM_HOST_FOLDERS_H
#define PLATFORM_HOST_FOLDERS_H

#include <filesystem>

#include "platform/export.h"

namespace platform::host {

// $VENTARO_STATE_DIR, else $XDG_STATE_HOME/ventaro, else ~/.local/state/ventaro. Need not exist.
PLATFORM_API std::filesystem::path stateFolder();

// $VENTARO_RUNTIME_DIR, else $XDG_RUNTIME_DIR/ventaro; else a folder under /tmp for this user
// alone, created when missing. Raises StoreError when that folder belongs to somebody else.
PLATFORM_API std::filesystem::path runtimeFolder();

}  // namespace platform::host

#endif  // PLATFORM_HOST_FOLDERS_H
