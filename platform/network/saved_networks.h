// The document with which the network service tells the menu of the saved networks.
#ifndef PLATFORM_NETWORK_SAVED_NETWORKS_H
#define PLATFORM_NETWORK_SAVED_NETWORKS_H

#include <string>
#include <vector>

#include "network.h"

namespace platform {

// Publishes the saved ones of the access points as "db/menu/network/TopSavedAP". Each network is
// there once, as strong as the strongest of its access points, and is Connected, Connecting or
// Disconnected. Raises StoreError, as does the function below.
void publishSavedNetworks(const std::vector<AccessPoint>& points, const std::string& connected,
                          const std::string& connecting);

// Publishes a change of state: as above, but of a document that somebody else wrote only the states
// of its networks are changed.
void publishStates(const std::vector<AccessPoint>& points, const std::string& connected,
                   const std::string& connecting);

// Whether there is a document in the store.
bool isDocumentThere();

// Whether somebody else than publishSavedNetworks() wrote the document that is in the store.
bool isDocumentOfSomebodyElse();

}  // namespace platform

#endif  // PLATFORM_NETWORK_SAVED_NETWORKS_H
