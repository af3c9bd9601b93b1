// Where the host platform keeps its files.
#ifndef PLATFORM_HOST_FOLDERS_H
#define PLATFORM_HOST_FOLDERS_H

#include <filesystem>

namespace platform {

// $VENTARO_STATE_DIR, else $XDG_STATE_HOME/ventaro, else ~/.local/state/ventaro. Need not exist.
std::filesystem::path stateFolder();

// $VENTARO_RUNTIME_DIR, else $XDG_RUNTIME_DIR/ventaro; else a folder under /tmp that belongs to
// this user alone, which is made when it is missing. Raises StoreError when that folder is somebody
// else's.
std::filesystem::path runtimeFolder();

}  // namespace platform

#endif  // PLATFORM_HOST_FOLDERS_H
