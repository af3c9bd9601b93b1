// Where the host platform's read-only files are: catalogues, products, scenarios, the menu tree.
#ifndef PLATFORM_HOST_RESOURCES_H
#define PLATFORM_HOST_RESOURCES_H

#include <filesystem>
#include <string>
#include <vector>

#include "platform/export.h"

namespace platform::host {

// $VENTARO_RESOURCE_ROOT, else the folder share/ventaro beside the folder that holds this library,
// or beside one above it.
PLATFORM_API std::filesystem::path resourceRoot();

// The file of that name, such as "products/factory/settings.json", below the resource root; the
// shipped one if $VENTARO_RESOURCE_ROOT has none.
PLATFORM_API std::filesystem::path resourceFile(const std::string& name);

// The folder that holds this library, and by default the provider.
PLATFORM_API std::filesystem::path libraryFolder();

// The file for a name ("hotel-tv", a .json file in that folder of the resource root) or a path
// (anything with a slash or ending in ".json"). Raises UnknownNameError, listing the existing
// names, when there is none of that name.
PLATFORM_API std::filesystem::path findResource(const std::string& folder,
                                                const std::string& nameOrPath);

// The names in that folder, sorted.
PLATFORM_API std::vector<std::string> resourceNames(const std::string& folder);

}  // namespace platform::host

#endif  // PLATFORM_HOST_RESOURCES_H
